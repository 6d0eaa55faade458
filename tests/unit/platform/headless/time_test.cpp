#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using HeadlessTime = HeadlessTest;

TEST_F(HeadlessTime, StandsStillBetweenYieldsAndMovesOneMillisecondInEach) {
  scene([&](HeadlessPlatform& p) {
    EXPECT_EQ(p.tickCount(), 1000);
    EXPECT_EQ(p.tickCount(), 1000);
    p.yield();
    EXPECT_EQ(p.tickCount(), 1001);
    p.yield(0);
    EXPECT_EQ(p.tickCount(), 1002);
    p.yield(500);
    EXPECT_EQ(p.tickCount(), 1003);
  });
}

TEST_F(HeadlessTime, TheTickCountStartsWhereItIsToldAndWraps) {
  options.tickCount = 2147483646;
  scene([&](HeadlessPlatform& p) {
    EXPECT_EQ(p.tickCount(), 2147483646);
    yield(p, 1);
    EXPECT_EQ(p.tickCount(), 2147483647);
    yield(p, 1);
    EXPECT_EQ(p.tickCount(), -2147483647 - 1);
  });
  options.tickCount = -5;
  scene([&](HeadlessPlatform& p) {
    EXPECT_EQ(p.tickCount(), -5);
    yield(p, 7);
    EXPECT_EQ(p.tickCount(), 2);
  });
}

TEST_F(HeadlessTime, DateAndTimeOfDayRunOnOverMidnight) {
  options.date = std::chrono::year(2027) / 12 / 31;
  options.timeOfDay = std::chrono::seconds(86399);
  scene([&](HeadlessPlatform& p) {
    yield(p, 250);
    EXPECT_DOUBLE_EQ(p.secondsSinceMidnight(), 86399.25);
    EXPECT_EQ(p.today().day, 31);
    yield(p, 750);
    EXPECT_DOUBLE_EQ(p.secondsSinceMidnight(), 0);
    const Date next = p.today();
    EXPECT_THAT((std::vector{next.month, next.day, next.year}), ElementsAre(1, 1, 2028));
  });
}

TEST_F(HeadlessTime, StartsAtNoonOfADay) {
  run("wait 5", [&](HeadlessPlatform& p) {
    EXPECT_DOUBLE_EQ(p.secondsSinceMidnight(), 43200);
    const Date date = p.today();
    EXPECT_THAT((std::vector{date.month, date.day, date.year}), ElementsAre(3, 7, 2026));
  });
}

TEST_F(HeadlessTime, StatementsAreCarriedOutInTheFirstYieldAndNotBefore) {
  run("echo first\nwait 0\necho second", [&](HeadlessPlatform& p) {
    EXPECT_THAT(trace.lines(), IsEmpty());
    p.yield();
  });
  EXPECT_THAT(echoes("first"), ElementsAre(1));
  EXPECT_THAT(echoes("second"), ElementsAre(1));
}

TEST_F(HeadlessTime, AWaitTakesExactlyItsMilliseconds) {
  run("echo a\nwait 5\necho b\nwait 1\necho c\nwait 0\necho d\nend");
  EXPECT_THAT(echoes("a"), ElementsAre(1));
  EXPECT_THAT(echoes("b"), ElementsAre(6));
  EXPECT_THAT(echoes("c"), ElementsAre(7));
  EXPECT_THAT(echoes("d"), ElementsAre(7));
}

TEST_F(HeadlessTime, AWaitAcrossASynchronousTextIsOverAtTheNextYield) {
  run("echo a\nwait 5\necho b\nwait 5\necho c\nend", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    p.yield();
    voice->Speak("ab", speak_flags::kSynchronous);
    yieldForever(p);
  });
  EXPECT_THAT(echoes("b"), ElementsAre(1 + 120 + 1));
  EXPECT_THAT(echoes("c"), ElementsAre(1 + 120 + 1 + 5));
}

TickReport tickNumber(double raceTicks) {
  TickReport report{};
  report.raceTicks = raceTicks;
  return report;
}

/// A car tick every 10 ms, the first at 10.
void race(HeadlessPlatform& p) {
  for (int i = 1;; ++i) {
    for (int ms = 0; ms < 10; ++ms) p.yield();
    p.carTicked(tickNumber(i));
  }
}

TEST_F(HeadlessTime, WaitsForCarTicks) {
  run("wait tick\necho one\nwait tick 3\necho four\nend", race);
  EXPECT_THAT(echoes("one"), ElementsAre(11));
  EXPECT_THAT(echoes("four"), ElementsAre(41));
}

TEST_F(HeadlessTime, OnlyTicksAfterTheStatementCount) {
  run("wait 25\nwait tick\necho three\nend", race);
  EXPECT_THAT(echoes("three"), ElementsAre(31));
}

TEST_F(HeadlessTime, AWaitForTicksMayEndByTime) {
  run("wait tick 5 or 33\necho time\nwait tick 2 or 1000\necho ticks\nend", race);
  EXPECT_THAT(echoes("time"), ElementsAre(34));
  EXPECT_THAT(echoes("ticks"), ElementsAre(51));
}

TEST_F(HeadlessTime, AScriptThatEndsEndsTheSession) {
  EXPECT_EQ(run("wait 5"), 0);
  EXPECT_EQ(trace.text(), "{\"ms\":6,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTime, EndEndsTheSessionAtOnce) {
  EXPECT_EQ(run("wait 5\nend\necho never"), 0);
  EXPECT_EQ(trace.text(), "{\"ms\":6,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTime, WithoutAScriptTheSessionEndsInItsFirstYield) {
  HeadlessPlatform platform(options, {nullptr, &trace, nullptr, &diagnostics, nullptr});
  EXPECT_EQ(platform.run([&] {
    yieldForever(platform);
    return 3;
  }),
            0);
  EXPECT_EQ(trace.text(), "{\"ms\":1,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTime, TheProgramMayEndBeforeItsScript) {
  EXPECT_EQ(run("wait 1000", [](HeadlessPlatform& p) { yield(p, 7); }), 0);
  EXPECT_EQ(trace.text(), "{\"ms\":7,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTime, NothingIsTracedAfterTheEnd) {
  HeadlessPlatform platform(options, {nullptr, &trace, nullptr, &diagnostics, nullptr});
  std::unique_ptr<Voice> voice;
  platform.run([&] {
    voice = platform.createVoice();
    return 0;
  });
  voice.reset();
  EXPECT_EQ(trace.lines().back().at("ev"), "end");
}

TEST_F(HeadlessTime, AWaitPastTheLimitEndsTheSession) {
  options.limitMs = 50;
  EXPECT_EQ(run("echo a\nwait 50\necho b\n\nwait say Select.\necho never"), 4);
  EXPECT_THAT(echoes("b"), ElementsAre(51));
  EXPECT_EQ(trace.lines().back().at("ms"), 101);
  EXPECT_EQ(trace.exitStatus(), 4);
  EXPECT_EQ(diagnostics.str(), "test.script:5: waited 50 ms for a text with \"Select.\"\n");
}

TEST_F(HeadlessTime, EveryKindOfWaitHasTheLimit) {
  options.limitMs = 50;
  const std::vector<std::pair<std::string, std::string>> waits = {
      {"wait 51", "for 51 ms to pass"},           {"wait tick 2", "for 2 car ticks"},
      {"wait tick 2 or 90", "for 2 car ticks"},   {"wait say z", "for a text with \"z\""},
      {"wait quiet", "for the voice to be idle"}, {"type ab", "for 60 ms to pass"},
      {"tap A 100", "for 100 ms to pass"},
  };
  for (const auto& [statement, awaited] : waits) {
    const int status = run(statement, [](HeadlessPlatform& p) {
      const auto voice = p.createVoice();
      voice->Speak("a long text", speak_flags::kQueue);
      yieldForever(p);
    });
    EXPECT_EQ(status, 4) << statement;
    EXPECT_THAT(diagnostics.str(), HasSubstr("test.script:1: waited 50 ms " + awaited)) << statement;
    EXPECT_EQ(trace.lines().back().at("ms"), 51) << statement;
  }
}

TEST_F(HeadlessTime, TheLimitIsForEachStatementNotForTheScript) {
  options.limitMs = 50;
  EXPECT_EQ(run("wait 40\nwait 40\nwait 40\nwait 50\nend"), 0);
}

TEST_F(HeadlessTime, TheLimitIsForTheWholeStatementHoweverManyStepsItHas) {
  options.limitMs = 100;  // a key that is typed is down for 60 ms
  EXPECT_EQ(run("type a\ntype a\nend"), 0);
  EXPECT_EQ(run("echo on\ntype aa"), 4);
  EXPECT_THAT(diagnostics.str(), HasSubstr("test.script:2: waited 100 ms for 60 ms to pass"));
}

TEST_F(HeadlessTime, ALineThatCannotBeUnderstoodEndsTheSession) {
  EXPECT_EQ(run("# start\nwait 3\njump high\necho never"), 2);
  EXPECT_EQ(diagnostics.str(), "test.script:3: there is no such statement: jump\n");
  EXPECT_EQ(trace.text(), "{\"ms\":4,\"ev\":\"end\",\"exit\":2}\n");
}

TEST_F(HeadlessTime, AFailedCallEndsTheSessionWithAReport) {
  EXPECT_EQ(run("wait 100",
                [](HeadlessPlatform& p) {
                  yield(p, 2);
                  p.files().read("missing.cfg");
                }),
            1);
  EXPECT_EQ(trace.text(),
            "{\"ms\":2,\"ev\":\"error\",\"text\":\"read(missing.cfg): there is no such file\"}\n"
            "{\"ms\":2,\"ev\":\"end\",\"exit\":1}\n");
  EXPECT_EQ(diagnostics.str(), "read(missing.cfg): there is no such file\n");
}

TEST_F(HeadlessTime, AnyOtherErrorOfTheProgramIsReportedTheSameWay) {
  EXPECT_EQ(run("wait 100", [](HeadlessPlatform&) { (void)std::vector<int>(3).at(5); }), 1);
  EXPECT_THAT(trace.texts("error"), testing::SizeIs(1));
}

TEST_F(HeadlessTime, CloseIsToldToTheProgramOnce) {
  std::int64_t closedAt = 0;
  EXPECT_EQ(run("wait 4\nclose\nwait 10\necho shutting down\nwait 1000",
                [&](HeadlessPlatform& p) {
                  try {
                    yieldForever(p);
                  } catch (const WindowClosed&) {
                    closedAt = now();
                  }
                  p.enterShutdown();
                  yield(p, 20);
                }),
            0);
  EXPECT_EQ(closedAt, 5);
  EXPECT_THAT(echoes("shutting down"), ElementsAre(16));
  EXPECT_EQ(trace.lines().back().at("ms"), 25);
}

TEST_F(HeadlessTime, AfterCloseTheEndOfTheScriptLetsTheProgramShutDown) {
  EXPECT_EQ(run("close",
                [&](HeadlessPlatform& p) {
                  EXPECT_THROW(yield(p, 1), WindowClosed);
                  yield(p, 200);
                }),
            0);
  EXPECT_EQ(trace.lines().back().at("ms"), 201);
}

TEST_F(HeadlessTime, AfterCloseAnEndEndsTheSessionNow) {
  run("close\nend", [&](HeadlessPlatform& p) {
    EXPECT_THROW(yield(p, 1), WindowClosed);
    yield(p, 200);
  });
  EXPECT_EQ(trace.lines().back().at("ms"), 2);
}

TEST_F(HeadlessTime, AShutdownThatNeverEndsPassesTheLimit) {
  options.limitMs = 50;
  EXPECT_EQ(run("wait 3\nclose",
                [&](HeadlessPlatform& p) {
                  EXPECT_THROW(yieldForever(p), WindowClosed);
                  yieldForever(p);
                }),
            4);
  EXPECT_EQ(diagnostics.str(), "test.script:2: waited 50 ms for the program to end\n");
}

TEST_F(HeadlessTime, ASecondCloseEndsTheProgramAtOnce) {
  EXPECT_EQ(run("close\nwait 5\nclose\nwait 5\necho never",
                [&](HeadlessPlatform& p) {
                  EXPECT_THROW(yield(p, 1), WindowClosed);
                  EXPECT_THROW(yieldForever(p), ProgramEnd);
                }),
            0);
  EXPECT_EQ(trace.lines().back().at("ms"), 7);
  EXPECT_THAT(echoes("never"), IsEmpty());
}

TEST_F(HeadlessTime, DuringShutdownTheFirstCloseChangesNothing) {
  EXPECT_EQ(run("wait 3\nclose\nwait 3\necho on\nclose\necho never",
                [&](HeadlessPlatform& p) {
                  p.enterShutdown();
                  yieldForever(p);
                }),
            0);
  EXPECT_THAT(echoes("on"), testing::SizeIs(1));
  EXPECT_THAT(echoes("never"), IsEmpty());
  EXPECT_EQ(trace.lines().back().at("ms"), 7);
}

TEST_F(HeadlessTime, TheTraceIsFlushedWheneverTheScriptIsReadFurther) {
  class AskingScript : public ScriptSource {
   public:
    AskingScript(TraceRecord& trace, std::vector<std::size_t>& seen) : trace_(trace), seen_(seen) {}
    std::optional<std::string> nextLine() override {
      EXPECT_EQ(trace_.flushedLines(), trace_.lines().size());
      seen_.push_back(trace_.lines().size());
      if (seen_.size() > 3) return std::nullopt;
      return "wait tick";
    }
    std::string name() const override { return "asking"; }

   private:
    TraceRecord& trace_;
    std::vector<std::size_t>& seen_;
  };
  std::vector<std::size_t> seen;
  AskingScript script(trace, seen);
  HeadlessPlatform platform(options, {&script, &trace, nullptr, &diagnostics, nullptr});
  platform.run([&] {
    race(platform);
    return 0;
  });
  EXPECT_THAT(seen, ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(trace.flushedLines(), trace.lines().size());
}

}  // namespace
}  // namespace vorn
