#include "pit/pit_road.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sound/playback.h"
#include "unit/pit/rig.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// What tells the legs of a stop apart: the length over which their cue rises.
constexpr double kLane = 4500;
constexpr double kBox = 5000;
constexpr double kWayOut = 3000;

/// How a stop is driven. The car rolls in neutral, so that nothing but the plan changes its speed.
struct Plan {
  int side = 1;
  double entry = 0;
  double laneSpeed = 50;
  double boxSpeed = 50;
  double stopAt = 3000;    ///< brought to a stand exactly here; never where the approach ends before
  double stopBeside = 10;  ///< lateral place throughout the approach
};

class PitRoad : public testing::Test {
 protected:
  Rig rig;
  GameState& g = rig.g;
  double boxEnd = -1;  ///< where the approach ended

  PitRoad() {
    rig.platform.milliseconds = {{"vorn1t73", 8297}, {"vorn26", 2400}, {"vorn27", 1720}, {"vorn25", 3000},
                                 {"vorn15", 200},    {"vorn11", 700},  {"vorn12", 700},  {"vorn13", 1000},
                                 {"vorn14", 200},    {"vorn2", 4900}};
    g.gear = 0;
    g.engineBuffer->Play(SoundBuffer::kLooping);
    sars(g);
    rig.platform.clearLog();
  }

  void steerCar(const Plan& plan) {
    if (g.warnDistance == kLane) {
      g.speed = plan.laneSpeed;
      g.lateralPosition = 50;
    } else if (g.warnDistance == kBox) {
      g.speed = plan.boxSpeed;
      g.lateralPosition = plan.stopBeside;
      if (g.lapPosition >= plan.stopAt) {
        g.lapPosition = plan.stopAt;
        g.speed = 0;
      }
      boxEnd = g.lapPosition;
    } else {
      g.speed = 60;
      g.lateralPosition = 50;
    }
  }

  void drive(const Plan& plan) {
    rig.platform.onTick = [&] { steerCar(plan); };
    g.lapPosition = plan.entry;
    g.speed = plan.laneSpeed;
    pitroad(g, plan.side);
  }

  std::vector<std::string> spoken() const { return rig.platform.logOf("say "); }
  /// The ticks that were charged beside those driven.
  double charged() const { return g.raceTicks - static_cast<double>(rig.platform.ticks.size()); }
};

constexpr const char* kGo = "say  go! go! go! ";
constexpr const char* kCoffee = "say  Here's a coffee";

TEST_F(PitRoad, RefusesACarBeyond2500) {
  g.lapPosition = 2501;
  g.speed = 100;
  g.segment = 1;
  const std::int32_t start = rig.platform.now;
  pitroad(g, 1);
  EXPECT_EQ(g.pitEntryMissed, 1);
  EXPECT_EQ(g.lapPosition, 2501);
  EXPECT_EQ(g.lateralPosition, 50);
  EXPECT_EQ(g.pit, 0);
  EXPECT_EQ(g.segment, 1);
  EXPECT_THAT(rig.platform.log, IsEmpty());
  EXPECT_EQ(rig.platform.now - start, 3);  // pending keys are forgotten, nothing else
}

TEST_F(PitRoad, AcceptsACarAt2500) {
  g.pitEntryMissed = 1;
  drive({.entry = 2500});
  EXPECT_EQ(g.pitEntryMissed, 0);
  EXPECT_EQ(g.lapPosition, 3055);
}

TEST_F(PitRoad, OpensWithChimeMarkAndCue) {
  drive({.entry = 900});
  const std::vector<std::string> expected = {
      "panBuffer create vorn28",
      "panBuffer SetCurrentPosition 0",
      "panBuffer SetVolume 0",
      "panBuffer SetFrequency 22051",
      "panBuffer SetPan -1000",
      "panBuffer Play 0",
      "warnBuffer Stop",
      "markBuffer Play 0",
      "warnBuffer release",
      "warnBuffer create vorn1t72",
      "warnBuffer SetCurrentPosition 0",
      "warnBuffer SetVolume -6500",
      "warnBuffer SetPan -2000",
      "warnBuffer SetFrequency 22051",
      "warnBuffer Play 1",
      "warnBuffer SetVolume -1800",  // first tick: 18 for each percent still to go
  };
  std::vector<std::string> opening(rig.platform.log.begin(), rig.platform.log.begin() + 16);
  EXPECT_THAT(opening, ElementsAreArray(expected));
}

TEST_F(PitRoad, PutsTheCarIntoTheLaneAndLetsItDrift) {
  g.speed = 35;
  g.lapPosition = 900;
  g.autoSpeedometer = kOff;
  rig.platform.onTick = [&] {
    if (rig.platform.ticks.size() == 30) g.escapePressed = 1;
  };
  pitroad(g, 1);
  ASSERT_EQ(rig.platform.ticks.size(), 30u);
  double place = 35;  // 900 / 30 + 5
  double way = 0;
  for (const TickReport& tick : rig.platform.ticks) {
    place += 0.2;
    place += 35 / (35 - way / 350);
    way += 35;
    EXPECT_DOUBLE_EQ(tick.lateralPosition, place);
    EXPECT_DOUBLE_EQ(tick.lapPosition, way);
  }
}

TEST_F(PitRoad, TellsTheTraceWhereTheCarIs) {
  g.segment = 1;
  bool wasElsewhere = false;
  Plan plan;
  rig.platform.onTick = [&] {
    steerCar(plan);
    wasElsewhere |= rig.platform.ticks.back().pit != 1 || rig.platform.ticks.back().segment != 0;
  };
  g.speed = 50;
  pitroad(g, 1);
  EXPECT_FALSE(wasElsewhere);
  EXPECT_EQ(g.pit, 0);
}

TEST_F(PitRoad, BoxVoiceFollowsTheCar) {
  drive({.boxSpeed = 60});
  const auto frequencies = rig.platform.logOf("warnBuffer SetFrequency");
  EXPECT_THAT(frequencies, Contains("warnBuffer SetFrequency 24860"));  // 8000 + 281 x 60
  const auto& log = rig.platform.log;
  const auto created = std::find(log.begin(), log.end(), "warnBuffer create vorn1t73");
  ASSERT_NE(created, log.end());
  EXPECT_THAT(std::vector<std::string>(created, created + 7),
              ElementsAre("warnBuffer create vorn1t73", "warnBuffer SetCurrentPosition 0",
                          "warnBuffer SetVolume 0", "warnBuffer SetPan -1000", "warnBuffer Play 0",
                          // the first tick: 2 for each percent of 5000 still to go, and the car's place
                          "warnBuffer SetVolume -200", "warnBuffer SetPan -1500"));
}

TEST_F(PitRoad, BoxVoiceIsCappedAt48000Hertz) {
  drive({.boxSpeed = 160});
  EXPECT_THAT(rig.platform.logOf("warnBuffer SetFrequency"), Contains("warnBuffer SetFrequency 48000"));
}

TEST_F(PitRoad, ServesACleanStopWithASnack) {
  drive({});
  EXPECT_THAT(spoken(), ElementsAre(kCoffee, kGo));
  EXPECT_EQ(charged(), 140);
}

TEST_F(PitRoad, SaysNothingOfACleanStopWithTheSnackOff) {
  g.pitRoadSnacks = kOff;
  drive({});
  EXPECT_THAT(spoken(), ElementsAre(kGo));
  EXPECT_EQ(charged(), 140);
}

TEST_F(PitRoad, HandsOutNoSnackAfterAFault) {
  drive({.stopBeside = 20.1});
  EXPECT_THAT(spoken(), ElementsAre("say  10 second penalty for stopping outside of your pit box. ", kGo));
  EXPECT_EQ(charged(), 240);
}

TEST_F(PitRoad, ChargesACarThatStopsShort) {
  drive({.stopAt = 2499.5});
  EXPECT_THAT(spoken(), ElementsAre("say  10 second penalty for stopping short of your pit box. ", kGo));
  EXPECT_EQ(charged(), 240);
}

TEST_F(PitRoad, ChargesACarThatPassesItsBox) {
  drive({.stopAt = 3500.5});
  EXPECT_THAT(spoken(), ElementsAre("say  10 second penalty for passing your pit box. ", kGo));
  EXPECT_EQ(charged(), 240);
}

TEST_F(PitRoad, AcceptsTheVeryEdgesOfTheBox) {
  for (const double edge : {2500.0, 3500.0}) {
    rig.platform.clearLog();
    drive({.stopAt = edge, .stopBeside = 20});
    EXPECT_EQ(boxEnd, edge);
    EXPECT_THAT(spoken(), ElementsAre(kCoffee, kGo));
  }
}

TEST_F(PitRoad, AllowsExactly65) {
  drive({.boxSpeed = 65});
  EXPECT_THAT(spoken(), ElementsAre(kCoffee, kGo));
}

TEST_F(PitRoad, ChargesSpeedingOnceHoweverLongItLasts) {
  drive({.boxSpeed = 65.1});
  EXPECT_THAT(spoken(), ElementsAre("say  30 second penalty for speeding 65.1 miles an hour. ", kGo));
  EXPECT_EQ(charged(), 440);
}

TEST_F(PitRoad, SpeedInTheLaneIsNoOffence) {
  // The car is down to 65 by the first tick of the approach.
  rig.platform.onTick = [&, plan = Plan{.boxSpeed = 60}] {
    steerCar(plan);
    if (g.warnDistance == kLane) g.speed = g.lapPosition < 4000 ? 200 : 60;
  };
  g.speed = 200;
  pitroad(g, 1);
  EXPECT_THAT(spoken(), ElementsAre(kCoffee, kGo));
}

TEST_F(PitRoad, RemembersTheLastSpeedAboveTheLimit) {
  rig.platform.onTick = [&, plan = Plan{}] {
    steerCar(plan);
    if (g.warnDistance == kBox && g.speed > 0)
      g.speed = g.lapPosition < 500 ? 120 : g.lapPosition < 1500 ? 72.26 : 50;
  };
  g.speed = 50;
  pitroad(g, 1);
  EXPECT_THAT(spoken(), ElementsAre("say  30 second penalty for speeding 72.3 miles an hour. ", kGo));
}

TEST_F(PitRoad, SaysAllFaultsInOneTextAndChargesThemAll) {
  drive({.boxSpeed = 100, .stopAt = 4000, .stopBeside = 50});
  EXPECT_THAT(spoken(), ElementsAre("say  30 second penalty for speeding 100 miles an hour. "
                                    " 10 second penalty for passing your pit box. "
                                    " 10 second penalty for stopping outside of your pit box. ",
                                    kGo));
  EXPECT_EQ(charged(), 140 + 500);
}

TEST_F(PitRoad, StopIsOverWhenTheVoiceHasEnded) {
  drive({.boxSpeed = 30, .stopAt = 9999});
  // 8.297 s at 22050 Hz are 11.1 s at 8000 + 281 x 30 Hz: 113 ticks of 30 units.
  EXPECT_NEAR(boxEnd, 3360, 60);
  EXPECT_THAT(spoken(), ElementsAre(kCoffee, kGo));
}

TEST_F(PitRoad, NoCarRunsPastTheEndOfTheBoxArea) {
  drive({.boxSpeed = 120, .stopAt = 9999});
  EXPECT_LE(boxEnd, 4750 + 120);  // the tick's own way comes on top
  EXPECT_GT(boxEnd, 4750);
  EXPECT_THAT(spoken().front(), HasSubstr("passing your pit box"));
}

TEST_F(PitRoad, ServesTheCarStanding) {
  std::vector<double> speeds;
  rig.platform.onYield = [&] {
    if (!rig.platform.logOf("oneShotBuffer create vorn25").empty() && rig.platform.timeOf(kGo) < 0) {
      speeds.push_back(g.speed);
    }
  };
  drive({.boxSpeed = 30, .stopAt = 9999});
  ASSERT_FALSE(speeds.empty());
  EXPECT_THAT(speeds, testing::Each(0.0));
  EXPECT_EQ(g.gear, 0);  // as it was
}

TEST_F(PitRoad, CrewIsHeardAtItsTicks) {
  drive({});
  const RigPlatform& p = rig.platform;
  const std::int32_t start = p.timeOf("oneShotBuffer create vorn25");
  const auto tickOf = [&](const std::string& line) { return (p.timeOf(line) - start) / 99 + 1; };
  EXPECT_EQ(tickOf("oneShotBuffer Play 1"), 20);
  EXPECT_EQ(tickOf("oneShotBuffer Stop"), 130);
  EXPECT_EQ(tickOf(kGo), 141);
  std::vector<std::pair<int, std::string>> guns;
  for (std::size_t i = 0; i < p.log.size(); ++i) {
    if (p.logTimes[i] >= start && p.log[i].rfind("panBuffer create", 0) == 0) {
      // Its pan follows position, volume and frequency.
      guns.emplace_back((p.logTimes[i] - start) / 99 + 1,
                        p.log[i].substr(17) + " " + p.log[i + 4].substr(10));
    }
  }
  EXPECT_THAT(guns, ElementsAre(std::pair(35, "vorn26 SetPan 400"), std::pair(65, "vorn27 SetPan 400"),
                                std::pair(90, "vorn26 SetPan -400"), std::pair(120, "vorn27 SetPan -400")));
}

TEST_F(PitRoad, HoseIsQuieterAndAHertzHigher) {
  g.soundVolume = -500;
  drive({});
  EXPECT_THAT(rig.platform.logOf("oneShotBuffer"),
              ElementsAre("oneShotBuffer create vorn25", "oneShotBuffer SetCurrentPosition 0",
                          "oneShotBuffer SetVolume -850", "oneShotBuffer SetFrequency 22051",
                          "oneShotBuffer Play 1", "oneShotBuffer Stop", "oneShotBuffer release"));
}

TEST_F(PitRoad, ServiceLasts140TicksOf99Milliseconds) {
  drive({});
  const std::int32_t start = rig.platform.timeOf("oneShotBuffer create vorn25");
  EXPECT_NEAR(rig.platform.timeOf(kGo) - start, 140 * 99, 2);
}

TEST_F(PitRoad, DriverMayRevDuringTheService) {
  double highest = 0;
  g.joyGasBrake = -7350;
  rig.platform.onYield = [&] {
    if (g.speed == 0 && rig.platform.timeOf("oneShotBuffer Play 1") >= 0)
      highest = std::max(highest, g.engineRpm);
  };
  drive({});
  EXPECT_EQ(highest, 73);
}

TEST_F(PitRoad, KeyboardDriverMayRevToo) {
  g.inputDevice = kKeyboard;
  rig.platform.keys[g.keyMapGas] = 128;
  double highest = 0;
  rig.platform.onYield = [&] {
    if (g.speed == 0 && rig.platform.timeOf("oneShotBuffer Play 1") >= 0)
      highest = std::max(highest, g.engineRpm);
  };
  drive({});
  EXPECT_EQ(highest, 100);
}

TEST_F(PitRoad, SilencesTheSoundsOfDrivingForTheService) {
  rig.platform.onTick = [&, plan = Plan{}] {
    steerCar(plan);
    if (g.warnDistance == kBox && g.speed == 0) g.wallScrapePlaying = 1;  // it came along the wall
  };
  bool isScraping = false;
  rig.platform.onYield = [&] {
    if (rig.platform.timeOf("oneShotBuffer Play 1") >= 0) isScraping |= g.wallScrapePlaying == 1;
  };
  g.speed = 50;
  pitroad(g, 1);
  const RigPlatform& p = rig.platform;
  const auto serviceBegins = std::find(p.log.begin(), p.log.end(), "oneShotBuffer create vorn25");
  std::vector<std::string> before(p.log.begin(), serviceBegins);
  // In front of the snack stand the stops of the approach's end.
  ASSERT_GE(before.size(), 6u);
  before.pop_back();
  EXPECT_THAT(std::vector<std::string>(before.end() - 5, before.end()),
              ElementsAre("sound8Buffer Stop", "sound8Buffer SetCurrentPosition 0", "sound10Buffer Stop",
                          "sound18Buffer Stop", "sound9Buffer Stop"));
  EXPECT_FALSE(isScraping);
  const auto goes = std::find(p.log.begin(), p.log.end(), kGo);
  EXPECT_THAT(std::vector<std::string>(goes - 4, goes),
              ElementsAre("sound18Buffer SetVolume -6500", "sound18Buffer Play 1",
                          "sound9Buffer SetVolume -6500", "sound9Buffer Play 1"));
}

TEST_F(PitRoad, WayOutHasTheCueOnTheOtherSideAndNoDrift) {
  std::vector<double> places;
  rig.platform.onTick = [&, plan = Plan{}] {
    const double place = g.lateralPosition;
    steerCar(plan);
    if (g.warnDistance == kWayOut) {
      places.push_back(place);
      g.lateralPosition = place;
    }
  };
  g.speed = 50;
  pitroad(g, 1);
  EXPECT_THAT(places, testing::Each(13.0));
  EXPECT_EQ(places.size(), 51u);  // one standing, 50 at 60 mph
  const auto& log = rig.platform.log;
  const auto goes = std::find(log.begin(), log.end(), kGo);
  EXPECT_THAT(std::vector<std::string>(goes + 1, goes + 9),
              ElementsAre("markBuffer Play 0", "warnBuffer release", "warnBuffer create vorn1t72",
                          "warnBuffer SetCurrentPosition 0", "warnBuffer SetVolume -6500",
                          "warnBuffer SetPan 2000", "warnBuffer SetFrequency 22051", "warnBuffer Play 1"));
}

TEST_F(PitRoad, LeadsBackToTheTrackWithAFullTank) {
  g.fuel = 1.5;
  g.lapsCompleted = 2;
  drive({.entry = 900});
  EXPECT_EQ(g.lapPosition, 1455);
  EXPECT_EQ(g.lateralPosition, 10);
  EXPECT_EQ(g.fuel, 22);
  EXPECT_EQ(g.lapsCompleted, 2);
  const auto& log = rig.platform.log;
  EXPECT_EQ(log[log.size() - 2], "warnBuffer Stop");
  EXPECT_EQ(log.back(), "markBuffer Play 0");
}

/// What a stop sounds like across the road: pans of everything that is started, in order.
std::vector<int> startingPans(const RigPlatform& p) {
  std::vector<int> pans;
  for (std::size_t i = 0; i < p.log.size(); ++i) {
    if (p.log[i].find(" create vorn") == std::string::npos || p.log[i].rfind("oneShot", 0) == 0) continue;
    const std::string setPan = p.log[i].substr(0, p.log[i].find(' ')) + " SetPan ";
    std::size_t at = i;
    while (p.log[at].rfind(setPan, 0) != 0) ++at;
    pans.push_back(std::stoi(p.log[at].substr(setPan.size())));
  }
  return pans;
}

TEST(PitRoadSides, AreMirrorImages) {
  std::vector<std::vector<int>> pans;
  std::vector<std::vector<double>> places;
  for (const int side : {1, 2}) {
    Rig rig;
    GameState& g = rig.g;
    rig.platform.milliseconds["vorn1t73"] = 8297;
    g.gear = 0;
    g.speed = 25;
    g.lapPosition = 300;
    std::vector<double> seen;
    rig.platform.onTick = [&] {
      seen.push_back(side == 1 ? g.lateralPosition : 100 - g.lateralPosition);
      if (g.warnDistance == kLane && seen.size() % 20 == 0) g.lateralPosition = side == 1 ? 10 : 90;
      if (g.warnDistance == kBox) g.lateralPosition = side == 1 ? 20 : 80;
      if (g.warnDistance == kBox && g.lapPosition > 3000) g.speed = 0;
      if (g.warnDistance == kWayOut) g.speed = 60;
    };
    pitroad(g, side);
    seen.push_back(side == 1 ? g.lateralPosition : 100 - g.lateralPosition);
    EXPECT_THAT(rig.platform.logOf("say "), ElementsAre(kCoffee, kGo));
    EXPECT_EQ(g.lapPosition, 855);
    pans.push_back(startingPans(rig.platform));
    places.push_back(seen);
  }
  // Chime, lane, box, four wheel guns, way out.
  EXPECT_THAT(pans[0], ElementsAre(-1000, -2000, -1000, 400, 400, -400, -400, 2000));
  EXPECT_THAT(pans[1], ElementsAre(1000, 2000, 1000, -400, -400, 400, 400, -2000));
  ASSERT_EQ(places[0].size(), places[1].size());
  for (std::size_t i = 0; i < places[0].size(); ++i) EXPECT_NEAR(places[0][i], places[1][i], 1e-9);
}

class MissingSound : public PitRoad, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(OfTheService, MissingSound, testing::Values("vorn25", "vorn26", "vorn27"));

TEST_P(MissingSound, IsSkipped) {
  rig.platform.missingFiles = {GetParam()};
  drive({});
  EXPECT_THAT(spoken(), ElementsAre(kCoffee, kGo));
  EXPECT_EQ(g.fuel, 22);
  EXPECT_EQ(charged(), 140);
}

TEST_F(PitRoad, BoxVoiceEndsWithTheStop) {
  drive({.stopAt = 1500});
  const auto log = rig.platform.logOf("warnBuffer");
  const auto voice = std::find(log.begin(), log.end(), "warnBuffer create vorn1t73");
  ASSERT_NE(voice, log.end());
  const auto next = std::find(voice + 1, log.end(), "warnBuffer create vorn1t72");
  ASSERT_NE(next, log.end());
  EXPECT_NE(std::find(voice, next, "warnBuffer Stop"), next);
  EXPECT_LT(rig.platform.timeOf("warnBuffer Stop"), rig.platform.timeOf("oneShotBuffer create vorn25"));
}

TEST_F(PitRoad, CrashInTheApproachEndsTheBoxVoiceForGood) {
  bool hasCrashed = false;
  rig.platform.onTick = [&, plan = Plan{}] {
    steerCar(plan);
    if (g.warnDistance == kBox && g.lapPosition > 1000 && !hasCrashed) {
      hasCrashed = true;
      g.wallTicks = 20;
      g.lateralPosition = 0;  // into the wall at the next tick
    }
  };
  rig.platform.onYield = [&] {  // restarts as soon as the marshals let him
    if (!hasCrashed || rig.platform.timeOf(kGo) >= 0) return;
    g.btnStartEngine = 1;
    g.joyGasBrake = -10000;
    g.btnUpShift = g.gear == 0 && g.speed == 0 ? 1 : 0;
    EXPECT_EQ(rig.platform.sounding().count("warnBuffer looping"), 0u) << rig.platform.now;
  };
  g.speed = 50;
  g.inputDevice = kJoystick;
  pitroad(g, 1);
  EXPECT_TRUE(hasCrashed);
  EXPECT_THAT(spoken(), Contains(kGo));
}

TEST_F(PitRoad, WithoutTheBoxVoiceTheApproachEndsAtOnce) {
  rig.platform.missingFiles = {"vorn1t73"};
  drive({});
  EXPECT_THAT(spoken().front(), HasSubstr("stopping short of your pit box"));
  EXPECT_EQ(g.fuel, 22);
}

// Escape at moments through the whole stop, in steps that fall into every leg and between them.
TEST(PitRoadEscape, LeavesAnyStageWithNoSoundRunning) {
  std::set<std::string> stagesSeen;
  for (int moment = 1; moment < 40000; moment += 430) {
    Rig rig;
    GameState& g = rig.g;
    rig.platform.milliseconds = {{"vorn1t73", 8297}, {"vorn26", 2400}, {"vorn27", 1720}, {"vorn28", 635}};
    g.gear = 0;
    g.segment = 1;
    g.speed = 50;
    g.engineBuffer->Play(SoundBuffer::kLooping);
    sars(g);
    rig.platform.onTick = [&] {
      g.lateralPosition = 10;
      if (g.warnDistance == kBox && g.lapPosition > 3000) g.speed = 0;
      if (g.warnDistance == kWayOut) g.speed = 60;
    };
    const std::int32_t end = rig.platform.now + moment;
    std::int32_t pressed = 0;
    rig.platform.onYield = [&] {
      if (rig.platform.now < end || pressed != 0) return;
      pressed = rig.platform.now;
      g.escapePressed = 1;
    };
    pitroad(g, 1);
    if (pressed == 0) break;  // the stop was over
    EXPECT_EQ(g.pit, 0) << moment;
    EXPECT_LE(rig.platform.now - pressed, 130) << moment;
    const bool isServed = rig.platform.timeOf("oneShotBuffer create vorn25") >= 0;
    stagesSeen.insert(g.warnDistance == kLane     ? "lane"
                      : g.warnDistance == kWayOut ? "way out"
                      : isServed                  ? "service"
                                                  : "box");
    stopall(g);  // as the shell does after every race
    for (const char* slot : {"warnBuffer", "oneShotBuffer", "panBuffer"}) {
      EXPECT_EQ(rig.platform.sounding().count(slot), 0u) << slot << " at " << moment;
    }
    for (const std::string& state : rig.platform.sounding()) {
      EXPECT_THAT(state, Not(HasSubstr("looping"))) << moment;
    }
  }
  EXPECT_THAT(stagesSeen, ElementsAre("box", "lane", "service", "way out"));
}

TEST_F(PitRoad, EscapeInACrashInTheApproachChargesNothing) {
  rig.platform.onTick = [&, plan = Plan{}] {
    steerCar(plan);
    if (g.warnDistance == kBox && g.lapPosition > 1000) {
      g.wallTicks = 20;
      g.lateralPosition = 0;  // into the wall at the next tick
    }
  };
  rig.platform.onYield = [&] {
    // The wreck has been put back and waits for its engine.
    if (rig.platform.timeOf("oneShotBuffer create vorn14") < 0 || g.speed > 0) return;
    g.escapePressed = 1;
    g.lastKeyCode = "27";
  };
  g.speed = 50;
  pitroad(g, 1);
  EXPECT_EQ(g.escapePressed, 1);
  EXPECT_THAT(spoken(), IsEmpty());
  EXPECT_EQ(charged(), 0);
}

}  // namespace
}  // namespace vorn
