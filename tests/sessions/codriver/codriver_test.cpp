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

TEST_F(InTheMenu, TheChoiceIsTheCodriversAndNotTheGames) {
  const TraceRecord& trace = session
                                 .script(
                                     "tap F2\nwait say  Co-driver.\nwait 600\ntap Up\nwait 600\ntap "
                                     "Enter\nwait 600\ntap Escape\nwait 1000\nend")
                                 .run();
  EXPECT_FALSE(trace.said("I am now going to explain"));
  const auto spoken = trace.spoken();
  EXPECT_EQ(spoken.back(), " Reed Instructions. ");
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
