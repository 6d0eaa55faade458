// The title: the first thing a player hears of the game.

#include <array>
#include <cmath>

#include "engine_models.h"
#include "groups.h"
#include "synth/filter.h"
#include "synth/instruments.h"
#include "synth/materials.h"
#include "synth/tones.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

struct Stereo {
  Signal left, right;

  void add(const Signal& mono, double gain, double pan) {  // pan: 0 left .. 1 right
    mixInto(left, mono, gain * std::cos(kPi / 2 * pan));
    mixInto(right, mono, gain * std::sin(kPi / 2 * pan));
  }
};

/// A car on a straight road past the listener.
struct PassBy {
  double metresASecond = 62;
  double nearest = 7;    ///< metres
  double moment = 1.15;  ///< seconds: when it is nearest

  double along(double now) const { return metresASecond * (now - moment); }
  double distance(double now) const { return std::hypot(along(now), nearest); }
  /// Seconds the sound needs to the listener.
  double delay(double now) const { return distance(now) / 343; }
  /// 0: far left, 1: far right.
  double side(double now) const { return 0.5 + std::atan2(along(now), 1.5 * nearest) / kPi * 0.92; }
};

/// `source` as heard from beside the road: later, with the pitch falling as the
/// car goes by, and from where it is.
void drivePast(const Signal& source, double rate, const PassBy& pass, Stereo& into) {
  for (std::size_t i = 0; i < into.left.size(); ++i) {
    const double now = static_cast<double>(i) / rate;
    const double place = (now + pass.delay(0) - pass.delay(now)) * rate;
    const auto before = static_cast<std::size_t>(std::max(0.0, std::floor(place)));
    if (before + 1 >= source.size()) continue;
    const double share = place - static_cast<double>(before);
    const double sample = (1 - share) * source[before] + share * source[before + 1];
    const double gain = std::pow(pass.nearest / pass.distance(now), 0.8);
    into.left[i] += gain * sample * std::cos(kPi / 2 * pass.side(now));
    into.right[i] += gain * sample * std::sin(kPi / 2 * pass.side(now));
  }
}

Signal carAtFullSpeed(const Recording& recording) {
  const double rate = recording.rate();
  const Contour revs{{0, 78}, {1.2, 88}, {5, 94}};
  Noise noise = recording.noise("road");
  Signal car = withPeak(stockCar({rate, recording.frames(), revs, recording.noise("engine")}), 1);
  // Unlike on the tape nothing has to be heard through it: let it snarl.
  for (double& value : car) value += 0.35;
  saturate(car, 6);
  car = lowpass(peaking(highpass(car, rate, 90), rate, 1500, 1, 6), rate, 4500);
  mixInto(car, bandpass(white(noise, recording.frames()), rate, 2400, 0.5), 0.22);
  return car;
}

/// A trumpet-like tone that opens as it is blown.
Signal brassNote(double rate, double seconds, double hertz) {
  Signal tone(static_cast<std::size_t>(framesOf(rate, seconds)));
  for (const double detune : {0.998, 1.0, 1.0025}) {
    const Contour pitch = vibrato(glide({{0, 0.975 * hertz * detune}, {0.04, hertz * detune}}), 5.5, 0.003);
    mixInto(tone, saw(rate, seconds, pitch));
  }
  const Contour opening = glide({{0, 600}, {0.05, 3800}, {0.15, 2900}, {seconds, 1900}});
  Signal sound = lowpass(tone, rate, opening, 0.9);
  return shaped(highpass(sound, rate, 180), rate, swell(0.018, 0.08, seconds));
}

/// Five notes of brass over a rolling banjo, and a bell on the last.
Signal sting(const Recording& recording) {
  struct StingNote {
    double moment, seconds, semitones;  // semitones above A4
  };
  constexpr std::array kBrass{StingNote{0, 0.15, -7},   StingNote{0.18, 0.15, -2}, StingNote{0.36, 0.15, 0},
                              StingNote{0.54, 0.30, 2}, StingNote{0.90, 1.0, 5},   StingNote{0.90, 1.0, 2},
                              StingNote{0.90, 1.0, -2}};
  constexpr std::array kRoll{-2, 2, 5, 2, 10, 5, 2, 5, -2, 2};
  constexpr double kRollSpacing = 0.09;
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("strings");
  for (const StingNote& note : kBrass) {
    canvas.add(note.moment, brassNote(rate, note.seconds, noteHertz(note.semitones)), 0.3);
  }
  for (std::size_t i = 0; i < kRoll.size(); ++i) {
    const Signal string = plucked(noise, rate, {noteHertz(kRoll[i]), 0.25, 0.1, 0.9});
    canvas.add(kRollSpacing * static_cast<double>(i), withPeak(highpass(string, rate, 200), 0.35));
  }
  canvas.add(0.9, strike(rate, 2, retuned(bell(), noteHertz(17), 0.8)), 0.22);
  return canvas.signal();
}

Audio title(const Recording& recording) {
  constexpr double kStingFrom = 2.1;
  const double rate = recording.rate(), seconds = recording.seconds();
  const Signal silence(static_cast<std::size_t>(recording.frames()));
  Stereo sound{silence, silence};

  const Contour applause{{0, 0.7}, {1.2, 1}, {2.2, 0.75}, {seconds, 0.5}};
  Noise noise = recording.noise("crowd");
  for (const double pan : {0.15, 0.85}) {
    Signal crowd = bandpass(white(noise, recording.frames()), rate, 750, 0.6);
    mixInto(crowd, bandpass(white(noise, recording.frames()), rate, 1800, 1.2), 0.25);
    const Signal flutter = wander(noise, recording.frames(), 6, 24);
    for (std::size_t i = 0; i < crowd.size(); ++i) crowd[i] *= 1 + 0.18 * flutter[i];
    sound.add(shaped(std::move(crowd), rate, applause), 0.8, pan);
  }
  drivePast(carAtFullSpeed(recording), rate, PassBy{}, sound);

  Canvas music = recording.canvas();
  music.add(kStingFrom, sting(recording));
  sound.add(inRoom(music.signal(), rate, 1.1, 0.16), 0.9, 0.42);
  sound.add(inRoom(music.signal(), rate, 1.4, 0.16), 0.9, 0.58);
  return {std::move(sound.left), std::move(sound.right)};
}

constexpr std::array kRecipes{
    Recipe{"vorn0", "title: a car passes, brass and banjo", Play::kOnce, {-16, -1.5}, {5, 400}, &title},
};

}  // namespace

std::span<const Recipe> titleRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
