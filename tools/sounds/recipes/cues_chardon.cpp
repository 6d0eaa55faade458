// The cues of the Chardon hill top: mountain people, their animals and their music.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/instruments.h"
#include "synth/metals.h"
#include "synth/pipes.h"
#include "synth/reeds.h"
#include "synth/sampled.h"
#include "synth/space.h"
#include "synth/throat.h"
#include "synth/tones.h"
#include "synth/tunes.h"

namespace vorn::sounds {
namespace {

using synth::Canvas;
using synth::Contour;
using synth::Noise;

/// Yo-de-lay-ee-yo: the voice leaps from chest to head and back.
Audio yodel(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("voice");
  const synth::Mouth yo = synth::muzzle(480, 1150, 2600, 3300, -2, -8, -10);
  const synth::Mouth lay = synth::muzzle(560, 1900, 2750, 3500, 0, -4, -9);
  const synth::Mouth ee = synth::muzzle(380, 2300, 2900, 3600, 2, -2, -8);
  struct Syllable {
    double beat, beats, note;
    bool head;
    const synth::Mouth& from;
    const synth::Mouth& to;
  };
  const std::array sung{Syllable{0, 0.9, -9, false, ee, yo},    Syllable{1, 0.45, -2, true, lay, lay},
                        Syllable{1.5, 1.0, -5, false, yo, lay}, Syllable{2.5, 1.4, 3, true, ee, ee},
                        Syllable{4, 0.45, -5, false, lay, yo},  Syllable{4.5, 1.1, -2, true, ee, yo}};
  const double beat = canvas.seconds() / 6;
  for (const Syllable& syllable : sung) {
    const double seconds = syllable.beats * beat, hertz = synth::noteHertz(syllable.note);
    synth::Cry voice{.seconds = seconds,
                     .hertz = synth::vibrato(
                         synth::glide({{0, 0.92 * hertz}, {0.05, hertz}, {seconds, hertz}}), 5.6, 0.012)};
    voice.loudness = Contour{{0, 0}, {0.03, 1}, {0.8 * seconds, 0.85}, {seconds, 0}};
    voice.mouths = {{0, syllable.from}, {0.5 * seconds, syllable.to}};
    voice.air = syllable.head ? 0.05 : 0.02;
    voice.tremble = 0.006;
    voice.tilt = syllable.head ? -7 : -4;
    canvas.add(0.03 + syllable.beat * beat, synth::cry(noise, canvas.rate(), voice), syllable.head ? 1.1 : 1);
  }
  // What carries from hill to hill is the ring above the vowel.
  Canvas carried = recording.canvas();
  carried.add(synth::peaking(canvas.signal(), canvas.rate(), 2600, 0.6, 15, canvas.ends()));
  return synth::withEchoes(carried, 0.36, -17, 2);
}

/// Nine ringers down the scale, and once more a third lower.
Audio handBells(const Recording& recording) {
  constexpr std::array kScale{27, 26, 24, 22, 20, 19, 17, 15, 14, 24, 22, 20, 19, 17, 15, 14, 12, 10};
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("hands");
  for (std::size_t i = 0; i < kScale.size(); ++i) {
    const double at = 0.04 + static_cast<double>(i) * canvas.seconds() / kScale.size() + 0.008 * noise.next();
    canvas.add(at, synth::strike(canvas.rate(), 1.8, synth::handBell(synth::noteHertz(kScale[i])), 0.0008),
               noise.between(0.8, 1));
  }
  return synth::brightened(synth::inRoom(canvas, 0.9, 0.06), canvas.rate(), 3, canvas.ends());
}

/// A horse trots: its harness shakes on every other hoof the harder.
Audio sleighBells(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("harness");
  constexpr int kShakes = 22;
  for (int i = 0; i < kShakes; ++i) {
    const double swing = i % 2 == 0 ? 0 : 0.012;
    const double at = 0.03 + i * canvas.seconds() / kShakes + swing;
    const double force = i % 2 == 0 ? 1 : 0.6;
    const Signal shake = synth::shaken(noise, canvas.rate(), synth::Shaker::kSleighBells, 0.35 * force, 0.35);
    canvas.add(at, synth::shaped(shake, canvas.rate(), Contour{{0, 1}, {0.1, 0.5}, {0.35, 0}}), force);
    for (int bell = 0; bell < 3; ++bell) {
      canvas.add(at + 0.02 * noise.between(0, 1),
                 synth::strike(canvas.rate(), 0.2, synth::coin(noise.between(2900, 4300))), 0.09 * force);
    }
  }
  return canvas.signal();
}

Signal bleat(Noise& noise, double rate, double hertz, double seconds, double size) {
  // Not ten times a second: that is where an engine flutters.
  constexpr double kShudder = 12.5;
  const synth::Mouth shut = synth::sized(synth::muzzle(420, 1300, 2500, 3300, -6, -10, -16), size);
  const synth::Mouth open = synth::sized(synth::muzzle(760, 1750, 2550, 3500, 2, 0, -6), size);
  const auto shudder = [](double now) { return 0.5 - 0.5 * std::cos(synth::kTwoPi * kShudder * now); };
  synth::Cry baa{
      .seconds = seconds, .hertz = [=](double now) {
        const double arch = synth::glide({{0, 0.9 * hertz}, {0.1, hertz}, {seconds, 0.82 * hertz}})(now);
        return arch * (1 + 0.05 * shudder(now));
      }};
  baa.loudness = [=](double now) {
    const double whole = Contour{{0, 0}, {0.06, 1}, {0.75 * seconds, 0.8}, {seconds, 0}}(now);
    return whole * (1 - 0.55 * shudder(now));
  };
  baa.mouths = {{0, shut}, {0.12, open}, {seconds, open}};
  baa.air = 0.05;
  baa.growl = 0.2;
  baa.tremble = 0.015;
  baa.tilt = -3;
  return synth::cry(noise, rate, baa);
}

/// The ewe asks, the lamb answers in haste.
Audio sheep(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throats");
  const double rate = canvas.rate();
  canvas.add(0.05, bleat(noise, rate, 175, 0.9, 0.95));
  canvas.add(1.12, bleat(noise, rate, 335, 0.42, 1.3), 0.8);
  canvas.add(1.68, bleat(noise, rate, 350, 0.36, 1.3), 0.7);
  canvas.add(2.25, bleat(noise, rate, 168, 0.62, 0.95), 0.95);
  canvas.add(3.02, bleat(noise, rate, 325, 0.66, 1.25), 0.85);
  return synth::withEchoes(canvas, 0.24, -24, 1);
}

/// A long drum on a dry branch and a short one on a thicker.
Audio woodpecker(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("beak");
  const auto drum = [&](double at, int knocks, double hertz, double gain) {
    for (int i = 0; i < knocks; ++i) {
      const double share = static_cast<double>(i) / knocks;
      canvas.add(
          at + i / (18.0 + 1.5 * share),
          synth::strike(canvas.rate(), 0.09,
                        synth::retuned(synth::woodBlock(hertz), noise.between(0.98, 1.02), 0.9), 0.0003),
          gain * (i < 2 ? 0.75 : 1 - 0.6 * share * share) * noise.between(0.9, 1));
    }
  };
  drum(0.05, 16, 1720, 1);
  drum(1.4, 9, 1440, 0.85);
  return synth::withEchoes(canvas, 0.19, -15, 2);
}

/// The hanger rolls over the wheels of a mast, pair by pair.
Audio chairLift(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("wheels");
  const double rate = canvas.rate();
  constexpr std::array kPitches{760.0, 1010.0, 720.0, 1060.0};
  for (std::size_t i = 0; i < kPitches.size(); ++i) {
    const double at =
        0.03 + static_cast<double>(i) * canvas.seconds() / kPitches.size() + (i % 2 == 0 ? 0 : -0.02);
    canvas.add(at, synth::strike(rate, 0.3, synth::steelPlate(kPitches[i]), 0.0004), i % 2 == 0 ? 1 : 0.75);
    canvas.add(at, synth::burst(noise, rate, 2600, 1.2, 0.0005, 0.03), 0.9);
    canvas.add(at, synth::thump(rate, 300, 180, 0.05), 0.5);
  }
  const Signal cable = synth::bandpass(synth::white(noise, canvas.frames()), rate, 1500, 5, canvas.ends());
  canvas.add(cable, 0.03);
  return synth::brightened(canvas.signal(), rate, 3, canvas.ends());
}

/// Three bars over the valley, five tones, two breaths.
Audio panPipes(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 1, 5},
                                                                {1, 0.5, 8},
                                                                {1.5, 0.5, 10},
                                                                {2, 1.5, 12, 1.1},
                                                                {3.5, 0.5, 10},
                                                                {4, 0.75, 15, 1.1},
                                                                {4.75, 0.25, 12},
                                                                {5, 1, 10},
                                                                {6, 0.5, 8},
                                                                {6.5, 1.3, 5},
                                                                {8, 0.5, 3},
                                                                {8.5, 0.5, 5},
                                                                {9, 1, 8},
                                                                {10, 0.5, 10},
                                                                {10.5, 0.5, 3},
                                                                {11, 0.9, 5}});
  constexpr double kBeats = 12;
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("breath");
  synth::play(canvas, kMelody, kBeats, [&](double hertz, double seconds) {
    return synth::pipe(noise, canvas.rate(),
                       {.seconds = 0.95 * seconds,
                        .hertz = synth::glide({{0, 0.94 * hertz}, {0.05, hertz}, {seconds, 0.995 * hertz}}),
                        .partials = {1, 0.25, 0.7, 0.2, 0.3, 0.12, 0.1},
                        .chiff = 1.1,
                        .breath = 0.2,
                        .attack = 0.035,
                        .release = 0.09,
                        .vibrato = 0.006,
                        .vibratoHertz = 4.8});
  });
  return synth::brightened(synth::inRoom(canvas, 1.0, 0.1), canvas.rate(), 3, canvas.ends());
}

/// Brr, brr, brrr: lips flutter, the skin rattles.
Audio brrKazoo(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("skin");
  const auto brr = [&](double at, double seconds, double from, double to) {
    const Contour lips = [=](double now) {
      return synth::swell(0.02, 0.05, seconds)(now) * (0.6 + 0.4 * std::cos(synth::kTwoPi * 25 * now));
    };
    canvas.add(at, synth::kazoo(noise, canvas.rate(), seconds,
                                synth::glide({{0, from}, {0.08, to}, {seconds, 0.94 * to}}), lips));
  };
  brr(0.03, 0.25, 215, 262);
  brr(0.41, 0.25, 215, 262);
  brr(0.79, 0.33, 262, 349);
  return canvas.signal();
}

/// Four chords under the roof of a village church.
Audio churchOrgan(const Recording& recording) {
  struct Chord {
    double beat, beats;
    std::array<double, 4> notes;
  };
  constexpr std::array kChords{Chord{0, 1, {-7, 0, 5, 8}}, Chord{1, 1, {-4, 0, 3, 8}},
                               Chord{2, 1, {-9, -2, 3, 7}}, Chord{3, 0.94, {-12, 0, 4, 7}}};
  constexpr std::array kStops{1.0, 2.0, 4.0};  // 8, 4 and 2 feet
  constexpr std::array kStopGains{1.0, 0.7, 0.5};
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("wind");
  synth::SampledInstrument organ(canvas.rate(), synth::Sampled::kChurchOrgan);
  const double beat = canvas.seconds() / 4;
  for (const Chord& chord : kChords) {
    for (const double note : chord.notes) {
      for (std::size_t stop = 0; stop < kStops.size(); ++stop) {
        const double hertz = kStops[stop] * synth::noteHertz(note) * (1 + 0.0012 * noise.next());
        canvas.add(
            0.04 + chord.beat * beat + 0.006 * noise.between(0, 1),
            organ.play({.hertz = hertz, .seconds = 0.94 * chord.beats * beat, .ring = 0.2, .force = 0.9}),
            kStopGains[stop]);
      }
    }
  }
  return synth::brightened(synth::inRoom(canvas, 1.6, 0.1), canvas.rate(), 3, canvas.ends());
}

/// Keeer: high over the hill, falling, hoarse.
Audio eagle(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const double rate = canvas.rate();
  const synth::Mouth beak = synth::muzzle(1750, 3300, 4400, 5600, 3, -1, -6);
  const auto screech = [&](double at, double seconds, double high, double gain) {
    synth::Cry cry{
        .seconds = seconds,
        .hertz = synth::glide(
            {{0, 0.72 * high}, {0.07, high}, {0.3 * seconds, 0.97 * high}, {seconds, 0.58 * high}})};
    cry.loudness = Contour{{0, 0}, {0.04, 1}, {0.5 * seconds, 0.8}, {seconds, 0}};
    cry.mouths = {{0, beak}};
    // Clear where it begins, hoarser and hoarser as it falls.
    cry.air = Contour{{0, 0.15}, {seconds, 0.5}};
    cry.growl = Contour{{0, 0.1}, {0.25 * seconds, 0.4}, {seconds, 0.6}};
    cry.tremble = 0.03;
    cry.tilt = -2;
    canvas.add(at, synth::cry(noise, rate, cry), gain);
  };
  screech(0.06, 1.15, 1800, 1);
  screech(1.62, 0.7, 1920, 0.8);
  return synth::withEchoes(canvas, 0.33, -20, 2);
}

constexpr std::array kRecipes{
    Recipe{"vorn1t23", "yodel yo-de-lay", Play::kLoop, kStraightCue, {}, &yodel},
    Recipe{"vorn1t24", "hand bells down the scale", Play::kLoop, kTurnCue, {}, &handBells},
    Recipe{"vorn1t25", "sleigh bells", Play::kLoop, kStraightCue, {}, &sleighBells},
    Recipe{"vorn1t26", "sheep: ewe and lamb", Play::kLoop, kTurnCue, {}, &sheep},
    Recipe{"vorn1t27", "woodpecker, two bursts", Play::kLoop, kStraightCue, {}, &woodpecker},
    Recipe{"vorn1t28", "chair-lift clank-clank", Play::kLoop, kTurnCue, {}, &chairLift},
    Recipe{"vorn1t29", "pan-pipe tune (original)", Play::kLoop, kStraightCue, {}, &panPipes},
    Recipe{"vorn1t30", "kazoo brr-brr", Play::kLoop, kTurnCue, {}, &brrKazoo},
    Recipe{"vorn1t31", "small church organ, four chords", Play::kLoop, kStraightCue, {}, &churchOrgan},
    Recipe{"vorn1t32", "eagle screech", Play::kLoop, kTurnCue, {}, &eagle},
};

}  // namespace

std::span<const Recipe> chardonCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
