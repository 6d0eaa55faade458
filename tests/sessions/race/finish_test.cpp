// Over the line: the clock, the finish, the results.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "sessions/race/race_scene.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

// What follows the last car tick.
Moments afterTheLine(const TraceRecord& trace) {
  const int ticks = static_cast<int>(trace.ticks().size());
  Moments moments = momentsFrom(trace, "tick", ticks - 1);
  moments.erase(moments.begin());
  return moments;
}

constexpr int kRestOfTheTickMs = 98;

TEST(Finish, SoundsHornAndCrowdAndRevsTheEngine) {
  Session session;
  raceInAHurry(session);
  const Moments moments = first(afterTheLine(session.run()), 29);
  EXPECT_THAT(texts(moments),
              ElementsAre("sound4Buffer Play 0", "oneShotBuffer release", "oneShotBuffer create vorn6.wav",
                          "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
                          StartsWith("oneShotBuffer SetFrequency "), "oneShotBuffer Play 0",  //
                          "engineBuffer Stop", "wallLeftBuffer Stop", "wallRightBuffer Stop",
                          "warnBuffer Stop", "sound18Buffer Stop", "sound9Buffer Stop", "sound10Buffer Stop",
                          "sound8Buffer Stop",  //
                          "wallLeftBuffer SetVolume -1000", "wallLeftBuffer SetPan -5000",
                          "wallRightBuffer SetVolume -1000", "wallRightBuffer SetPan 5000",
                          "wallLeftBuffer Play 1", "wallRightBuffer Play 1", "sound18Buffer SetVolume -6500",
                          "sound18Buffer Play 1", "sound9Buffer SetVolume -6500", "sound9Buffer Play 1",  //
                          "engineBuffer SetFrequency 22051", "engineBuffer Play 1",
                          StartsWith("engineBuffer SetCurrentPosition "),
                          StartsWith("engineBuffer SetCurrentPosition ")));
  const std::int64_t line = kRestOfTheTickMs + 3;
  EXPECT_EQ(when(moments, "sound4Buffer Play 0"), line);
  EXPECT_EQ(when(moments, "oneShotBuffer Play 0"), line + 501 + 3);
  EXPECT_EQ(when(moments, "engineBuffer Play 1"), line + 501 + 3 + 101);
}

// Steps of three from the revolutions at the line up to a hundred, then from a hundred down to four.
TEST(Finish, TakesThirtyThreeStepsDownAfterThoseUp) {
  Session session;
  raceInAHurry(session);
  const TraceRecord& trace = session.run();
  const double atTheLine = trace.ticks().back().at("engineRpm");
  const int up = static_cast<int>(std::floor((100 - atTheLine) / 3)) + 1;
  const Moments moments = afterTheLine(trace);
  const Moments stops = about(moments, "engineBuffer Stop");
  ASSERT_GE(stops.size(), 2U);
  EXPECT_EQ(stops[1].ms - when(moments, "engineBuffer Play 1"), (up + 33) * 22);
}

TEST(Finish, EndsInSilence) {
  Session session;
  raceInAHurry(session);
  session.script("wait 2000\n");
  const TraceRecord& trace = session.run();
  EXPECT_THAT(looping(trace), IsEmpty());
  EXPECT_EQ(oneShotLeftPlaying(trace), "");
  const auto told = texts(afterTheLine(trace));
  const auto last = std::find(told.begin() + 28, told.end(), "engineBuffer Stop");
  ASSERT_LT(told.end() - last, 100);
  EXPECT_THAT(
      std::vector<std::string>(last, last + 8),
      ElementsAre("engineBuffer Stop", "oneShotBuffer release", "oneShotBuffer create vorn19.wav",
                  "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
                  StartsWith("oneShotBuffer SetFrequency "), "oneShotBuffer Play 0", "oneShotBuffer Stop"));
}

TEST(Finish, LetsTheDriverHonkByButton) {
  Session session;
  session.options.controller = true;
  Driver driver = hurriedDriver(" Your time for ");
  driver.onTick = [hurried = driver.onTick](const TickReport& tick) {
    const bool isOver = tick.segment == 7 && tick.lapPosition >= 9000;
    return isOver ? "wait 900\nbutton 6 down\nwait 100\nbutton 6 up\n" : hurried(tick);
  };
  session.script(atMainMenu() + toTrack(1, true) + enterLaps("1") + startOnKeyboard()).drive(driver);
  EXPECT_THAT(about(afterTheLine(session.run()), "hornBuffer"),
              SizeIs(testing::AllOf(testing::Ge(4U), testing::Le(5U))));
}

TEST(Finish, PlaysNoMark) {
  Session session;
  raceInAHurry(session);
  const TraceRecord& trace = session.run();
  EXPECT_THAT(texts(afterTheLine(trace)), Not(Contains("markBuffer Play 0")));
  const auto marks = trace.soundsOf("markBuffer");
  EXPECT_EQ(std::count(marks.begin(), marks.end(), "Play 0"), 6);  // between seven segments
}

// The clock.

TEST(FinishTime, LosesTheShareOfTheLastTickBeyondTheLine) {
  Session session;
  raceInAHurry(session);
  session.script("get raceTicks\nget raceTime\nget lapPosition\n");
  const TraceRecord& trace = session.run();
  const TraceLine last = trace.ticks().back();
  const double beyond = last.at("lapPosition").get<double>() - 9000;
  const double ticks = last.at("raceTicks").get<double>() - beyond / 205;
  ASSERT_GT(beyond, 0);
  EXPECT_DOUBLE_EQ(trace.values("raceTicks").at(0).get<double>(), ticks);
  EXPECT_DOUBLE_EQ(trace.values("raceTime").at(0).get<double>(), std::floor(ticks / 9.8 * 1000) / 1000);
}

// The laps.

int ticksOnTheLine(const TraceRecord& trace) {
  int crossings = 0;
  for (const TraceLine& tick : trace.ticks())
    crossings += tick.at("segment") == 7 && tick.at("lapPosition") >= 9000;
  return crossings;
}

struct LapsCase {
  const char* typed;
  double laps;
  int driven;
  const char* sentence;
};

class Laps : public testing::TestWithParam<LapsCase> {};

TEST_P(Laps, AreDrivenToTheWholeOneAndToldAsTyped) {
  Session session;
  session
      .script(untilWelcome() + enterLaps("7") + "wait 300\nset lapsToRun " + std::to_string(GetParam().laps) +
              "\n" + startOnKeyboard())
      .drive(hurriedDriver(" Your time for "));
  const TraceRecord& trace = session.run();
  EXPECT_EQ(ticksOnTheLine(trace), GetParam().driven);
  EXPECT_TRUE(trace.said(std::string(" Your time for ") + GetParam().sentence +
                         " on the Maple Leaf Tri Oval Track is, "));
}

INSTANTIATE_TEST_SUITE_P(Counts, Laps,
                         testing::Values(LapsCase{"1", 1, 1, "1 lap"}, LapsCase{"2", 2, 2, "2 laps"},
                                         LapsCase{"2.5", 2.5, 3, "2.5 laps"},
                                         LapsCase{"0.5", 0.5, 1, "0.5 lap"},
                                         LapsCase{"-1", -1, 1, "-1 lap"}));

TEST(SecondLap, BeginsWithTheMarkTheFirstCueAndTheOvershoot) {
  Session session;
  raceInAHurry(session, "2");
  const TraceRecord& trace = session.run();
  const auto ticks = trace.ticks();
  const auto line = std::find_if(ticks.begin(), ticks.end(), [](const TraceLine& tick) {
    return tick.at("segment") == 7 && tick.at("lapPosition") >= 9000;
  });
  ASSERT_NE(line, ticks.end());
  const TraceLine& next = *(line + 1);
  EXPECT_EQ(next.at("segment"), 1);
  EXPECT_EQ(next.at("lapsCompleted"), 1);
  EXPECT_DOUBLE_EQ(next.at("lapPosition").get<double>(),
                   line->at("lapPosition").get<double>() - 9000 + next.at("speed").get<double>());
  EXPECT_EQ(next.at("poleDistance"), next.at("speed"));  // counted anew
  const auto crossing = first(momentsFrom(trace, "tick", static_cast<int>(line - ticks.begin())), 9);
  EXPECT_THAT(texts(crossing), ElementsAre("tick", "warnBuffer Stop", "markBuffer Play 0",
                                           "warnBuffer release", "warnBuffer create vorn1t1.wav",
                                           "warnBuffer SetCurrentPosition 0", "warnBuffer SetVolume -6500",
                                           "warnBuffer SetPan -3000", StartsWith("warnBuffer SetFrequency")));
}

TEST(SayLap, SaysTheSecondLapInTheSecondLap) {
  Session session;
  Driver driver = hurriedDriver(" Your time for ");
  driver.onTick = [hurried = driver.onTick](const TickReport& tick) {
    const bool asks = tick.lapsCompleted == 1 && tick.segment == 1;
    return (asks ? "press PageDown\n" : "release PageDown\n") + hurried(tick);
  };
  session.script(untilWelcome() + enterLaps("2") + startOnKeyboard()).drive(driver);
  const TraceRecord& trace = session.run();
  EXPECT_THAT(trace.spoken(), Contains("2"));
}

// The results.

TEST(Results, AreSpokenAsOneAndLoggedInTheirOrder) {
  Session session;
  raceInAHurry(session);
  session.script("wait 500\nget raceTimeText\nget recordText\nget fuel\n");
  const TraceRecord& trace = session.run();
  const std::string time = trace.values("raceTimeText").at(0);
  EXPECT_THAT(time, StartsWith(" Your time for 1 lap on the Maple Leaf Tri Oval Track is, "));
  const std::string* results = nullptr;
  const auto spoken = trace.spoken();
  for (const std::string& text : spoken) {
    if (text.starts_with(" Your time for ")) results = &text;
  }
  ASSERT_NE(results, nullptr);
  EXPECT_THAT(*results, StartsWith(time));
  EXPECT_THAT(*results, HasSubstr(" You finished the race with 21.9"));
  const std::string log = session.folder.read("vorn1log.txt");
  std::vector<std::size_t> places;
  for (const char* sentence :
       {" Your time for ", " The record was ", " By No One on ", " You finished the race with "}) {
    places.push_back(log.find(sentence));
    EXPECT_NE(places.back(), std::string::npos) << sentence;
  }
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end())) << log;
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2 + 5);
}

TEST(SecondRaceOfARun, CountsItsLapsAnew) {
  Session session;
  raceInAHurry(session);
  // The name for the record, then " Run the same track again ".
  session.script(
      "release LeftCtrl\nwait say  Enter your name as the new record holder. \nwait 50\ntype Ann\ntap Enter\n"
      "wait say  correct, for the new record holder? yes \nwait 50\ntap Enter\n"
      "wait say  Select, repeat race time \nwait 550\n" +
      menuDown() + menuEnter() + "wait say  Welcome to the \n" + enterLaps("1") + startOnKeyboard());
  session.drive(hurriedDriver(" Your time for "));
  const TraceRecord& trace = session.run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_EQ(ticksOnTheLine(trace), 2);
}

}  // namespace
}  // namespace vorn
