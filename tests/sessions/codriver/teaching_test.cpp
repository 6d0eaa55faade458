// The second game: the tour of the sounds, previews and lessons, from the co-driver's menu and back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "codriver/lessons.h"
#include "codriver/preview_words.h"
#include "sessions/tracks/keyboard_driver.h"
#include "sessions/tracks/pit_stop_driver.h"
#include "sessions/tracks/wheel_script.h"
#include "support/session.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Gt;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Le;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class Taught : public testing::Test {
 protected:
  /// Of the first game: what a second one must leave as it is.
  static constexpr const char* kFields[] = {
      "escapePressed", "raceTicks",   "lapPosition", "lateralPosition", "speed",       "gear",
      "fuel",          "trackChoice", "inputDevice", "joySteering",     "joyGasBrake", "soundVolume",
      "engineSound",   "wallSound",   "speechRate",  "voiceVolume",     "voiceIndex",  "lapsToRun",
      "lastKeyCode",   "typedText",   "engineRpm",   "warnDistance",    "segment",     "waveFilesBad"};

  static std::string askState() {
    std::string script;
    for (const char* field : kFields) script += std::string("get ") + field + "\n";
    return script;
  }
  Taught() {
    session.codriver = CodriverOptions{};
    openMenu();
  }
  void openMenu() {
    session.script(atMainMenu() + menuDown() + askState() + "tap F2\nwait say  Co-driver.\nwait 900\n");
  }
  /// Takes the entry that is `steps` down from where the menu opens.
  Session& take(int steps) { return session.script(menuDown(steps) + menuEnter()); }
  /// Back out of `menus` menus to the main menu, where he was.
  const TraceRecord& leave(int menus) {
    std::string script;
    for (int i = 0; i < menus; ++i) script += "wait 900\ntap Escape\n";
    session.script(script + "wait 900\n" + askState() + menuDown() + "end");
    const TraceRecord& trace = session.run();
    EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
    if (session.exitStatus() != 0) throw std::runtime_error("the script did not come to its end");
    const auto spoken = trace.spoken();
    EXPECT_EQ(spoken.back(), " reed track descriptions ") << "one below where he was";
    for (const char* field : kFields) {
      const auto values = trace.values(field);
      EXPECT_EQ(values.back(), values.front()) << field << " of the game that waited";
    }
    return trace;
  }

  Session session;
};

// --- The sounds

constexpr int kTour = 0, kLessons = 1, kPreview = 2;  // entries of the menu

TEST_F(Taught, ACueRisesFromFarToNear) {
  take(kTour).script("wait say  Learn the sounds. \nwait 900\n");
  take(2).script("wait say  Cues of the Maple Leaf \nwait 900\n");
  session.script(menuEnter() + "wait 8000\n");
  const TraceRecord& trace = leave(3);
  std::vector<int> volumes;
  for (const std::string& done : trace.soundsOf("warnBuffer")) {
    if (done.starts_with("SetVolume")) volumes.push_back(std::stoi(done.substr(10)));
  }
  ASSERT_THAT(volumes, SizeIs(Gt(40U)));
  EXPECT_LT(volumes[1], -2900);
  EXPECT_GT(volumes.back(), -100);
  EXPECT_TRUE(std::is_sorted(volumes.begin() + 1, volumes.end()));
  EXPECT_THAT(trace.soundsOf("warnBuffer"), Contains("create vorn1t1.wav"));
  EXPECT_THAT(trace.soundsOf("markBuffer"), Contains("Play 0"));
}

TEST_F(Taught, AnyKeyStopsASound) {
  take(kTour).script("wait say  Learn the sounds. \nwait 900\n" + menuEnter() + "wait 900\n");
  session.script(menuEnter() + "wait 1000\necho stop\ntap A\nwait 200\necho stopped\n");
  const TraceRecord& trace = leave(3);
  const auto& lines = trace.lines();
  const auto stop = std::find_if(lines.begin(), lines.end(), [](const TraceLine& line) {
    return line.at("ev") == "echo" && line.at("text") == "stop";
  });
  const auto stopped = std::find_if(stop, lines.end(), [](const TraceLine& line) {
    return line.at("ev") == "echo" && line.at("text") == "stopped";
  });
  EXPECT_TRUE(std::any_of(stop, stopped, [](const TraceLine& line) {
    return line.at("ev") == "sound" && line.at("buffer") == "engineBuffer" && line.at("op") == "Stop";
  }));
}

/// Every sound of every group is played to its end: none fails.
TEST_F(Taught, EverySoundOfTheTourCanBeHeard) {
  take(kTour).script("wait say  Learn the sounds. \nwait 900\n");
  const std::vector<std::size_t> counts{10, 13};
  for (std::size_t group = 0; group < counts.size(); ++group) {
    if (group > 0) session.script(menuDown());
    session.script(menuEnter() + "wait 900\n");
    for (std::size_t i = 0; i < counts[group]; ++i) {
      session.script((i > 0 ? menuDown() : "") + menuEnter() + "wait 8000\n");
    }
    session.script("tap Escape\nwait 900\n");
  }
  const TraceRecord& trace = leave(2);
  for (const char* file :
       {"vorn1.wav", "vorn30.wav", "vorn31.wav", "vorn32.wav", "vorn33.wav", "vorn34.wav"}) {
    EXPECT_THAT(trace.soundsOf("engineBuffer"), Contains(std::string("create ") + file));
  }
  for (const char* file : {"vorn16.wav", "vorn24.wav", "vorn23.wav"}) {
    EXPECT_THAT(trace.soundsOf("wallLeftBuffer"), Contains(std::string("create ") + file));
  }
  for (const char* file : {"vorn20.wav", "vorn7.wav", "vorn21.wav", "vorn22.wav"}) {
    EXPECT_THAT(trace.soundsOf("oneShotBuffer"), Contains(std::string("create ") + file));
  }
  for (const char* buffer : {"sound19Buffer", "hornBuffer", "markBuffer", "sound29Buffer"}) {
    EXPECT_THAT(trace.soundsOf(buffer), Contains("Play 0")) << buffer;
  }
  for (const char* buffer : {"sound8Buffer", "sound9Buffer", "sound18Buffer", "sound10Buffer"}) {
    EXPECT_THAT(trace.soundsOf(buffer), Contains("Play 1")) << buffer;
  }
  EXPECT_THAT(trace.texts("error"), IsEmpty());
}

TEST_F(Taught, StartPitRoadCrashAndResultsCanBeHeardToo) {
  session.script(menuEnter() + "wait say  Learn the sounds. \nwait 900\n" + menuUp(4));
  for (const int count : {5, 6, 5, 1}) {
    session.script(menuEnter() + "wait 900\n");
    for (int i = 0; i < count; ++i) session.script((i > 0 ? menuDown() : "") + menuEnter() + "wait 9000\n");
    session.script("tap Escape\nwait 900\n" + menuDown());
  }
  const TraceRecord& trace = leave(2);
  for (const char* file : {"vorn0", "vorn2", "vorn3", "vorn5", "vorn15", "vorn11", "vorn12", "vorn13",
                           "vorn14", "vorn6", "vorn25"}) {
    EXPECT_THAT(trace.soundsOf("oneShotBuffer"), Contains("create " + std::string(file) + ".wav"));
  }
  for (const char* file : {"vorn28", "vorn26", "vorn27", "vorn1t73"}) {
    EXPECT_THAT(trace.soundsOf("panBuffer"), Contains("create " + std::string(file) + ".wav"));
  }
  EXPECT_THAT(trace.soundsOf("sound4Buffer"), Contains("Play 0"));
  EXPECT_THAT(trace.soundsOf("warnBuffer"), Contains("create vorn1t72.wav"));
}

TEST_F(Taught, TheWallsAreHeardFromOneSideToTheOther) {
  session.script(menuEnter() + "wait say  Learn the sounds. \nwait 900\n" + menuDown() + menuEnter() +
                 "wait 900\n" + menuEnter() + "wait 8000\n");
  const TraceRecord& trace = leave(3);
  const auto loudest = [&](const char* buffer) {
    int most = -10000;
    bool isAtRest = true;  // until the first step it is as loud as it was loaded
    for (const std::string& done : trace.soundsOf(buffer)) {
      isAtRest = isAtRest && done != "Play 1";
      if (!isAtRest && done.starts_with("SetVolume ")) most = std::max(most, std::stoi(done.substr(10)));
    }
    return most;
  };
  EXPECT_NEAR(loudest("wallLeftBuffer"), -40, 40) << "at the left wall";
  EXPECT_NEAR(loudest("wallRightBuffer"), -40, 40) << "at the right wall";
}

// --- Previews

TEST_F(Taught, ATrackIsToldInItsOrder) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n");
  take(7).script("wait say  gently, \nwait 900\n" + menuEnter() + "wait say  That was the lap. \n");
  const TraceRecord& trace = leave(3);
  const auto paces = paceOf(kKirtland, 60);
  const auto spoken = trace.spoken();
  auto from = spoken.begin();
  for (std::size_t i = 0; i < paces.size(); ++i) {
    from = std::find(from, spoken.end(), segmentWords(kKirtland.segments[i], paces[i]));
    ASSERT_NE(from, spoken.end()) << i;
    ++from;
  }
  EXPECT_THAT(trace.files(), Each(Not(HasSubstr("write"))));
}

/// A track and a pace, 0 to 2.
class Previews : public Taught, public testing::WithParamInterface<std::tuple<int, int>> {};

INSTANTIATE_TEST_SUITE_P(Of, Previews, testing::Combine(testing::Range(1, 11), testing::Range(0, 3)));

TEST_P(Previews, GoRoundWithoutTouchingAWall) {
  const auto& [track, pace] = GetParam();
  take(kPreview).script("wait say  Preview a track. \nwait 900\n");
  take(track - 1).script("wait say  gently, \nwait 900\n" + menuDown(pace) + menuEnter() +
                         "wait say  That was the lap. \n");
  constexpr double kTopSpeeds[] = {60, 100, 1000};
  for (const TraceLine& tick : leave(3).ticks()) {
    ASSERT_LE(tick.at("speed").get<double>(), kTopSpeeds[pace]);
    ASSERT_EQ(tick.at("wallTicks"), 0);
  }
}

TEST_F(Taught, EachSegmentIsToldBeforeItComes) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n");
  take(3).script("wait say  gently, \nwait 900\n" + menuDown(2) + menuEnter() +
                 "wait say  That was the lap. \n");
  const TraceRecord& trace = leave(3);
  const auto paces = paceOf(kOhio, 1000);
  std::vector<std::int64_t> told, driven;  // when each segment was
  for (const TraceLine& line : trace.lines()) {
    const std::int64_t now = line.at("ms");
    if (line.at("ev") == "tick" && line.at("segment") == driven.size() + 1) driven.push_back(now);
    if (line.at("ev") != "speak" || told.size() == paces.size()) continue;
    if (line.at("text") == segmentWords(kOhio.segments[told.size()], paces[told.size()])) told.push_back(now);
  }
  ASSERT_THAT(driven, SizeIs(13));
  ASSERT_THAT(told, SizeIs(13));
  for (std::size_t i = 1; i < told.size(); ++i) {
    EXPECT_LE(told[i], std::max(driven[i] - 3000, driven[i - 1]))
        << i << ": three seconds, or a whole segment";
  }
}

TEST_F(Taught, AnyKeyStopsAPreview) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n" + menuEnter() + "wait 900\n" + menuEnter());
  session.script("wait tick 30\ntap A\nwait say  The lap was stopped. \n");
  const TraceRecord& trace = leave(3);
  EXPECT_THAT(trace.ticks(), SizeIs(testing::Lt(50U)));
}

TEST_F(Taught, NothingIsDrivenAnyMoreAfterAPreview) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n" + menuEnter() + "wait 900\n" + menuEnter());
  session.script(
      "wait tick 20\ntap F2\nwait say  No aids are on. \ntap Space\nwait say  The lap was stopped. \n"
      "wait 900\ntap F1\ntap F4\nwait 900\nend");
  session.run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_FALSE(session.trace().said(" You are on the "));
  EXPECT_FALSE(session.trace().said(" slider on "));
}

TEST_F(Taught, TheKeyThatStopsAPreviewBeginsNoOtherWhileItIsHeld) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n" + menuEnter() + "wait 900\n" + menuEnter());
  session.script("wait tick 30\npress Enter\nwait say  The lap was stopped. \nwait 2000\nrelease Enter\n");
  const TraceRecord& trace = leave(3);
  EXPECT_THAT(trace.ticks(), SizeIs(testing::Lt(50U)));
}

TEST_F(Taught, APreviewIsNoLapOfThePlayers) {
  session.codriver = CodriverOptions{.aids = aidsNamed("laps,ghost")};
  take(kPreview).script("wait say  Preview a track. \nwait 900\n");
  take(7).script("wait say  gently, \nwait 900\n" + menuEnter() + "wait say  That was the lap. \n");
  const TraceRecord& trace = leave(3);
  EXPECT_FALSE(trace.said(" Lap "));
  EXPECT_THAT(trace.files(), Each(Not(HasSubstr("ghost"))));
}

TEST_F(Taught, TheWindowCanBeClosedInAPreview) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n" + menuEnter() + "wait 900\n" + menuEnter());
  const TraceRecord& trace = session.script("wait tick 30\nclose").run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_TRUE(trace.said(" Thank you for playing "));
}

// --- Lessons

enum LessonNumber { kMiddle, kMarbles, kShift, kBrake, kThreeTurns, kPitStop };

/// Who drives a lesson, and with what.
struct Pupil {
  LessonNumber lesson;
  bool hasWheel;
  std::function<std::string(const TickReport&)> hands;
  std::string name;
};

class LessonsTaught : public Taught {
 protected:
  /// From the co-driver's menu into the lesson and off.
  void begin(LessonNumber lesson, bool hasWheel) {
    session.options.controller = hasWheel;
    take(kLessons).script("wait say  Lessons. \nwait 900\n" + menuDown(lesson) + menuEnter());
    session.script("wait say that starts your engine.\nwait 500\n" + start(hasWheel));
  }
  static std::string start(bool hasWheel) {
    return hasWheel ? "axis Y -10000\nbutton 2 down\nwait 200\nbutton 2 up\n"
                    : "press LeftCtrl\nwait 100\ntap End 200\n";
  }
  /// Until a text with `end`, and the controls let go of.
  void drive(const std::function<std::string(const TickReport&)>& hands, const std::string& end) {
    Driver driver;
    driver.until = end;
    driver.onTick = hands;
    session.drive(driver).script(handsOff());
  }
  static std::string nobody(const TickReport&) { return ""; }
  static std::string wordOf(LessonNumber lesson) {
    const char* const words[] = {" That is the middle: ",   " without one marble. ",   " Well shifted, ",
                                 " You were slow enough, ", " Three turns in a row, ", " A clean stop. "};
    return words[lesson];
  }

  std::string handsOff() const {
    std::string script;
    for (const char* key : {"LeftCtrl", "LeftShift", "Left", "Right", "Up", "Down", "Home"}) {
      script += std::string("release ") + key + "\n";
    }
    return session.options.controller ? "axis X 0\naxis Y 0\nbutton 8 up\nbutton 9 up\n" + script : script;
  }
};

/// Holds the key as long as the car is left of the middle.
std::function<std::string(const TickReport&)> toTheMiddleByKeys() {
  return [isHeld = false](const TickReport& tick) mutable -> std::string {
    const bool wanted = tick.lateralPosition < 44;
    if (std::exchange(isHeld, wanted) == wanted) return "";
    return wanted ? "press Right" : "release Right";
  };
}

std::string toTheMiddleByWheel(const TickReport& tick) {
  return "axis X " + std::to_string(static_cast<int>((50 - tick.lateralPosition) * 150));
}

/// Shifts where the engine is near its end.
std::function<std::string(const TickReport&)> shiftsInTime(bool hasWheel) {
  return [=, isShifting = false](const TickReport& tick) mutable -> std::string {
    if (std::exchange(isShifting, false)) return hasWheel ? "button 8 up" : "release Up";
    isShifting = tick.engineRpm > 95 && tick.gear < 4;
    if (!isShifting) return "";
    return hasWheel ? "button 8 down" : "press Up";
  };
}

template <typename Hands>
std::function<std::string(const TickReport&)> hands(const Track& track) {
  return [driver = std::make_shared<Hands>(track)](const TickReport& tick) { return driver->after(tick); };
}

/// Asks for pit road by key, brakes in the lane, keeps to the wall and stops at two.
std::function<std::string(const TickReport&)> pitStopByKeys() {
  return [heard = 0.0, last = 0.0, leg = 0](const TickReport& tick) mutable -> std::string {
    if (tick.pit == 0) return "press Home";
    if (tick.lapPosition < last) ++leg;
    last = tick.lapPosition;
    const bool isApproach = leg > 0;
    const bool stops = isApproach && tick.lapPosition > 2700;
    const bool isFast = tick.speed > 50;
    const double place = tick.lateralPosition;
    return std::string("release Home\n") + (stops || isFast ? "release LeftCtrl\n" : "press LeftCtrl\n") +
           (stops ? "press LeftShift\n" : "release LeftShift\n") +
           (place > 12  ? "press Left\nrelease Right"
            : place < 6 ? "release Left\npress Right"
                        : "release Left\nrelease Right");
  };
}

class Pupils : public LessonsTaught, public testing::WithParamInterface<Pupil> {};

INSTANTIATE_TEST_SUITE_P(
    Of, Pupils,
    testing::Values(Pupil{kMiddle, false, toTheMiddleByKeys(), "TheMiddleByKeys"},
                    Pupil{kMiddle, true, toTheMiddleByWheel, "TheMiddleByWheel"},
                    Pupil{kMarbles, false, hands<ReflexDriver>(kMaple), "TheMarblesByKeys"},
                    Pupil{kMarbles, true, hands<WheelScript>(kMaple), "TheMarblesByWheel"},
                    Pupil{kShift, false, shiftsInTime(false), "ShiftingByKeys"},
                    Pupil{kShift, true, shiftsInTime(true), "ShiftingByWheel"},
                    Pupil{kBrake, false, hands<ReflexDriver>(kMentor), "BrakingByKeys"},
                    Pupil{kBrake, true, hands<WheelScript>(kMentor), "BrakingByWheel"},
                    Pupil{kThreeTurns, false, hands<ReflexDriver>(kChagrin), "ThreeTurnsByKeys"},
                    Pupil{kThreeTurns, true, hands<WheelScript>(kChagrin), "ThreeTurnsByWheel"},
                    Pupil{kPitStop, false, pitStopByKeys(), "ThePitStopByKeys"},
                    Pupil{kPitStop, true, hands<PitStopDriver>(kMaple), "ThePitStopByWheel"}),
    [](const auto& tested) { return tested.param.name; });

TEST_P(Pupils, ReachTheirGoal) {
  const Pupil& pupil = GetParam();
  begin(pupil.lesson, pupil.hasWheel);
  drive(pupil.hands, wordOf(pupil.lesson));
  const TraceRecord& trace = leave(2);
  EXPECT_TRUE(trace.said(wordOf(pupil.lesson)));
  EXPECT_FALSE(trace.said(" try again")) << "at once";
}

/// The hint that whoever holds the gas and does nothing else is given.
struct Hint {
  LessonNumber lesson;
  const char* words;
};

class Idlers : public LessonsTaught, public testing::WithParamInterface<Hint> {};

INSTANTIATE_TEST_SUITE_P(In, Idlers,
                         testing::Values(Hint{kMiddle, " You were on the left, "},
                                         Hint{kMarbles, "a left turn pushes you to the right. "},
                                         Hint{kShift, " Too late: "},
                                         Hint{kBrake, " You came into the turn at "},
                                         Hint{kThreeTurns, " Turn 1 is a right one, and pushed you "},
                                         Hint{kPitStop, " You have passed pit road. "}));

TEST_P(Idlers, AreGivenAHintAndMayTryAgainOrLeave) {
  begin(GetParam().lesson, false);
  drive(nobody, " try again");
  session.script("wait 500\n" + start(false) + "wait tick 20\n" + handsOff() + "tap Escape\n");
  const TraceRecord& trace = leave(2);
  EXPECT_TRUE(trace.said(GetParam().words));
  const auto isFirst = [](const TraceLine& tick) { return tick.at("raceTicks") == 1; };
  const auto ticks = trace.ticks();
  EXPECT_EQ(std::count_if(ticks.begin(), ticks.end(), isFirst), 2) << "attempts";
  EXPECT_THAT(trace.files(), Each(Not(HasSubstr("write"))));
}

TEST_F(LessonsTaught, AnEarlyShiftIsHinted) {
  begin(kShift, false);
  session.script("wait tick 5\ntap Up 150\n");
  drive(nobody, " try again");
  session.script("wait 500\ntap Escape\n");
  EXPECT_TRUE(leave(2).said(" Wait until it stops climbing. "));
}

TEST_F(LessonsTaught, TheCodriverKeepsTheSpeedWhereHeWorksThePedals) {
  for (const bool hasWheel : {false, true}) {
    begin(kMiddle, hasWheel);
    session.script(hasWheel ? "axis Y 0\n" : "release LeftCtrl\n");
    drive(nobody, " try again");
    session.script("wait 500\ntap Escape\n");
    for (const TraceLine& tick : leave(2).ticks()) EXPECT_NEAR(tick.at("speed").get<double>(), 60, 6);
    openMenu();
  }
}

}  // namespace
}  // namespace vorn
