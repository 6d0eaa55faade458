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
    EngineTape{"vorn31", 1010, 80, 3.2}, EngineTape{"vorn32", 842, 40, 2.6},
    EngineTape{"vorn33", 1675, 80, 7},   EngineTape{"vorn34", 2444, 180, 6.1},
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

/// One cylinder of a cycle: by how much it fires late (a share of the interval between two), and how hard.
/// No two are alike: that is the roughness of an engine.
struct Cylinder {
  double late;
  double strength;
};

/// A firing: when (in samples), how hard, and the load at that moment.
struct Firing {
  double place;
  double strength;
  double load;
};

std::vector<Firing> firingsOf(const Course& course, std::span<const Cylinder> cycle) {
  std::vector<Firing> firings;
  for (std::size_t i = 1; i < course.periods.size(); ++i) {
    const double whole = std::floor(course.periods[i]);
    if (whole <= course.periods[i - 1]) continue;
    const double interval = 1 / (course.periods[i] - course.periods[i - 1]);
    const Cylinder& own = cycle[static_cast<std::size_t>(whole) % cycle.size()];
    firings.push_back({static_cast<double>(i) - (course.periods[i] - whole - own.late) * interval,
                       own.strength, course.load[i]});
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

/// Takes out what lies under hearing, and all the more of the cues' band the nearer the
/// engine is to full load: a slow engine would sound muffled without any of it.
Signal muffled(const Signal& signal, const Run& run, const Course& course, double lowHertz, double highAtRest,
               double highAtFull) {
  const Contour edge = growing(run, course, highAtRest, highAtFull);
  const Contour upper = [&edge](double seconds) { return 1.5 * edge(seconds); };
  return lowpass(lowpass(highpass(signal, run.rate, lowHertz), run.rate, edge), run.rate, upper);
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
  constexpr std::array kCycle{Cylinder{0, 1},        Cylinder{0.15, 0.45},   Cylinder{-0.09, 0.85},
                              Cylinder{0.21, 0.35},  Cylinder{-0.045, 0.95}, Cylinder{0.18, 0.4},
                              Cylinder{-0.15, 0.65}, Cylinder{0.075, 0.75}};
  const Course course = courseOf(run, engineTape("vorn1"));
  const Signal push = pushes(run, firingsOf(course, kCycle), [&](const Firing& firing) {
    return Push{firing.strength * (1 + 0.03 * run.noise.next()), grown(0.0009, 0.00042, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 35);
  Signal sound = open;
  mixInto(sound, bandpass(open, run.rate, 120, 1.2), 0.8);
  mixGrowing(sound, bandpass(open, run.rate, 350, 2), course, 1.2, 0.7);
  mixGrowing(sound, bandpass(open, run.rate, 680, 2), course, 0.7, 2.4);
  mixInto(sound, breath(run, push, 420, 0.6), 0.2);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 1.6);
  return muffled(sound, run, course, 40, 2300, 1100);
}

Signal racingTen(Run run) {
  // The pitch is that of the firings; what the ten differ by stands between, near the thirds.
  constexpr std::array kOrders{Order{0.3, 0.70}, Order{0.7, 0.35}, Order{1, 0.6}, Order{1.3, 0.30},
                               Order{1.7, 0.20}, Order{2, 0.18},   Order{3, 0.12}};
  constexpr std::array kCycle{Cylinder{0, 1},       Cylinder{0.18, 0.4},   Cylinder{-0.12, 0.9},
                              Cylinder{0.20, 0.25}, Cylinder{-0.08, 0.95}, Cylinder{-0.2, 0.5},
                              Cylinder{0.14, 0.3},  Cylinder{0.02, 1},     Cylinder{-0.16, 0.35},
                              Cylinder{0.1, 0.7}};
  const Course course = courseOf(run, engineTape("vorn30"));
  Signal sound = orders(course, kOrders, [](const Order& order, double load) {
    const double tilt = order.multiple < 1 ? grown(2.0, 1, load) : grown(0.8, 1, load);
    return order.strength * tilt;
  });
  const Signal push = pushes(run, firingsOf(course, kCycle), [&](const Firing& firing) {
    return Push{firing.strength, grown(0.0008, 0.0004, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 60);
  mixGrowing(sound, withPeak(open, 1), course, 1, 4.5);
  mixInto(sound, breath(run, push, 700, 0.8), 0.10);
  saturate(sound, 0.4);
  return muffled(muffled(sound, run, course, 40, 2600, 1250), run, course, 40, 2600, 1250);
}

Signal rallyFour(Run run) {
  constexpr std::array kCycle{Cylinder{0, 1}, Cylinder{0.08, 0.7}, Cylinder{-0.05, 0.95},
                              Cylinder{0.11, 0.5}};
  const Course course = courseOf(run, engineTape("vorn31"));
  const Signal push = pushes(run, firingsOf(course, kCycle), [&](const Firing& firing) {
    return Push{firing.strength * (1 + 0.03 * run.noise.next()), grown(0.00040, 0.00028, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 60);
  Signal sound = open;
  scale(sound, 0.5);
  mixGrowing(sound, bandpass(open, run.rate, growing(run, course, 600, 700), 2), course, 1.3, 1.6);
  mixInto(sound, bandpass(open, run.rate, 150, 0.8), 1.0);
  mixInto(sound, breath(run, push, 800, 1), 0.2);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 2.5);
  // Voices have their first formant where others have their body.
  sound = peaking(sound, run.rate, 390, 0.8, -6);
  return muffled(sound, run, course, 60, 1050, 1000);
}

Signal dieselTruck(Run run) {
  constexpr std::array kCycle{Cylinder{0, 1},    Cylinder{0, 0.88}, Cylinder{0, 0.94},
                              Cylinder{0, 0.84}, Cylinder{0, 0.97}, Cylinder{0, 0.90}};
  const Course course = courseOf(run, engineTape("vorn32"));
  const std::vector<Firing> firings = firingsOf(course, kCycle);
  const Signal push = pushes(run, firings, [&](const Firing& firing) {
    return Push{firing.strength * (1 + 0.03 * run.noise.next()), grown(0.0016, 0.0011, firing.load)};
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
  mixInto(sound, bandpass(knocks, run.rate, 880, 3), 1.6);
  mixInto(sound, bandpass(knocks, run.rate, 480, 3), 0.4);
  mixInto(sound, bandpass(rattle, run.rate, 520, 1.5), 0.6);
  mixInto(sound, bandpass(rattle, run.rate, 1000, 2), 0.5);
  sound = muffled(withPeak(std::move(sound), 1), run, course, 40, 1200, 1200);
  const double seconds = run.frames / run.rate;
  mixInto(sound, sine(run.rate, seconds, growing(run, course, 1100, 2600)), 0.004);
  return sound;
}

Signal twoStroke(Run run) {
  // Every other charge is badly scavenged and burns weakly, some a little more so.
  constexpr std::array kCycle{Cylinder{0, 1},       Cylinder{0.08, 0.35},  Cylinder{0.02, 0.8},
                              Cylinder{0.16, 0.15}, Cylinder{-0.06, 0.95}, Cylinder{0.12, 0.5},
                              Cylinder{-0.1, 0.65}, Cylinder{0.1, 0.25}};
  const Course course = courseOf(run, engineTape("vorn33"));
  const Signal push = pushes(run, firingsOf(course, kCycle), [&](const Firing& firing) {
    // At rest it fires when it likes.
    const bool misses = run.noise.chance(0.2 * (1 - std::min(1.0, 6 * firing.load)));
    return Push{misses ? 0.55 : firing.strength * (1 + 0.04 * run.noise.next()),
                grown(0.00026, 0.00022, firing.load)};
  });
  const Signal open = highpass(push, run.rate, 70);
  Signal sound = open;
  scale(sound, 0.5);
  // The expansion chamber has its pitch, whatever the engine does.
  mixGrowing(sound, bandpass(open, run.rate, 500, 2.5), course, 1.4, 0.3);
  mixGrowing(sound, bandpass(open, run.rate, 800, 2.2), course, 1.0, 2.9);
  mixInto(sound, breath(run, push, 900, 1.2), 0.3);
  sound = withPeak(std::move(sound), 1);
  saturate(sound, 2);
  return muffled(sound, run, course, 70, 1300, 920);
}

Signal turbine(Run run) {
  // What meshes in the gearbox: pairs of teeth that beat with each other.
  constexpr std::array kOrders{Order{0.25, 0.45}, Order{0.2575, 0.15}, Order{0.5, 0.55}, Order{0.511, 0.2},
                               Order{0.75, 0.2},  Order{1, 0.5},       Order{1.013, 0.2}};
  const Course course = courseOf(run, engineTape("vorn34"));
  Signal sound = orders(course, kOrders, [](const Order& order, double load) {
    const bool isMain = order.strength >= 0.5;
    return order.strength * (isMain ? 1 : grown(0.3, 1, load));
  });
  const Signal air = white(run.noise, run.frames);
  mixInto(sound, bandpass(air, run.rate, growing(run, course, 450, 900), 0.7), 0.15);
  return muffled(sound, run, course, 60, 1900, 1300);
}

}  // namespace vorn::sounds
