// When turns are called, and what is heard of a call and of the slider: the trace
// tells when, the render what.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "codriver/slider.h"
#include "codriver/turn_calls.h"
#include "race/steering.h"
#include "sessions/tracks/keyboard_driver.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kRate = 48000;

/// Keeps what a session sounds like.
class KeptRender : public RenderSink {
 public:
  void write(std::span<const std::int16_t> samples) override {
    heard.insert(heard.end(), samples.begin(), samples.end());
  }
  void flush() override {}
  std::vector<std::int16_t> heard;  ///< left and right in turn
};

/// A lap by the driver who sees.
OneRace lapOf(int number, const AidSet& aids, RenderSink* listener = nullptr) {
  WheelScript driver(*allTracks()[static_cast<std::size_t>(number - 1)]);
  return {number, Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); }, listener,
          CodriverOptions{.aids = aids}};
}

AidSet only(AidKind kind) {
  AidSettings settings;
  settings.turn(kind, true);
  return settings.aids;
}

/// A car tick and when it was.
struct Moment {
  std::int64_t ms;
  int segment;
  double lapPosition, speed, place;
};

std::vector<Moment> momentsOf(const TraceRecord& trace) {
  std::vector<Moment> moments;
  for (const TraceLine& line : trace.ticks()) {
    moments.push_back({line.at("ms"), line.at("segment"), line.at("lapPosition"), line.at("speed"),
                       line.at("lateralPosition")});
  }
  return moments;
}

/// A tone as it was asked for.
struct Asked {
  std::int64_t ms = 0;
  int pitch = 0, pan = 0;
};

/// The tones of a slot, at the moment in which each began to sound.
std::vector<Asked> askedOf(const TraceRecord& trace, const std::string& slot) {
  std::vector<Asked> all;
  Asked next;
  for (const TraceLine& line : trace.of("sound")) {
    if (line.at("buffer") != slot) continue;
    if (line.at("op") == "SetFrequency") next.pitch = line.at("value").get<int>() / 48;
    if (line.at("op") == "SetPan") next.pan = line.at("value");
    if (line.at("op") != "Play") continue;
    next.ms = line.at("ms");
    all.push_back(next);
  }
  return all;
}

class Calls : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(On, Calls, testing::Range(1, 11));

TEST_P(Calls, ComeForEveryTurnInTimeOnItsSideAndAtItsPitch) {
  const Track& track = *allTracks()[static_cast<std::size_t>(GetParam() - 1)];
  const OneRace race = lapOf(GetParam(), only(AidKind::kTurnCalls));
  const int ahead = AidSettings().callAhead * 100;
  const auto moments = momentsOf(race.trace());
  const auto asked = askedOf(race.trace(), "codriver turn");
  const auto turns = turnsOf(track);
  ASSERT_EQ(asked.size(), 2 * turns.size());  // two tones each
  for (std::size_t i = 0; i < turns.size(); ++i) {
    const Asked& call = asked[2 * i];
    EXPECT_EQ(call.pan < 0, turns[i].turn == Turn::kLeft) << i;
    EXPECT_EQ(call.pan > 0, turns[i].turn == Turn::kRight) << i;
    const auto at = std::find_if(moments.begin(), moments.end(),
                                 [&](const Moment& moment) { return moment.ms == call.ms; });
    ASSERT_NE(at, moments.end()) << i;
    if (turns[i].turn != Turn::kNone) {
      EXPECT_EQ(call.pitch, pitchOfPush(pushAt(track.segments[turns[i].first], at->speed))) << i;
    }
    // The car is in the turn from the tick on that ends beyond the joint, and was there a part of it before.
    const auto inside = std::find_if(at, moments.end(), [&](const Moment& moment) {
      return moment.segment == static_cast<int>(turns[i].first) + 1;
    });
    ASSERT_NE(inside, moments.end()) << i;
    const Moment& last = *(inside - 1);
    const double beyond = last.lapPosition - track.segments[turns[i].first - 1].length;
    EXPECT_GE(static_cast<double>(last.ms) - kTickMs * beyond / last.speed - static_cast<double>(call.ms),
              ahead)
        << i;
  }
}

TEST(Call, ComesNoEarlierThanATickBeforeItsTimeAtTopSpeed) {
  const OneRace race = lapOf(1, only(AidKind::kTurnCalls));
  const auto moments = momentsOf(race.trace());
  const Asked call = askedOf(race.trace(), "codriver turn").front();
  const auto inside =
      std::find_if(moments.begin(), moments.end(), [](const Moment& moment) { return moment.segment == 2; });
  const auto until = (inside - 1)->ms - call.ms;
  EXPECT_LE(until, AidSettings().callAhead * 100 + 3 * 99);
}

TEST(SteerCall, ComesForKeysBeforeTheJointAndForAWheelNever) {
  PlanningDriver driver(kErie);
  const OneRace race(
      6, Device::kKeys, [&](const TickReport& tick) { return driver.after(tick); }, nullptr,
      CodriverOptions{.aids = only(AidKind::kTurnCalls)});
  ASSERT_TRUE(race.isFinished());
  const auto moments = momentsOf(race.trace());
  const auto turns = turnsOf(kErie);
  const auto asked = askedOf(race.trace(), "codriver steer");
  ASSERT_EQ(asked.size(), turns.size());
  for (std::size_t i = 0; i < turns.size(); ++i) {
    const auto inside = std::find_if(moments.begin(), moments.end(), [&](const Moment& moment) {
      return moment.segment == static_cast<int>(turns[i].first) + 1;
    });
    const std::int64_t before = inside->ms - asked[i].ms;
    EXPECT_GE(before, 0) << i;
    EXPECT_LE(before, kTickMs * (kLongestKeyLead + 4)) << i;  // the car slows down on its way
    EXPECT_EQ(asked[i].pan < 0, turns[i].turn == Turn::kLeft) << i;
  }
  EXPECT_TRUE(askedOf(lapOf(6, only(AidKind::kTurnCalls)).trace(), "codriver steer").empty());
}

TEST(PaceNotes, AreWordsInPlaceOfTones) {
  AidSettings settings;
  settings.turn(AidKind::kTurnCalls, true);
  settings.callStyle = kCallNotes;
  WheelScript driver(kMaple);
  Session session;
  session.options.controller = true;
  session.codriver = CodriverOptions{};
  session.folder.write(kAidFile, aidFileText(settings));
  Driver sees;
  sees.until = " Your time for ";
  sees.onTick = [&](const TickReport& tick) { return driver.after(tick); };
  const TraceRecord& trace = session.script(offTheGrid(1, Device::kWheel)).drive(sees).script("end").run();
  EXPECT_TRUE(trace.said("left, "));
  EXPECT_TRUE(askedOf(trace, "codriver turn").empty());
}

TEST(Warnings, AreHeardAtPitRoadAndAtTheWall) {
  Session session;
  session.codriver = CodriverOptions{.aids = only(AidKind::kWarnings)};
  const TraceRecord& trace =
      session.script(offTheGrid(1, Device::kKeys) + "wait tick 10\nset wallTicks 6\nwait tick 60\nend").run();
  EXPECT_TRUE(trace.said(" 6 of 10 wall contacts. "));
  const auto asked = askedOf(trace, "codriver pit");
  ASSERT_EQ(asked.size(), 4U);  // open, and closed
  EXPECT_LT(asked[0].pitch, asked[1].pitch);
  EXPECT_GT(asked[2].pitch, asked[3].pitch);
}

TEST(Lights, TickWhereTheGearIsUsedUpAndWhereTheSpeedIsTooHigh) {
  Session session;
  session.codriver = CodriverOptions{.aids = only(AidKind::kLights)};
  const TraceRecord& trace = session.script(offTheGrid(9, Device::kKeys) + "wait tick 75\nend").run();
  const auto shifts = askedOf(trace, "codriver shift"), brakes = askedOf(trace, "codriver brake");
  ASSERT_EQ(shifts.size(), 1U);  // first gear, held at its end
  ASSERT_FALSE(brakes.empty());  // the hairpin
  const auto moments = momentsOf(trace);
  const auto at = std::find_if(moments.begin(), moments.end(),
                               [&](const Moment& moment) { return moment.ms == shifts[0].ms; });
  ASSERT_NE(at, moments.end());
  EXPECT_GE(at->speed, 75);
  EXPECT_LT((at - 1)->speed, 75);
}

// --- What is heard

/// What the co-driver adds to a lap, left and right: the difference of two renders.
struct Added {
  Added(int track, AidKind kind) {
    KeptRender with, without;
    trace = lapOf(track, only(kind), &with).trace();
    lapOf(track, {}, &without);
    EXPECT_EQ(with.heard.size(), without.heard.size());
    for (std::size_t i = 0; i < std::min(with.heard.size(), without.heard.size()); ++i) {
      samples.push_back(static_cast<double>(with.heard[i]) - without.heard[i]);
    }
  }
  /// How strong a frequency is in `ms` milliseconds from `from` on, in one ear (0 left, 1 right).
  double strength(double hertz, std::int64_t from, int ms, int ear) const {
    double real = 0, imaginary = 0;
    const int count = ms * kRate / 1000;
    for (int i = 0; i < count; ++i) {
      const double window = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * i / count);
      const double sample = window * samples[static_cast<std::size_t>(2 * (from * kRate / 1000 + i) + ear)];
      real += sample * std::cos(2 * std::numbers::pi * hertz * i / kRate);
      imaginary += sample * std::sin(2 * std::numbers::pi * hertz * i / kRate);
    }
    return std::hypot(real, imaginary) / count;
  }
  double loudest(std::int64_t from, int ms) const {
    double loudest = 0;
    for (std::int64_t i = 2 * from * kRate / 1000; i < 2 * (from + ms) * kRate / 1000; ++i) {
      loudest = std::max(loudest, std::fabs(samples[static_cast<std::size_t>(i)]));
    }
    return loudest;
  }

  TraceRecord trace;
  std::vector<double> samples;
};

constexpr double kHeard = 300;  // of 32767
constexpr int kDelayMs = 6;     // of the limiter and of a gain on its way

TEST(Call, IsHeardAtItsMillisecondOnItsSideAndAtItsPitch) {
  const Added added(4, AidKind::kTurnCalls);  // turns to both sides
  const auto asked = askedOf(added.trace, "codriver turn");
  bool isLeftHeard = false, isRightHeard = false;
  for (std::size_t i = 0; i < asked.size(); i += 2) {
    const Asked& call = asked[i];
    EXPECT_LT(added.loudest(call.ms - 40, 38), kHeard) << i;
    EXPECT_GT(added.loudest(call.ms, 40), kHeard) << i;
    const int length = toneMs(turnsOf(kOhio)[i / 2].length) - kDelayMs;
    const int ear = call.pan < 0 ? 0 : 1;
    (ear == 0 ? isLeftHeard : isRightHeard) = true;
    const double there = added.strength(call.pitch, call.ms + kDelayMs, length, ear);
    EXPECT_GT(there, 10 * added.strength(call.pitch, call.ms + kDelayMs, length, 1 - ear)) << i;
    for (const double other : {0.5, 0.8, 1.25, 1.5}) {
      EXPECT_GT(there, 3 * added.strength(call.pitch * other, call.ms + kDelayMs, length, ear)) << i;
    }
  }
  EXPECT_TRUE(isLeftHeard);
  EXPECT_TRUE(isRightHeard);
}

TEST(Slider, IsHeardOnTheSideOfTheDangerAndSilentInTheMiddle) {
  const Added added(4, AidKind::kSlider);
  const auto asked = askedOf(added.trace, "codriver slider");
  ASSERT_FALSE(asked.empty());
  const auto moments = momentsOf(added.trace);
  for (const Asked& tone : asked) {
    const int ear = tone.pan < 0 ? 0 : 1;
    EXPECT_GT(added.strength(tone.pitch, tone.ms + kDelayMs, 85, ear),
              4 * added.strength(tone.pitch, tone.ms + kDelayMs, 85, 1 - ear));
  }
  // A long straight in the middle of the road.
  const auto straight = std::find_if(moments.begin(), moments.end(), [](const Moment& moment) {
    return moment.segment == 1 && moment.lapPosition > 4000;
  });
  EXPECT_EQ(straight->place, 50);
  EXPECT_EQ(added.loudest(straight->ms, 500), 0);
}

}  // namespace
}  // namespace vorn
