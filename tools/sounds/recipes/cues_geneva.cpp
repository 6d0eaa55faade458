// The cues of Geneva on the lake: its fairground.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/instruments.h"
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

Signal cymbal(Noise& noise, double rate) {
  const Signal air = synth::highpass(synth::white(noise, synth::framesOf(rate, 0.3)), rate, 4200);
  Signal sound = synth::shaped(air, rate, synth::ringing(0.002, 0.35));
  synth::mixInto(sound, synth::strike(rate, 0.3, {{3170, 1, 0.2}, {4410, 1, 0.2}, {5830, 1, 0.15}}, 0.001),
                 0.3);
  synth::fadeOut(sound, synth::framesOf(rate, 0.05));
  return sound;
}

/// A polka on the organ of the carousel: bass on the beat, chord and cymbal off it.
Audio carousel(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 0.5, 12, 1.1},
                                                                {0.5, 0.5, 11},
                                                                {1, 0.5, 12},
                                                                {1.5, 0.5, 16},
                                                                {2, 0.5, 19, 1.1},
                                                                {2.5, 0.5, 16},
                                                                {3, 1, 12},
                                                                {4, 0.5, 14, 1.1},
                                                                {4.5, 0.5, 12},
                                                                {5, 0.5, 11},
                                                                {5.5, 0.5, 14},
                                                                {6, 0.5, 17, 1.1},
                                                                {6.5, 0.5, 14},
                                                                {7, 0.5, 11},
                                                                {7.5, 0.5, 7}});
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("wind");
  const double rate = canvas.rate();
  const auto stop = [&](double share, const std::vector<double>& partials) {
    return [&noise, rate, share, partials](double hertz, double seconds) {
      return synth::pipe(noise, rate,
                         {.seconds = share * seconds,
                          .hertz = hertz * (1 + 0.003 * noise.next()),
                          .partials = partials,
                          .chiff = 0.4,
                          .breath = 0.02,
                          .attack = 0.012,
                          .release = 0.025});
    };
  };
  synth::play(canvas, kMelody, 8, stop(0.6, synth::fairground()));
  constexpr std::array kBass{-24.0, -17.0, -24.0, -20.0, -17.0, -22.0, -17.0, -13.0};
  for (std::size_t beat = 0; beat < kBass.size(); ++beat) {
    const auto at = static_cast<double>(beat);
    const bool home = beat < 4;
    const std::array below = std::to_array<synth::Written>({{at, 0.4, kBass[beat], 0.5},
                                                            {at + 0.5, 0.3, home ? 0.0 : -1.0, 0.35},
                                                            {at + 0.5, 0.3, home ? 7.0 : 5.0, 0.35}});
    synth::play(canvas, below, 8, stop(1, synth::stoppedWood()));
    canvas.add(0.02 + (at + 0.5) * canvas.seconds() / 8, cymbal(noise, rate), 0.55);
    canvas.add(0.02 + at * canvas.seconds() / 8, synth::thump(rate, 160, 90, 0.14), 0.5);
  }
  return synth::inRoom(canvas, 0.35, 0.06);
}

/// The chain pulls the car up tooth by tooth; then down, and everybody screams.
Audio rollerCoaster(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("chain");
  const double rate = canvas.rate();
  constexpr int kTeeth = 22;
  for (int i = 0; i < kTeeth; ++i) {
    const double at = 0.03 + i / 13.0;
    const double pitch = (i % 2 == 0 ? 1150 : 1320) * noise.between(0.98, 1.02);
    canvas.add(at, synth::strike(rate, 0.14, synth::retuned(synth::steelPlate(pitch), 1, 0.5), 0.0004),
               noise.between(0.75, 1));
    canvas.add(at, synth::burst(noise, rate, 2300, 1, 0.0006, 0.03), 0.7);
    canvas.add(at, synth::thump(rate, 240, 150, 0.04), 0.4);
  }
  constexpr double kFall = 1.15;
  const synth::Mouth ah = synth::muzzle(1050, 1750, 3100, 4100, 3, 0, -6);
  const synth::Mouth eh = synth::muzzle(850, 2150, 3200, 4200, 3, 0, -6);
  struct Rider {
    double after, hertz;
    const synth::Mouth& mouth;
  };
  for (const Rider& rider : {Rider{0, 880, ah}, Rider{0.09, 1040, eh}, Rider{0.15, 640, ah}}) {
    const double seconds = kFall - rider.after;
    synth::Cry scream{.seconds = seconds,
                      .hertz = synth::glide({{0, 0.8 * rider.hertz},
                                             {0.12, 1.15 * rider.hertz},
                                             {0.5 * seconds, 1.05 * rider.hertz},
                                             {seconds, 0.6 * rider.hertz}})};
    scream.loudness = Contour{{0, 0}, {0.07, 1}, {0.6 * seconds, 0.8}, {seconds, 0}};
    scream.mouths = {{0, rider.mouth}};
    scream.air = 0.08;
    scream.tremble = 0.02;
    scream.tilt = -6;
    canvas.add(1.72 + rider.after, synth::cry(noise, rate, scream), 0.4);
  }
  const Signal rush = synth::white(noise, synth::framesOf(rate, kFall + 0.1));
  canvas.add(
      1.72,
      synth::shaped(synth::bandpass(rush, rate, synth::glide({{0, 700}, {0.5, 1900}, {kFall, 600}}), 0.8),
                    rate, Contour{{0, 0}, {0.45, 1}, {kFall + 0.1, 0}}),
      0.45);
  return synth::peaking(canvas.signal(), rate, 4500, 0.5, -6, canvas.ends());
}

/// A waltz on three reeds a note, none quite in tune, and a tambourine.
Audio musette(const Recording& recording) {
  constexpr std::array kMelody = std::to_array<synth::Written>({{0, 1, 7, 1.1},
                                                                {1, 0.5, 8},
                                                                {1.5, 0.5, 7},
                                                                {2, 1, 3},
                                                                {3, 1.5, 10, 1.1},
                                                                {4.5, 0.5, 12},
                                                                {5, 1, 8},
                                                                {6, 1, 5, 1.1},
                                                                {7, 0.5, 7},
                                                                {7.5, 0.5, 5},
                                                                {8, 1, 2},
                                                                {9, 2, 3, 1.1},
                                                                {11, 0.5, -2},
                                                                {11.5, 0.5, 2}});
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("bellows");
  const double rate = canvas.rate(), beat = canvas.seconds() / 12;
  // The middle reed beats with its neighbours at half of this.
  constexpr double kBeating = 14;  // hertz
  constexpr double kLead = 0.06;
  synth::SampledInstrument accordion(rate, synth::Sampled::kAccordion);
  const auto squeeze = [&](double share) {
    return [&accordion, share](double hertz, double seconds) {
      Signal sound;
      for (const double off : {-kBeating / 2, 0.0, kBeating / 2}) {
        Signal reed =
            accordion.play({.hertz = hertz + off, .seconds = share * seconds, .ring = 0.1, .force = 1});
        sound.resize(reed.size());
        synth::mixInto(sound, reed);
      }
      return synth::withPeak(std::move(sound), 3);
    };
  };
  synth::play(canvas, kMelody, 12, squeeze(0.7), kLead);
  struct Harmony {
    double bass, low, high;
  };
  constexpr std::array kHarmonies{Harmony{-9, -2, 3}, Harmony{-16, 0, 3}, Harmony{-14, 2, 5},
                                  Harmony{-9, -2, 3}};
  Canvas below = recording.canvas();
  for (int bar = 0; bar < 4; ++bar) {
    const Harmony& chord = kHarmonies[static_cast<std::size_t>(bar)];
    const std::array bars = std::to_array<synth::Written>({{3.0 * bar, 0.7, chord.bass},
                                                           {3.0 * bar + 1, 0.4, chord.low},
                                                           {3.0 * bar + 1, 0.4, chord.high},
                                                           {3.0 * bar + 2, 0.4, chord.low},
                                                           {3.0 * bar + 2, 0.4, chord.high}});
    synth::play(below, bars, 12, squeeze(0.9), kLead);
    for (const double at : {1.0, 2.0}) {
      const Signal jingle = synth::shaken(noise, rate, synth::Shaker::kTambourine, 0.5, 0.25);
      canvas.add(kLead + (3 * bar + at) * beat,
                 synth::withPeak(synth::shaped(jingle, rate, Contour{{0, 1}, {0.25, 0}}), 1), 1.5);
    }
  }
  canvas.add(below.signal(), 0.18);
  return synth::inRoom(canvas, 0.35, 0.06);
}

/// Corn against the lid of the pan: now thick, now thin.
Audio popcorn(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("kernels");
  const double rate = canvas.rate();
  const Signal oil = synth::bandpass(synth::white(noise, canvas.frames()), rate, 3600, 1, canvas.ends());
  canvas.add(oil, 0.02);
  constexpr int kPops = 38;
  for (const double at : synth::scattered(noise, kPops, canvas.seconds(), 0.012)) {
    const double hertz = noise.between(950, 1900), force = noise.between(0.45, 1);
    Signal pop = synth::burst(noise, rate, 1.6 * hertz, 1.2, 0.0004, 0.025);
    synth::mixInto(pop,
                   synth::sine(rate, 0.03, synth::glide({{0, 1.3 * hertz}, {0.03, 0.6 * hertz}}),
                               synth::ringing(0.0008, 0.03)),
                   0.8);
    canvas.add(at, pop, force);
    if (noise.chance(0.4))
      canvas.add(
          at + noise.between(0.03, 0.07),
          synth::strike(rate, 0.12, synth::retuned(synth::tinCan(2300), noise.between(0.95, 1.05), 0.5)),
          0.22 * force);
  }
  return synth::inRoom(canvas, 0.15, 0.08);
}

/// The mallet falls, the puck climbs, the bell rings: a winner.
Audio highStriker(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("mallet");
  const double rate = canvas.rate();
  constexpr double kRise = 0.5;
  canvas.add(0.03, synth::thump(rate, 190, 70, 0.22), 1.1);
  canvas.add(0.03, synth::strike(rate, 0.2, synth::woodBlock(780), 0.001), 1);
  canvas.add(0.03, synth::burst(noise, rate, 1700, 0.7, 0.001, 0.08), 0.9);
  const Contour height = synth::glide({{0, 420}, {kRise, 2300}});
  const Contour nearing{{0, 0}, {0.04, 0.5}, {kRise - 0.02, 1}, {kRise, 0}};
  canvas.add(0.1, synth::harmonics(rate, kRise, height, {1, 0.3, 0.15}, nearing), 0.3);
  const Signal air = synth::white(noise, synth::framesOf(rate, kRise));
  canvas.add(0.1, synth::shaped(synth::bandpass(air, rate, height, 4), rate, nearing), 0.9);
  canvas.add(0.1 + kRise, synth::strike(rate, 1.8, synth::retuned(synth::gong(2050), 1, 2), 0.0003), 0.9);
  return canvas.signal();
}

/// A hand in the air: the tone slides from place to place and trembles.
Audio theremin(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate(), seconds = canvas.seconds() - 0.1;
  const auto note = [](double semitones) { return synth::noteHertz(semitones); };
  const Contour melody = synth::glide({{0, 0.9 * note(7)},
                                       {0.12, note(7)},
                                       {0.5, note(7)},
                                       {0.72, note(19)},
                                       {1.1, note(19)},
                                       {1.3, note(15)},
                                       {1.55, note(15)},
                                       {1.78, note(24)},
                                       {2.2, note(24)},
                                       {2.45, note(14)},
                                       {seconds, note(7)}});
  const Contour loudness{{0, 0}, {0.15, 0.8}, {0.75, 1}, {2.3, 0.9}, {seconds, 0}};
  canvas.add(0.05, synth::harmonics(rate, seconds, synth::vibrato(melody, 6, 0.022),
                                    {1, 0.45, 0.35, 0.22, 0.14, 0.08}, loudness));
  return synth::inRoom(canvas, 0.9, 0.12);
}

constexpr std::array kRecipes{
    Recipe{"vorn1t59", "carousel organ polka, cymbal (original)", Play::kLoop, kStraightCue, {}, &carousel},
    Recipe{"vorn1t60", "roller-coaster chain, scream at the end", Play::kLoop, kTurnCue, {}, &rollerCoaster},
    Recipe{"vorn1t61", "musette accordion with tambourine (original)", Play::kLoop, kTurnCue, {}, &musette},
    Recipe{"vorn1t62", "popcorn popping", Play::kLoop, kStraightCue, {}, &popcorn},
    Recipe{"vorn1t63", "high striker: thump, rise, ding", Play::kLoop, kTurnCue, {}, &highStriker},
    Recipe{"vorn1t64", "theremin", Play::kLoop, kTurnCue, {}, &theremin},
};

}  // namespace

std::span<const Recipe> genevaCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
