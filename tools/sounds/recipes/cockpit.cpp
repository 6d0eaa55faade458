// What the driver hears of the own car and of the track's signals.

#include <array>
#include <cmath>

#include "groups.h"
#include "synth/filter.h"
#include "synth/materials.h"
#include "synth/tones.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

/// Wheels break loose: a chirp and a howl of rubber over a bark of exhaust.
Audio launch(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate(), seconds = canvas.seconds();
  Noise noise = recording.noise("rubber");
  const Signal grit = white(noise, canvas.frames());
  Signal squeal = bandpass(grit, rate, glide({{0, 900}, {seconds, 700}}), 9);
  mixInto(squeal, bandpass(grit, rate, glide({{0, 1500}, {seconds, 1150}}), 11), 0.9);
  mixInto(squeal, bandpass(grit, rate, glide({{0, 2600}, {seconds, 2100}}), 6), 0.35);
  // Rubber sticks and slips about sixty times a second.
  const Contour stickSlip = [](double now) { return 0.65 + 0.35 * std::sin(kTwoPi * 60 * now); };
  squeal = shaped(shaped(std::move(squeal), rate, stickSlip), rate,
                  Contour{{0, 0}, {0.012, 1}, {0.3, 0.85}, {seconds, 0}});
  canvas.add(withPeak(std::move(squeal), 1));
  canvas.add(0, thump(rate, 130, 75, 0.22), 0.7);
  canvas.add(0, burst(noise, rate, 380, 0.8, 0.004, 0.25), 0.6);
  return canvas.signal();
}

/// Three trumpets of a truck's air horn.
Audio airHorn(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate(), seconds = canvas.seconds();
  const Contour blow{{0, 0}, {0.012, 1}, {seconds, 0.95}};
  Noise noise = recording.noise("reeds");
  for (const double hertz : {311.0, 370.0, 466.0}) {
    for (const double detune : {0.9985, 1.0017}) {
      const double note = hertz * detune;
      // Not all in step: reeds that start together would sweep like a comb.
      const double early = noise.between(0, 1 / note);
      canvas.add(-early, saw(rate, seconds + early, glide({{0, 0.965 * note}, {0.05, note}}), blow));
    }
  }
  Signal sound = highpass(canvas.signal(), rate, 300);
  sound = peaking(sound, rate, 1300, 0.8, 5);
  sound = withPeak(lowpass(sound, rate, 5000), 1);
  saturate(sound, 2.5);
  return sound;
}

/// A whistle with a pea in it.
Signal peaWhistle(double rate, double seconds) {
  const Contour hertz = [](double now) { return 2400 * (1 + 0.035 * std::sin(kTwoPi * 28 * now)); };
  const Contour blow = [seconds](double now) {
    return swell(0.012, 0.03, seconds)(now) * (0.72 + 0.28 * std::sin(kTwoPi * 28 * now + 1));
  };
  return harmonics(rate, seconds, hertz, {1, 0.18, 0.06}, blow);
}

/// A sour tone through an opening and closing mouth.
Signal wah(double rate, double seconds, double fromHertz, double toHertz) {
  const Signal tone =
      saw(rate, seconds, glide({{0, fromHertz}, {seconds, toHertz}}), swell(0.01, 0.04, seconds));
  const Contour mouth = glide({{0, 500}, {0.4 * seconds, 1700}, {seconds, 450}});
  Signal sound = bandpass(tone, rate, mouth, 3);
  mixInto(sound, lowpass(tone, rate, 900), 0.4);
  return sound;
}

Audio jumpedStart(const Recording& recording) {
  Canvas canvas = recording.canvas();
  canvas.add(0, peaWhistle(canvas.rate(), 0.3), 0.8);
  canvas.add(0.30, wah(canvas.rate(), 0.2, 226, 212), 1.5);
  canvas.add(0.51, wah(canvas.rate(), 0.24, 186, 166), 1.5);
  return canvas.signal();
}

constexpr double kLead = 0.001;  // seconds in front of a stroke, so that its onset is whole

Audio leftBell(const Recording& recording) {
  Canvas canvas = recording.canvas();
  canvas.add(kLead, strike(canvas.rate(), canvas.seconds(), retuned(smallBell(), 1047, 0.4)));
  return canvas.signal();
}

Audio wrench(const Recording& recording) {
  Canvas canvas = recording.canvas();
  canvas.add(kLead, strike(canvas.rate(), canvas.seconds(), retuned(tool(), 2100, 0.42), 0.0002));
  return canvas.signal();
}

/// One trumpet of the car's horn.
Signal hornNote(double rate, double seconds, double hertz) {
  Signal note(static_cast<std::size_t>(framesOf(rate, seconds)));
  for (const double detune : {0.997, 1.003}) {
    mixInto(note, saw(rate, seconds, glide({{0, 0.98 * hertz * detune}, {0.03, hertz * detune}}),
                      swell(0.008, 0.03, seconds)));
  }
  Signal sound = bandpass(note, rate, 800, 1.5);
  mixInto(sound, bandpass(note, rate, 1600, 2), 0.9);
  mixInto(sound, bandpass(note, rate, 2600, 2.5), 0.7);
  mixInto(sound, note, 0.15);
  return sound;
}

/// Six quick notes and a chord, which comes when a listener to the first second
/// and a half has heard a tune already.
Audio horn(const Recording& recording) {
  struct HornNote {
    double start, seconds, semitones;  // semitones above A4
  };
  constexpr std::array kTune{HornNote{0, 0.16, -2},   HornNote{0.2, 0.16, 2},  HornNote{0.4, 0.28, 0},
                             HornNote{0.75, 0.16, 5}, HornNote{0.95, 0.16, 2}, HornNote{1.15, 0.26, 7},
                             HornNote{1.45, 1.1, -2}, HornNote{1.45, 1.1, 2},  HornNote{1.45, 1.1, 10}};
  Canvas canvas = recording.canvas();
  for (const HornNote& note : kTune) {
    canvas.add(note.start, hornNote(canvas.rate(), note.seconds, noteHertz(note.semitones)));
  }
  return canvas.signal();
}

/// The brake tape: the game plays it from byte 503.8 x mph, one tick at a time.
constexpr double kBytesAMph = 503.8;
constexpr double kTopMph = 228;
constexpr double kBytesASecond = 2 * 22050;

/// Tyres and discs under the brake at the speed given along the tape.
Signal braking(const Recording& recording, const Contour& mph) {
  const double rate = recording.rate(), seconds = recording.seconds();
  Noise noise = recording.noise("brake");
  const auto rising = [&mph](double low, double high) {
    return Contour([&mph, low, high](double now) { return low * std::pow(high / low, mph(now) / kTopMph); });
  };
  const auto fadingIn = [&mph](double from, double gain) {
    return Contour([&mph, from, gain](double now) {
      return gain * std::max(0.0, (mph(now) - from) / (kTopMph - from));
    });
  };
  const auto howling = [&](const Contour& hertz, double spread) {
    return howl(noise, rate, seconds, hertz, spread, Ends::kMeeting);
  };
  // The tyres, the discs' squeal above sixty, and grit in both.
  Signal sound = howling(rising(500, 1900), 0.16);
  mixInto(sound, howling(rising(820, 2700), 0.12), 0.55);
  // Their pitch strays: what stood still would whistle through every stop.
  const auto straying = [&](std::string_view purpose, double hertz) {
    Noise chance = recording.noise(purpose);
    return Contour([course = wander(chance, recording.frames(), 8, 30), rate, hertz](double now) {
      return hertz * (1 + 0.02 * course[static_cast<std::size_t>(std::lround(now * rate)) % course.size()]);
    });
  };
  mixInto(sound, shaped(howling(straying("low disc", 1900), 0.008), rate, fadingIn(60, 0.26)));
  mixInto(sound, shaped(howling(straying("high disc", 3100), 0.006), rate, fadingIn(60, 0.3)));
  const Signal grit = white(noise, recording.frames());
  mixInto(sound, bandpass(grit, rate, rising(560, 2000), 0.9, Ends::kMeeting), 0.9);
  // A judder that smooths out as the wheels turn faster.
  return shaped(std::move(sound), rate, [&mph](double now) {
    return 1 + 0.4 * std::exp(-mph(now) / 50) * std::sin(kTwoPi * 30 * now);
  });
}

Audio brake(const Recording& recording) {
  const auto byMph = [](double now) { return std::min(kTopMph, now * kBytesASecond / kBytesAMph); };
  const auto level = [&](Signal sound, const Contour& mph) {
    return leveled(std::move(sound), static_cast<int>(recording.rate()),
                   [&mph](double now) { return -20.7 + 1.4 * mph(now) / kTopMph; });
  };
  const Signal tape = level(braking(recording, byMph), byMph);
  const Signal top = level(braking(recording, kTopMph), kTopMph);
  // What is played from near the end runs over it and on from the start: there
  // the top speed goes on, and gives way to the low speeds before those are
  // ever played.
  const double end = recording.seconds();
  const Contour own{{500 / kBytesASecond, 0}, {2000 / kBytesASecond, 1}, {end - 0.008, 1}, {end, 0}};
  Signal sound(tape.size());
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double share = kPi / 2 * own(static_cast<double>(i) / recording.rate());
    sound[i] = std::sin(share) * tape[i] + std::cos(share) * top[i];
  }
  return sound;
}

/// A frequency that wanders around the loop by a few percent.
Contour drifting(const Recording& recording, std::string_view purpose, double hertz) {
  Noise noise = recording.noise(purpose);
  return [course = wander(noise, recording.frames(), 1, 4), rate = recording.rate(), hertz](double now) {
    return hertz * (1 + 0.05 * course[static_cast<std::size_t>(std::lround(now * rate)) % course.size()]);
  };
}

Audio tyres(const Recording& recording) {
  const double rate = recording.rate();
  Noise noise = recording.noise("grit");
  const Signal grit = white(noise, recording.frames());
  Signal sound = bandpass(grit, rate, 1000, 0.8, Ends::kMeeting);
  mixInto(sound, bandpass(grit, rate, drifting(recording, "low", 780), 30, Ends::kMeeting), 4.5);
  mixInto(sound, bandpass(grit, rate, drifting(recording, "middle", 1120), 34, Ends::kMeeting), 4.5);
  mixInto(sound, bandpass(grit, rate, drifting(recording, "high", 1650), 36, Ends::kMeeting), 3);
  sound = steepHighpass(sound, rate, 450, Ends::kMeeting);
  // The cues' band begins where it ends.
  return steepLowpass(sound, rate, 2000, Ends::kMeeting);
}

/// Metal dragged along concrete: one panel that catches, is let go and hit again.
Audio scrape(const Recording& recording) {
  constexpr double kHits = 50, kSlips = 45;  // a second
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate(), seconds = canvas.seconds();
  Noise noise = recording.noise("grit");
  const int impacts = static_cast<int>(std::lround(kHits * seconds));
  for (int i = 0; i < impacts; ++i) {
    const double moment = seconds * (i + 0.5 + 0.45 * noise.next()) / impacts;
    // The same panel each time: only how hard it is hit, and how hard the stone.
    canvas.add(moment, strike(rate, 0.2, retuned(steelPanel(), 330), noise.between(0.0002, 0.0006)),
               noise.between(0.4, 1));
  }
  Signal sound = highpass(canvas.signal(), rate, 300, 0.7, Ends::kMeeting);
  const double slipHertz = std::round(kSlips * seconds) / seconds;
  const Contour sticking = [slipHertz](double now) {
    const double slips = slipHertz * now + 0.5, share = slips - std::floor(slips);
    return 0.25 + 1.5 * share * share;  // it holds longer and longer, then slips
  };
  const Signal grit = white(noise, canvas.frames());
  Signal sparks = bandpass(grit, rate, 4200, 0.8, Ends::kMeeting);
  mixInto(sparks, bandpass(grit, rate, 1500, 1.5, Ends::kMeeting), 0.7);
  mixInto(sound, shaped(std::move(sparks), rate, sticking), 0.35 * peakOf(sound));
  return sound;
}

Audio expansionJoint(const Recording& recording) {
  constexpr double kAxles = 0.062;  // seconds between the axles
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("slap");
  for (const auto& [moment, hertz, force] : {std::array{0.0, 140.0, 1.0}, std::array{kAxles, 100.0, 0.9}}) {
    canvas.add(moment, thump(canvas.rate(), 1.5 * hertz, hertz, 0.08), 0.6 * force);
    canvas.add(moment, burst(noise, canvas.rate(), 1200, 1.2, 0.0005, 0.035), 3 * force);
    canvas.add(moment, strike(canvas.rate(), 0.05, retuned(wood(), 430, 0.5)), 0.7 * force);
  }
  return canvas.signal();
}

/// Bits of rubber under the floor, unevenly spaced; played at 8 to 22 kHz.
Audio marbles(const Recording& recording) {
  constexpr std::array kMoments{0.00, 0.06, 0.15, 0.21, 0.31, 0.36, 0.45, 0.54, 0.60, 0.70, 0.75, 0.85, 0.94};
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("gravel");
  for (const double bump : kMoments) {
    const double moment = bump + 0.075;  // the loop meets itself between the last two
    const double hertz = noise.between(110, 230);
    canvas.add(moment, thump(rate, 1.4 * hertz, hertz, noise.between(0.07, 0.1)), noise.between(0.8, 1));
    canvas.add(moment, burst(noise, rate, noise.between(500, 800), 1.5, 0.001, 0.05), 1.1);
    for (int tick = 0; tick < 4; ++tick) {
      const Signal pebble = strike(rate, 0.03, retuned(stone(), noise.between(2000, 4200), 1.4), 0.0002);
      canvas.add(moment + noise.between(0, 0.05), pebble, noise.between(0.15, 0.4));
    }
  }
  canvas.add(bandpass(white(noise, canvas.frames()), rate, 900, 0.6, Ends::kMeeting), 0.1);
  return canvas.signal();
}

Audio gearLever(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const std::vector<Mode> lever{{420, 0.7, 0.06}, {1300, 1, 0.05}, {2900, 0.7, 0.03}};
  canvas.add(0.0005, strike(canvas.rate(), 0.02, lever, 0.0002), 0.7);
  canvas.add(0.0085, strike(canvas.rate(), 0.019, retuned(lever, 0.9), 0.0002));
  Signal sound = withPeak(canvas.signal(), 1);
  saturate(sound, 2);
  return sound;
}

Audio lightPole(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate(), seconds = canvas.seconds();
  Noise noise = recording.noise("air");
  constexpr double kNearest = 0.18;
  const Contour centre = glide({{0, 900}, {kNearest, 2800}, {seconds, 700}});
  Signal air = bandpass(white(noise, canvas.frames()), rate, centre, 1.6);
  air = shaped(std::move(air), rate, [seconds](double now) {
    const double share = now < kNearest ? now / kNearest : (seconds - now) / (seconds - kNearest);
    return std::pow(std::sin(kPi / 2 * share), 0.9);
  });
  // It passes thirty times a lap: soft at the top.
  canvas.add(withPeak(steepLowpass(air, rate, 3000), 1));
  canvas.add(kNearest - 0.03, thump(rate, 260, 130, 0.14), 0.6);
  // The hollow of the pole itself.
  canvas.add(
      kNearest - 0.02,
      shaped(bandpass(white(noise, framesOf(rate, 0.14)), rate, 620, 8), rate, swell(0.03, 0.08, 0.14)), 2.5);
  return canvas.signal();
}

constexpr std::array kRecipes{
    Recipe{"vorn3",
           "wheels spin at the launch",
           Play::kOnce,
           {-17, -4, Meter::kLoudestMoment},
           {0, 60},
           &launch},
    Recipe{"vorn4", "air horn", Play::kOnce, {-11, -1, Meter::kLoudestMoment}, {0, 40}, &airHorn},
    Recipe{"vorn5",
           "jumped start: whistle and buzzer",
           Play::kOnce,
           {-14, -2, Meter::kLoudestMoment},
           {1, 30},
           &jumpedStart},
    Recipe{"vorn6",
           "bell, for the left speaker and the finish",
           Play::kOnce,
           {-15, -2, Meter::kLoudestMoment},
           {0, 40},
           &leftBell},
    Recipe{"vorn7", "the car's horn, a tune", Play::kOnce, {-15, -2}, {0, 60}, &horn},
    Recipe{"vorn8", "brakes, by speed", Play::kTape, {-20, -6, Meter::kAsRendered}, {}, &brake},
    Recipe{"vorn9", "tyres scrubbing", Play::kLoop, {-20, -6}, {}, &tyres},
    Recipe{"vorn10", "the car scrapes along the wall", Play::kLoop, {-15, -2}, {}, &scrape},
    Recipe{"vorn14",
           "wrench, for the right speaker and after a crash",
           Play::kOnce,
           {-15, -2, Meter::kLoudestMoment},
           {0, 20},
           &wrench},
    Recipe{
        "vorn17", "expansion joint", Play::kOnce, {-16, -2, Meter::kLoudestMoment}, {0, 10}, &expansionJoint},
    Recipe{"vorn18", "marbles under the car", Play::kLoop, {-18, -3}, {}, &marbles},
    Recipe{"vorn19", "gear lever", Play::kOnce, {-20, -3, Meter::kLoudestMoment}, {0, 2}, &gearLever},
    Recipe{
        "vorn29", "a light pole passes", Play::kOnce, {-21, -7, Meter::kLoudestMoment}, {0, 20}, &lightPole},
};

}  // namespace

std::span<const Recipe> cockpitRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
