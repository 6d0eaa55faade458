// The cues of the Chagrin River: what one hears along the water.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/metals.h"
#include "synth/pipes.h"
#include "synth/sampled.h"
#include "synth/space.h"
#include "synth/throat.h"
#include "synth/tones.h"
#include "synth/tunes.h"
#include "synth/water.h"

namespace vorn::sounds {
namespace {

using synth::Canvas;
using synth::Contour;
using synth::Noise;

/// Ten paddles of the wheel slap the water; the whistle gives a low and a high chord.
Audio paddleSteamer(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("water");
  const double rate = canvas.rate();
  constexpr int kSlaps = 10;
  for (int i = 0; i < kSlaps; ++i) {
    const double at = 0.03 + i * canvas.seconds() / kSlaps + 0.008 * noise.next();
    const double gain = (i % 2 == 0 ? 1 : 0.75) * noise.between(0.85, 1);
    Signal slap = synth::burst(noise, rate, 2100, 0.6, 0.006, 0.2);
    synth::mixInto(slap, synth::thump(rate, 230, 120, 0.1), 0.25);
    canvas.add(at, slap, gain);
    canvas.add(at + 0.04, synth::bubbles(noise, rate, 8, 700, 2600, 0.16), 0.3 * gain);
  }
  struct Blast {
    double at, seconds, low, high;
  };
  for (const Blast& blast : {Blast{0.3, 0.62, 466, 587}, Blast{1.02, 1.15, 587, 698}}) {
    for (const double hertz : {blast.low, blast.high}) {
      const Contour pitch = synth::glide(
          {{0, 0.9 * hertz}, {0.12, hertz}, {blast.seconds - 0.15, hertz}, {blast.seconds, 0.92 * hertz}});
      canvas.add(blast.at,
                 synth::pipe(noise, rate,
                             {.seconds = blast.seconds,
                              .hertz = pitch,
                              .partials = {0.9, 1, 0.7, 0.35, 0.2, 0.1},
                              .chiff = 0.2,
                              .breath = 0.1,
                              .attack = 0.07,
                              .release = 0.16}),
                 0.1);
    }
  }
  return synth::withEchoes(canvas, 0.31, -20, 1);
}

/// A loon far out on the lake: it leaps up into its other voice and falls back.
Audio loon(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  const auto wail = [&](double at, double seconds, const Contour& pitch, double gain) {
    const Contour loudness{{0, 0}, {0.08, 0.7}, {0.45 * seconds, 1}, {0.75 * seconds, 0.8}, {seconds, 0}};
    canvas.add(at,
               synth::harmonics(rate, seconds, synth::vibrato(pitch, 5.3, 0.006), {1, 0.5, 0.26, 0.14, 0.08},
                                loudness),
               gain);
  };
  wail(0.05, 1.15,
       synth::glide({{0, 920}, {0.3, 960}, {0.345, 1390}, {0.8, 1440}, {0.85, 1010}, {1.15, 930}}), 1);
  wail(1.75, 0.95,
       synth::glide({{0, 960}, {0.2, 1000}, {0.24, 1480}, {0.55, 1520}, {0.59, 1240}, {0.95, 1130}}), 0.85);
  return synth::withEchoes(canvas, 0.21, -11, 3);
}

/// Up the bars in thirds, and down in steps.
Audio xylophone(const Recording& recording) {
  constexpr std::array kRun{15, 19, 17, 20, 19, 22, 20, 24, 22, 26, 24, 27,
                            27, 26, 24, 22, 24, 20, 22, 19, 20, 17, 19, 14};
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("sticks");
  for (std::size_t i = 0; i < kRun.size(); ++i) {
    const double at = 0.03 + static_cast<double>(i) * canvas.seconds() / kRun.size() + 0.003 * noise.next();
    const double hertz = synth::noteHertz(kRun[i] - 3);
    canvas.add(at, synth::strike(canvas.rate(), 0.45, synth::xylophoneBar(hertz), 0.0004),
               noise.between(0.75, 1) * (i % 2 == 0 ? 1 : 0.8));
    canvas.add(at, synth::strike(canvas.rate(), 0.06, synth::woodBlock(1900), 0.0003), 0.22);
  }
  return synth::brightened(synth::inRoom(canvas, 0.5, 0.08), canvas.rate(), 3, canvas.ends());
}

/// Hailstones on a tin roof: light ones all over, heavy ones now and then.
Audio hail(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("stones");
  const double rate = canvas.rate();
  for (const double at : synth::scattered(noise, 104, canvas.seconds(), 0.006)) {
    const double hertz = noise.between(2900, 4300);
    canvas.add(at, synth::strike(rate, 0.08, synth::retuned(synth::tinCan(hertz), 1, 0.22), 0.0002),
               0.8 * noise.between(0.3, 1) * noise.between(0.4, 1));
  }
  for (const double at : synth::scattered(noise, 15, canvas.seconds(), 0.12)) {
    const double hertz = noise.between(1500, 2100);
    canvas.add(at, synth::strike(rate, 0.2, synth::retuned(synth::tinCan(hertz), 1, 0.5), 0.0003),
               noise.between(0.5, 1));
    canvas.add(at, synth::burst(noise, rate, 5200, 0.9, 0.0004, 0.02), 0.6);
  }
  return synth::inRoom(canvas, 0.3, 0.1);
}

/// It chuckles, works itself up, and runs down.
Audio kookaburra(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const synth::Mouth shut = synth::muzzle(950, 1900, 2900, 3900, 0, -4, -10);
  const synth::Mouth open = synth::muzzle(1350, 2450, 3400, 4300, 3, 0, -6);
  constexpr int kBursts = 16;
  for (int i = 0; i < kBursts; ++i) {
    const double share = static_cast<double>(i) / (kBursts - 1);
    const double high = 620 + 480 * std::sin(synth::kPi * std::pow(share, 0.8));
    const double length = i < 4 ? 0.14 : 0.105;
    synth::Cry ha{.seconds = length,
                  .hertz = synth::glide({{0, 0.66 * high}, {0.4 * length, high}, {length, 0.72 * high}})};
    ha.loudness = Contour{{0, 0}, {0.015, 1}, {0.6 * length, 0.8}, {length, 0}};
    ha.mouths = {{0, shut}, {0.4 * length, open}, {length, shut}};
    ha.air = 0.06;
    ha.growl = 0.5;
    ha.tremble = 0.03;
    ha.tilt = -4;
    canvas.add(0.04 + i * 2.62 / kBursts, synth::cry(noise, canvas.rate(), ha),
               0.5 + 0.5 * std::sin(synth::kPi * (0.15 + 0.75 * share)));
  }
  return synth::withEchoes(canvas, 0.13, -24, 1);
}

/// Three bells take turns, and change places in the second round.
Audio churchBells(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("ropes");
  synth::SampledInstrument bells(canvas.rate(), synth::Sampled::kTubularBells);
  constexpr std::array kRound{880.0, 740.0, 659.0, 880.0, 659.0, 740.0};
  for (std::size_t i = 0; i < kRound.size(); ++i) {
    const double at = 0.05 + static_cast<double>(i) * canvas.seconds() / kRound.size() + 0.012 * noise.next();
    canvas.add(at, synth::strike(canvas.rate(), 3.5, synth::churchBell(kRound[i]), 0.0006),
               noise.between(0.85, 1));
    canvas.add(at, bells.play({.hertz = kRound[i], .seconds = 3, .ring = 0.5, .force = 1}), 4);
    canvas.add(at, synth::burst(noise, canvas.rate(), 3000, 1, 0.001, 0.03), 0.4);
  }
  return synth::brightened(synth::inRoom(canvas, 1.2, 0.05), canvas.rate(), 5, canvas.ends());
}

/// The line runs out faster and faster over its pawl, and the float falls in.
Audio fishingReel(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("pawl");
  const double rate = canvas.rate();
  constexpr double kRun = 2.1, kSlow = 12.5, kFast = 25;
  int number = 0;
  for (double at = 0.03; at < kRun; ++number) {
    const double share = at / kRun;
    const double pitch = (number % 2 == 0 ? 2350 : 2700) * (1 + 0.25 * share);
    const Signal click = synth::strike(
        rate, 0.05, {{pitch, 1, 0.02}, {1.63 * pitch, 0.9, 0.016}, {2.2 * pitch, 0.5, 0.01}}, 0.0002);
    canvas.add(at, click, noise.between(0.7, 1));
    canvas.add(at + 0.009, click, 0.35);
    at += 1 / (kSlow * std::pow(kFast / kSlow, share));
  }
  canvas.add(2.5, synth::bubble(rate, 640, 9), 1.1);
  canvas.add(2.5, synth::splash(noise, rate, 0.3), 0.8);
  canvas.add(2.62, synth::bubble(rate, 980, 7), 0.7);
  canvas.add(2.7, synth::bubble(rate, 1400, 5), 0.4);
  return synth::inRoom(canvas, 0.4, 0.06);
}

constexpr std::array kRecipes{
    Recipe{"vorn1t16",
           "paddle steamer: wheel slaps, two-note whistle",
           Play::kLoop,
           kTurnCue,
           {},
           &paddleSteamer},
    Recipe{"vorn1t17", "loon calling", Play::kLoop, kTurnCue, {}, &loon},
    Recipe{"vorn1t18", "xylophone run up and down", Play::kLoop, kTurnCue, {}, &xylophone},
    Recipe{"vorn1t19", "hail on a tin roof", Play::kLoop, kTurnCue, {}, &hail},
    Recipe{"vorn1t20", "kookaburra laughing", Play::kLoop, kTurnCue, {}, &kookaburra},
    Recipe{"vorn1t21", "church bells, three-bell peal", Play::kLoop, kTurnCue, {}, &churchBells},
    Recipe{"vorn1t22", "fishing reel ratchet, then plop", Play::kLoop, kTurnCue, {}, &fishingReel},
};

}  // namespace

std::span<const Recipe> chagrinCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
