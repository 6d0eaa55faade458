// The cues of the Kirtland dirt mile: a barn dance and the horses outside.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/metals.h"
#include "synth/sampled.h"
#include "synth/space.h"
#include "synth/strings.h"
#include "synth/throat.h"
#include "synth/tones.h"
#include "synth/tunes.h"

namespace vorn::sounds {
namespace {

using synth::Canvas;
using synth::Contour;
using synth::Noise;

/// A thimble drawn over the ridges.
Signal scrape(Noise& noise, double rate, double seconds) {
  Signal sound(static_cast<std::size_t>(synth::framesOf(rate, seconds + 0.02)));
  const int ridges = static_cast<int>(seconds * 130);
  for (int i = 0; i < ridges; ++i) {
    const Signal ridge = synth::burst(noise, rate, 3900, 1.5, 0.0004, 0.006);
    const auto first = static_cast<std::size_t>(synth::framesOf(rate, seconds * i / ridges));
    for (std::size_t k = 0; k < ridge.size() && first + k < sound.size(); ++k)
      sound[first + k] += ridge[k] * (0.5 + 0.5 * i / ridges);
  }
  return sound;
}

/// A rolling two-step: the thumb walks, the fingers roll, the washboard answers.
Audio banjoTwoStep(const Recording& recording) {
  constexpr int kSteps = 20;  // the last one is a rest
  constexpr std::array kRoll{-2.0, 5.0, 10.0, 14.0, 5.0, 10.0, 3.0, 12.0, 7.0, 10.0,
                             0.0,  9.0, 12.0, 7.0,  3.0, 10.0, 5.0, 9.0,  -2.0};
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("fingers");
  const double rate = canvas.rate(), step = canvas.seconds() / kSteps;
  synth::SampledInstrument banjo(rate, synth::Sampled::kBanjo);
  for (std::size_t i = 0; i < kRoll.size(); ++i) {
    const double at = 0.03 + static_cast<double>(i) * step + 0.004 * noise.next();
    canvas.add(at,
               synth::withPeak(banjo.play({.hertz = synth::noteHertz(kRoll[i]),
                                           .seconds = 0.25,
                                           .ring = 0.2,
                                           .force = i % 2 == 0 ? 1 : 0.8}),
                               1),
               (i % 2 == 0 ? 1 : 0.75) * noise.between(0.85, 1));
    if (i % 4 == 2) canvas.add(at - 0.05, scrape(noise, rate, 0.07), 1.3);
    if (i % 4 == 0) canvas.add(at, synth::burst(noise, rate, 1900, 1, 0.0006, 0.03), 0.5);
  }
  return synth::brightened(synth::inRoom(canvas, 0.25, 0.06), rate, 4, canvas.ends());
}

/// Three beats and a leap: nine strides on hard ground.
Audio gallop(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("hooves");
  const double rate = canvas.rate();
  constexpr int kStrides = 9;
  struct Hoof {
    double after, pitch, gain;
  };
  // Not ten beats a second: that is where an engine flutters.
  constexpr std::array kHooves{Hoof{0, 1400, 0.7}, Hoof{0.13, 1220, 0.8}, Hoof{0.26, 1040, 1}};
  for (int stride = 0; stride < kStrides; ++stride) {
    for (const Hoof& hoof : kHooves) {
      const double at = 0.03 + stride * canvas.seconds() / kStrides + hoof.after + 0.005 * noise.next();
      canvas.add(at,
                 synth::strike(rate, 0.12, synth::hollowWood(hoof.pitch * noise.between(0.96, 1.04)), 0.0005),
                 hoof.gain * noise.between(0.85, 1));
      canvas.add(at, synth::burst(noise, rate, 1600, 0.8, 0.002, 0.04), 0.3 * hoof.gain);
    }
  }
  return synth::brightened(canvas.signal(), rate, 10, canvas.ends());
}

/// A whinny that shakes its way down, and a snort.
Audio whinny(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const double rate = canvas.rate();
  constexpr double kNeigh = 1.75;
  // Not ten times a second: that is where an engine flutters.
  constexpr double kShakeHertz = 8.2;
  const auto shake = [](double now) { return 0.5 - 0.5 * std::cos(synth::kTwoPi * kShakeHertz * now); };
  const Contour arch = synth::glide({{0, 620}, {0.18, 1080}, {0.55, 960}, {1.3, 520}, {kNeigh, 330}});
  synth::Cry neigh{.seconds = kNeigh,
                   .hertz = [=](double now) { return arch(now) * (1 + 0.09 * shake(now)); }};
  neigh.loudness = [=](double now) {
    return Contour{{0, 0}, {0.08, 0.9}, {0.5, 1}, {1.3, 0.8}, {kNeigh, 0}}(now) *
           (1 - 0.6 * std::min(1.0, now / 0.4) * shake(now));
  };
  const synth::Mouth high = synth::muzzle(980, 1900, 2900, 3800, 2, 0, -6);
  const synth::Mouth low = synth::muzzle(650, 1500, 2500, 3500, 0, 0, -8);
  neigh.mouths = {{0, high}, {0.6, high}, {1.4, low}};
  neigh.air = Contour{{0, 0.12}, {0.2, 0.04}, {1.2, 0.06}, {kNeigh, 0.3}};
  neigh.growl = Contour{{0, 0.1}, {1.0, 0.3}, {kNeigh, 0.5}};
  neigh.tremble = 0.02;
  neigh.tilt = -4;
  canvas.add(0.04, synth::cry(noise, rate, neigh));
  // The lips flap while the air goes.
  const Signal air = synth::white(noise, synth::framesOf(rate, 0.6));
  const auto flap = [](double now) {
    return std::pow(0.5 + 0.5 * std::sin(synth::kTwoPi * 24 * now), 2) * synth::swell(0.04, 0.4, 0.6)(now);
  };
  Signal snort = synth::bandpass(air, rate, synth::glide({{0, 1900}, {0.6, 1100}}), 0.9);
  canvas.add(2.08, synth::shaped(std::move(snort), rate, flap), 2.2);
  return synth::brightened(synth::inRoom(canvas, 0.4, 0.06), rate, 3, canvas.ends());
}

/// The mouth organ plays train: one long bend, one short.
Audio trainWail(const Recording& recording) {
  Canvas canvas = recording.canvas();
  synth::SampledInstrument harmonica(canvas.rate(), synth::Sampled::kHarmonica);
  const auto wail = [&](double at, double seconds, double bend) {
    const Contour wave = [](double now) {
      return 1 - 0.4 * (0.5 - 0.5 * std::cos(synth::kTwoPi * 6.3 * now));
    };
    for (const double note : {-2.0, 2.0, 7.0, 10.0}) {
      const Signal reed = harmonica.play(
          {.hertz = synth::noteHertz(note),
           .seconds = seconds,
           .ring = 0.15,
           .force = 1,
           .bend = Contour{{0, bend}, {0.3 * seconds, 0}, {0.7 * seconds, 0}, {seconds, bend}}});
      canvas.add(at, synth::shaped(reed, canvas.rate(), wave));
    }
  };
  wail(0.04, 0.78, -1.8);
  wail(0.98, 0.6, -1.1);
  return synth::inRoom(canvas, 0.6, 0.1);
}

/// Twenty-four quick notes on two strings, with a drone on the beats.
Audio fiddleReel(const Recording& recording) {
  constexpr std::array kReel{0, 4, 7, 4, 12, 11, 7, 4, 5, 9, 7, 5, 2, 5, 9, 5, 11, 9, 7, 5, 4, 2, -1, 2};
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("bow");
  const double rate = canvas.rate(), step = canvas.seconds() / kReel.size();
  synth::SampledInstrument violin(rate, synth::Sampled::kFiddle);
  for (std::size_t i = 0; i < kReel.size(); ++i) {
    const double hertz = synth::noteHertz(kReel[i] + 5);
    const double at = 0.03 + static_cast<double>(i) * step + 0.003 * noise.next();
    canvas.add(
        at,
        synth::withPeak(violin.play({.hertz = hertz, .seconds = 0.78 * step, .ring = 0.03, .force = 1}), 1),
        i % 4 == 0 ? 1 : 0.8);
    // The bow grates where it turns.
    canvas.add(at,
               synth::fiddle(noise, rate,
                             {.seconds = 0.93 * step,
                              .hertz = synth::glide({{0, 0.985 * hertz}, {0.02, hertz}}),
                              .attack = 0.014,
                              .release = 0.022}),
               1.1);
    if (i % 8 == 0)
      canvas.add(at, synth::fiddle(noise, rate, {.seconds = 1.6 * step, .hertz = synth::noteHertz(-7)}),
                 0.25);
  }
  return synth::inRoom(canvas, 0.4, 0.06);
}

/// Dinner: the rod runs round the triangle, and somebody is pleased.
Audio dinnerTriangle(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("rod");
  const double rate = canvas.rate();
  constexpr int kStrokes = 22;
  for (int i = 0; i < kStrokes; ++i) {
    const double pitch = i % 3 == 0 ? 1980 : (i % 3 == 1 ? 2026 : 1954);
    canvas.add(0.03 + i / 12.0, synth::strike(rate, 1.1, synth::triangle(pitch), 0.0002),
               noise.between(0.6, 0.9) * (i % 3 == 0 ? 1.1 : 0.85));
  }
  canvas.add(0.03 + kStrokes / 12.0 + 0.06, synth::strike(rate, 1.4, synth::triangle(1980), 0.0002), 1);
  const synth::Mouth ee = synth::muzzle(420, 2250, 2900, 3700, 2, 0, -6);
  const synth::Mouth ah = synth::muzzle(860, 1350, 2600, 3600, 2, -2, -8);
  synth::Cry yeeHaw{
      .seconds = 0.92,
      .hertz = synth::glide({{0, 330}, {0.18, 520}, {0.36, 470}, {0.44, 380}, {0.6, 410}, {0.92, 250}})};
  yeeHaw.loudness = Contour{{0, 0}, {0.05, 1}, {0.3, 0.9}, {0.38, 0.35}, {0.46, 1}, {0.7, 0.8}, {0.92, 0}};
  yeeHaw.mouths = {{0, ee}, {0.33, ee}, {0.46, ah}, {0.92, ah}};
  yeeHaw.air = Contour{{0, 0.05}, {0.33, 0.1}, {0.4, 0.5}, {0.47, 0.06}, {0.92, 0.2}};
  yeeHaw.tremble = 0.012;
  yeeHaw.tilt = -4;
  canvas.add(1.98, synth::cry(noise, rate, yeeHaw), 1.5);
  return canvas.signal();
}

constexpr std::array kRecipes{
    Recipe{
        "vorn1t53", "banjo and washboard two-step (original)", Play::kLoop, kStraightCue, {}, &banjoTwoStep},
    Recipe{"vorn1t54", "horses galloping", Play::kLoop, kTurnCue, {}, &gallop},
    Recipe{"vorn1t55", "horse whinny", Play::kLoop, kTurnCue, {}, &whinny},
    Recipe{"vorn1t56", "mouth-organ train wail", Play::kLoop, kStraightCue, {}, &trainWail},
    Recipe{"vorn1t57", "fiddle reel (original)", Play::kLoop, kSharedCue, {}, &fiddleReel},
    Recipe{"vorn1t58", "dinner triangle roll, one yee-haw", Play::kLoop, kTurnCue, {}, &dinnerTriangle},
};

}  // namespace

std::span<const Recipe> kirtlandCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
