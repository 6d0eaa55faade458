// The co-driver beside the game: nothing of it with every aid off, its menu, its keys.

#include "codriver/codriver_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
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

}  // namespace
}  // namespace vorn
