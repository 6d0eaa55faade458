// The co-driver beside the game: nothing of it with every aid off, its menu, its keys.

#include "codriver/codriver_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
#include "state/track_names.h"
#include "support/session.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class EveryTrack : public testing::TestWithParam<int> {
 protected:
  std::string traceWith(const std::optional<CodriverOptions>& codriver) const {
    WheelScript driver(*allTracks()[static_cast<std::size_t>(GetParam() - 1)]);
    const OneRace race(
        GetParam(), Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); }, nullptr,
        codriver);
    EXPECT_TRUE(race.isFinished());
    return race.trace().text();
  }
};

INSTANTIATE_TEST_SUITE_P(On, EveryTrack, testing::Range(1, 11));

TEST_P(EveryTrack, IsTheSameWithEveryAidOff) {
  EXPECT_EQ(traceWith(CodriverOptions{}), traceWith(std::nullopt));
}

TEST_P(EveryTrack, IsTheSameRaceWithEveryAidOn) {
  const auto race = [&](const AidSet& aids) {
    WheelScript driver(*allTracks()[static_cast<std::size_t>(GetParam() - 1)]);
    const OneRace driven(
        GetParam(), Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); }, nullptr,
        CodriverOptions{.aids = aids});
    EXPECT_TRUE(driven.isFinished());
    return driven.trace();
  };
  const TraceRecord with = race({1, 1, 1, 1, 1, 1}), without = race({});
  EXPECT_EQ(with.ticks(), without.ticks());
  EXPECT_NE(with.lines().size(), without.lines().size());
}

TEST(Loudness, ChangesWhatIsHeardAndNothingOfTheRace) {
  const auto race = [](const AidSettings& settings) {
    Session session;
    session.codriver = CodriverOptions{};
    session.folder.write("vorn1aid.cfg", aidFileText(settings));
    session.script(offTheGrid(1, Device::kKeys) + "wait tick 50\nend").run();
    return session.trace();
  };
  AidSettings settings;
  const TraceRecord before = race(settings);
  settings.wallLevel = -1200;
  settings.hearsInOne = 1;
  const TraceRecord after = race(settings);
  EXPECT_EQ(before.ticks(), after.ticks());
  EXPECT_THAT(before.soundsOf("wallLeftBuffer"), Contains("SetVolume -1000"));
  EXPECT_THAT(after.soundsOf("wallLeftBuffer"), Contains("SetVolume -2200"));
  EXPECT_THAT(after.soundsOf("wallLeftBuffer"), Not(Contains("SetVolume -1000")));
  EXPECT_THAT(before.soundsOf("wallLeftBuffer"), Contains("SetPan -5000"));
  EXPECT_THAT(after.soundsOf("wallLeftBuffer"), Not(Contains("SetPan -5000")));
  EXPECT_EQ(before.soundsOf("engineBuffer"), after.soundsOf("engineBuffer"));
}

/// The main menu, with the co-driver beside it.
class InTheMenu : public testing::Test {
 protected:
  InTheMenu() {
    session.codriver = CodriverOptions{};
    session.script(atMainMenu() + menuDown());
  }
  Session session;
};

TEST_F(InTheMenu, F2OpensTheCodriversMenuAndEscapeLeadsBack) {
  const TraceRecord& trace =
      session
          .script("echo asked\ntap F2\nwait say  Co-driver.\nwait 600\ntap Escape\nwait 300\necho back\n" +
                  menuDown())
          .script("get lastKeyCode\nget escapePressed\nend")
          .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  const auto spoken = trace.spoken();
  EXPECT_EQ(spoken[spoken.size() - 2], " Reed Instructions. ");  // where he was
  EXPECT_EQ(spoken.back(), " reed track descriptions ");
  EXPECT_EQ(trace.values("lastKeyCode").back(), "40");  // nothing of F2 and Escape
  EXPECT_EQ(trace.values("escapePressed").back(), 0);
}

/// From an open menu of the co-driver to the entry that begins so, and into it.
std::string enter(int stepsUp) {
  return menuUp(stepsUp) + menuEnter() + "wait 600\n";
}
const std::string kCodriversMenu = "tap F2\nwait say  Co-driver.\nwait 600\n";
const std::string kLeave = "tap Escape\nwait 600\n";
constexpr int kKeysEntry = 1, kControllerEntry = 2, kLoudnessEntry = 3;  // from below

TEST_F(InTheMenu, TheChoiceIsTheCodriversAndNotTheGames) {
  const TraceRecord& trace =
      session.script(kCodriversMenu + enter(kKeysEntry) + kLeave + "wait 1000\nend").run();
  EXPECT_FALSE(trace.said("I am now going to explain"));
  EXPECT_TRUE(trace.said(" F3 turn calls"));
  EXPECT_EQ(trace.spoken().back(), " Reed Instructions. ");
}

TEST_F(InTheMenu, LoudnessIsChosenAndKept) {
  const TraceRecord& trace =
      session
          .script(kCodriversMenu + enter(kLoudnessEntry) + menuDown() + menuEnter() +
                  "wait say  cues, as loud as the game. \nwait 600\n" + menuDown(2) + menuEnter() +
                  "wait say  cues, 6 decibels quieter. \nwait 600\n" + kLeave + kLeave + "end")
          .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_THAT(trace.files(), Contains("write vorn1aid.cfg"));
  AidSettings kept;
  kept.cueLevel = -600;
  EXPECT_EQ(session.folder.read("vorn1aid.cfg"), aidFileText(kept));
}

TEST_F(InTheMenu, TheControllerTestSaysThatThereIsNone) {
  EXPECT_TRUE(session.script(kCodriversMenu + enter(kControllerEntry) + "end")
                  .run()
                  .said(" No controller is attached. "));
}

TEST(TheControllerTest, SaysWhatMovesAndLeavesNothingToTheGame) {
  Session session;
  session.codriver = CodriverOptions{};
  session.options.controller = true;
  const TraceRecord& trace =
      session
          .script(
              atMainMenu() + kCodriversMenu + enter(kControllerEntry) +
              "axis X -9000\nwait say  axis X left, steering. \nbutton 6 down\nwait say  button 6, horn. \n"
              "button 6 up\naxis X 0\nwait 100\n" +
              kLeave + kLeave + "get btnHorn\nget joySteering\nend")
          .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_EQ(trace.values("btnHorn").back(), 0);
  EXPECT_EQ(trace.values("joySteering").back(), 0);
}

TEST_F(InTheMenu, ItsWindowCanBeClosed) {
  const TraceRecord& trace = session.script("tap F2\nwait say  Co-driver.\nwait 600\nclose").run();
  EXPECT_EQ(session.exitStatus(), 0);
  EXPECT_TRUE(trace.said(" Thank you for playing "));
}

TEST(TheTitle, IsFollowedByAWordOfTheCodriverOnce) {
  Session session;
  session.codriver = CodriverOptions{.introducesItself = true};
  const auto spoken = session.script(atMainMenu() + "end").run().spoken();
  const auto title = std::find(spoken.begin(), spoken.end(), " Vorn 1 tts version 2 By Ostrin ");
  ASSERT_LT(title + 2, spoken.end());
  EXPECT_THAT(title[1], HasSubstr(" F 2 "));
  EXPECT_EQ(title[2], " Select. Exit Game. ");
  session.folder.write("vorn1aid.cfg", aidFileText(AidSettings{}));
  session.script(atMainMenu() + "end").run();
  EXPECT_FALSE(session.trace().said(" F 2 "));
}

TEST(TheFile, IsForgottenWithAWordWhereItIsDamaged) {
  Session session;
  session.codriver = CodriverOptions{};
  session.folder.write("vorn1aid.cfg", "something else");
  EXPECT_TRUE(session.script(atMainMenu() + "end").run().said(" have been set back. "));
}

TEST(InARace, AidsAreSwitchedAndKept) {
  Session session;
  session.codriver = CodriverOptions{};
  const TraceRecord& trace = session.script(offTheGrid(1, Device::kKeys))
                                 .script(
                                     "tap F2\nwait say  No aids are on. \ntap F4\nwait say  slider on \n"
                                     "tap F2\nwait say  On: slider. \nget lastKeyCode\nend")
                                 .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_THAT(trace.files(), Contains("write vorn1aid.cfg"));
  AidSettings kept;
  kept.turn(AidKind::kSlider, true);
  EXPECT_EQ(session.folder.read("vorn1aid.cfg"), aidFileText(kept));
}

TEST(InARace, AidsForASessionAreNotKeptWithThoseThatAreSwitched) {
  Session session;
  AidSettings own;
  own.turn(AidKind::kLapTimes, true);
  session.folder.write("vorn1aid.cfg", aidFileText(own));
  AidSet given{};
  given[static_cast<std::size_t>(AidKind::kTurnCalls)] = given[static_cast<std::size_t>(AidKind::kLapTimes)] =
      1;
  session.codriver = CodriverOptions{.aids = given};
  session.script(offTheGrid(1, Device::kKeys))
      .script("tap F4\nwait say  slider on \ntap F7\nwait say  off \nend")
      .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  own.turn(AidKind::kSlider, true);
  own.turn(AidKind::kLapTimes, false);
  EXPECT_EQ(session.folder.read("vorn1aid.cfg"), aidFileText(own));
}

// --- Function keys, wherever the game may be

constexpr int kFunctionKeys = 9;  // that the co-driver has a use for

std::string tapAllFunctionKeys() {
  std::string script;
  for (int key = 1; key <= kFunctionKeys; ++key) script += "tap F" + std::to_string(key) + "\n";
  return script;
}
/// The same time without them.
std::string leaveThemAlone() {
  return "wait " + std::to_string(kFunctionKeys * 80) + "\n";
}

const std::string kWholeState =
    "get lastKeyCode\nget lastKeyChar\nget escapePressed\nget typedText\nget trackChoice\nget inputDevice\n"
    "get joySteering\nget joyGasBrake\nget gear\n";

TEST(FunctionKeys, InARaceChangeNothingOfIt) {
  const auto race = [](const std::string& keys) {
    Session session;
    session.codriver = CodriverOptions{};
    session
        .script(offTheGrid(1, Device::kKeys) + "wait tick 20\n" + keys + "wait tick 30\n" + kWholeState +
                "end")
        .run();
    EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
    return session.trace();
  };
  const TraceRecord with = race(tapAllFunctionKeys()), without = race(leaveThemAlone());
  EXPECT_EQ(with.ticks(), without.ticks());
  EXPECT_EQ(with.of("value").size(), without.of("value").size());
  for (std::size_t i = 0; i < with.of("value").size(); ++i) {
    EXPECT_EQ(with.of("value")[i].at("value"), without.of("value")[i].at("value")) << i;
  }
  EXPECT_TRUE(with.said(" turn calls on "));
  EXPECT_FALSE(without.said(" turn calls on "));
  EXPECT_TRUE(with.said(" You are on the " + std::string(kTrackNames[0].spoken) +
                        ". F 2 says which aids are on, F 3 to F 8 switch them, Escape gives up the race. "));
}

TEST(FunctionKeys, InAMenuChangeNothingOfIt) {
  const auto menu = [](const std::string& keys) {
    Session session;
    session.codriver = CodriverOptions{};
    session.script(atMainMenu() + menuDown() + keys + kWholeState + menuDown() + "end").run();
    EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
    return session.trace();
  };
  const std::string f1 = "tap F1\nwait say  You are in a menu. \nwait 100\n";
  const std::string f2 = "tap F2\nwait say  Co-driver.\nwait 600\ntap Escape\nwait 600\n";
  const TraceRecord with = menu(f1 + f2), without = menu("wait 100\n");
  for (std::size_t i = 0; i < without.of("value").size(); ++i) {
    EXPECT_EQ(with.of("value")[i].at("value"), without.of("value")[i].at("value")) << i;
  }
  EXPECT_EQ(with.spoken().back(), without.spoken().back());
  EXPECT_TRUE(
      with.said(" You are in a menu. Up and Down move, Enter chooses, F 2 opens the co-driver's menu. "));
}

TEST(FunctionKeys, BelongToTheGameWhereAnyKeyMeansSomethingToIt) {
  const auto session = [](const std::optional<CodriverOptions>& codriver) {
    Session played;
    played.codriver = codriver;
    played
        .script("wait 300\ntap F2\n")  // the title is cut short
        .script(atMainMenu() + toTrack(1))
        .script("wait say  Enter the number of laps that you wish to run. \nwait 50\n" + tapAllFunctionKeys())
        .script(kWholeState +
                "tap F1\nwait say  Enter the number of laps\nwait 50\ntype 1\ntap Enter\n"
                "wait say  correct for the number of laps to run?\nwait 50\n"
                "tap F5\nwait say  correct for the number of laps to run?\nwait 50\ntap Enter\n")
        .script(startOnKeyboard() +
                "wait tick 5\nset forceCrash 1\nset lateralPosition 0\nwait 6000\ntap F3\n" + "wait 2000\n" +
                kWholeState + "end")
        .run();
    return played.trace().text();
  };
  EXPECT_EQ(session(CodriverOptions{}), session(std::nullopt));
}

TEST(FunctionKeys, ThatThePlayerHasGivenToTheGameAreTheGames) {
  Session session;
  session.codriver = CodriverOptions{};
  std::string keys =
      "54\r\n157\r\n207\r\n209\r\n199\r\n211\r\n203\r\n205\r\n200\r\n208\r\n29\r\n42\r\n28\r\n";
  session.folder.write("vorn1key.cfg", keys + "62\r\n201\r\n");  // F4 is the horn
  const TraceRecord& trace =
      session.script(offTheGrid(1, Device::kKeys) + "wait tick 5\npress F4\nwait tick 3\nrelease F4\nend")
          .run();
  EXPECT_FALSE(trace.said("slider"));
  EXPECT_THAT(trace.soundsOf("hornBuffer"), Contains("Play 0"));
}

}  // namespace
}  // namespace vorn
