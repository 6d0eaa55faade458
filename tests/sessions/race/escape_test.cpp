// Giving up a race, wherever it stands.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sessions/race/race_scene.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kEscape = "tap Escape\nwait say  Select. Exit Game. \nwait 300\nget escapePressed\n";
const std::string kOffTheGrid =
    untilCountdown() + "press LeftCtrl\n" + untilAfterTen(kHornMs + 100) + "tap Up\n";
const std::string kCrash = kOffTheGrid + "wait tick 5\nset forceCrash 1\nset lateralPosition 100\n";

struct Phase {
  std::string name;
  std::string until;
};

void PrintTo(const Phase& phase, std::ostream* out) {
  *out << phase.name;
}

class EscapeIn : public testing::TestWithParam<Phase> {
 protected:
  const TraceRecord& giveUp() {
    session.options.limitMs = 120000;
    return session.script(GetParam().until + kEscape).run();
  }
  Session session;
};

TEST_P(EscapeIn, ReturnsToTheMainMenuWithNothingHeardOfTheRace) {
  const TraceRecord& trace = giveUp();
  ASSERT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_THAT(looping(trace), IsEmpty());
  EXPECT_THAT(oneShotLeftPlaying(trace), testing::AnyOf("", "vorn3.wav"));  // the launch ends by itself
  EXPECT_THAT(trace.values("escapePressed"), ElementsAre(0));
}

TEST_P(EscapeIn, LeavesNoResult) {
  const TraceRecord& trace = giveUp();
  EXPECT_FALSE(trace.said(" Your time for "));
  EXPECT_FALSE(trace.said("gallons of fuel"));
  const auto files = trace.files();
  EXPECT_EQ(std::count(files.begin(), files.end(), "append vorn1log.txt"), 1);  // the run's header
  EXPECT_THAT(files, Each(Not(HasSubstr(".rec"))));
  EXPECT_THAT(session.folder.names(), Each(Not(HasSubstr(".rec"))));
}

INSTANTIATE_TEST_SUITE_P(
    Phases, EscapeIn,
    testing::Values(Phase{"SetUp", untilWelcome() + enterLaps("1") + "wait 500\n"},
                    Phase{"Announcement", untilWelcome() + enterLaps("1") + "wait 1400\n"},
                    Phase{"BeforeTheEngine", untilEngines() + "wait 5000\n"},
                    Phase{"Cranking", untilEngines() + startControl() + "wait 1000\n"},
                    Phase{"Countdown", untilCountdown() + "wait 4000\n"},
                    Phase{"LastOfTheCountdown", untilCountdown() + untilAfterTen(kHornMs - 10)},
                    Phase{"Reaction", untilCountdown() + untilAfterTen(kHornMs + 500)},
                    Phase{"Scolding",
                          untilCountdown() + "wait 1000\ntap Up\nwait say you jumped\nwait 100\n"},
                    Phase{"FirstTick", kOffTheGrid}, Phase{"Driving", kOffTheGrid + "wait tick 50\n"},
                    Phase{"Wall", kOffTheGrid + "wait tick 20\nset lateralPosition 100\nwait tick 2\n"},
                    Phase{"Crash", kCrash + "wait 150\n"}, Phase{"Wreck", kCrash + "wait 1200\n"},
                    Phase{"Advice", kCrash + "wait 4000\n"},
                    Phase{"Restart", kCrash + "wait 1000\ntap A\nwait 3000\n"},
                    Phase{"RestartStarter",
                          kCrash + "wait 1000\nrelease LeftCtrl\ntap A\nwait 500\ntap End\nwait 1000\n"},
                    Phase{"RestartRevving", kCrash + "wait 1000\ntap A\nwait 500\ntap End\nwait 1000\n"}),
    [](const auto& test) { return test.param.name; });

/// Milliseconds from Escape to the menu's prompt.
std::int64_t timeToTheMenu(const std::string& until) {
  Session session;
  const TraceRecord& trace =
      session.script(until + "echo escape\ntap Escape\nwait say  Select. Exit Game. \n").run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_EQ(oneShotLeftPlaying(trace), "");
  return when(momentsFrom(trace, "echo escape"), "queue  Select. Exit Game. ");
}

TEST(EscapeAtOnce, CutsTheCrashWhereverItIs) {
  for (const char* into : {"120", "200", "1200", "2000", "4000"}) {
    EXPECT_LT(timeToTheMenu(kCrash + "wait " + into + "\n"), 500) << into;
  }
}

TEST(EscapeAtTheFinish, AbandonsTheRaceThatWasAllButOver) {
  Session session;
  Driver driver = hurriedDriver(" Select. Exit Game. ");
  driver.onTick = [hurried = driver.onTick](const TickReport& tick) {
    const bool isOver = tick.segment == 7 && tick.lapPosition >= 9000;
    return isOver ? "wait 1000\ntap Escape\n" : hurried(tick);
  };
  const TraceRecord& trace =
      session.script(untilWelcome() + enterLaps("1") + startOnKeyboard()).drive(driver).run();
  EXPECT_FALSE(trace.said(" Your time for "));
  EXPECT_THAT(session.folder.names(), Each(Not(HasSubstr(".rec"))));
  EXPECT_THAT(looping(trace), IsEmpty());
}

TEST(EscapeOnTheTrack, EndsTheRaceBeforeTheNextTick) {
  Session session;
  const TraceRecord& trace =
      session.script(kOffTheGrid + "wait tick 30\necho escape\npress Escape\nwait 300\n").run();
  EXPECT_THAT(texts(momentsFrom(trace, "echo escape")), Not(Contains("tick")));
}

TEST(AnEarlierEscape, DoesNotEndTheNextRace) {
  Session session;
  session.script(kOffTheGrid + "wait tick 3\n" + kEscape + "release LeftCtrl\nwait 500\necho second\n" +
                 toTrack(1) + enterLaps("1") + startOnKeyboard() + "wait tick 20\n");
  EXPECT_EQ(about(momentsFrom(session.run(), "echo second"), "tick").size(), 1U + 20);
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
}

}  // namespace
}  // namespace vorn
