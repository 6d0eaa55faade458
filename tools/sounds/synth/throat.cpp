#include "throat.h"

#include <algorithm>
#include <cmath>

#include "filter.h"
#include "tones.h"

namespace vorn::synth {
namespace {

constexpr double kHighestPartial = 10000;  // hertz; above lies nothing a throat makes

/// The pitch with a random stray of its own in each period.
class StrayingPitch {
 public:
  StrayingPitch(Noise& noise, double share) : noise_(noise), share_(share) {}

  /// The share to add at `phase` (in periods, growing).
  double at(double phase) {
    while (phase >= end_) {
      from_ = to_;
      to_ = share_ * noise_.next();
      end_ += 1;
    }
    return from_ + (to_ - from_) * (1 - (end_ - phase));
  }

 private:
  Noise& noise_;
  double share_;
  double from_ = 0, to_ = 0, end_ = 0;
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
  StrayingPitch stray(noise, cry.tremble);
  const double highest = std::min(0.45, kHighestPartial / rate);
  double phase = 0;
  for (std::size_t i = 0; i < source.size(); ++i) {
    const double now = static_cast<double>(i) / rate;
    const double step = cry.hertz(now) * (1 + stray.at(phase)) / rate;
    const double everySecond = 1 - cry.growl(now) * (0.5 - 0.5 * std::cos(kPi * phase));
    const double air = cry.air(now);
    // Air rushes while the throat is open, that is with the pulses.
    const double rush = noise.next() * (0.6 + 0.4 * std::cos(kTwoPi * phase));
    source[i] = everySecond * ((1 - air) * partialSum(phase - std::floor(phase), step, partials, highest) +
                               1.5 * air * rush);
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
