// The cues of the Maple Leaf and Painsville ovals; other tracks borrow them.

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

/// Four gulps into a tin can, and its lid falls shut.
Audio gasCan(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("gulps");
  const double rate = canvas.rate(), step = canvas.seconds() / 5;
  const Signal pour = synth::bandpass(synth::white(noise, canvas.frames()), rate, 2600, 1.2, canvas.ends());
  canvas.add(pour, 0.12);
  constexpr std::array kPitches{560.0, 600.0, 530.0, 640.0};
  for (std::size_t i = 0; i < kPitches.size(); ++i) {
    const double at = 0.03 + static_cast<double>(i) * step + 0.02 * noise.next();
    const double low = kPitches[i];
    canvas.add(at, synth::glug(noise, rate, 0.17, low, 2.1 * low));
    canvas.add(at + 0.05, synth::bubbles(noise, rate, 7, 1100, 3000, 0.12), 0.5);
    canvas.add(at, synth::strike(rate, 0.2, synth::tinCan(980 + 0.1 * low), 0.002), 0.12);
  }
  canvas.add(0.03 + 4 * step, synth::strike(rate, 0.5, synth::tinCan(1280)), 0.8);
  canvas.add(0.055 + 4 * step, synth::strike(rate, 0.4, synth::tinCan(1730)), 0.35);
  return synth::inRoom(canvas, 0.25, 0.1);
}

/// Two turns of the lever: the clapper strikes 22 times a second.
Audio bicycleBell(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("strokes");
  for (int turn = 0; turn < 2; ++turn) {
    const double start = 0.03 + turn * canvas.seconds() / 2;
    constexpr int kStrokes = 5;
    for (int i = 0; i < kStrokes; ++i) {
      const double loud = (i == 0 ? 1 : 0.75) * noise.between(0.85, 1);
      canvas.add(start + i / 22.0 + 0.002 * noise.next(),
                 synth::strike(canvas.rate(), 0.6, synth::shimmeringBell(turn == 0 ? 2330 : 2270)), loud);
    }
  }
  return canvas.signal();
}

/// Two stopped pipes a third apart and the bellows that push them.
Audio cuckoo(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("air");
  struct Call {
    double share, hertz;
  };
  for (const Call& call : {Call{0.04, 880}, Call{0.48, 698}}) {
    const synth::Pipe pipe{
        .seconds = 0.3,
        .hertz = synth::glide({{0, 0.97 * call.hertz}, {0.03, call.hertz}, {0.3, 0.99 * call.hertz}}),
        .partials = {1, 0.5, 0.8, 0.35, 0.35, 0.2, 0.14},
        .chiff = 0.6,
        .breath = 0.05,
        .attack = 0.022,
        .release = 0.09};
    const double at = call.share * canvas.seconds();
    canvas.add(at, synth::pipe(noise, canvas.rate(), pipe));
    canvas.add(at + 0.3, synth::strike(canvas.rate(), 0.1, synth::woodBlock(1150), 0.001), 0.35);
  }
  return synth::brightened(synth::inRoom(canvas, 0.35, 0.12), canvas.rate(), 3, canvas.ends());
}

Signal quack(Noise& noise, double rate, double hertz, double seconds) {
  const synth::Mouth shut = synth::muzzle(700, 1500, 2600, 3500, -4, -10, -16);
  const synth::Mouth open = synth::muzzle(1150, 2250, 3050, 4200, 2, -2, -10);
  return synth::cry(
      noise, rate,
      {.seconds = seconds,
       .hertz = synth::glide({{0, 0.9 * hertz}, {0.15 * seconds, 1.15 * hertz}, {seconds, 0.75 * hertz}}),
       .loudness = Contour{{0, 0}, {0.015, 1}, {0.6 * seconds, 0.8}, {seconds, 0}},
       .mouths = {{0, shut}, {0.2 * seconds, open}, {0.75 * seconds, open}, {seconds, shut}},
       .air = 0.06,
       .growl = 0.35,
       .tremble = 0.03,
       .tilt = -4});
}

/// A drake and his duck, by turns.
Audio ducks(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throats");
  canvas.add(0.02, quack(noise, canvas.rate(), 205, 0.22));
  canvas.add(0.02 + 0.47 * canvas.seconds(), quack(noise, canvas.rate(), 262, 0.17), 0.85);
  return canvas.signal();
}

/// Feet in a vat, and she finds it funny.
Audio grapes(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("feet");
  const double rate = canvas.rate(), step = canvas.seconds() / 5;
  for (int i = 0; i < 5; ++i) {
    const double at = 0.03 + i * step + 0.025 * noise.next();
    canvas.add(at, synth::squelch(noise, rate, noise.between(0.30, 0.38)), noise.between(0.8, 1));
    canvas.add(at, synth::thump(rate, 190, 110, 0.09), 0.2);
    canvas.add(at + 0.12, synth::bubbles(noise, rate, 6, 600, 1900, 0.2), 0.22);
  }
  const synth::Mouth hah = synth::muzzle(900, 1650, 2950, 3900, 0, -6, -12);
  const synth::Mouth heh = synth::muzzle(620, 2250, 3100, 4100, 2, -4, -10);
  canvas.add(1.25 * step, synth::laugh(noise, rate, {6, 1 / 6.2, 540, 420, hah}), 0.75);
  canvas.add(3.6 * step, synth::laugh(noise, rate, {3, 1 / 6.8, 500, 590, heh}), 0.7);
  return synth::inRoom(canvas, 0.3, 0.08);
}

/// A steel tongue between the teeth: the mouth sweeps over its buzz.
Audio jawHarp(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  const auto boing = [rate](const Contour& mouth) {
    const double seconds = 0.42;
    const Signal tongue = synth::pulses(rate, seconds, 95, 0.07, synth::ringing(0.002, 0.3));
    const Contour upper = [mouth](double now) { return 1.9 * mouth(now); };
    Signal sound = synth::bandpass(tongue, rate, mouth, 9);
    synth::mixInto(sound, synth::bandpass(tongue, rate, upper, 9), 0.6);
    synth::mixInto(sound, synth::highpass(tongue, rate, 300), 0.12);
    // The finger plucks steel: it rings high before the mouth takes it.
    synth::mixInto(sound,
                   synth::shaped(synth::highpass(tongue, rate, 2800), rate, synth::ringing(0.001, 0.5)), 0.5);
    synth::mixInto(sound,
                   synth::strike(rate, 0.15, {{3350, 1, 0.12}, {4480, 0.8, 0.1}, {5900, 0.5, 0.06}}, 0.0002),
                   0.15);
    synth::fadeOut(sound, synth::framesOf(rate, 0.05));
    return sound;
  };
  canvas.add(0.02, boing(synth::glide({{0, 850}, {0.09, 2700}, {0.42, 1250}})));
  canvas.add(0.02 + canvas.seconds() / 2, boing(synth::glide({{0, 2500}, {0.12, 1000}, {0.42, 2100}})), 0.85);
  return canvas.signal();
}

/// Two bars of a waltz: a walk up, a hop and a turn home, a third below in the same breath.
Audio song(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 1, 3},
                                                                {1, 0.5, 7},
                                                                {1.5, 0.5, 8},
                                                                {2, 1, 10, 1.1},
                                                                {3, 1, 12},
                                                                {4, 0.5, 10},
                                                                {4.5, 0.5, 5},
                                                                {5, 1, 7}});
  constexpr std::array kBelow{-2.0, 3.0, 5.0, 7.0, 8.0, 7.0, 2.0, 3.0};
  constexpr double kBeats = 6, kLead = 0.045;
  Canvas canvas = recording.canvas();
  synth::SampledInstrument harmonica(canvas.rate(), synth::Sampled::kHarmonica);
  const auto blow = [&](double hertz, double seconds) {
    return harmonica.play({.hertz = hertz, .seconds = 0.9 * seconds, .ring = 0.12, .force = 1});
  };
  std::array below = kMelody;
  for (std::size_t i = 0; i < below.size(); ++i) below[i].note = kBelow[i], below[i].loud = 0.55;
  synth::play(canvas, kMelody, kBeats, blow, kLead);
  synth::play(canvas, below, kBeats, blow, kLead);
  return synth::inRoom(canvas, 0.4, 0.1);
}

constexpr std::array kRecipes{
    Recipe{"vorn1t1", "gas can: glug-glug into tin, one clank", Play::kLoop, kStraightCue, {}, &gasCan},
    Recipe{"vorn1t2", "bicycle bell dring-dring", Play::kLoop, kTurnCue, {}, &bicycleBell},
    Recipe{"vorn1t3", "wooden cuckoo clock", Play::kLoop, kTurnCue, {}, &cuckoo},
    Recipe{"vorn1t4", "ducks quack-quack", Play::kLoop, kStraightCue, {}, &ducks},
    Recipe{"vorn1t5", "a woman stomping grapes, squelch and giggle", Play::kLoop, kTurnCue, {}, &grapes},
    Recipe{"vorn1t6", "jaw-harp boing", Play::kLoop, kTurnCue, {}, &jawHarp},
    Recipe{"vorn1t10", "a song: harmonica jingle (original)", Play::kLoop, kStraightCue, {}, &song},
};

}  // namespace

std::span<const Recipe> mapleCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
