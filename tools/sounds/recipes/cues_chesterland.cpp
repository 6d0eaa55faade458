// The cues of the Chesterland dirt road: one farm after the other.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/metals.h"
#include "synth/pipes.h"
#include "synth/space.h"
#include "synth/throat.h"
#include "synth/tones.h"
#include "synth/water.h"

namespace vorn::sounds {
namespace {

using synth::Canvas;
using synth::Contour;
using synth::Noise;

/// Hee breathing in, haw breathing out.
Audio donkey(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const double rate = canvas.rate();
  constexpr double kHee = 0.5, kHaw = 0.78;
  const synth::Mouth tight = synth::muzzle(780, 2000, 2900, 3700, 0, 2, -4);
  const synth::Mouth wide = synth::muzzle(700, 1350, 2450, 3500, 2, 2, -6);
  synth::Cry hee{.seconds = kHee, .hertz = synth::glide({{0, 480}, {0.12, 830}, {0.4, 780}, {kHee, 620}})};
  hee.loudness = Contour{{0, 0}, {0.06, 0.8}, {0.4, 1}, {kHee, 0}};
  hee.mouths = {{0, tight}};
  hee.air = 0.4;
  hee.growl = 0.2;
  hee.tremble = 0.03;
  hee.tilt = -3;
  canvas.add(0.04, synth::cry(noise, rate, hee), 1.3);
  synth::Cry haw{.seconds = kHaw, .hertz = synth::glide({{0, 250}, {0.1, 215}, {0.6, 185}, {kHaw, 130}})};
  haw.loudness = Contour{{0, 0}, {0.03, 1}, {0.6, 0.85}, {kHaw, 0}};
  haw.mouths = {{0, tight}, {0.08, wide}, {kHaw, wide}};
  haw.air = 0.06;
  haw.growl = 0.8;
  haw.tremble = 0.03;
  haw.tilt = -2;
  canvas.add(0.6, synth::cry(noise, rate, haw));
  return synth::brightened(synth::inRoom(canvas, 0.3, 0.05), rate, 1, canvas.ends());
}

Signal gobble(Noise& noise, double rate, double hertz, int beats) {
  constexpr double kBeatsASecond = 15.5;
  const double seconds = beats / kBeatsASecond;
  const synth::Mouth from = synth::muzzle(720, 1600, 2500, 3400, 0, -1, -6);
  const synth::Mouth to = synth::muzzle(950, 1950, 2750, 3600, 2, 1, -5);
  const auto wave = [](double now) { return 0.5 - 0.5 * std::cos(synth::kTwoPi * kBeatsASecond * now); };
  const Contour fall =
      synth::glide({{0, 1.1 * hertz}, {0.15 * seconds, 1.25 * hertz}, {seconds, 0.8 * hertz}});
  synth::Cry cry{.seconds = seconds,
                 .hertz = [=](double now) { return fall(now) * (0.78 + 0.3 * wave(now)); }};
  cry.loudness = [=](double now) {
    return (0.06 + 0.94 * wave(now)) * synth::swell(0.02, 0.3 * seconds, seconds)(now);
  };
  cry.mouths = {{0, from}, {0.4 * seconds, to}, {seconds, from}};
  cry.air = 0.05;
  cry.growl = 0.25;
  cry.tremble = 0.03;
  cry.tilt = -3;
  return synth::cry(noise, rate, cry);
}

/// Two toms out-gobble each other, a third joins from across the yard.
Audio turkeys(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throats");
  const double rate = canvas.rate();
  canvas.add(0.04, gobble(noise, rate, 560, 11));
  canvas.add(1.3, gobble(noise, rate, 690, 9), 0.9);
  canvas.add(2.25, gobble(noise, rate, 500, 12), 0.95);
  // One struts: he spits, his feathers rattle, his chest booms.
  const Signal feathers = synth::white(noise, synth::framesOf(rate, 0.34));
  canvas.add(0.86,
             synth::shaped(synth::bandpass(feathers, rate, 3600, 0.8), rate,
                           [](double now) {
                             return synth::swell(0.02, 0.2, 0.34)(now) *
                                    (0.5 + 0.5 * std::cos(synth::kTwoPi * 31 * now));
                           }),
             0.7);
  canvas.add(0.9, synth::thump(rate, 90, 60, 0.3), 0.5);
  return synth::withEchoes(canvas, 0.12, -24, 1);
}

/// The handle squeaks up, clunks down, and the water comes.
Audio handPump(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("water");
  const double rate = canvas.rate();
  const auto squeak = [&](double at, double seconds, double from, double to, double gain) {
    const Contour slide = synth::glide({{0, from}, {0.6 * seconds, to}, {seconds, 0.93 * to}});
    // Dry iron sticks and slips.
    const Contour pitch = [=](double now) {
      return slide(now) * (1 + 0.035 * std::sin(synth::kTwoPi * 38 * now));
    };
    const Contour loudness{{0, 0}, {0.05, 0.6}, {0.7 * seconds, 1}, {seconds, 0}};
    canvas.add(at, synth::harmonics(rate, seconds, pitch, {1, 0.6, 0.45, 0.2}, loudness), gain);
  };
  squeak(0.04, 0.36, 1080, 1720, 0.5);
  squeak(0.86, 0.3, 1650, 1150, 0.4);
  canvas.add(0.44, synth::strike(rate, 0.25, synth::steelPlate(520), 0.0006), 0.9);
  canvas.add(0.44, synth::thump(rate, 190, 110, 0.1), 0.5);
  canvas.add(1.2, synth::strike(rate, 0.25, synth::steelPlate(610), 0.0006), 0.5);
  const Signal air = synth::white(noise, synth::framesOf(rate, 0.95));
  Signal gush = synth::bandpass(air, rate, synth::glide({{0, 1300}, {0.2, 2500}, {0.9, 1600}}), 0.8);
  gush = synth::shaped(std::move(gush), rate, Contour{{0, 0}, {0.07, 1}, {0.4, 0.6}, {0.95, 0}});
  canvas.add(0.48, gush, 0.75);
  canvas.add(0.5, synth::bubbles(noise, rate, 34, 600, 2600, 0.75), 0.45);
  return synth::inRoom(canvas, 0.25, 0.06);
}

Signal oink(Noise& noise, double rate, double hertz, double seconds) {
  const synth::Mouth shut = synth::muzzle(420, 1250, 2400, 3300, 0, -2, -8);
  const synth::Mouth open = synth::muzzle(650, 1800, 2700, 3600, 2, 2, -5);
  synth::Cry cry{.seconds = seconds,
                 .hertz = synth::glide({{0, hertz}, {0.5 * seconds, 1.25 * hertz}, {seconds, 0.85 * hertz}})};
  cry.loudness = Contour{{0, 0}, {0.02, 1}, {0.7 * seconds, 0.8}, {seconds, 0}};
  cry.mouths = {{0, shut}, {0.5 * seconds, open}, {seconds, shut}};
  cry.air = 0.72;  // mostly breath
  cry.growl = 0.5;
  cry.tremble = 0.08;
  cry.tilt = -3;
  return synth::cry(noise, rate, cry);
}

/// Grunts at the trough; one is pushed aside and tells the world.
Audio pigs(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("snouts");
  const double rate = canvas.rate();
  struct Grunt {
    double at, hertz, seconds, gain;
  };
  for (const Grunt& g : {Grunt{0.04, 95, 0.2, 1}, Grunt{0.33, 105, 0.16, 0.9}, Grunt{0.82, 88, 0.24, 1},
                         Grunt{1.25, 120, 0.14, 0.8}, Grunt{2.52, 92, 0.22, 0.95}}) {
    canvas.add(g.at, oink(noise, rate, g.hertz, g.seconds), g.gain);
  }
  constexpr double kSqueal = 0.82;
  const synth::Mouth wide = synth::muzzle(1150, 2300, 3200, 4200, 2, 1, -4);
  synth::Cry squeal{
      .seconds = kSqueal,
      .hertz = synth::glide({{0, 620}, {0.1, 1250}, {0.5, 1420}, {0.68, 1150}, {kSqueal, 640}})};
  squeal.loudness = Contour{{0, 0}, {0.04, 1}, {0.6, 0.9}, {kSqueal, 0}};
  squeal.mouths = {{0, wide}};
  squeal.air = 0.18;
  squeal.growl = Contour{{0, 0.3}, {0.15, 0.05}, {0.5, 0.1}, {kSqueal, 0.5}};
  squeal.tremble = 0.05;
  squeal.tilt = -4;
  canvas.add(1.55, synth::cry(noise, rate, squeal), 0.55);
  return synth::inRoom(canvas, 0.2, 0.05);
}

/// Two spoons on a knee, and somebody blows across a jug.
Audio jugAndSpoons(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("spoons");
  const double rate = canvas.rate();
  constexpr int kSteps = 24;
  constexpr std::array kSpoons{1.0, 0.0, 0.5, 0.7, 1.0, 0.0, 0.6, 0.6, 1.0, 0.5, 0.7, 0.5};
  const double step = canvas.seconds() / kSteps;
  for (int i = 0; i < kSteps; ++i) {
    const double force = kSpoons[static_cast<std::size_t>(i) % kSpoons.size()];
    if (force == 0) continue;
    const double at = 0.04 + i * step + 0.003 * noise.next();
    const double pitch = force == 1 ? 1750 : 2050;
    canvas.add(at,
               synth::strike(rate, 0.1,
                             {{pitch, 1, 0.05},
                              {2.3 * pitch, 0.9, 0.045},
                              {2.9 * pitch, 0.5, 0.03},
                              {0.62 * pitch, 0.5, 0.04}},
                             0.0003),
               force);
  }
  constexpr std::array kJug{-26.0, -26.0, -19.0, -26.0, -21.0, -19.0};
  for (std::size_t i = 0; i < kJug.size(); ++i) {
    const double hertz = synth::noteHertz(kJug[i] + 2), seconds = 0.3;
    const Contour pitch = synth::glide({{0, 0.85 * hertz}, {0.05, hertz}, {seconds, 0.93 * hertz}});
    canvas.add(0.04 + static_cast<double>(i) * 4 * step,
               synth::pipe(noise, rate,
                           {.seconds = seconds,
                            .hertz = pitch,
                            .partials = {0.7, 1, 0.8, 0.6, 0.4, 0.3, 0.2, 0.15, 0.1},
                            .chiff = 0.5,
                            .breath = 0.25,
                            .attack = 0.03,
                            .release = 0.1}),
               0.07);
  }
  return canvas.signal();
}

Signal cluck(Noise& noise, double rate, double hertz, double seconds, double opening) {
  const synth::Mouth shut = synth::muzzle(1000, 2200, 3300, 4500, 0, -3, -9);
  const synth::Mouth open = synth::muzzle(1500, 2900, 3900, 5000, 2, 1, -5);
  synth::Cry cry{
      .seconds = seconds,
      .hertz = synth::glide({{0, 0.8 * hertz}, {0.3 * seconds, opening * hertz}, {seconds, 0.75 * hertz}})};
  cry.loudness = Contour{{0, 0}, {0.012, 1}, {0.5 * seconds, 0.75}, {seconds, 0}};
  cry.mouths = {{0, shut}, {0.35 * seconds, open}, {seconds, shut}};
  cry.air = 0.05;
  cry.growl = 0.2;
  cry.tremble = 0.02;
  cry.tilt = -4;
  return synth::cry(noise, rate, cry);
}

/// Clucking about nothing, until one has laid an egg.
Audio hens(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throats");
  const double rate = canvas.rate();
  struct Cluck {
    double at, hertz, gain;
  };
  for (const Cluck& c : {Cluck{0.04, 560, 0.8}, Cluck{0.46, 590, 0.9}, Cluck{0.74, 680, 0.7},
                         Cluck{1.3, 580, 0.9}, Cluck{1.62, 600, 1}, Cluck{2.74, 560, 0.75}}) {
    canvas.add(c.at, cluck(noise, rate, c.hertz, 0.055, 1.2), c.gain);
  }
  canvas.add(1.86, cluck(noise, rate, 700, 0.08, 1.25), 1);
  canvas.add(2.0, cluck(noise, rate, 850, 0.45, 1.5), 1.1);
  return synth::inRoom(canvas, 0.25, 0.05);
}

/// A long howl over the crickets, and a shorter one that breaks.
Audio coyote(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("night");
  const double rate = canvas.rate();
  const auto howl = [&](double at, const std::vector<synth::Point>& course, double gain) {
    const double seconds = course.back().seconds;
    const Contour pitch = synth::vibrato(synth::glide(course), 4.6, 0.008);
    const Contour loudness{{0, 0}, {0.12, 0.8}, {0.4 * seconds, 1}, {0.75 * seconds, 0.7}, {seconds, 0}};
    canvas.add(at, synth::harmonics(rate, seconds, pitch, {1, 0.75, 0.55, 0.34, 0.2, 0.12, 0.07}, loudness),
               gain);
    const Signal air = synth::white(noise, synth::framesOf(rate, seconds));
    canvas.add(at, synth::shaped(synth::bandpass(air, rate, pitch, 6), rate, loudness), 0.15 * gain);
  };
  howl(0.05, {{0, 520}, {0.22, 900}, {0.5, 1020}, {1.2, 1000}, {1.9, 720}, {2.2, 600}}, 1);
  howl(2.55, {{0, 640}, {0.08, 980}, {0.22, 700}, {0.34, 1120}, {0.8, 1180}, {1.3, 880}, {1.5, 700}}, 0.8);
  // Crickets: each chirp three pulses, thirty a second.
  const double chirpEvery = canvas.seconds() / 14;
  for (int chirp = 0; chirp < 14; ++chirp) {
    for (int i = 0; i < 3; ++i) {
      const Signal pulse =
          synth::sine(rate, 0.022, 4600 + 40 * (chirp % 3), synth::swell(0.008, 0.01, 0.022));
      canvas.add(0.1 + chirp * chirpEvery + i / 30.0, pulse, 0.1);
    }
  }
  return synth::withEchoes(canvas, 0.37, -15, 2);
}

constexpr std::array kRecipes{
    Recipe{"vorn1t65", "donkey hee-haw", Play::kLoop, kTurnCue, {}, &donkey},
    Recipe{"vorn1t66", "turkeys gobble", Play::kLoop, kTurnCue, {}, &turkeys},
    Recipe{"vorn1t67", "creaking hand pump with water gush", Play::kLoop, kStraightCue, {}, &handPump},
    Recipe{"vorn1t68", "pigs: oink and squeal", Play::kLoop, kTurnCue, {}, &pigs},
    Recipe{"vorn1t69", "jug and spoons", Play::kLoop, kStraightCue, {}, &jugAndSpoons},
    Recipe{"vorn1t70", "hens clucking, one announces an egg", Play::kLoop, kTurnCue, {}, &hens},
    Recipe{"vorn1t71", "coyote howl over crickets", Play::kLoop, kTurnCue, {}, &coyote},
};

}  // namespace

std::span<const Recipe> chesterlandCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
