// The cues of the Erie lake front: harbour, beach and what floats between.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/metals.h"
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

Signal gullCry(Noise& noise, double rate, double hertz, double seconds, double fall) {
  const synth::Mouth beak = synth::muzzle(1350, 2500, 3500, 4500, 2, 0, -6);
  return synth::cry(noise, rate,
                    {.seconds = seconds,
                     .hertz = synth::glide({{0, 0.7 * hertz},
                                            {0.22 * seconds, hertz},
                                            {0.45 * seconds, 0.97 * hertz},
                                            {seconds, fall * hertz}}),
                     .loudness = Contour{{0, 0}, {0.025, 1}, {0.6 * seconds, 0.85}, {seconds, 0}},
                     .mouths = {{0, beak}},
                     .air = 0.06,
                     .growl = 0.25,
                     .tremble = 0.012,
                     .tilt = -6});
}

/// One gull calls out, the other laughs at it.
Audio gulls(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throats");
  const double rate = canvas.rate();
  canvas.add(0.04, gullCry(noise, rate, 1480, 0.48, 0.68));
  canvas.add(0.62, gullCry(noise, rate, 1560, 0.42, 0.66), 0.9);
  constexpr int kLaughs = 7;
  for (int i = 0; i < kLaughs; ++i) {
    canvas.add(1.16 + 0.205 * i, gullCry(noise, rate, 1280 - 28 * i, 0.155, 0.8), 0.85 - 0.05 * i);
  }
  return synth::withEchoes(canvas, 0.23, -24, 1);
}

/// Two bars of a hornpipe, long and short by turns, on a squeeze box.
Audio hornpipe(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 0.66, 15, 1.1},
                                                                {0.66, 0.34, 13},
                                                                {1, 0.66, 12, 1.05},
                                                                {1.66, 0.34, 15},
                                                                {2, 0.66, 20, 1.1},
                                                                {2.66, 0.34, 19},
                                                                {3, 0.66, 17},
                                                                {3.66, 0.34, 15},
                                                                {4, 0.66, 17, 1.1},
                                                                {4.66, 0.34, 13},
                                                                {5, 0.66, 10, 1.05},
                                                                {5.66, 0.34, 13},
                                                                {6, 0.66, 12, 1.1},
                                                                {6.66, 0.34, 10},
                                                                {7, 0.9, 8, 1.1}});
  constexpr std::array kChords = std::to_array<synth::Written>({{0, 0.5, -4},
                                                                {1, 0.4, 8},
                                                                {2, 0.5, -4},
                                                                {3, 0.4, 8},
                                                                {4, 0.5, 1},
                                                                {5, 0.4, 5},
                                                                {6, 0.5, 3},
                                                                {7, 0.4, 0}});
  Canvas canvas = recording.canvas();
  synth::SampledInstrument concertina(canvas.rate(), synth::Sampled::kTangoAccordion);
  const auto squeeze = [&concertina](double hertz, double seconds) {
    return concertina.play({.hertz = hertz, .seconds = 0.36 * seconds, .ring = 0.05, .force = 1});
  };
  synth::play(canvas, kMelody, 8, squeeze);
  Canvas below = recording.canvas();
  synth::play(below, kChords, 8, squeeze);
  canvas.add(below.signal(), 0.25);
  return synth::peaking(synth::inRoom(canvas, 0.3, 0.04), canvas.rate(), 2200, 0.6, -6, canvas.ends());
}

/// The swell rocks a bell: it strikes when it likes; water laps at the hull.
Audio bellBuoy(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("swell");
  const double rate = canvas.rate();
  struct Stroke {
    double at, gain, pitch;
  };
  for (const Stroke& stroke : {Stroke{0.05, 1, 1}, Stroke{1.17, 0.6, 1.004}, Stroke{1.62, 0.85, 0.998}}) {
    canvas.add(stroke.at,
               synth::strike(rate, 2.2,
                             {{905 * stroke.pitch, 0.7, 2.4},
                              {1130 * stroke.pitch, 0.8, 1.9},
                              {1486 * stroke.pitch, 0.5, 1.4},
                              {1911 * stroke.pitch, 1, 1.5},
                              {1919 * stroke.pitch, 0.5, 1.5},
                              {2770 * stroke.pitch, 0.8, 0.8},
                              {3790 * stroke.pitch, 0.7, 0.6},
                              {5010 * stroke.pitch, 0.5, 0.4}},
                             0.0006),
               stroke.gain);
  }
  // Lapping comes and goes once in the loop.
  const Signal water = synth::bandpass(synth::white(noise, canvas.frames()), rate, 1400, 0.8, canvas.ends());
  const double turn = synth::kTwoPi / canvas.seconds();
  canvas.add(
      synth::shaped(water, rate, [turn](double now) { return 0.5 - 0.4 * std::cos(turn * now + 0.8); }),
      0.12);
  for (const double at : synth::scattered(noise, 9, canvas.seconds(), 0.1)) {
    canvas.add(at, synth::bubble(rate, noise.between(500, 1300), 4), 0.25 * noise.between(0.5, 1));
  }
  return synth::brightened(synth::inRoom(canvas, 0.6, 0.05), rate, 4, canvas.ends());
}

/// Children jump in one after the other, and squeal with delight.
Audio swimmers(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("water");
  const double rate = canvas.rate();
  struct Jump {
    double at, size, gain;
  };
  for (const Jump& jump : {Jump{0.05, 1, 1}, Jump{0.72, 0.35, 0.6}, Jump{1.05, 0.5, 0.7},
                           Jump{1.78, 0.9, 0.95}, Jump{2.5, 0.3, 0.55}, Jump{2.72, 0.4, 0.6}}) {
    canvas.add(jump.at, synth::splash(noise, rate, jump.size), jump.gain);
  }
  const synth::Mouth child = synth::muzzle(1050, 2000, 3500, 4600, 1, -5, -11);
  const synth::Mouth wide = synth::muzzle(780, 2700, 3700, 4800, 2, -3, -9);
  canvas.add(0.5, synth::laugh(noise, rate, {5, 1 / 5.8, 620, 500, child}), 0.28);
  canvas.add(2.0, synth::laugh(noise, rate, {4, 1 / 6.4, 760, 640, wide}), 0.24);
  synth::Cry whee{.seconds = 0.42, .hertz = synth::glide({{0, 680}, {0.25, 1180}, {0.42, 900}})};
  whee.loudness = Contour{{0, 0}, {0.06, 1}, {0.3, 0.8}, {0.42, 0}};
  whee.mouths = {{0, wide}};
  whee.air = 0.06;
  whee.tilt = -6;
  canvas.add(1.38, synth::cry(noise, rate, whee), 0.4);
  return synth::inRoom(canvas, 0.35, 0.06);
}

/// A steamer feels its way: two blasts, the second a fourth higher.
Audio fogHorn(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("steam");
  const double rate = canvas.rate();
  const auto blast = [&](double at, double seconds, double hertz) {
    const Contour pitch =
        synth::glide({{0, 0.93 * hertz}, {0.14, hertz}, {seconds - 0.2, hertz}, {seconds, 0.95 * hertz}});
    Signal horn = synth::saw(rate, seconds, pitch, synth::swell(0.1, 0.22, seconds));
    synth::mixInto(horn,
                   synth::saw(
                       rate, seconds, [&pitch](double now) { return 1.006 * pitch(now); },
                       synth::swell(0.12, 0.22, seconds)),
                   0.7);
    horn = synth::peaking(synth::highpass(horn, rate, 380), rate, 1850, 0.7, 22);
    canvas.add(at, synth::lowpass(synth::steepLowpass(horn, rate, 5200), rate, 3800));
    // The valve lets steam out before the horn speaks, and shuts hard.
    const Signal steam = synth::white(noise, synth::framesOf(rate, seconds));
    canvas.add(at,
               synth::shaped(synth::bandpass(steam, rate, 4300, 1), rate,
                             Contour{{0, 0}, {0.02, 1}, {0.22, 0.25}, {seconds - 0.2, 0.15}, {seconds, 0}}),
               7);
  };
  blast(0.05, 1.25, 147);
  blast(1.62, 1.05, 196);
  return synth::inRoom(canvas, 1.4, 0.12);
}

/// Three pings, each with its echoes from the bottom.
Audio sonar(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  for (int i = 0; i < 3; ++i) {
    const double hertz = i == 2 ? 1690 : 1400;
    const Signal ping = synth::harmonics(rate, 0.95, synth::glide({{0, 1.006 * hertz}, {0.4, hertz}}),
                                         {1, 0.4, 0.3, 0.15}, synth::ringing(0.004, 1.0));
    canvas.add(0.05 + i * canvas.seconds() / 3, ping);
    // The transducer snaps before it rings.
    canvas.add(0.05 + i * canvas.seconds() / 3,
               synth::strike(rate, 0.12, {{3 * hertz, 1, 0.1}, {4.2 * hertz, 0.5, 0.06}}, 0.0003), 0.35);
  }
  return synth::withEchoes(canvas, 0.27, -10, 3);
}

/// Halyards beat against a mast while a wave runs up the beach.
Audio halyards(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("wave");
  const double rate = canvas.rate();
  const Signal water = synth::white(noise, canvas.frames());
  const double turn = synth::kTwoPi / canvas.seconds();
  const auto swelling = [turn](double now) {
    return std::pow(0.5 - 0.5 * std::cos(turn * (now - 0.1)), 1.6);
  };
  canvas.add(synth::shaped(synth::bandpass(water, rate, 650, 0.7, canvas.ends()), rate, swelling), 1.0);
  canvas.add(synth::shaped(synth::highpass(water, rate, 2500, 0.7, canvas.ends()), rate,
                           [&](double now) { return swelling(now - 0.25); }),
             0.14);
  constexpr std::array kBeats{0.05, 0.21, 0.42, 0.58, 0.84, 1.00, 1.13, 1.40, 1.56, 1.74};
  for (std::size_t i = 0; i < kBeats.size(); ++i) {
    const double pitch = (i % 3 == 2 ? 2300 : 2650) * noise.between(0.985, 1.015);
    canvas.add(
        kBeats[i],
        synth::strike(
            rate, 0.35,
            {{pitch, 0.7, 0.22}, {1.57 * pitch, 1, 0.2}, {2.2 * pitch, 0.8, 0.14}, {2.83 * pitch, 0.5, 0.1}},
            0.0003),
        noise.between(0.5, 1));
  }
  return canvas.signal();
}

constexpr std::array kRecipes{
    Recipe{"vorn1t33", "gulls laughing", Play::kLoop, kStraightCue, {}, &gulls},
    Recipe{"vorn1t34", "concertina hornpipe (original)", Play::kLoop, kTurnCue, {}, &hornpipe},
    Recipe{"vorn1t35", "bell buoy with lapping water", Play::kLoop, kTurnCue, {}, &bellBuoy},
    Recipe{"vorn1t36", "swimmers: splashes and laughter", Play::kLoop, kStraightCue, {}, &swimmers},
    Recipe{"vorn1t37", "ship's fog horn, two tones", Play::kLoop, kTurnCue, {}, &fogHorn},
    Recipe{"vorn1t38", "sonar ping with echoes", Play::kLoop, kTurnCue, {}, &sonar},
    Recipe{"vorn1t39", "waves and clinking halyards", Play::kLoop, kStraightCue, {}, &halyards},
};

}  // namespace

std::span<const Recipe> erieCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
