#include "plain_sound.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "synth/canvas.h"
#include "synth/modal.h"
#include "synth/tones.h"
#include "synth/voice.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

enum class Kind { kTones, kNoise, kTicks, kCalls };

struct Fingerprint {
  std::string_view name;
  Kind kind;
  double eventsASecond;
  double lowHertz, highHertz;  ///< where its energy lies
};

constexpr std::array kFingerprints = std::to_array<Fingerprint>({
    {"vorn1t1", Kind::kTicks, 3.6, 600, 3200},   {"vorn1t2", Kind::kTones, 2.8, 2200, 6000},
    {"vorn1t3", Kind::kTones, 2.4, 700, 3200},   {"vorn1t4", Kind::kCalls, 2.7, 900, 3500},
    {"vorn1t5", Kind::kNoise, 2.2, 500, 6000},   {"vorn1t6", Kind::kTones, 4.3, 400, 4000},
    {"vorn1t7", Kind::kCalls, 2.5, 1200, 3400},  {"vorn1t8", Kind::kTicks, 1.6, 2500, 7000},
    {"vorn1t9", Kind::kNoise, 2.9, 300, 5000},   {"vorn1t10", Kind::kTones, 5, 600, 4500},
    {"vorn1t11", Kind::kCalls, 0.5, 800, 4000},  {"vorn1t12", Kind::kTones, 0.83, 700, 3000},
    {"vorn1t13", Kind::kTones, 2.9, 1800, 5000}, {"vorn1t14", Kind::kNoise, 7, 1200, 7000},
    {"vorn1t15", Kind::kCalls, 0.8, 250, 3800},  {"vorn1t16", Kind::kNoise, 3.2, 500, 5000},
    {"vorn1t17", Kind::kTones, 0.6, 900, 3000},  {"vorn1t18", Kind::kTones, 7.6, 800, 5000},
    {"vorn1t19", Kind::kNoise, 38, 3000, 8000},  {"vorn1t20", Kind::kCalls, 6, 1000, 4000},
    {"vorn1t21", Kind::kTones, 1.9, 600, 4500},  {"vorn1t22", Kind::kTicks, 12, 2000, 6000},
    {"vorn1t23", Kind::kCalls, 3, 500, 3500},    {"vorn1t24", Kind::kTones, 3.8, 1000, 6000},
    {"vorn1t25", Kind::kNoise, 5.6, 4000, 8500}, {"vorn1t26", Kind::kCalls, 1.5, 500, 3500},
    {"vorn1t27", Kind::kTicks, 18, 1500, 3500},  {"vorn1t28", Kind::kTicks, 5.4, 700, 4500},
    {"vorn1t29", Kind::kTones, 3.3, 600, 4000},  {"vorn1t30", Kind::kCalls, 2.5, 900, 4500},
    {"vorn1t31", Kind::kTones, 1.25, 250, 4500}, {"vorn1t32", Kind::kCalls, 0.65, 1800, 4500},
    {"vorn1t33", Kind::kCalls, 3.2, 1300, 4500}, {"vorn1t34", Kind::kTones, 6, 500, 4500},
    {"vorn1t35", Kind::kTones, 1.2, 900, 5500},  {"vorn1t36", Kind::kNoise, 2.6, 800, 7000},
    {"vorn1t37", Kind::kTones, 0.65, 150, 2600}, {"vorn1t38", Kind::kTones, 1, 1400, 1700},
    {"vorn1t39", Kind::kNoise, 5.2, 4000, 8000}, {"vorn1t40", Kind::kTicks, 7.3, 1500, 6000},
    {"vorn1t41", Kind::kTones, 0.49, 500, 2400}, {"vorn1t42", Kind::kTones, 4, 500, 5000},
    {"vorn1t43", Kind::kTones, 1.9, 1000, 5000}, {"vorn1t44", Kind::kTicks, 2, 1000, 5000},
    {"vorn1t45", Kind::kTones, 2, 1100, 4000},   {"vorn1t46", Kind::kTones, 3.6, 1200, 6000},
    {"vorn1t47", Kind::kTicks, 2.2, 2000, 8000}, {"vorn1t48", Kind::kTicks, 3.6, 3000, 8000},
    {"vorn1t49", Kind::kNoise, 0.33, 150, 5000}, {"vorn1t50", Kind::kTones, 1.3, 2300, 2900},
    {"vorn1t51", Kind::kTones, 2.3, 600, 4000},  {"vorn1t52", Kind::kCalls, 3.3, 700, 4000},
    {"vorn1t53", Kind::kTones, 7.8, 500, 5000},  {"vorn1t54", Kind::kTicks, 7.2, 600, 3500},
    {"vorn1t55", Kind::kCalls, 0.67, 800, 4000}, {"vorn1t56", Kind::kTones, 1.15, 500, 4000},
    {"vorn1t57", Kind::kTones, 7.9, 600, 5000},  {"vorn1t58", Kind::kTones, 11.4, 3000, 9000},
    {"vorn1t59", Kind::kTones, 6, 500, 6000},    {"vorn1t60", Kind::kTicks, 13, 900, 5000},
    {"vorn1t61", Kind::kTones, 4.7, 500, 5000},  {"vorn1t62", Kind::kTicks, 9, 1000, 5000},
    {"vorn1t63", Kind::kTicks, 0.67, 200, 6000}, {"vorn1t64", Kind::kTones, 2, 500, 1800},
    {"vorn1t65", Kind::kCalls, 1.2, 400, 3800},  {"vorn1t66", Kind::kCalls, 0.9, 800, 3500},
    {"vorn1t67", Kind::kNoise, 1.3, 700, 5000},  {"vorn1t68", Kind::kCalls, 2, 400, 4500},
    {"vorn1t69", Kind::kTicks, 6.2, 1500, 6000}, {"vorn1t70", Kind::kCalls, 3.3, 700, 3800},
    {"vorn1t71", Kind::kCalls, 0.4, 600, 2500},
});
constexpr Fingerprint kAnyOther{"", Kind::kTones, 2, 500, 3000};

const Fingerprint& fingerprintOf(std::string_view name) {
  const auto found = std::find_if(kFingerprints.begin(), kFingerprints.end(),
                                  [name](const Fingerprint& row) { return row.name == name; });
  return found == kFingerprints.end() ? kAnyOther : *found;
}

/// A pitch within the lower half of the band, off a scale of five tones.
double pitch(const Fingerprint& print, Noise& noise) {
  constexpr std::array kScale{0, 2, 4, 7, 9};
  const double octaves = std::max(1.0, std::log2(print.highHertz / print.lowHertz) / 2);
  const double semitones = 12 * noise.below(static_cast<int>(octaves)) + kScale[noise.below(kScale.size())];
  return 1.2 * print.lowHertz * std::exp2(semitones / 12);
}

Signal tone(const Fingerprint& print, Noise& noise, double rate, double seconds) {
  const double hertz = pitch(print, noise);
  const int partials = std::max(1, static_cast<int>(print.highHertz / hertz));
  return harmonics(rate, seconds, hertz, falling(std::min(partials, 12), -4),
                   swell(0.01, 0.4 * seconds, seconds));
}

Signal hiss(const Fingerprint& print, Noise& noise, double rate, double seconds) {
  const double middle = std::sqrt(print.lowHertz * print.highHertz);
  return burst(noise, rate, middle, middle / (print.highHertz - print.lowHertz), 0.01, seconds);
}

Signal tick(const Fingerprint& print, Noise& noise, double rate, double seconds) {
  const double hertz = noise.between(1, 1.3) * print.lowHertz;
  return strike(rate, seconds, {{hertz, 1, 0.08}, {1.7 * hertz, 0.8, 0.06}, {2.6 * hertz, 0.5, 0.04}},
                0.0003);
}

Signal cry(const Fingerprint& print, Noise& noise, double rate, double seconds) {
  const double hertz = noise.between(0.35, 0.6) * print.lowHertz;
  Call call{.seconds = seconds, .hertz = glide({{0, hertz}, {seconds / 3, 1.4 * hertz}, {seconds, hertz}})};
  call.amplitude = swell(0.02, 0.3 * seconds, seconds);
  call.from = sized(kAh, print.highHertz / 3400);
  call.to = sized(kEh, print.highHertz / 3400);
  call.opening = Contour{{0, 0}, {seconds, 1}};
  return voiced(noise, rate, call);
}

using Event = Signal (*)(const Fingerprint&, Noise&, double rate, double seconds);
constexpr std::array<Event, 4> kEvents{&tone, &hiss, &tick, &cry};

}  // namespace

Audio plainSound(const Recording& recording) {
  const Fingerprint& print = fingerprintOf(recording.name());
  Noise noise = recording.noise("events");
  Canvas canvas = recording.canvas();
  const int events = std::max(1, static_cast<int>(std::lround(print.eventsASecond * canvas.seconds())));
  const double spacing = canvas.seconds() / events;
  const Event event = kEvents[static_cast<std::size_t>(print.kind)];
  for (int i = 0; i < events; ++i) {
    canvas.add(i * spacing, event(print, noise, canvas.rate(), 0.8 * spacing));
  }
  return canvas.signal();
}

}  // namespace vorn::sounds
