// The cues of the Mentor road race: a drive through the town.

#include <algorithm>
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

namespace vorn::sounds {
namespace {

using synth::Canvas;
using synth::Contour;
using synth::Noise;

/// A type bar hits the roller and falls back.
Signal keyStroke(Noise& noise, double rate, double force) {
  Signal hit = synth::strike(
      rate, 0.12, synth::retuned(synth::steelPlate(1550 * noise.between(0.93, 1.07)), 1, 0.7), 0.0003);
  synth::mixInto(hit, synth::burst(noise, rate, 3600, 0.8, 0.001, 0.07), 0.9);
  synth::mixInto(hit, synth::thump(rate, 420, 250, 0.03), 0.3);
  return synth::scale(hit, force);
}

/// A line is typed, the bell warns, the carriage runs back.
Audio typewriter(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("fingers");
  const double rate = canvas.rate();
  constexpr std::array kWords{3, 5, 2, 4};
  double at = 0.04;
  for (const int letters : kWords) {
    for (int i = 0; i < letters; ++i) {
      canvas.add(at, keyStroke(noise, rate, noise.between(0.7, 1)));
      canvas.add(at + 0.052, synth::burst(noise, rate, 2100, 1.5, 0.0005, 0.02), 0.3);
      at += 0.135 + 0.018 * noise.next();
    }
    at += 0.04;
  }
  canvas.add(2.12, synth::strike(rate, 0.7, synth::gong(2350)), 0.35);
  // The ratchet under the carriage.
  constexpr int kTeeth = 14;
  for (int i = 0; i < kTeeth; ++i) {
    canvas.add(2.36 + 0.46 * std::pow(i / 14.0, 0.85),
               synth::burst(noise, rate, 2600 + 90 * i, 2, 0.0005, 0.03), 0.9);
  }
  canvas.add(2.84, synth::strike(rate, 0.15, synth::steelPlate(620), 0.0006), 0.9);
  return canvas.signal();
}

/// Somebody turns the crank: twice up, twice run down.
Audio handSiren(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  const auto turn = [&](double at, double seconds, double high) {
    const Contour pitch = synth::glide({{0, 420},
                                        {0.32 * seconds, 0.85 * high},
                                        {0.5 * seconds, high},
                                        {0.62 * seconds, 0.98 * high},
                                        {seconds, 430}});
    const Contour loudness{
        {0, 0}, {0.15 * seconds, 0.5}, {0.45 * seconds, 1}, {0.65 * seconds, 0.9}, {seconds, 0}};
    Signal rotor = synth::saw(rate, seconds, pitch, loudness);
    // The chopper has two rows of holes.
    synth::mixInto(rotor,
                   synth::saw(
                       rate, seconds, [&pitch](double now) { return 1.5 * pitch(now); }, loudness),
                   0.35);
    canvas.add(at, synth::lowpass(synth::peaking(rotor, rate, 2100, 0.8, 9), rate, 4800));
  };
  turn(0.03, 2.25, 1080);
  turn(0.03 + canvas.seconds() / 2, 2.2, 980);
  return synth::withEchoes(canvas, 0.23, -16, 2);
}

/// Four bars in three-four: bass and chords below, a turning melody above.
Audio barrelOrgan(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 1, 10, 1.1},
                                                                {1, 1, 14},
                                                                {2, 1, 12},
                                                                {3, 1.5, 15, 1.1},
                                                                {4.5, 0.5, 14},
                                                                {5, 1, 10},
                                                                {6, 0.5, 12, 1.1},
                                                                {6.5, 0.5, 10},
                                                                {7, 1, 8},
                                                                {8, 1, 5},
                                                                {9, 1, 7, 1.1},
                                                                {10, 0.5, 5},
                                                                {10.5, 0.5, 7},
                                                                {11, 0.9, 3}});
  constexpr std::array kBass =
      std::to_array<synth::Written>({{0, 0.8, -21}, {3, 0.8, -17}, {6, 0.8, -19}, {9, 0.8, -14}});
  constexpr std::array kChords = std::to_array<synth::Written>({{1, 0.5, -2},
                                                                {1, 0.5, 3},
                                                                {2, 0.5, -2},
                                                                {2, 0.5, 3},
                                                                {4, 0.5, 3},
                                                                {4, 0.5, 7},
                                                                {5, 0.5, 3},
                                                                {5, 0.5, 7},
                                                                {7, 0.5, 0},
                                                                {7, 0.5, 5},
                                                                {8, 0.5, 0},
                                                                {8, 0.5, 5},
                                                                {10, 0.5, -2},
                                                                {10, 0.5, 2},
                                                                {11, 0.5, -2},
                                                                {11, 0.5, 3}});
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("wind");
  const auto stop = [&](double gain, const std::vector<double>& partials) {
    return [&noise, &canvas, gain, partials](double hertz, double seconds) {
      Signal sound = synth::pipe(noise, canvas.rate(),
                                 {.seconds = 0.9 * seconds,
                                  .hertz = hertz * (1 + 0.002 * noise.next()),
                                  .partials = partials,
                                  .chiff = 0.35,
                                  .breath = 0.03,
                                  .attack = 0.018,
                                  .release = 0.03,
                                  .vibrato = 0.004,
                                  .vibratoHertz = 6.2});
      return synth::scale(sound, gain);
    };
  };
  synth::play(canvas, kMelody, 12, stop(1, synth::fairground()));
  synth::play(canvas, kChords, 12, stop(0.35, synth::stoppedWood()));
  synth::play(canvas, kBass, 12, stop(0.5, synth::stoppedWood()));
  return synth::inRoom(canvas, 0.3, 0.06);
}

/// The bell at the crossing: two cups, struck by turns.
Audio crossingBell(const Recording& recording) {
  Canvas canvas = recording.canvas();
  constexpr int kStrokes = 6;
  for (int i = 0; i < kStrokes; ++i) {
    const double hertz = i % 2 == 0 ? 1046 : 1245;
    canvas.add(0.04 + i * canvas.seconds() / kStrokes, synth::strike(canvas.rate(), 1.2, synth::gong(hertz)),
               i % 2 == 0 ? 1 : 0.9);
    canvas.add(0.04 + i * canvas.seconds() / kStrokes,
               synth::strike(canvas.rate(), 0.2, synth::steelPlate(1400)), 0.25);
  }
  return synth::brightened(canvas.signal(), canvas.rate(), 5, canvas.ends());
}

/// Tick, tock, and it strikes one.
Audio grandfatherClock(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("anchor");
  const double rate = canvas.rate();
  constexpr int kBeats = 6;
  for (int i = 0; i < kBeats; ++i) {
    const double at = 0.055 + i * canvas.seconds() / kBeats;
    const double hertz = i % 2 == 0 ? 1950 : 1420;
    canvas.add(at, synth::strike(rate, 0.25, synth::retuned(synth::woodBlock(hertz), 1, 3), 0.0005),
               i % 2 == 0 ? 1 : 0.9);
    canvas.add(at + 0.006, synth::burst(noise, rate, 3900, 1.5, 0.001, 0.06), 0.5);
    canvas.add(at, synth::strike(rate, 0.25, {{310, 1, 0.12}, {520, 0.6, 0.09}}, 0.002), 0.2);
  }
  canvas.add(0.3,
             synth::strike(rate, 3,
                           {{440, 0.15, 2.4},
                            {880, 0.6, 2.0},
                            {881.2, 0.3, 1.9},
                            {1850, 0.9, 1.6},
                            {2590, 0.9, 1.3},
                            {3560, 0.6, 0.7}},
                           0.0012),
             0.20);
  return synth::brightened(synth::inRoom(canvas, 0.8, 0.06), rate, 3, canvas.ends());
}

/// Ring-ring: a clapper between two gongs, twenty strokes a second.
Audio telephone(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("clapper");
  constexpr int kStrokes = 19;
  for (const double start : {0.04, 1.34}) {
    for (int i = 0; i < kStrokes; ++i) {
      const double hertz = i % 2 == 0 ? 1130 : 1340;
      canvas.add(start + i / 20.0,
                 synth::strike(canvas.rate(), 0.9, synth::retuned(synth::gong(hertz), 1, 0.6)),
                 noise.between(0.8, 1));
      canvas.add(start + i / 20.0, synth::burst(noise, canvas.rate(), 3300, 1, 0.0005, 0.015), 0.35);
    }
  }
  return synth::brightened(canvas.signal(), canvas.rate(), 6, canvas.ends());
}

/// A lullaby on the comb of a music box, its spring nearly run down.
Audio musicBox(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 1.5, 22},
                                                                {1.5, 0.5, 19},
                                                                {2, 1, 27, 1.05},
                                                                {3, 1, 26},
                                                                {4, 1.5, 24},
                                                                {5.5, 0.5, 22},
                                                                {6, 1, 20},
                                                                {7, 1, 24, 1.05},
                                                                {8, 1.5, 19},
                                                                {9.5, 0.5, 17},
                                                                {10, 2, 15}});
  constexpr std::array kBelow =
      std::to_array<synth::Written>({{0, 1, 10}, {3, 1, 10}, {4, 1, 8}, {7, 1, 12}, {8, 1, 10}, {10, 1, 3}});
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("pins");
  const auto tooth = [&](double hertz, double) {
    Signal sound = synth::strike(canvas.rate(), 1.6, synth::combTooth(hertz), 0.0003);
    // The pin lets go of the tooth.
    synth::mixInto(sound, synth::burst(noise, canvas.rate(), 4800, 1.5, 0.0005, 0.012), 0.25);
    return synth::scale(sound, noise.between(0.85, 1));
  };
  synth::play(canvas, kMelody, 12, tooth);
  Canvas below = recording.canvas();
  synth::play(below, kBelow, 12, tooth);
  canvas.add(below.signal(), 0.45);
  return synth::brightened(synth::inRoom(canvas, 0.5, 0.05), canvas.rate(), 6, canvas.ends());
}

/// Ka-ching: a key, the bell, the drawer, and coins on the counter.
Audio cashRegister(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("drawer");
  const double rate = canvas.rate();
  canvas.add(0.04, synth::strike(rate, 0.2, synth::steelPlate(900), 0.0004));
  canvas.add(0.04, synth::burst(noise, rate, 2600, 0.8, 0.0006, 0.06), 1);
  canvas.add(0.19, synth::strike(rate, 1.6, synth::retuned(synth::shimmeringBell(2700), 1, 2.2)), 0.8);
  const Signal air = synth::white(noise, synth::framesOf(rate, 0.55));
  canvas.add(0.42,
             synth::shaped(synth::bandpass(air, rate, synth::glide({{0, 1100}, {0.5, 2400}}), 1.5), rate,
                           Contour{{0, 0}, {0.1, 0.6}, {0.42, 1}, {0.5, 0}}),
             0.5);
  canvas.add(0.92, synth::strike(rate, 0.25, synth::steelPlate(480), 0.0006), 1);
  canvas.add(0.92, synth::burst(noise, rate, 1800, 0.7, 0.0006, 0.07), 0.9);
  // Coins are counted out; the last one spins.
  for (const double at : {1.45, 1.79, 2.2, 2.55}) {
    const double pitch = noise.between(2900, 3700);
    canvas.add(at, synth::strike(rate, 0.4, synth::coin(pitch)), 0.8);
    canvas.add(at + 0.07, synth::strike(rate, 0.3, synth::coin(1.03 * pitch)), 0.3);
  }
  double gap = 0.12;
  for (double at = 2.95; gap > 0.035; at += gap, gap *= 0.84) {
    canvas.add(at, synth::strike(rate, 0.3, synth::coin(3150)), 0.75 * std::sqrt(gap / 0.12));
  }
  return canvas.signal();
}

/// Snip-snip around the ear; the barber whistles to himself.
Audio barber(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 1.4, 15},
                                                                {1.5, 0.5, 17},
                                                                {2, 0.9, 19},
                                                                {3, 0.9, 22, 1.1},
                                                                {4, 1.4, 20},
                                                                {5.5, 0.5, 17},
                                                                {6, 1.8, 15}});
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("blades");
  const double rate = canvas.rate();
  synth::play(canvas, kMelody, 8, [&](double hertz, double seconds) {
    return synth::pipe(noise, rate,
                       {.seconds = 0.96 * seconds,
                        .hertz = synth::glide({{0, 0.93 * hertz}, {0.06, hertz}, {seconds, hertz}}),
                        .partials = {1, 0.06},
                        .chiff = 0.05,
                        .breath = 0.05,
                        .attack = 0.04,
                        .release = 0.06,
                        .vibrato = 0.008,
                        .vibratoHertz = 5.5});
  });
  Canvas all = recording.canvas();
  all.add(canvas.signal(), 0.4);
  constexpr std::array kSnips{0.06, 0.36, 0.5, 1.04, 1.34, 1.48, 2.02, 2.32, 2.46, 2.76};
  for (const double at : kSnips) {
    // Two edges slide, then meet.
    const Signal air = synth::white(noise, synth::framesOf(rate, 0.07));
    all.add(at,
            synth::shaped(synth::bandpass(air, rate, synth::glide({{0, 3600}, {0.06, 6500}}), 2), rate,
                          Contour{{0, 0}, {0.05, 1}, {0.065, 0}}),
            0.9);
    all.add(at + 0.055,
            synth::strike(rate, 0.15, {{3350, 0.9, 0.06}, {4700, 1, 0.08}, {6900, 0.7, 0.05}}, 0.0002), 0.8);
  }
  return all.signal();
}

/// All ten fall, and the next ball comes down the lane.
Audio bowling(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("lane");
  const double rate = canvas.rate();
  constexpr double kThrown = 1.0, kRoll = 1.9;
  constexpr int kPins = 10;
  for (int i = 0; i < kPins; ++i) {
    const double at = 0.03 + (i == 0 ? 0 : 0.012 + 0.75 * std::pow(noise.between(0, 1), 1.6));
    const double gain = i == 0 ? 1 : noise.between(0.5, 0.95);
    canvas.add(at,
               synth::strike(rate, 0.25, synth::retuned(synth::woodBlock(noise.between(1050, 1600)), 1, 2.4),
                             0.0003),
               gain);
    canvas.add(at, synth::burst(noise, rate, 3000, 0.7, 0.0005, 0.12), 1.9 * gain);
  }
  canvas.add(kThrown, synth::thump(rate, 130, 70, 0.18), 0.8);
  canvas.add(kThrown, synth::strike(rate, 0.15, synth::woodBlock(620), 0.001), 0.6);
  const Signal air = synth::white(noise, synth::framesOf(rate, kRoll));
  const Contour nearer{{0, 0.25}, {0.2, 0.35}, {kRoll - 0.02, 1}, {kRoll, 0}};
  const auto turns = [](double now) { return 4.2 * now + 0.45 * now * now; };
  const Contour turning = [&turns](double now) { return 0.75 + 0.25 * std::sin(synth::kTwoPi * turns(now)); };
  Signal roll = synth::bandpass(air, rate, synth::glide({{0, 260}, {kRoll, 480}}), 1.2);
  synth::mixInto(roll, synth::bandpass(air, rate, synth::glide({{0, 1000}, {kRoll, 2100}}), 2.5), 0.8);
  canvas.add(kThrown + 0.04, synth::shaped(synth::shaped(std::move(roll), rate, nearer), rate, turning), 0.4);
  // The finger holes click on the boards, once a turn.
  for (double now = 0, turn = 0; now < kRoll; now += 0.005) {
    if (turns(now) < turn) continue;
    ++turn;
    canvas.add(kThrown + 0.04 + now, synth::strike(rate, 0.08, synth::woodBlock(1900), 0.0003),
               0.5 * nearer(now));
  }
  return synth::inRoom(canvas, 0.55, 0.1);
}

/// Short, short, long: the pea beats in the chamber.
Audio policeWhistle(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("pea");
  const double rate = canvas.rate();
  const auto blow = [&](double at, double seconds) {
    const Contour pea = [](double now) { return 0.5 + 0.5 * std::sin(synth::kTwoPi * 31 * now); };
    const Contour pitch = [=](double now) {
      return (2320 + 560 * pea(now)) * (1 - 0.16 * std::exp(-now / 0.02)) *
             (now > seconds - 0.05 ? 1 - 1.6 * (now - seconds + 0.05) : 1);
    };
    const Contour loudness = [=](double now) {
      return synth::swell(0.02, 0.05, seconds)(now) * (0.45 + 0.55 * pea(now));
    };
    Signal sound = synth::harmonics(rate, seconds, pitch, {1, 0.22, 0.1}, loudness);
    const Signal air = synth::white(noise, static_cast<int>(sound.size()));
    synth::mixInto(sound, synth::shaped(synth::bandpass(air, rate, 2600, 3), rate, loudness), 0.35);
    canvas.add(at, sound);
  };
  blow(0.04, 0.3);
  blow(0.5, 0.3);
  blow(0.98, 0.95);
  blow(2.26, 0.34);
  return synth::withEchoes(canvas, 0.16, -22, 2);
}

Audio doorBell(const Recording& recording) {
  Canvas canvas = recording.canvas();
  synth::SampledInstrument chimes(canvas.rate(), synth::Sampled::kTubularBells);
  const auto bar = [&](double at, double hertz) {
    const std::vector<synth::Mode> tube{{hertz, 1, 0.9},
                                        {2 * hertz, 0.35, 0.5},
                                        {2.76 * hertz, 0.9, 0.5},
                                        {4.1 * hertz, 0.4, 0.25},
                                        {5.4 * hertz, 0.5, 0.2}};
    canvas.add(at, synth::strike(canvas.rate(), 0.9, tube, 0.0006));
    canvas.add(at, synth::strike(canvas.rate(), 0.08, synth::woodBlock(1400)), 0.4);
    canvas.add(at, chimes.play({.hertz = hertz, .seconds = 0.7, .ring = 0.2, .force = 1}), 3);
  };
  bar(0.03, 659);
  bar(0.03 + 0.46 * canvas.seconds(), 523);
  return synth::brightened(canvas.signal(), canvas.rate(), 11, canvas.ends());
}

/// Three barks, the last one a little indignant.
Audio terrier(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const synth::Mouth shut = synth::muzzle(560, 1300, 2700, 3700, -4, -10, -16);
  const synth::Mouth open = synth::muzzle(1050, 1750, 2900, 4000, 2, 0, -8);
  const auto bark = [&](double at, double seconds, double hertz, double gain) {
    synth::Cry woof{
        .seconds = seconds,
        .hertz = synth::glide({{0, 0.6 * hertz}, {0.25 * seconds, hertz}, {seconds, 0.55 * hertz}})};
    woof.loudness = Contour{{0, 0}, {0.014, 1}, {0.5 * seconds, 0.8}, {seconds, 0}};
    woof.mouths = {{0, shut}, {0.3 * seconds, open}, {seconds, shut}};
    woof.air = Contour{{0, 0.35}, {0.03, 0.12}, {seconds, 0.25}};
    woof.growl = 0.3;
    woof.tremble = 0.05;
    woof.tilt = -4;
    canvas.add(at, synth::cry(noise, canvas.rate(), woof), gain);
  };
  bark(0.03, 0.16, 620, 1);
  bark(0.30, 0.15, 590, 0.9);
  bark(0.57, 0.2, 720, 1);
  return synth::inRoom(canvas, 0.25, 0.06);
}

constexpr std::array kRecipes{
    Recipe{"vorn1t40", "typewriter with carriage bell", Play::kLoop, kStraightCue, {}, &typewriter},
    Recipe{"vorn1t41", "hand-cranked siren", Play::kLoop, kTurnCue, {}, &handSiren},
    Recipe{"vorn1t42", "barrel-organ waltz (original)", Play::kLoop, kStraightCue, {}, &barrelOrgan},
    Recipe{"vorn1t43", "level-crossing bell", Play::kLoop, kTurnCue, {}, &crossingBell},
    Recipe{"vorn1t44",
           "grandfather clock tick-tock, one chime",
           Play::kLoop,
           kStraightCue,
           {},
           &grandfatherClock},
    Recipe{"vorn1t45", "telephone, two rings", Play::kLoop, kTurnCue, {}, &telephone},
    Recipe{"vorn1t46", "music box (original lullaby)", Play::kLoop, kStraightCue, {}, &musicBox},
    Recipe{"vorn1t47", "cash register ka-ching and coins", Play::kLoop, kTurnCue, {}, &cashRegister},
    Recipe{"vorn1t48", "barber: scissors and whistling", Play::kLoop, kStraightCue, {}, &barber},
    Recipe{"vorn1t49", "bowling: roll and strike", Play::kLoop, kStraightCue, {}, &bowling},
    Recipe{"vorn1t50", "police whistle", Play::kLoop, kTurnCue, {}, &policeWhistle},
    Recipe{"vorn1t51", "door bell ding-dong", Play::kLoop, kTurnCue, {}, &doorBell},
    Recipe{"vorn1t52", "terrier bark", Play::kLoop, kTurnCue, {}, &terrier},
};

}  // namespace

std::span<const Recipe> mentorCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
