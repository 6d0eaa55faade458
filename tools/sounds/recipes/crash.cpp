// The car hits something, leaves the ground, or lands in the water.

#include <array>
#include <cmath>

#include "groups.h"
#include "synth/filter.h"
#include "synth/materials.h"
#include "synth/tones.h"
#include "synth/voice.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

/// Sheet metal folding: many small impacts, dense at first.
Signal crunch(Noise& noise, double rate, double hertz, double seconds, int impacts) {
  Signal sound(static_cast<std::size_t>(framesOf(rate, seconds)));
  Canvas canvas(rate, static_cast<int>(sound.size()), Ends::kOpen);
  for (int i = 0; i < impacts; ++i) {
    const double moment = seconds * std::pow(noise.between(0, 1), 2.2);
    const Signal impact =
        strike(rate, 0.2, retuned(steelPanel(), hertz * noise.between(0.6, 1.6), noise.between(0.5, 1.4)));
    canvas.add(moment, impact, noise.between(0.3, 1) * (1 - 0.8 * moment / seconds));
  }
  return withPeak(canvas.signal(), 1);
}

/// Everything at once: the boom of the body, the panels, the air.
Audio impact(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("hit");
  canvas.add(0, thump(rate, 120, 58, 0.3), 1.1);
  canvas.add(0, crunch(noise, rate, 240, canvas.seconds(), 70), 1);
  canvas.add(0, withPeak(burst(noise, rate, 900, 0.4, 0.0005, 0.28), 1), 0.9);
  Signal sound = withPeak(canvas.signal(), 1);
  saturate(sound, 4);
  return sound;
}

/// A hub cap settling: its ring rises and wobbles faster and faster.
Signal hubCap(double rate, double seconds) {
  const Contour wobble = [](double now) { return kTwoPi * (4 * now + 8 * now * now); };
  const Contour strength = [wobble, seconds](double now) {
    return (0.5 + 0.5 * std::cos(wobble(now))) * (1 - now / seconds);
  };
  return harmonics(rate, seconds, glide({{0, 880}, {seconds, 1180}}), {1, 0, 0.5, 0.2, 0.3}, strength);
}

Audio tumbling(const Recording& recording) {
  struct Blow {
    double moment, hertz, force;
  };
  constexpr std::array kBlows{Blow{0, 210, 1}, Blow{0.22, 280, 0.8}, Blow{0.43, 180, 0.7}};
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("wreck");
  for (const Blow& blow : kBlows) {
    canvas.add(blow.moment, crunch(noise, rate, blow.hertz, 0.24, 40), blow.force);
    canvas.add(blow.moment, thump(rate, 110, 62, 0.2), 0.8 * blow.force);
    canvas.add(blow.moment, withPeak(burst(noise, rate, 700, 0.5, 0.001, 0.15), 1), 0.4 * blow.force);
  }
  for (int splinter = 0; splinter < 400; ++splinter) {
    const double moment = 0.15 + 0.65 * std::pow(noise.between(0, 1), 1.5);
    canvas.add(moment, strike(rate, 0.05, retuned(glass(), noise.between(3000, 6500)), 0.0002),
               0.12 * noise.between(0.2, 1));
  }
  canvas.add(0.42, hubCap(rate, 0.5), 0.22);
  return shaped(canvas.signal(), rate, Contour{{0.6, 1}, {canvas.seconds(), 0}});
}

Audio ramp(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("planks");
  for (const auto& [moment, hertz] :
       {std::array{0.0, 190.0}, std::array{0.07, 215.0}, std::array{0.12, 245.0}}) {
    canvas.add(moment, strike(rate, 0.09, retuned(wood(), hertz, 1.2), 0.0006));
    canvas.add(moment, thump(rate, 1.3 * hertz, 0.5 * hertz, 0.06), 0.8);
    canvas.add(moment, burst(noise, rate, 900, 0.8, 0.0005, 0.03), 1.5);
  }
  const Signal creak = saw(rate, 0.14, glide({{0, 90}, {0.14, 160}}), swell(0.02, 0.05, 0.14));
  canvas.add(0.05, bandpass(creak, rate, glide({{0, 900}, {0.14, 1500}}), 6), 0.6);
  return canvas.signal();
}

Audio landing(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("rattle");
  for (const auto& [moment, force] : {std::array{0.0, 1.0}, std::array{0.15, 0.5}}) {
    canvas.add(moment, thump(rate, 150, 68, 0.25), 1.2 * force);
    canvas.add(moment, crunch(noise, rate, 320, 0.12, 18), 0.6 * force);
    canvas.add(moment, withPeak(burst(noise, rate, 500, 0.5, 0.001, 0.12), 1), 0.7 * force);
  }
  // Dust and pebbles.
  const Signal dust =
      bandpass(white(noise, framesOf(rate, 0.38)), rate, glide({{0, 2600}, {0.38, 900}}), 0.7);
  canvas.add(0.04, shaped(dust, rate, ringing(0.03, 0.5)), 0.5);
  // The joint and the next cue strike with it: what they are known by stays free for them at first.
  constexpr double kFreeFor = 0.15;
  const Signal whole = withPeak(canvas.signal(), 1);
  Signal outside = steepLowpass(steepLowpass(whole, rate, 70), rate, 70);
  mixInto(outside, steepHighpass(steepHighpass(whole, rate, 600), rate, 600));
  const Contour back{{kFreeFor, 0}, {kFreeFor + 0.04, 1}};
  Signal sound = shaped(whole, rate, back);
  mixInto(sound, shaped(std::move(outside), rate, [&back](double now) { return 1 - back(now); }));
  saturate(sound, 1);
  return sound;
}

/// A bubble bursting: a tone that rises as it dies.
Signal bubble(Noise& noise, double rate) {
  const double hertz = 800 * std::pow(3000.0 / 800, noise.between(0, 1));
  const double seconds = noise.between(0.03, 0.09) * std::sqrt(1000 / hertz) * 1.4;
  return sine(rate, seconds, glide({{0, hertz}, {seconds, 1.5 * hertz}}), ringing(0.003, seconds));
}

Signal quack(Noise& noise, double rate, double seconds) {
  Call call{.seconds = seconds, .hertz = glide({{0, 210}, {0.3 * seconds, 190}, {seconds, 140}})};
  call.amplitude = swell(0.012, 0.5 * seconds, seconds);
  call.from = {{{1100, 120, 0}, {2200, 180, -3}, {3000, 250, -8}, {3900, 300, -16}}};
  call.to = {{{900, 120, 0}, {1900, 180, -5}, {2900, 250, -10}, {3800, 300, -18}}};
  call.opening = Contour{{0, 0}, {seconds, 1}};
  call.tilt = -4;
  return withPeak(voiced(noise, rate, call), 1);
}

Audio splash(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("water");
  canvas.add(0, thump(rate, 160, 60, 0.25), 0.9);
  const Signal water = white(noise, framesOf(rate, 1.6));
  Signal sheet = bandpass(water, rate, glide({{0, 6000}, {0.25, 2600}, {1.0, 900}, {1.6, 600}}), 0.6);
  canvas.add(0, withPeak(shaped(std::move(sheet), rate, ringing(0.004, 1.7)), 1), 1.2);
  for (int drop = 0; drop < 160; ++drop) {
    const double moment = 0.1 + 2.1 * std::pow(noise.between(0, 1), 1.6);
    canvas.add(moment, bubble(noise, rate), noise.between(0.03, 0.16) * std::exp(-moment / 1.3));
  }
  for (int gulp = 0; gulp < 7; ++gulp) {
    const double hertz = noise.between(240, 420);
    canvas.add(0.7 + 0.17 * gulp,
               sine(rate, 0.12, glide({{0, hertz}, {0.12, 1.6 * hertz}}), ringing(0.015, 0.16)), 0.18);
  }
  canvas.add(2.0, quack(noise, rate, 0.16), 0.4);
  canvas.add(2.2, quack(noise, rate, 0.13), 0.25);
  return canvas.signal();
}

constexpr std::array kRecipes{
    Recipe{"vorn11", "the wreck tumbles", Play::kOnce, {-13, -1, Meter::kLoudestMoment}, {0, 60}, &tumbling},
    Recipe{"vorn15", "impact", Play::kOnce, {-9, -0.8, Meter::kLoudestMoment}, {}, &impact},
    Recipe{"vorn20", "up a wooden ramp", Play::kOnce, {-14, -1.5, Meter::kLoudestMoment}, {0.3, 5}, &ramp},
    Recipe{"vorn21", "landing", Play::kOnce, {-12, -1, Meter::kLoudestMoment}, {0.3, 60}, &landing},
    Recipe{"vorn22", "into the water", Play::kOnce, {-13, -1, Meter::kLoudestMoment}, {0.3, 150}, &splash},
};

}  // namespace

std::span<const Recipe> crashRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
