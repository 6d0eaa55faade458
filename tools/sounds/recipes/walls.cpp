// The three ambiences beside the track. Each is heard twice at once, left and
// right, the right copy 44159 bytes ahead: steady beds without single events,
// so that the copies never sound like one another's echo.

#include <array>
#include <cmath>

#include "groups.h"
#include "synth/filter.h"
#include "synth/modal.h"
#include "synth/tones.h"
#include "synth/voice.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

/// White noise around the loop.
Signal bed(const Recording& recording, std::string_view purpose) {
  Noise noise = recording.noise(purpose);
  return white(noise, recording.frames());
}

/// A wandering value around the loop as a contour: `middle` times or over `span`.
Contour wandering(const Recording& recording, std::string_view purpose, int lowest, int highest,
                  double middle, double span) {
  Noise noise = recording.noise(purpose);
  return [course = wander(noise, recording.frames(), lowest, highest), rate = recording.rate(), middle,
          span](double seconds) {
    const auto place = static_cast<std::size_t>(std::lround(seconds * rate)) % course.size();
    return middle * std::pow(span, course[place]);
  };
}

Signal cheer(Noise& noise, double rate) {
  constexpr std::array kMouths{kAh, kOh, kEh};
  const double seconds = noise.between(0.24, 0.4);
  const double hertz = 110 * std::pow(400.0 / 110, noise.between(0, 1));
  const double size = hertz > 220 ? 1.15 : 1;
  Call call{.seconds = seconds,
            .hertz = glide({{0, noise.between(0.85, 1.0) * hertz},
                            {noise.between(0.25, 0.6) * seconds, noise.between(1.0, 1.12) * hertz},
                            {seconds, noise.between(0.8, 1.05) * hertz}})};
  call.amplitude = [seconds](double now) { return std::pow(std::sin(kPi * now / seconds), 2); };
  call.from = sized(kMouths[static_cast<std::size_t>(noise.below(3))], size);
  call.to = sized(kMouths[static_cast<std::size_t>(noise.below(3))], size);
  call.opening = Contour{{0, 0}, {seconds, 1}};
  call.breath = 0.12;
  call.tilt = -6;  // they shout
  return voiced(noise, rate, call);
}

/// Two palms.
Signal clap(Noise& noise, double rate) {
  return burst(noise, rate, noise.between(900, 1700), 1.4, 0.001, 0.05);
}

Audio crowd(const Recording& recording) {
  // Few enough that an ear follows one here and there, short enough that none is followed for long.
  constexpr int kVoices = 40, kClaps = 44;
  constexpr double kFarRoar = 0.2, kClapGain = 0.25;
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("voices");
  for (int i = 0; i < kVoices; ++i) {
    const double moment = canvas.seconds() * (i + noise.next()) / kVoices;
    canvas.add(moment, withPeak(cheer(noise, canvas.rate()), noise.between(0.4, 1)));
  }
  for (const double moment : scattered(noise, kClaps, canvas.seconds(), 0.02)) {
    canvas.add(moment, withPeak(clap(noise, canvas.rate()), kClapGain * noise.between(0.6, 1)));
  }
  Signal sound = shaped(canvas.signal(), canvas.rate(), wandering(recording, "swell", 1, 4, 1, 1.08));
  const Signal roar = bandpass(bed(recording, "roar"), canvas.rate(), 800, 0.4, Ends::kMeeting);
  mixInto(sound, roar, kFarRoar);  // those too far away to be told apart
  sound = steepHighpass(sound, canvas.rate(), 250, Ends::kMeeting);
  sound = lowpass(sound, canvas.rate(), 3600, 0.7, Ends::kMeeting);
  // Room for the cues.
  return peaking(sound, canvas.rate(), 2700, 1.1, -4, Ends::kMeeting);
}

Audio wind(const Recording& recording) {
  const Signal air = bed(recording, "air");
  const double rate = recording.rate();
  const Contour low = wandering(recording, "low", 1, 3, 380, 1.25);
  const Contour high = wandering(recording, "high", 1, 3, 700, 1.25);
  Signal sound = bandpass(air, rate, low, 2.5, Ends::kMeeting);
  mixInto(sound, bandpass(air, rate, high, 4, Ends::kMeeting), 0.9);
  mixInto(sound, bandpass(bed(recording, "leaves"), rate, 1300, 0.6, Ends::kMeeting), 0.16);
  const Contour gusts = wandering(recording, "gusts", 1, 2, 1, 1.12);
  sound = steepHighpass(lowpass(sound, rate, 2000, 0.7, Ends::kMeeting), rate, 130, Ends::kMeeting);
  // What tyres and engines leave of it in a turn: its hiss in the wires.
  mixInto(sound,
          bandpass(bed(recording, "wires"), rate, wandering(recording, "hiss", 1, 4, 3600, 1.15), 1.2,
                   Ends::kMeeting),
          0.04);
  return shaped(std::move(sound), rate, gusts);
}

/// Three strokes of a cricket's wing.
Signal chirp(Noise& noise, double rate, double hertz) {
  constexpr double kStroke = 0.016, kEvery = 0.034;
  Canvas canvas(rate, framesOf(rate, 3 * kEvery), Ends::kOpen);
  for (int i = 0; i < 3; ++i) {
    canvas.add(i * kEvery,
               sine(rate, kStroke, hertz * (1 + 0.006 * noise.next()), swell(0.005, 0.007, kStroke)),
               0.7 + 0.15 * i);
  }
  return canvas.signal();
}

Signal birdNote(Noise& noise, double rate) {
  const double from = noise.between(2600, 3600);
  const double seconds = noise.between(0.06, 0.11);
  return sine(rate, seconds, glide({{0, from}, {seconds, from * noise.between(1.1, 1.5)}}),
              swell(0.02, 0.04, seconds));
}

Audio forestEdge(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  // A gust takes the leaves, lets go, and takes them again.
  const Contour rustle = wandering(recording, "rustle", 2, 9, 1, 1.5);
  Signal leaves = bandpass(bed(recording, "leaves"), rate, 1000, 0.7, Ends::kMeeting);
  leaves = lowpass(leaves, rate, 2200, 0.7, Ends::kMeeting);  // above is the cues' band
  canvas.add(shaped(std::move(leaves), rate, rustle));
  canvas.add(bandpass(bed(recording, "boughs"), rate, 350, 0.6, Ends::kMeeting), 0.5);

  Noise noise = recording.noise("animals");
  // Two of them, each with rests of its own around the loop.
  constexpr int kChirps = 7;
  for (int i = 0; i < kChirps; ++i) {
    if (i % 4 != 3) canvas.add(canvas.seconds() * i / kChirps, chirp(noise, rate, 4600), 0.13);
    if (i % 3 != 1) canvas.add(canvas.seconds() * (i + 0.45) / kChirps, chirp(noise, rate, 4250), 0.08);
  }
  for (const double moment : scattered(noise, 5, canvas.seconds(), 0.3)) {
    canvas.add(moment, birdNote(noise, rate), 0.07);
    canvas.add(moment + 0.12, birdNote(noise, rate), 0.05);
  }
  return canvas.signal();
}

constexpr std::array kRecipes{
    Recipe{"vorn16", "wall: the crowd", Play::kLoop, {-18, -4}, {}, &crowd},
    Recipe{"vorn23", "wall: wind", Play::kLoop, {-19, -4}, {}, &wind},
    Recipe{"vorn24", "wall: forest edge", Play::kLoop, {-20, -4}, {}, &forestEdge},
};

}  // namespace

std::span<const Recipe> wallRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
