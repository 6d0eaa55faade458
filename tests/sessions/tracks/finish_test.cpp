// Every track is finished in one lap by drivers who see nothing but the ticks. Their
// times hold the whole model: whatever moves the car otherwise, moves them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <numeric>
#include <sstream>

#include "sessions/tracks/keyboard_driver.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
#include "tracks/catalogue.h"
#include "unit/tracks/listing.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

/// A lap as it comes out: car ticks, and race time in seconds.
struct LapTime {
  std::size_t ticks;
  double seconds;
};

struct Times {
  const char* name;
  LapTime wheel;
  LapTime planning;
  LapTime reflex;
};

constexpr Times kTimes[] = {
    {"Maple", {482, 49.231}, {485, 49.484}, {575, 58.741}},
    {"Painsville", {457, 46.661}, {461, 47.131}, {946, 96.592}},
    {"Chagrin", {488, 49.829}, {498, 50.897}, {627, 64.011}},
    {"Ohio", {608, 62.129}, {671, 68.47}, {1201, 122.634}},
    {"Chardon", {833, 85.047}, {834, 85.15}, {914, 93.303}},
    {"Erie", {863, 88.052}, {879, 89.698}, {2252, 229.82}},
    {"Mentor", {705, 72.01}, {785, 80.169}, {1451, 148.15}},
    {"Kirtland", {232, 23.712}, {233, 23.855}, {232, 23.728}},
    {"Chesterland", {643, 65.629}, {646, 65.96}, {1581, 161.342}},
    {"Geneva", {376, 38.439}, {380, 38.816}, {430, 43.929}},
};

class Finish : public testing::TestWithParam<int> {
 protected:
  const Track& track() const { return *allTracks()[GetParam() - 1]; }
  const listing::Listed& listed() const { return listing::kTracks[GetParam() - 1]; }
  const Times& times() const { return kTimes[GetParam() - 1]; }

  template <typename SomeDriver>
  void expectLap(Device device, const LapTime& lap) {
    SomeDriver driver(track());
    const OneRace race(GetParam(), device, [&](const TickReport& tick) { return driver.after(tick); });
    EXPECT_EQ(race.exitStatus(), 0) << race.diagnostics();
    ASSERT_TRUE(race.isFinished());
    for (const TickReport& tick : race.ticks()) ASSERT_EQ(tick.wallTicks, 0) << tick.raceTicks;
    expectWholeLap(race);
    EXPECT_EQ(race.trace().ticks().size(), lap.ticks);
    EXPECT_EQ(race.raceTime(), lap.seconds);
  }

  void expectWholeLap(const OneRace& race) const {
    std::vector<int> segments(listed().segments);
    std::iota(segments.begin(), segments.end(), 1);
    EXPECT_THAT(race.segments(), ElementsAreArray(segments));
    std::vector<std::string> cues;
    for (const listing::Row& row : listed().rows) cues.push_back("vorn1t" + std::to_string(row.cue));
    EXPECT_THAT(race.filesOf("warnBuffer"), ElementsAreArray(cues));
    EXPECT_TRUE(race.trace().said(listed().welcome));
    EXPECT_THAT(race.filesOf("oneShotBuffer"), Not(Contains("vorn15")));  // no crash
  }
};

INSTANTIATE_TEST_SUITE_P(OneLap, Finish, testing::Range(1, 11),
                         [](const auto& tested) { return kTimes[tested.index].name; });

TEST_P(Finish, ByWheel) {
  expectLap<WheelScript>(Device::kWheel, times().wheel);
}

TEST_P(Finish, ByKeysThinkingAhead) {
  expectLap<PlanningDriver>(Device::kKeys, times().planning);
}

TEST_P(Finish, ByKeysAndReflex) {
  expectLap<ReflexDriver>(Device::kKeys, times().reflex);
}

std::string withDecimals(double seconds) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << seconds;
  return text.str();
}

TEST_P(Finish, IsInTheDocumentAsMeasured) {
  std::ifstream file(VORN_DOCS "/tracks.md");
  const std::string document(std::istreambuf_iterator<char>(file), {});
  const std::string row = std::string("| ") + track().name + " | " + withDecimals(times().wheel.seconds) +
                          " | " + withDecimals(times().planning.seconds) + " | " +
                          withDecimals(times().reflex.seconds) + " |";
  EXPECT_THAT(document, HasSubstr(row));
}

double topSpeedOf(int track) {
  WheelScript driver(*allTracks()[track - 1]);
  const OneRace race(track, Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); });
  double top = 0;
  for (const TickReport& tick : race.ticks()) top = std::max(top, tick.speed);
  return top;
}

TEST(TopSpeed, IsUnlimitedFromTheHillTopOnly) {
  EXPECT_GT(topSpeedOf(5), 228);
  EXPECT_LE(topSpeedOf(5), 231.7);
  EXPECT_EQ(topSpeedOf(1), 228);
}

TEST(SwimmingHole, IsJumpedInTheRaceAsOnTheBench) {
  WheelScript driver(kChesterland);
  const OneRace race(9, Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); });
  const auto files = race.filesOf("oneShotBuffer");
  const auto ramp = std::find(files.begin(), files.end(), "vorn20");
  ASSERT_NE(ramp, files.end());
  EXPECT_THAT(std::vector<std::string>(ramp, ramp + 3), ElementsAre("vorn20", "vorn7", "vorn21"));
  const auto& ticks = race.ticks();
  const auto landed =
      std::find_if(ticks.begin(), ticks.end(), [](const TickReport& t) { return t.segment == 5; });
  EXPECT_NEAR(landed->speed, (landed - 1)->speed - 75, 3);
}

TEST(KirtlandsFirstCue, StopsShortOfItsFullVolume) {
  WheelScript driver(kKirtland);
  const OneRace race(8, Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); });
  int loudest = -10000;
  bool isFirstCue = true;
  for (const std::string& operation : race.trace().soundsOf("warnBuffer")) {
    isFirstCue = isFirstCue && operation != "create vorn1t54.wav";
    if (isFirstCue && operation.rfind("SetVolume ", 0) == 0) {
      loudest = std::max(loudest, std::stoi(operation.substr(10)));
    }
  }
  EXPECT_LT(loudest, -400);
  EXPECT_GT(loudest, -900);  // within a tick's way of -417
}

TEST(GenevasBanking, LetsAStandingCarSlideBackForMinutes) {
  WheelScript driver(kGeneva);
  int standing = 0;
  double lowest = 0;
  const OneRace race(10, Device::kWheel, [&](const TickReport& tick) -> std::string {
    if (tick.segment == 1) return driver.after(tick);
    lowest = std::min(lowest, tick.lapPosition);
    if (++standing == 1) return "axis X 0\naxis Y 0\nset speed 0\nset lateralPosition 95\n";
    return standing == 3000 ? "end" : "";
  });
  EXPECT_EQ(race.exitStatus(), 0) << race.diagnostics();
  EXPECT_LT(lowest, -27000);
}

}  // namespace
}  // namespace vorn
