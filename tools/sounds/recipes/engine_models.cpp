#include "engine_models.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <stdexcept>
#include <string>

#include "synth/filter.h"
#include "synth/tones.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

constexpr std::array kTapes{
    EngineTape{"vorn1", 2001, 40, 10},   EngineTape{"vorn30", 2017, 75, 12},
    EngineTape{"vorn31", 1010, 80, 3.2}, EngineTape{"vorn32", 842, 40, 2.55},
    EngineTape{"vorn33", 1675, 80, 7},   EngineTape{"vorn34", 2444, 180, 8.3},
};
constexpr int kTapeBytesASecond = 2 * 22050;

/// Where a run is at each sample: how far through its revolutions (0 rest, 1
/// full) and how many periods of its pitch have passed.
struct Course {
  Signal load;
  Signal periods;
};

Course courseOf(const Run& run, const EngineTape& tape) {
  Course course{Signal(static_cast<std::size_t>(run.frames)), Signal(static_cast<std::size_t>(run.frames))};
  double periods = 0;
  for (std::size_t i = 0; i < course.load.size(); ++i) {
    const double revs = run.revs(static_cast<double>(i) / run.rate);
    course.load[i] = std::clamp((revs - kIdleUpTo) / (kFullFrom - kIdleUpTo), 0.0, 1.0);
    course.periods[i] = periods;
    periods += pitchAt(tape, revs) / run.rate;
  }
  return course;
}

/// A firing: when (in samples), the how-manieth, and the load at that moment.
struct Firing {
  double place;
  int number;
  double load;
};

std::vector<Firing> firingsOf(const Course& course) {
  std::vector<Firing> firings;
  for (std::size_t i = 1; i < course.periods.size(); ++i) {
    const double whole = std::floor(course.periods[i]);
    if (whole <= course.periods[i - 1]) continue;
    const double step = course.periods[i] - course.periods[i - 1];
    firings.push_back({static_cast<double>(i) - (course.periods[i] - whole) / step, static_cast<int>(whole),
                       course.load[i]});
  }
  return firings;
}

/// What a firing sends down the exhaust: a push that rises and dies within a
/// few times `width` seconds.
struct Push {
  double strength;
  double width;
};

Signal pushes(const Run& run, const std::vector<Firing>& firings,
              const std::function<Push(const Firing&)>& pushOf) {
  Signal signal(static_cast<std::size_t>(run.frames));
  for (const Firing& firing : firings) {
    const Push push = pushOf(firing);
    const double width = push.width * run.rate;
    const auto first = static_cast<std::size_t>(std::ceil(firing.place));
    const auto last = std::min(signal.size(), first + static_cast<std::size_t>(12 * width));
    for (std::size_t i = first; i < last; ++i) {
      const double x = (static_cast<double>(i) - firing.place) / width;
      signal[i] += push.strength * x * std::exp(1 - x);
    }
  }
  return signal;
}

/// A value between that at rest and that at full load, in equal ratios.
double grown(double atRest, double atFull, double load) {
  return atRest * std::pow(atFull / atRest, load);
}

/// `grown` as a contour over the run.
Contour growing(const Run& run, const Course& course, double atRest, double atFull) {
  return [&course, rate = run.rate, atRest, atFull](double seconds) {
    const auto place = std::min(static_cast<std::size_t>(seconds * rate), course.load.size() - 1);
    return grown(atRest, atFull, course.load[place]);
  };
}

/// Mixes `added` in with a gain that grows with the load.
void mixGrowing(Signal& into, const Signal& added, const Course& course, double atRest, double atFull) {
  for (std::size_t i = 0; i < into.size(); ++i) into[i] += grown(atRest, atFull, course.load[i]) * added[i];
}

/// Noise that swells with each push.
Signal breath(Run& run, const Signal& push, double hertz, double quality) {
  Signal air = white(run.noise, run.frames);
  const Signal gate = lowpass(push, run.rate, 60);
  for (std::size_t i = 0; i < air.size(); ++i) air[i] *= std::max(0.0, gate[i]);
  return bandpass(air, run.rate, hertz, quality);
}

/// Takes out what lies under hearing and what would lie in the cues' band.
Signal kept(const Signal& signal, double rate, double lowHertz, double highHertz) {
  return steepLowpass(highpass(signal, rate, lowHertz), rate, highHertz);
}

/// A sum of partials at given multiples of the pitch.
struct Order {
  double multiple;
  double strength;
};

template <typename Strength>
Signal orders(const Course& course, std::span<const Order> all, Strength strength) {
  Signal signal(course.periods.size());
  for (std::size_t i = 0; i < signal.size(); ++i) {
    for (const Order& order : all) {
      signal[i] += strength(order, course.load[i]) * std::sin(kTwoPi * order.multiple * course.periods[i]);
    }
  }
  return signal;
}

}  // namespace

std::span<const EngineTape> engineTapes() {
  return kTapes;
}

const EngineTape& engineTape(std::string_view name) {
  const auto found = std::find_if(kTapes.begin(), kTapes.end(),
                                  [name](const EngineTape& tape) { return tape.name == name; });
  if (found == kTapes.end()) throw std::out_of_range("no engine is called " + std::string(name));
  return *found;
}

double revsAt(const EngineTape& tape, double seconds) {
  return seconds * kTapeBytesASecond / tape.step;
}

double pitchAt(const EngineTape& tape, double revs) {
  return grown(tape.idleHertz, tape.idleHertz * tape.ratio,
               std::clamp((revs - kIdleUpTo) / (kFullFrom - kIdleUpTo), 0.0, 1.0));
}

Signal stockCar(Run run) {
  // Two banks share four exhaust pipes unevenly: the eight firings of a cycle
  // differ, which gives the half and quarter orders of the burble.
  constexpr std::array kCylinders{1.0, 0.62, 0.88, 0.50, 0.95, 0.58, 0.72, 0.82};
  const Course course = courseOf(run, engineTape("vorn1"));
  const std::vector<Firing> firings = firingsOf(course);
  const Signal push = pushes(run, firings, [&](const Firing& firing) {
    const double own = kCylinders[static_cast<std::size_t>(firing.number) % kCylinders.size()];
    const double uneven = grown(1, 0.45, firing.load);
    const double chance = 1 + 0.05 * run.noise.next();
    return Push{(1 - uneven * (1 - own)) * chance, grown(0.0011, 0.00042, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 35);
  Signal sound = open;
  mixInto(sound, bandpass(open, run.rate, 120, 1.2), 0.8);
  mixGrowing(sound, bandpass(open, run.rate, 350, 2), course, 1.2, 2.2);
  mixGrowing(sound, bandpass(open, run.rate, 760, 3), course, 0.7, 2.4);
  mixInto(sound, breath(run, push, 420, 0.6), 0.3);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 1.6);
  return kept(sound, run.rate, 40, 1150);
}

Signal racingTen(Run run) {
  // The pitch is the third order of the crank.
  constexpr std::array kOrders{Order{1.0 / 3, 0.30}, Order{2.0 / 3, 0.42}, Order{1, 1},
                               Order{4.0 / 3, 0.22}, Order{5.0 / 3, 0.14}, Order{2, 0.30},
                               Order{3, 0.16},       Order{4, 0.08}};
  const Course course = courseOf(run, engineTape("vorn30"));
  // Low orders carry the engine at rest, the third takes over as it rises.
  Signal sound = orders(course, kOrders, [](const Order& order, double load) {
    const double tilt = order.multiple < 1 ? grown(2.0, 0.6, load) : grown(0.8, 1, load);
    return order.strength * tilt;
  });
  const Signal push = pushes(run, firingsOf(course), [&](const Firing& firing) {
    return Push{1 + 0.04 * run.noise.next(), grown(0.0008, 0.0002, firing.load)};
  });
  mixInto(sound, breath(run, push, 700, 0.8), 0.10);
  mixInto(sound, bandpass(sound, run.rate, 900, 2), 0.9);
  saturate(sound, 0.7);
  return kept(sound, run.rate, 40, 1250);
}

Signal rallyFour(Run run) {
  constexpr std::array kCylinders{1.0, 0.86, 0.97, 0.80};
  const Course course = courseOf(run, engineTape("vorn31"));
  const Signal push = pushes(run, firingsOf(course), [&](const Firing& firing) {
    const double own = kCylinders[static_cast<std::size_t>(firing.number) % kCylinders.size()];
    return Push{own * (1 + 0.10 * run.noise.next()), grown(0.00040, 0.00028, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 60);
  Signal sound;
  sound.assign(open.begin(), open.end());
  scale(sound, 0.5);
  mixGrowing(sound, bandpass(open, run.rate, growing(run, course, 560, 1060), 3), course, 1.3, 3.6);
  mixInto(sound, bandpass(open, run.rate, 260, 2), 0.7);
  mixInto(sound, breath(run, push, 800, 1), 0.35);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 2.5);
  return kept(sound, run.rate, 60, 1150);
}

Signal dieselTruck(Run run) {
  constexpr std::array kCylinders{1.0, 0.88, 0.94, 0.84, 0.97, 0.90};
  const Course course = courseOf(run, engineTape("vorn32"));
  const std::vector<Firing> firings = firingsOf(course);
  const Signal push = pushes(run, firings, [&](const Firing& firing) {
    const double own = kCylinders[static_cast<std::size_t>(firing.number) % kCylinders.size()];
    return Push{own * (1 + 0.03 * run.noise.next()), grown(0.0016, 0.0011, firing.load)};
  });
  // The knock: each firing rattles the block for a few milliseconds.
  const Signal knocks = pushes(run, firings, [&](const Firing& firing) {
    return Push{grown(1, 2.4, firing.load) * run.noise.between(0.85, 1), 0.0010};
  });
  Signal rattle = white(run.noise, run.frames);
  for (std::size_t i = 0; i < rattle.size(); ++i) rattle[i] *= knocks[i];
  const Signal open = highpass(push, run.rate, 60);
  Signal sound = open;
  mixInto(sound, bandpass(open, run.rate, 170, 0.8), 0.4);
  mixInto(sound, bandpass(knocks, run.rate, 880, 3), 3.4);
  mixInto(sound, bandpass(knocks, run.rate, 480, 3), 1.2);
  mixInto(sound, bandpass(rattle, run.rate, 520, 1.5), 0.6);
  mixInto(sound, bandpass(rattle, run.rate, 1000, 2), 0.5);
  sound = kept(withPeak(std::move(sound), 1), run.rate, 40, 1200);
  const double seconds = run.frames / run.rate;
  mixInto(sound, sine(run.rate, seconds, growing(run, course, 1100, 2600)), 0.004);
  return sound;
}

Signal twoStroke(Run run) {
  const Course course = courseOf(run, engineTape("vorn33"));
  const Signal push = pushes(run, firingsOf(course), [&](const Firing& firing) {
    // At rest it fires when it likes.
    const bool misses = run.noise.chance(0.2 * (1 - std::min(1.0, 6 * firing.load)));
    return Push{misses ? 0.55 : 1 + 0.12 * run.noise.next(), grown(0.00026, 0.00022, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 70);
  Signal sound = open;
  scale(sound, 0.35);
  mixGrowing(sound, bandpass(open, run.rate, growing(run, course, 420, 1000), 3.5), course, 1.8, 3.4);
  mixInto(sound, bandpass(open, run.rate, growing(run, course, 800, 1120), 5), 0.8);
  mixInto(sound, breath(run, push, 900, 1.2), 0.5);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 2);
  // Twice, since its third harmonic comes close to what must be kept free.
  return kept(kept(sound, run.rate, 70, 1250), run.rate, 70, 1250);
}

Signal turbine(Run run) {
  constexpr std::array kOrders{Order{1, 1},
                               Order{1.5, 0.5},
                               Order{0.5, 0.30},
                               Order{11.0 / 12, 0.12},
                               Order{13.0 / 12, 0.12},
                               Order{0.75, 0.10},
                               Order{1.25, 0.10},
                               Order{17.0 / 12, 0.06}};
  const Course course = courseOf(run, engineTape("vorn34"));
  Signal sound = orders(course, kOrders, [](const Order& order, double load) {
    const double high = order.multiple > 1 ? grown(1, 0.35, load) : 1;
    return order.strength * high;
  });
  const Signal air = white(run.noise, run.frames);
  mixInto(sound, bandpass(air, run.rate, growing(run, course, 450, 1400), 0.7), 0.22);
  return steepLowpass(highpass(sound, run.rate, 60), run.rate, 2600);
}

}  // namespace vorn::sounds
