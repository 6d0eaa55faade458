#include "throat.h"

#include <algorithm>
#include <cmath>

#include "filter.h"
#include "tones.h"

namespace vorn::synth {
namespace {

constexpr double kAboveFormants = 0.16;
constexpr double kHighestPartial = 10000;  // hertz; above lies nothing a throat makes

/// No period of a living throat is like the one before: each is a little too long or too
/// short and too loud or too soft, and a throat that growls makes pairs of them.
class Periods {
 public:
  Periods(Noise& noise, double tremble) : noise_(noise), tremble_(tremble) {}

  struct Period {
    double pitch, loudness;  ///< shares of what is asked for
  };
  /// The one at `phase` (in periods, growing), with the growl of that moment.
  Period at(double phase, double growl) {
    while (phase >= end_) {
      constexpr double kShimmer = 4, kPairing = 0.07;
      isSecond_ = !isSecond_;
      now_.pitch = 1 + tremble_ * noise_.next() + (isSecond_ ? kPairing : -kPairing) * growl;
      now_.loudness =
          (1 + std::min(0.3, kShimmer * tremble_) * noise_.next()) * (isSecond_ ? 1 - 0.8 * growl : 1);
      end_ += 1;
    }
    return now_;
  }

 private:
  Noise& noise_;
  double tremble_, end_ = 0;
  bool isSecond_ = true;
  Period now_{1, 1};
};

double partialSum(double phase, double step, const std::vector<double>& partials, double highest) {
  const double twiceCosine = 2 * std::cos(kTwoPi * phase);
  double before = 0, now = std::sin(kTwoPi * phase), sum = 0;
  for (std::size_t k = 0; k < partials.size() && static_cast<double>(k + 1) * step < highest; ++k) {
    sum += partials[k] * now;
    const double next = twiceCosine * now - before;
    before = now;
    now = next;
  }
  return sum;
}

Signal throatOf(Noise& noise, double rate, const Cry& cry) {
  Signal source(static_cast<std::size_t>(framesOf(rate, cry.seconds)));
  const std::vector<double> partials = falling(160, cry.tilt);
  Periods periods(noise, cry.tremble);
  const double highest = std::min(0.45, kHighestPartial / rate);
  double phase = 0;
  for (std::size_t i = 0; i < source.size(); ++i) {
    const double now = static_cast<double>(i) / rate;
    const Periods::Period period = periods.at(phase, cry.growl(now));
    const double step = cry.hertz(now) * period.pitch / rate;
    const double air = cry.air(now);
    // Air rushes while the throat is open, that is with the pulses.
    const double open = 0.5 + 0.5 * std::cos(kTwoPi * phase);
    const double rush = noise.next() * (0.15 + 1.25 * open * open);
    source[i] =
        period.loudness *
        ((1 - air) * partialSum(phase - std::floor(phase), step, partials, highest) + 1.5 * air * rush);
    phase += step;
  }
  return source;
}

template <typename Value>
Contour along(const std::vector<MouthAt>& mouths, Value value) {
  std::vector<Point> points;
  for (const MouthAt& at : mouths) points.push_back({at.seconds, value(at.mouth)});
  return Contour(std::move(points));
}

}  // namespace

Signal cry(Noise& noise, double rate, const Cry& cry) {
  const Signal source = throatOf(noise, rate, cry);
  Signal voice(source.size());
  for (std::size_t k = 0; k < Mouth().size(); ++k) {
    const Contour hertz = along(cry.mouths, [k](const Mouth& mouth) { return mouth[k].hertz; });
    const Contour quality =
        along(cry.mouths, [k](const Mouth& mouth) { return mouth[k].hertz / mouth[k].bandwidth; });
    // Neighbouring formants are added with opposite signs: with equal ones they
    // would cancel out between them.
    const double sign = k % 2 == 0 ? 1 : -1;
    const Contour gain =
        along(cry.mouths, [k, sign](const Mouth& mouth) { return sign * gainOf(mouth[k].decibels); });
    mixInto(voice, shaped(bandpass(source, rate, hertz, quality), rate, gain));
  }
  // Above the formants a throat does not fall silent.
  mixInto(voice, bandpass(source, rate, 6300, 1.3), kAboveFormants);
  voice = shaped(std::move(voice), rate, cry.loudness);
  fadeIn(voice, framesOf(rate, 0.002));
  fadeOut(voice, framesOf(rate, 0.008));
  return voice;
}

Mouth muzzle(double first, double second, double third, double fourth, double secondDb, double thirdDb,
             double fourthDb) {
  return {{{first, 60 + 0.09 * first, 0},
           {second, 60 + 0.07 * second, secondDb},
           {third, 60 + 0.07 * third, thirdDb},
           {fourth, 60 + 0.07 * fourth, fourthDb}}};
}

Signal laugh(Noise& noise, double rate, const Laugh& laugh) {
  Signal whole(static_cast<std::size_t>(framesOf(rate, (laugh.count + 0.5) * laugh.spacing)));
  for (int i = 0; i < laugh.count; ++i) {
    const double share = laugh.count > 1 ? static_cast<double>(i) / (laugh.count - 1) : 0;
    const double pitch = laugh.fromHertz * std::pow(laugh.toHertz / laugh.fromHertz, share);
    const double length = laugh.spacing * noise.between(0.8, 0.95);
    Cry syllable{
        .seconds = length,
        .hertz = glide(
            {{0, 0.94 * pitch}, {0.35 * length, noise.between(1.04, 1.12) * pitch}, {length, 0.86 * pitch}})};
    // Each begins with the breath of an h.
    syllable.air = Contour{{0, 0.9}, {0.28 * length, 0.25}, {0.4 * length, 0.05}, {length, 0.3}};
    syllable.loudness =
        Contour{{0, 0.15}, {0.25 * length, 0.6}, {0.4 * length, 1}, {0.75 * length, 0.6}, {length, 0}};
    syllable.mouths = {{0, laugh.mouth}};
    syllable.tremble = 0.015;
    syllable.tilt = -5;
    const Signal sound = cry(noise, rate, syllable);
    const auto first = static_cast<std::size_t>(framesOf(rate, i * laugh.spacing));
    for (std::size_t k = 0; k < sound.size() && first + k < whole.size(); ++k) {
      whole[first + k] += (1 - 0.35 * share) * sound[k];
    }
  }
  return whole;
}

}  // namespace vorn::synth
