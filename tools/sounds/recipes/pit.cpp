// Pit road: the gate, the fuel, the wheel guns.

#include <array>
#include <cmath>

#include "groups.h"
#include "synth/filter.h"
#include "synth/materials.h"
#include "synth/tones.h"
#include "synth/water.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

/// Fuel rushing through the hose, a pump's throb on it, and a tank that answers
/// higher as it fills, once round the loop.
Audio refuelling(const Recording& recording) {
  constexpr double kThrobs = 6;  // a second, about
  const double rate = recording.rate(), seconds = recording.seconds();
  Noise noise = recording.noise("fuel");
  const Signal rush = white(noise, recording.frames());
  const double throbHertz = std::round(kThrobs * seconds) / seconds;
  Signal sound = bandpass(rush, rate, 1000, 0.5, Ends::kMeeting);
  sound = lowpass(steepHighpass(sound, rate, 350, Ends::kMeeting), rate, 3000, 0.7, Ends::kMeeting);
  sound = shaped(std::move(sound), rate,
                 [throbHertz](double now) { return 1 + 0.3 * std::sin(kTwoPi * throbHertz * now); });
  const Contour tank = [seconds](double now) { return 520 + 170 * std::sin(kTwoPi * now / seconds); };
  mixInto(sound, bandpass(rush, rate, tank, 14, Ends::kMeeting), 1.5);
  scale(sound, 0.5);
  // Glugs: the tank takes a gulp of air at each throb.
  Canvas canvas = recording.canvas();
  const int gulps = static_cast<int>(std::lround(throbHertz * seconds));
  for (int i = 0; i < gulps; ++i) {
    const double moment = seconds * (i + 0.15 * noise.next()) / gulps;
    const double hertz = noise.between(1.0, 1.25) * tank(moment);
    canvas.add(moment, sine(rate, 0.11, glide({{0, hertz}, {0.11, 1.4 * hertz}}), swell(0.012, 0.07, 0.11)),
               noise.between(0.35, 0.6));
    canvas.add(moment + 0.03, bubbles(noise, rate, 3, 700, 1900, 0.08), 0.1);
  }
  mixInto(sound, canvas.signal());
  return sound;
}

/// An air gun hammering for `seconds`, its pitch going from one to the other.
Signal airGun(Noise& noise, double rate, double seconds, double fromHertz, double toHertz) {
  constexpr double kHits = 22;  // a second
  Canvas canvas(rate, framesOf(rate, seconds + 0.1), Ends::kOpen);
  const Contour hertz = glide({{0, fromHertz}, {seconds, toHertz}});
  for (double moment = 0; moment < seconds; moment += 1 / kHits) {
    canvas.add(moment, strike(rate, 0.06, retuned(tool(), hertz(moment), 0.22), 0.0003),
               noise.between(0.8, 1));
    canvas.add(moment, burst(noise, rate, 2.2 * hertz(moment), 1.5, 0.001, 0.03), 0.8);
  }
  const Signal whine = saw(
      rate, seconds, [&hertz](double now) { return 0.42 * hertz(now); }, swell(0.02, 0.04, seconds));
  canvas.add(0,
             bandpass(
                 whine, rate, [&hertz](double now) { return 1.3 * hertz(now); }, 2),
             0.35);
  const Signal hiss = bandpass(white(noise, framesOf(rate, seconds + 0.1)), rate, 4500, 0.8);
  canvas.add(0, shaped(hiss, rate, swell(0.01, 0.1, seconds + 0.1)), 0.25);
  return canvas.signal();
}

Signal metalDrop(double rate, double hertz, double force) {
  Signal sound = strike(rate, 0.3, retuned(steelPanel(), hertz, 1.8));
  mixInto(sound, thump(rate, 130, 80, 0.2), 1.2);
  return scale(sound, force);
}

constexpr int kNuts = 5;

Audio wheelOff(const Recording& recording) {
  constexpr double kFirstNut = 0.12, kNutSpacing = 0.36, kNutSeconds = 0.27;
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("gun");
  canvas.add(0.001, burst(noise, rate, 3500, 0.8, 0.005, 0.1), 0.8);
  for (int nut = 0; nut < kNuts; ++nut) {
    const double pitch = 1 + 0.05 * nut;
    canvas.add(kFirstNut + kNutSpacing * nut, airGun(noise, rate, kNutSeconds, 700 * pitch, 1500 * pitch));
  }
  // The wheel comes off its bolts.
  canvas.add(1.97,
             bandpass(saw(rate, 0.2, glide({{0, 80}, {0.2, 140}}), swell(0.03, 0.08, 0.2)), rate, 1300, 3),
             0.5);
  canvas.add(2.14, metalDrop(rate, 300, 1.1));
  return canvas.signal();
}

Audio wheelOn(const Recording& recording) {
  constexpr double kFirstNut = 0.2, kNutSpacing = 0.235, kNutSeconds = 0.19;
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  Noise noise = recording.noise("gun");
  canvas.add(0.001, metalDrop(rate, 240, 1));
  for (int nut = 0; nut < kNuts; ++nut) {
    const double pitch = 1.2 - 0.05 * nut;
    canvas.add(kFirstNut + kNutSpacing * nut, airGun(noise, rate, kNutSeconds, 1500 * pitch, 750 * pitch));
  }
  // The jack is let down.
  canvas.add(1.42, bandpass(white(noise, framesOf(rate, 0.1)), rate, 5000, 0.8), 0.25);
  canvas.add(1.5, metalDrop(rate, 210, 1.2));
  return canvas.signal();
}

Audio pitEntry(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate(), seconds = canvas.seconds();
  Noise noise = recording.noise("gate");
  canvas.add(0.001, strike(rate, 0.5, retuned(smallBell(), 784, 0.7), 0.001));
  canvas.add(0.17, strike(rate, 0.46, retuned(smallBell(), 1175, 0.7), 0.001));
  const Signal air = bandpass(white(noise, canvas.frames()), rate, glide({{0, 3000}, {seconds, 700}}), 1.2);
  canvas.add(withPeak(shaped(air, rate, Contour{{0, 0.2}, {0.3, 1}, {seconds, 0}}), 1), 0.4);
  return canvas.signal();
}

constexpr std::array kRecipes{
    Recipe{"vorn25", "fuel runs into the tank", Play::kLoop, {-21, -6}, {}, &refuelling},
    Recipe{"vorn26", "wheel gun: the wheel comes off", Play::kOnce, {-17, -2}, {0.3, 40}, &wheelOff},
    Recipe{"vorn27", "wheel gun: the wheel goes on", Play::kOnce, {-17, -2}, {0.3, 40}, &wheelOn},
    Recipe{"vorn28",
           "the gate of pit road",
           Play::kOnce,
           {-16, -2, Meter::kLoudestMoment},
           {0.3, 40},
           &pitEntry},
};

}  // namespace

std::span<const Recipe> pitRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
