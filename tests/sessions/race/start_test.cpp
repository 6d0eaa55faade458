// The start of a race: set-up, engine, countdown, horn, reaction.

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
using testing::SizeIs;
using testing::StartsWith;

const std::string kSetUp = "sound4Buffer SetVolume -1000";
const std::string kEngines = "say  Ladies and Gentlemen, Start Your Engines! ";
const std::string kStarter = "oneShotBuffer create vorn2.wav";
const std::string kTen = "queue  10 ";
const std::string kHorn = "sound4Buffer Play 0";

const TraceRecord& played(Session& session, Wheel wheel, const std::string& script) {
  session.options.controller = wheel == Wheel::kController;
  return session.script(script).run();
}

std::vector<std::string> valuesOf(const TraceRecord& trace, const std::vector<std::string>& fields) {
  std::vector<std::string> values;
  for (const std::string& field : fields) {
    const auto found = trace.values(field);
    values.push_back(field + (found.empty() ? " ?" : " " + found.back().dump()));
  }
  return values;
}

std::string getAll(const std::vector<std::string>& fields) {
  std::string script;
  for (const std::string& field : fields) script += "get " + field + "\n";
  return script;
}

// Before the start.

TEST(Welcome, IsSpokenOverTheLoopsOfTheTrack) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilWelcome() + "wait say  Enter the number\n");
  const Moments moments = momentsFrom(trace, "wallLeftBuffer SetVolume -1000", 1);
  EXPECT_THAT(
      first(moments, 11),
      ElementsAre(Moment{0, "wallLeftBuffer SetVolume -1000"}, Moment{0, "wallLeftBuffer SetPan -5000"},
                  Moment{0, "wallRightBuffer SetVolume -1000"}, Moment{0, "wallRightBuffer SetPan 5000"},
                  Moment{0, "wallLeftBuffer Play 1"}, Moment{0, "wallRightBuffer Play 1"},
                  Moment{0, "sound18Buffer SetVolume -6500"}, Moment{0, "sound18Buffer Play 1"},
                  Moment{0, "sound9Buffer SetVolume -6500"}, Moment{0, "sound9Buffer Play 1"},
                  Moment{101 + 201, "say  Welcome to the Maple Leaf Try Oval Track "}));
}

TEST(Welcome, IsFollowedByTheLapsAfterAFifthOfASecond) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilWelcome() + "wait say  Enter the number\n");
  const Moments moments = momentsFrom(trace, "say  Welcome to the Maple Leaf Try Oval Track ");
  constexpr int kSpokenMs = 33 * 60;  // letters that are no blanks
  EXPECT_EQ(when(moments, "queue  Enter the number of laps that you wish to run. "),
            kSpokenMs + 201 + 3 + 1 + 3 + 1);
}

// Set-up.

TEST(SetUp, FollowsTheLapsAfterAFifthOfASecond) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilEngines());
  const Moments confirmed = momentsFrom(trace, "queue  Is 1 correct for the number of laps to run?  yes ");
  const Moments purges = about(through(confirmed, kSetUp), "purge");
  ASSERT_THAT(purges, SizeIs(1));  // of the Enter that confirmed
  EXPECT_EQ(when(confirmed, kSetUp) - purges[0].ms, 201);
}

TEST(SetUp, SoundsHornAndShiftQuietly) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilEngines());
  EXPECT_THAT(through(momentsFrom(trace, kSetUp), kEngines),
              ElementsAre(Moment{0, kSetUp}, Moment{0, "sound19Buffer SetVolume -1000"},
                          Moment{0, "sound4Buffer Play 0"}, Moment{181, "sound19Buffer Play 0"},
                          Moment{181 + 1001, "sound4Buffer SetVolume 0"}, Moment{181 + 1001, kEngines}));
}

TEST(SetUp, IsTenDecibelsBelowTheMasterVolume) {
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys,
             atMainMenu() + "set soundVolume -500\n" + toTrack(1) + enterLaps("1") + "wait say  Ladies\n");
  EXPECT_THAT(
      texts(momentsFrom(trace, "sound4Buffer SetVolume -1500")),
      ElementsAre("sound4Buffer SetVolume -1500", "sound19Buffer SetVolume -1500", "sound4Buffer Play 0",
                  "sound19Buffer Play 0", "sound4Buffer SetVolume -500", kEngines, "end"));
}

TEST(SetUp, LeavesTheShiftQuietForTheWholeRace) {
  Session session;
  raceInAHurry(session);
  const TraceRecord& trace = session.run();
  EXPECT_THAT(about(momentsFrom(trace, "sound19Buffer SetVolume -1000"), "sound19Buffer SetVolume"),
              SizeIs(1));
}

TEST(SetUp, PutsTheCarOnTheGridWhateverCameBefore) {
  const std::vector<std::string> fields = {
      "raceTicks",     "lapPosition",       "lateralPosition", "gear",
      "speed",         "engineRpm",         "soundRpm",        "fuel",
      "poleDistance",  "lapsCompleted",     "marblesTicks",    "wallTicks",
      "forceCrash",    "wallScrapePlaying", "steerKeyTicks",   "steerKeyLeft",
      "steerKeyRight", "joySteering",       "upShiftHeld",     "downShiftHeld",
      "btnUpShift",    "btnDownShift",      "pitEntryMissed",  "speedMarkSaid[1]"};
  std::string spoilAll;
  for (const std::string& field : fields) spoilAll += "set " + field + " 1\n";
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys,
             untilWelcome() + spoilAll + enterLaps("1") + "wait say  Ladies\nwait 10\n" + getAll(fields));
  EXPECT_THAT(
      valuesOf(trace, fields),
      ElementsAre("raceTicks 0.0", "lapPosition 0.0", "lateralPosition 50.0", "gear 0", "speed 0.0",
                  "engineRpm 0.0", "soundRpm 0.0", "fuel 22.0", "poleDistance 0.0", "lapsCompleted 0",
                  "marblesTicks 0", "wallTicks 0", "forceCrash 0", "wallScrapePlaying 0", "steerKeyTicks 0",
                  "steerKeyLeft 0", "steerKeyRight 0", "joySteering 0", "upShiftHeld 0", "downShiftHeld 0",
                  "btnUpShift 0", "btnDownShift 0", "pitEntryMissed 0", "speedMarkSaid[1] 0"));
}

TEST(SetUp, KeepsWhatIsNotTheCars) {
  const std::vector<std::string> fields = {"poleSide", "revToggle", "idleSoundSkip", "raceHours"};
  std::string setAll;
  for (const std::string& field : fields) setAll += "set " + field + " 1\n";
  Session session;
  const TraceRecord& trace = played(
      session, Wheel::kKeys,
      atMainMenu() + setAll + toTrack(1) + enterLaps("1") + "wait say  Ladies\nwait 10\n" + getAll(fields));
  EXPECT_THAT(valuesOf(trace, fields),
              ElementsAre("poleSide 1", "revToggle 1", "idleSoundSkip 1", "raceHours 1"));
}

TEST(SetUp, KeepsWhereTheWheelStands) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kController,
                                    untilWelcome(Wheel::kController) + "axis X 3000\n" + enterLaps("1") +
                                        "wait say  Ladies\nwait 10\nget joySteering\n");
  EXPECT_THAT(valuesOf(trace, {"joySteering"}), ElementsAre("joySteering 3000"));
}

// The engine.

class StartControl : public testing::TestWithParam<Wheel> {};
INSTANTIATE_TEST_SUITE_P(Devices, StartControl, testing::Values(Wheel::kKeys, Wheel::kController),
                         [](const auto& test) { return test.param == Wheel::kKeys ? "Keys" : "Controller"; });

TEST_P(StartControl, IsWaitedForAsLongAsItTakes) {
  Session session;
  const TraceRecord& trace = played(session, GetParam(), untilEngines(GetParam()) + "wait 60000\n");
  EXPECT_EQ(when(momentsFrom(trace, kEngines), kStarter), -1);
}

TEST_P(StartControl, TurnsTheStarter) {
  Session session;
  const TraceRecord& trace =
      played(session, GetParam(), untilEngines(GetParam()) + startControl(GetParam()) + "wait 100\n");
  EXPECT_THAT(texts(first(momentsFrom(trace, kStarter), 5)),
              ElementsAre(kStarter, "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
                          StartsWith("oneShotBuffer SetFrequency "), "oneShotBuffer Play 0"));
}

TEST(StartControl, OfTheOtherDeviceDoesNothing) {
  Session byKeys;
  EXPECT_EQ(when(momentsFrom(played(byKeys, Wheel::kController,
                                    untilEngines(Wheel::kController) + "tap End 200\nwait 500\n"),
                             kEngines),
                 kStarter),
            -1);
}

TEST_P(StartControl, CranksForThreeAndAHalfSecondsWithoutGas) {
  Session session;
  const TraceRecord& trace = played(session, GetParam(), untilCountdown(GetParam()));
  const Moments moments = momentsFrom(trace, kStarter);
  EXPECT_EQ(when(moments, "engineBuffer Play 1"), 3501);
}

TEST_P(StartControl, CranksUntilTheGas) {
  Session session;
  const std::string gas = GetParam() == Wheel::kKeys ? "press LeftCtrl\n" : "axis Y -2\n";
  const TraceRecord& trace = played(session, GetParam(),
                                    untilEngines(GetParam()) + startControl(GetParam()) +
                                        "wait 1000\necho gas\n" + gas + "wait say  10 \n");
  const Moments moments = momentsFrom(trace, "echo gas");
  // The keyboard is read before the yield in which its key comes, the controller after.
  EXPECT_EQ(when(moments, "engineBuffer Play 1"), GetParam() == Wheel::kKeys ? 1 : 0);
}

TEST(StartControl, DoesNotTakeTheLastUnitOfThePedalForGas) {
  Session session;
  const TraceRecord& trace = played(
      session, Wheel::kController,
      untilEngines(Wheel::kController) + startControl(Wheel::kController) + "axis Y -1\nwait say  10 \n");
  EXPECT_EQ(when(momentsFrom(trace, kStarter), "engineBuffer Play 1"), 3501);
}

TEST(Engine, CatchesAtIdleAndEndsTheStarter) {
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys, untilCountdown() + "get engineRpm\nget soundRpm\n");
  EXPECT_THAT(
      through(momentsFrom(trace, "engineBuffer SetVolume 0", 1), kTen),
      ElementsAre(Moment{0, "engineBuffer SetVolume 0"}, Moment{0, "engineBuffer SetCurrentPosition 0"},
                  Moment{0, "engineBuffer Play 1"}, Moment{21, "engineBuffer SetCurrentPosition 0"},
                  Moment{21, "oneShotBuffer Stop"}, Moment{21, "oneShotBuffer release"}, Moment{21, kTen}));
}

TEST(Engine, StartsAtItsOwnPitchWhateverTheLastRaceLeft) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilCountdown());
  const Moments moments = momentsFrom(trace, "engineBuffer SetFrequency 22051", 1);
  ASSERT_FALSE(moments.empty());
  EXPECT_EQ(when(moments, "engineBuffer Play 1"), 0);
}

TEST(Engine, ForgetsAShiftPressedWhileItWasStarted) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kController,
                                    untilEngines(Wheel::kController) + startControl(Wheel::kController) +
                                        "button 8 down\nwait say  10 \nwait 2000\nget btnUpShift\n");
  EXPECT_THAT(valuesOf(trace, {"btnUpShift"}), ElementsAre("btnUpShift 0"));
  EXPECT_FALSE(trace.said("you jumped"));
}

// The countdown.

TEST(Countdown, SaysItsNumbersOnceEachAtTheirMoments) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilCountdown() + "wait 20000\n");
  EXPECT_THAT(about(momentsFrom(trace, kTen), "queue "),
              ElementsAre(Moment{0, kTen}, Moment{5500, "queue  5 "}, Moment{6512, "queue  4 "},
                          Moment{7502, "queue  3 "}, Moment{8514, "queue  2 "}, Moment{9504, "queue  1 "}));
}

TEST(Countdown, EndsWithTheAirHornAtTheMasterVolume) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys, untilCountdown() + "wait 20000\n");
  EXPECT_THAT(about(momentsFrom(trace, kTen), "sound4Buffer"), ElementsAre(Moment{kHornMs, kHorn}));
}

TEST(Countdown, LetsTheDriverRevByKey) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kKeys,
                                    untilCountdown() +
                                        "press LeftCtrl\nwait 1000\nget engineRpm\nget soundRpm\necho revs\n"
                                        "release LeftCtrl\nwait 1000\nget engineRpm\nget soundRpm\n");
  EXPECT_THAT(trace.values("engineRpm"), ElementsAre(100.0, 0.0));
  EXPECT_GE(trace.values("soundRpm").at(0), 93);  // it hunts around its aim
  EXPECT_EQ(trace.values("soundRpm").at(1), 0);
  EXPECT_THAT(about(through(momentsFrom(trace, kTen), "echo revs"), "engineBuffer SetCurrentPosition"),
              SizeIs(testing::Ge(20U)));
}

TEST(Countdown, LetsTheDriverRevByPedal) {
  Session session;
  const TraceRecord& trace = played(session, Wheel::kController,
                                    untilCountdown(Wheel::kController) +
                                        "axis Y -5099\nwait 1000\nget engineRpm\naxis Y 0\nwait 1000\n"
                                        "get engineRpm\naxis Y 3050\nwait 100\nget engineRpm\n");
  EXPECT_THAT(trace.values("engineRpm"), ElementsAre(50.0, 0.0, 30.0));  // the brake revs too
}

TEST(Countdown, LetsTheDriverHonkAsLongAsHeLikes) {
  for (const Wheel wheel : {Wheel::kKeys, Wheel::kController}) {
    Session session;
    const TraceRecord& trace =
        played(session, wheel,
               untilCountdown(wheel) +
                   (wheel == Wheel::kKeys ? "tap Insert 110\n" : "button 6 down\nwait 110\nbutton 6 up\n") +
                   "wait 1000\n");
    EXPECT_EQ(about(momentsFrom(trace, kTen), "hornBuffer Play 0").size(), 5U);  // a pass takes 22 ms
  }
}

// The jumped start.

TEST(JumpedStart, IsScoldedAndStartsAllOver) {
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys, untilCountdown() + "wait 3000\ntap Up\nwait say  Ladies\nwait 100\n");
  const Moments moments = momentsFrom(trace, kTen);
  const std::vector<std::string> scolding = texts(moments);
  const auto stop = std::find(scolding.begin(), scolding.end(), "engineBuffer Stop");
  ASSERT_NE(stop, scolding.end());
  // The track has no cue yet.
  EXPECT_THAT(
      std::vector<std::string>(stop, scolding.end()),
      ElementsAre(
          "engineBuffer Stop", "wallLeftBuffer Stop", "wallRightBuffer Stop", "sound18Buffer Stop",
          "sound9Buffer Stop", "sound10Buffer Stop", "sound8Buffer Stop", "oneShotBuffer create vorn5.wav",
          "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
          StartsWith("oneShotBuffer SetFrequency "), "oneShotBuffer Play 0", "oneShotBuffer Stop",
          "oneShotBuffer release",
          "say  you jumped the starting flag.  You must wait until you hear the air horn to start the "
          "race. ",
          "wallLeftBuffer SetVolume -1000", "wallLeftBuffer SetPan -5000", "wallRightBuffer SetVolume -1000",
          "wallRightBuffer SetPan 5000", "wallLeftBuffer Play 1", "wallRightBuffer Play 1",
          "sound18Buffer SetVolume -6500", "sound18Buffer Play 1", "sound9Buffer SetVolume -6500",
          "sound9Buffer Play 1", kSetUp, "sound19Buffer SetVolume -1000", "sound4Buffer Play 0",
          "sound19Buffer Play 0", "sound4Buffer SetVolume 0", kEngines, "end"));
}

TEST(JumpedStart, PausesBeforeAndAfterTheScolding) {
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys, untilCountdown() + "wait 3000\ntap Up\nwait say  Ladies\nwait 100\n");
  const Moments moments = momentsFrom(trace, "oneShotBuffer create vorn5.wav");
  const std::int64_t stopped = when(moments, "oneShotBuffer Stop");
  const std::int64_t scolded = about(moments, "say  you jumped").at(0).ms;
  EXPECT_EQ(scolded - stopped, 301);
  const int scoldingMs = spokenMs(about(moments, "say  you jumped").at(0).what.substr(4));
  EXPECT_EQ(when(moments, "wallLeftBuffer SetVolume -1000") - scolded, scoldingMs + 301);
}

// The last pass of the countdown looks at the controls 22 ms before the horn.
std::string jumpAt(Wheel wheel, int milliseconds) {
  return untilCountdown(wheel) + untilAfterTen(milliseconds) +
         (wheel == Wheel::kKeys ? "press Up\n" : "button 8 down\n") + "wait 4000\n";
}

TEST(JumpedStart, IsAnyShiftSeenBeforeTheHorn) {
  for (const int milliseconds : {1, 5000, kHornMs - 23}) {
    for (const Wheel wheel : {Wheel::kKeys, Wheel::kController}) {
      Session session;
      EXPECT_TRUE(played(session, wheel, jumpAt(wheel, milliseconds)).said("you jumped")) << milliseconds;
    }
  }
}

TEST(JumpedStart, IsNoShiftSeenAfterTheHorn) {
  for (const int milliseconds : {kHornMs + 1, kHornMs + 500}) {
    for (const Wheel wheel : {Wheel::kKeys, Wheel::kController}) {
      Session session;
      const TraceRecord& trace = played(session, wheel, jumpAt(wheel, milliseconds));
      EXPECT_FALSE(trace.said("you jumped")) << milliseconds;
      EXPECT_THAT(trace.ticks(), Not(IsEmpty()));
    }
  }
}

TEST(JumpedStart, CanBeMadeGood) {
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys,
             untilCountdown() + "wait 3000\ntap Up\nwait say  Ladies\nwait 100\n" + startControl() +
                 "wait say  10 \n" + untilAfterTen(kHornMs + 100) + "press Up\nwait tick 3\n");
  ASSERT_THAT(trace.ticks(), SizeIs(3));
  EXPECT_EQ(trace.ticks()[0].at("gear"), 1);
  EXPECT_EQ(trace.ticks()[0].at("fuel"), 22);
}

TEST(JumpedStart, IsNotJumpedAgainByTheSamePress) {
  for (const Wheel wheel : {Wheel::kKeys, Wheel::kController}) {
    Session session;
    const bool isKeys = wheel == Wheel::kKeys;
    // Held from the jump to the tenth second of the next countdown, while the wheel moves.
    const TraceRecord& trace = played(
        session, wheel,
        untilCountdown(wheel) + "wait 3000\n" + (isKeys ? "press Up\n" : "button 8 down\n") +
            "wait say you jumped\nwait say  Ladies\nwait 100\n" + startControl(wheel) +
            "wait say  10 \nwait 1000\n" + (isKeys ? "" : "axis X 500\nwait 500\naxis X 0\n") +
            untilAfterTen(kHornMs + 3000) + "echo released\n" + (isKeys ? "release Up\n" : "button 8 up\n") +
            "wait 500\n" + (isKeys ? "press Up\n" : "button 8 down\n") + "wait tick or 1000\n");
    EXPECT_THAT(about(momentsFrom(trace, kTen, 1), "say  you jumped"), IsEmpty());
    // Neither does it go off at the horn: the car starts with the next press.
    ASSERT_THAT(trace.ticks(), SizeIs(1));
    EXPECT_GT(when(momentsFrom(trace, "echo released"), "tick"), 400);
  }
}

// Horn and reaction.

// Race ticks on the clock at the end of the first tick, for a driver who shifts so
// many milliseconds after the horn.
double ticksAfterShiftAt(Wheel wheel, int milliseconds, const std::string& before = "") {
  Session session;
  const TraceRecord& trace =
      played(session, wheel,
             untilCountdown(wheel) + before + untilAfterTen(kHornMs + milliseconds) +
                 (wheel == Wheel::kKeys ? "press Up\n" : "button 8 down\n") + "wait tick or 1000\n");
  return trace.ticks().empty() ? -1 : trace.ticks()[0].at("raceTicks").get<double>();
}

TEST(Reaction, OfNoTimeAtAllCostsNothing) {
  EXPECT_EQ(ticksAfterShiftAt(Wheel::kController, 1), 1);
}

TEST(Reaction, OfNineHundredMillisecondsCostsTenTicks) {
  EXPECT_EQ(ticksAfterShiftAt(Wheel::kKeys, 900), 11);
  EXPECT_EQ(ticksAfterShiftAt(Wheel::kController, 900), 11);
}

TEST(Reaction, CostsTheSameForADriverWhoRevs) {
  EXPECT_EQ(ticksAfterShiftAt(Wheel::kKeys, 900, "press LeftCtrl\n"), 11);
  EXPECT_EQ(ticksAfterShiftAt(Wheel::kController, 900, "axis Y -10000\n"), 11);
}

TEST(Reaction, CountsFractionsOfATick) {
  EXPECT_DOUBLE_EQ(ticksAfterShiftAt(Wheel::kController, 50), 1.7);  // seen after 67 ms: seven times nine
}

TEST(Reaction, MayTakeAsLongAsTheDriverSleeps) {
  EXPECT_NEAR(ticksAfterShiftAt(Wheel::kKeys, 90000), 1001, 0.3);
}

TEST(Go, ShiftsIntoFirstGearAndLaunchesTheCarOnTheGas) {
  Session session;
  const TraceRecord& trace =
      played(session, Wheel::kKeys,
             untilCountdown() + "press LeftCtrl\n" + untilAfterTen(kHornMs + 200) + "press Up\nwait tick\n");
  // The first time the shift is moved to its beginning is when it is loaded.
  const Moments moments = first(momentsFrom(trace, "sound19Buffer SetCurrentPosition 0", 1), 10);
  EXPECT_THAT(texts(moments),
              ElementsAre("sound19Buffer SetCurrentPosition 0", "purge", "oneShotBuffer create vorn3.wav",
                          "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
                          StartsWith("oneShotBuffer SetFrequency "), "oneShotBuffer Play 0",
                          "sound19Buffer Play 0", "purge", "queue 1"));
  EXPECT_EQ(when(moments, "purge"), 1);
  EXPECT_EQ(when(moments, "queue 1"), 4);
  EXPECT_DOUBLE_EQ(trace.ticks().at(0).at("speed"), 24 + 2.7);
}

TEST(Go, LeavesTheCarStandingThatIsNotOnTheGas) {
  Session session;
  const TraceRecord& trace = played(
      session, Wheel::kKeys, untilCountdown() + untilAfterTen(kHornMs + 200) + "press Up\nwait tick 2\n");
  EXPECT_EQ(trace.ticks().at(1).at("speed"), 0);
  EXPECT_EQ(trace.ticks().at(1).at("gear"), 1);
}

TEST(Go, ShiftsOnceForThePress) {
  for (const Wheel wheel : {Wheel::kKeys, Wheel::kController}) {
    Session session;
    const TraceRecord& trace =
        played(session, wheel,
               untilCountdown(wheel) + untilAfterTen(kHornMs + 200) +
                   (wheel == Wheel::kKeys ? "press Up\n" : "button 8 down\n") + "wait tick 10\n");
    EXPECT_EQ(trace.ticks().back().at("gear"), 1);
  }
}

TEST(Go, StartsTheFirstCueBeforeTheFirstTick) {
  Session session;
  const TraceRecord& trace = played(
      session, Wheel::kKeys, untilCountdown() + untilAfterTen(kHornMs + 200) + "press Up\nwait tick\n");
  EXPECT_THAT(texts(about(momentsFrom(trace, kTen), "warnBuffer")),
              ElementsAre("warnBuffer create vorn1t1.wav", "warnBuffer SetCurrentPosition 0",
                          "warnBuffer SetVolume -6500", "warnBuffer SetPan -3000",
                          StartsWith("warnBuffer SetFrequency "), "warnBuffer Play 1",
                          "warnBuffer SetVolume -3000", "warnBuffer SetPan -3500"));
}

TEST(Go, CountsTheFirstTickAtOnceAndTheNextAfterNinetyNineMilliseconds) {
  Session session;
  const TraceRecord& trace = played(
      session, Wheel::kKeys, untilCountdown() + untilAfterTen(kHornMs + 200) + "press Up\nwait tick 4\n");
  const auto ticks = trace.ticks();
  EXPECT_EQ(ticks.at(1).at("ms").get<int>() - ticks.at(0).at("ms").get<int>(), 2);  // a tick long overdue
  EXPECT_EQ(ticks.at(2).at("ms").get<int>() - ticks.at(1).at("ms").get<int>(), 99);
  EXPECT_EQ(ticks.at(3).at("ms").get<int>() - ticks.at(2).at("ms").get<int>(), 99);
}

// Bad sounds.

constexpr const char* kCorrupt =
    "say Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin.";

TEST(BadSounds, FoundAtTheEngineStartEndTheRace) {
  Session session;
  session.script(untilEngines());
  session.meanwhile([&] {
    std::filesystem::remove(session.folder.path() / "vorn29.wav");  // a link: the sound itself stays
    session.folder.write("vorn29.wav", "RIFF");
  });
  const TraceRecord& trace =
      session.script(startControl() + "wait say  Select. Exit Game. \nget escapePressed\n").run();
  const Moments moments = momentsFrom(trace, kStarter);
  EXPECT_GE(when(moments, kCorrupt), 0);
  EXPECT_LT(when(moments, kCorrupt), when(moments, "queue  Select. Exit Game. "));
  EXPECT_THAT(texts(moments), Not(Contains("engineBuffer Play 1")));
  EXPECT_THAT(looping(trace), IsEmpty());
  EXPECT_EQ(oneShotLeftPlaying(trace), "");
  EXPECT_THAT(trace.of("box"), IsEmpty());
  EXPECT_FALSE(trace.said(" Your time for "));
  EXPECT_THAT(trace.values("escapePressed"), ElementsAre(0));
}

TEST(BadSounds, AreNotMissedWhenTheyHaveBeenGoodAtTheProgramsStart) {
  Session session;
  session.script(untilEngines());
  session.meanwhile([&] { std::filesystem::remove(session.folder.path() / "vorn1t73.wav"); });
  const TraceRecord& trace = session.script(startControl() + "wait say  Select. Exit Game. \n").run();
  EXPECT_GE(when(momentsFrom(trace, kStarter), kCorrupt), 0);
}

}  // namespace
}  // namespace vorn
