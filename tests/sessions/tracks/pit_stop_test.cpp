// Stops on pit road in the running game.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "recipes/pit_box.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/pit_stop_driver.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

using Leg = PitStopDriver::Leg;
using Manners = PitStopDriver::Manners;

/// Race ticks charged between the last tick of the approach and the first on the way out.
double charged(const OneRace& race) {
  double most = 0;
  for (std::size_t i = 1; i < race.ticks().size(); ++i) {
    most = std::max(most, race.ticks()[i].raceTicks - race.ticks()[i - 1].raceTicks - 1);
  }
  return most;
}

OneRace raceWithStop(int track, const Manners& manners = Manners()) {
  PitStopDriver driver(*allTracks()[track - 1], manners);
  return OneRace(track, Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); });
}

class CleanStop : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(OnEveryTrack, CleanStop, testing::Range(1, 11));

TEST_P(CleanStop, IsServedAndTheLapIsDrivenToItsEnd) {
  const OneRace race = raceWithStop(GetParam());
  EXPECT_EQ(race.exitStatus(), 0) << race.diagnostics();
  ASSERT_TRUE(race.isFinished());
  EXPECT_TRUE(race.trace().said(" Here's a"));
  EXPECT_TRUE(race.trace().said(" go! go! go! "));
  EXPECT_FALSE(race.trace().said("penalty"));
  EXPECT_DOUBLE_EQ(charged(race), 140);
  const auto segments = race.segments();
  EXPECT_THAT(std::vector<int>(segments.begin(), segments.begin() + 4), ElementsAre(1, 0, 1, 2));
  EXPECT_EQ(segments.size(), allTracks()[GetParam() - 1]->segments.size() + 2);
  for (std::size_t i = 1; i < race.ticks().size(); ++i) {
    const TickReport& before = race.ticks()[i - 1];
    const TickReport& tick = race.ticks()[i];
    EXPECT_EQ(tick.wallTicks, 0);
    EXPECT_EQ(tick.lapsCompleted, 0);
    EXPECT_EQ(tick.pit == 1, tick.segment == 0);
    if (before.pit == 0 || tick.pit == 1) continue;
    EXPECT_GT(tick.fuel, 21.99);  // the tank is full
    const double asked = race.ticks().front().lapPosition;
    EXPECT_NEAR(tick.lapPosition, asked + 555 + tick.speed, 1e-9);
  }
}

TEST(PitStop, HandsOutNothingWithTheSnackOff) {
  PitStopDriver driver(kMaple);
  bool isOff = false;
  const OneRace race(1, Device::kWheel, [&](const TickReport& tick) {
    const std::string off = isOff ? "" : "set pitRoadSnacks 2\n";
    isOff = true;
    return off + driver.after(tick) + (driver.leg() == Leg::kAfter ? "end\n" : "");
  });
  EXPECT_TRUE(race.trace().said(" go! go! go! "));
  EXPECT_FALSE(race.trace().said(" Here's a"));
  EXPECT_DOUBLE_EQ(charged(race), 140);
}

class BrakingOnTheWordTwo : public testing::TestWithParam<double> {};

INSTANTIATE_TEST_SUITE_P(AtMilesAnHour, BrakingOnTheWordTwo, testing::Values(45, 50, 60));

TEST_P(BrakingOnTheWordTwo, EndsInTheBox) {
  constexpr double kReaction = 0.4;  // seconds
  const double two = sounds::kPitBoxNumbers[3].seconds;
  PitStopDriver driver(kMaple,
                       {.laneSpeed = GetParam(), .boxSpeed = GetParam(), .brakesOn = two + kReaction});
  const OneRace race(1, Device::kWheel, [&](const TickReport& tick) {
    return driver.after(tick) + (driver.leg() == Leg::kAfter ? "end\n" : "");
  });
  EXPECT_TRUE(race.trace().said(" Here's a"));
  EXPECT_FALSE(race.trace().said("penalty"));
}

struct Fault {
  const char* name;
  Manners manners;
  std::vector<std::string> sentences;
  double ticks;
};

class FaultyStop : public testing::TestWithParam<Fault> {};

INSTANTIATE_TEST_SUITE_P(
    Faults, FaultyStop,
    testing::Values(
        Fault{"Short", {.brakesAt = 1500}, {" 10 second penalty for stopping short of your pit box. "}, 100},
        Fault{"Past", {.brakesAt = 3600}, {" 10 second penalty for passing your pit box. "}, 100},
        Fault{"Outside", {.place = 40}, {" 10 second penalty for stopping outside of your pit box. "}, 100},
        Fault{"Speeding",
              {.boxSpeed = 72, .brakesAt = 2400},
              {" 30 second penalty for speeding ", " miles an hour. "},
              300},
        Fault{"AllAtOnce",
              {.boxSpeed = 72, .brakesAt = 3600, .place = 40},
              {" 30 second penalty for speeding ", " 10 second penalty for passing your pit box. ",
               " 10 second penalty for stopping outside of your pit box. "},
              500}),
    [](const auto& tested) { return tested.param.name; });

TEST_P(FaultyStop, IsToldInOneTextAndCharged) {
  PitStopDriver driver(kMaple, GetParam().manners);
  const OneRace race(1, Device::kWheel, [&](const TickReport& tick) {
    return driver.after(tick) + (driver.leg() == Leg::kAfter ? "end\n" : "");
  });
  const TraceLine* told = race.trace().firstSaying("penalty");
  ASSERT_NE(told, nullptr);
  const std::string text = told->at("text");
  for (const std::string& sentence : GetParam().sentences) EXPECT_THAT(text, HasSubstr(sentence));
  EXPECT_FALSE(race.trace().said(" Here's a"));
  EXPECT_DOUBLE_EQ(charged(race), 140 + GetParam().ticks);
}

/// Buffers that were left looping: their last `Play` was 1, with neither `Stop` nor `release` after it.
std::vector<std::string> leftLooping(const TraceRecord& trace) {
  std::map<std::string, bool> isLooping;
  for (const TraceLine& line : trace.of("sound")) {
    const std::string operation = line.at("op");
    const std::string buffer = line.at("buffer");
    if (operation == "Play") isLooping[buffer] = line.at("value") == 1;
    if (operation == "Stop" || operation == "release") isLooping[buffer] = false;
  }
  std::vector<std::string> left;
  for (const auto& [buffer, loops] : isLooping) {
    if (loops) left.push_back(buffer);
  }
  return left;
}

class PitEscape : public testing::TestWithParam<Leg> {};

INSTANTIATE_TEST_SUITE_P(FromEveryLeg, PitEscape, testing::Values(Leg::kLane, Leg::kApproach, Leg::kWayOut));

TEST_P(PitEscape, LeadsToTheMenuInSilence) {
  PitStopDriver driver(kMaple);
  int inLeg = 0;
  bool isGivingUp = false;
  const OneRace race(1, Device::kWheel, [&](const TickReport& tick) -> std::string {
    if (isGivingUp) return "";
    const std::string statements = driver.after(tick);
    if (driver.leg() != GetParam() || ++inLeg < 5) return statements;
    isGivingUp = true;
    return "axis Y 0\ntap Escape\nwait say  Select. Exit Game. \nwait 3000\nend";
  });
  EXPECT_EQ(race.exitStatus(), 0) << race.diagnostics();
  EXPECT_TRUE(isGivingUp);
  EXPECT_EQ(race.trace().speech().back(), "1 Select. Exit Game. ");
  EXPECT_THAT(leftLooping(race.trace()), IsEmpty());
  EXPECT_THAT(race.trace().files(), Not(Contains(HasSubstr(".rec"))));
  EXPECT_FALSE(race.isFinished());
}

// No tick is traced while the car is serviced: the moment is taken from what is said.
class PitEscapeInService : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(AfterMilliseconds, PitEscapeInService, testing::Values(500, 2500, 7000, 12500));

TEST_P(PitEscapeInService, LeadsToTheMenuInSilence) {
  PitStopDriver driver(kMaple);
  const OneRace race(1, Device::kWheel, [&](const TickReport& tick) -> std::string {
    const std::string statements = driver.after(tick);
    // The car stands at the end of this tick.
    if (driver.leg() != Leg::kApproach || tick.speed > 1) return statements;
    return "wait say  Here's a\nwait " + std::to_string(GetParam()) +
           "\naxis Y 0\ntap Escape\nwait say  Select. Exit Game. \nwait 3000\nend";
  });
  EXPECT_EQ(race.exitStatus(), 0) << race.diagnostics();
  EXPECT_EQ(race.trace().speech().back(), "1 Select. Exit Game. ");
  EXPECT_THAT(leftLooping(race.trace()), IsEmpty());
  EXPECT_FALSE(race.trace().said(" go! go! go! "));
}

}  // namespace
}  // namespace vorn
