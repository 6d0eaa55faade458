#include "recording/script_writer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace vorn {
namespace {

struct Written {
  std::ostringstream out;
  ScriptWriter writer{out};

  void yields(int count) {
    for (int i = 0; i < count; ++i) writer.yielded();
  }
  void put(const std::string& statement) { writer.put(statement, writer.now()); }
  std::string text() const { return out.str(); }
};

// A script begins in the first yield.
TEST(ScriptWriter, CountsYieldsFromTheStatementBefore) {
  Written script;
  script.yields(5);
  script.put("one");
  script.put("two");
  script.yields(7);
  script.put("three");
  EXPECT_EQ(script.text(), "wait 4\none\ntwo\nwait 7\nthree\n");
}

TEST(ScriptWriter, CountsTicksAndTheYieldsSinceTheLastOfThem) {
  Written script;
  script.yields(1);
  script.put("one");
  for (int tick = 0; tick < 3; ++tick) {
    script.writer.ticked();
    script.yields(99);
  }
  script.put("two");
  EXPECT_EQ(script.text(), "one\nwait tick 3\nwait 98\ntwo\n");
}

// A replay knows of a tick in the first yield after it.
TEST(ScriptWriter, LeavesATickThatNoYieldHasFollowedToTheNextStatement) {
  Written script;
  script.yields(3);
  script.writer.ticked();
  script.put("one");
  script.yields(1);
  script.put("two");
  EXPECT_EQ(script.text(), "wait 2\none\nwait tick 1\ntwo\n");
}

TEST(ScriptWriter, WaitsForEveryTextInItsOrderBehindTheTicks) {
  Written script;
  script.writer.requested(" Select. ");
  script.yields(10);
  script.writer.ticked();
  script.writer.requested("50");
  script.yields(99);
  script.writer.requested(" ");
  script.yields(4);
  script.put("one");
  EXPECT_EQ(script.text(), "wait tick 1\nwait say  Select. \nwait say 50\nwait say  \nwait 3\none\n");
}

TEST(ScriptWriter, TakesTheBeginningOfALongTextInUtf8) {
  Written script;
  script.writer.requested("caf\xE9 " + std::string(100, 'x'));
  script.writer.requested("first line\rsecond");
  script.yields(1);
  script.put("one");
  EXPECT_EQ(script.text(), "wait say caf\xC3\xA9 " + std::string(55, 'x') + "\nwait say first line\none\n");
}

TEST(ScriptWriter, PutsAStatementBackToWhenItHappenedButNotBeforeTheLast) {
  Written script;
  script.yields(20);
  script.writer.put("one", 8);
  script.writer.put("two", 5);
  script.put("three");
  EXPECT_EQ(script.text(), "wait 7\none\ntwo\nwait 12\nthree\n");
}

TEST(ScriptWriter, KnowsTheLatestMilestone) {
  Written script;
  EXPECT_EQ(script.writer.latestMilestone(), 0);
  script.yields(4);
  script.writer.ticked();
  EXPECT_EQ(script.writer.latestMilestone(), 0);
  script.yields(2);
  EXPECT_EQ(script.writer.latestMilestone(), 5);
  script.put("one");
  EXPECT_EQ(script.writer.latestMilestone(), 5);
}

TEST(ScriptWriter, LeavesTheGameTimeToEnd) {
  Written script;
  script.put("one");
  script.yields(2);
  script.writer.requested("bye");
  script.yields(9);
  script.writer.finish();
  EXPECT_EQ(script.text(), "one\nwait say bye\nwait 8\nwait 60000\n");
}

}  // namespace
}  // namespace vorn
