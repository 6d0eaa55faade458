// Spoken sounds. Their words are synthesised here, so they can be cut to length
// and set to the moment where the game needs them.

#include "synth/speech.h"

#include <array>
#include <cmath>

#include "groups.h"
#include "pit_box.h"
#include "synth/filter.h"
#include "synth/loudness.h"
#include "synth/modal.h"
#include "synth/tones.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

constexpr const char* kMarshal = "en-us+m3";
constexpr const char* kOfficial = "en-us+f2";

/// A voice over a loud-hailer: a narrower band, evened out, a little edge.
Signal hailed(const Signal& voice, double rate) {
  Signal sound = lowpass(voice, rate, 7500);
  sound = peaking(sound, rate, 2400, 1, 4);
  sound = compressed(withPeak(std::move(sound), 1), rate, -18, 3);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 1.2);
  return highpass(sound, rate, 150);
}

/// Soft edges where words were cut out of silence.
Signal softened(Signal words, double rate) {
  fadeIn(words, framesOf(rate, 0.004));
  fadeOut(words, framesOf(rate, 0.015));
  return words;
}

template <const char* const& text, int wordsPerMinute>
Audio instruction(const Recording& recording) {
  constexpr double kLead = 0.006, kTail = 0.03;  // seconds of silence around the words
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  const Words words{text, kMarshal, wordsPerMinute};
  const Signal voice = spokenWithin(words, canvas.seconds() - kLead - kTail, rate);
  canvas.add(kLead, softened(hailed(voice, rate), rate));
  return canvas.signal();
}

constexpr const char* kStartEngine = "Start your engine.";
constexpr const char* kShiftUp = "Gas, then shift up.";

Audio pitRoad(const Recording& recording) {
  constexpr double kChime = 0.15, kTail = 0.06;
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  canvas.add(0.002, strike(rate, kChime, {{1568, 1, 0.2}, {3136, 0.4, 0.15}, {4700, 0.2, 0.1}}, 0.001), 0.5);
  const Words words{"Pit road. Fifty miles an hour.", kOfficial, 185};
  const double start = kChime + 0.02;
  const Signal voice = spokenWithin(words, canvas.seconds() - start - kTail, rate);
  canvas.add(start, softened(hailed(voice, rate), rate));
  return canvas.signal();
}

/// The crew's voice counts down to the box; then what a driver hears who has
/// gone past it.
Audio pitBox(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  const auto say = [&](const char* text, double moment) {
    const Words words{text, kMarshal, 150};
    canvas.add(moment, withPeak(softened(hailed(spoken(words, rate), rate), rate), 1));
  };
  say("Your pit box in", kPitBoxCall);
  for (const PitBoxNumber& number : kPitBoxNumbers) {
    canvas.add(number.seconds, sine(rate, kPitBoxBlip, 1200, swell(0.002, 0.004, kPitBoxBlip)), 0.5);
    say(number.word, number.seconds + kPitBoxBlip);
  }
  canvas.add(kPitBoxMissing, sine(rate, 0.8, glide({{0, 900}, {0.8, 420}}), swell(0.05, 0.15, 0.8)), 0.3);
  Signal buzz = saw(rate, 0.5, 150, swell(0.01, 0.05, 0.5));
  mixInto(buzz, saw(rate, 0.5, 158, swell(0.01, 0.05, 0.5)));
  canvas.add(kPitBoxPassed, bandpass(buzz, rate, 900, 0.7), 0.35);
  Noise noise = recording.noise("crew");
  const double rest = canvas.seconds() - kPitBoxMissing;
  const Signal crowd = bandpass(white(noise, framesOf(rate, rest)), rate, 700, 0.7);
  canvas.add(kPitBoxMissing, shaped(crowd, rate, swell(0.5, 0.4, rest)), 0.06);
  return canvas.signal();
}

constexpr Level kSpeech{-15, -1.5};
constexpr std::array kRecipes{
    Recipe{"vorn12", "Start your engine.", Play::kOnce, kSpeech, {}, &instruction<kStartEngine, 185>},
    Recipe{"vorn13", "Gas, then shift up.", Play::kOnce, kSpeech, {}, &instruction<kShiftUp, 160>},
    Recipe{"vorn1t72", "Pit road. Fifty miles an hour.", Play::kLoop, kSpeech, {}, &pitRoad},
    Recipe{"vorn1t73", "Your pit box in 5, 4, 3, 2, 1", Play::kOnce, {-14, -1.5}, {}, &pitBox},
};

}  // namespace

std::span<const Recipe> speechRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
