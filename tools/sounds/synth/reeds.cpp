#include "reeds.h"

#include <algorithm>

#include "filter.h"
#include "tones.h"

namespace vorn::synth {
namespace {

constexpr double kHighest = 9000;  // hertz

/// The air comes through a slit for a part of each period: a comb of partials
/// with a soft fall.
std::vector<double> tongue(double bright, double lowestHertz) {
  const double open = 0.34 - 0.16 * bright;
  std::vector<double> partials;
  for (int k = 1; k * lowestHertz < kHighest; ++k) {
    const double slit = std::abs(std::sin(kPi * k * open)) + 0.08;
    partials.push_back(slit * std::pow(k, -1.0 + 0.5 * bright));
  }
  return partials;
}

}  // namespace

Signal reed(Noise& noise, double rate, const Reed& reed) {
  const auto loudness = [&reed](double now) {
    const double swelling = swell(reed.attack, reed.release, reed.seconds)(now);
    return swelling * (1 - reed.tremolo * (0.5 - 0.5 * std::cos(kTwoPi * reed.tremoloHertz * now)));
  };
  const std::vector<double> partials = tongue(reed.bright, reed.hertz(0));
  // A tongue is flat until it swings.
  const auto pitchOf = [&reed](double offset) {
    return [&reed, offset](double now) {
      return (reed.hertz(now) + offset) * (1 - 0.012 * std::exp(-now / 0.012));
    };
  };
  Signal sound = harmonics(rate, reed.seconds, pitchOf(-reed.beating / 2), partials, loudness);
  if (reed.beating > 0)
    mixInto(sound, harmonics(rate, reed.seconds, pitchOf(reed.beating / 2), partials, loudness), 0.8);
  const Signal air = bandpass(white(noise, static_cast<int>(sound.size())), rate, 3800, 0.8);
  mixInto(sound, shaped(air, rate, loudness), 0.03);
  return peaking(sound, rate, 2300, 1.2, 6 * reed.bright);
}

Signal kazoo(Noise& noise, double rate, double seconds, const Contour& hertz, const Contour& loudness) {
  Signal hum = harmonics(rate, seconds, hertz, falling(30, -5));
  // The skin follows the hum until it hits its frame: hard edges, and it rasps.
  for (double& value : hum) value = std::tanh(3.5 * value) + 0.25 * std::abs(value) + 0.05 * noise.next();
  hum = highpass(hum, rate, 450);
  Signal sound = bandpass(hum, rate, 1050, 2);
  mixInto(sound, bandpass(hum, rate, 2300, 2.5), 1.5);
  mixInto(sound, bandpass(hum, rate, 3700, 3), 1.1);
  return shaped(std::move(sound), rate, loudness);
}

}  // namespace vorn::synth
