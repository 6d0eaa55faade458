// The second game: the tour of the sounds, previews and lessons, from the co-driver's menu and back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "codriver/lessons.h"
#include "codriver/preview_words.h"
#include "sessions/tracks/keyboard_driver.h"
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
  Taught() {
    session.codriver = CodriverOptions{};
    session.script(atMainMenu() + menuDown() + "tap F2\nwait say  Co-driver.\nwait 900\n");
  }
  /// Takes the entry that is `steps` down from where the menu opens.
  Session& take(int steps) { return session.script(menuDown(steps) + menuEnter()); }
  /// Back out of `menus` menus to the main menu, where he was.
  const TraceRecord& leave(int menus) {
    std::string script;
    for (int i = 0; i < menus; ++i) script += "wait 900\ntap Escape\n";
    session.script(script + "wait 900\nget escapePressed\nget raceTicks\nget lapPosition\nget trackChoice\n" +
                   menuDown() + "end");
    const TraceRecord& trace = session.run();
    EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
    const auto spoken = trace.spoken();
    EXPECT_EQ(spoken.back(), " reed track descriptions ") << "one below where he was";
    EXPECT_EQ(trace.values("escapePressed").back(), 0);
    EXPECT_EQ(trace.values("raceTicks").back(), 0);
    EXPECT_EQ(trace.values("lapPosition").back(), 0);
    EXPECT_EQ(trace.values("trackChoice").back(), 1);
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

// --- Previews

TEST_F(Taught, ATrackIsDrivenGentlyAndTold) {
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
  for (const TraceLine& tick : trace.ticks()) {
    EXPECT_LE(tick.at("speed").get<double>(), 60);
    EXPECT_EQ(tick.at("wallTicks"), 0);
  }
  EXPECT_THAT(trace.files(), Each(Not(HasSubstr("write"))));
}

TEST_F(Taught, EachSegmentIsToldBeforeItComes) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n");
  take(3).script("wait say  gently, \nwait 900\n" + menuDown(2) + menuEnter() +
                 "wait say  That was the lap. \n");
  const TraceRecord& trace = leave(3);
  const auto paces = paceOf(kOhio, 1000);
  int driven = 0;
  std::size_t told = 0;
  for (const TraceLine& line : trace.lines()) {
    if (line.at("ev") == "tick") {
      driven = line.at("segment");
      EXPECT_GE(told, static_cast<std::size_t>(driven)) << "not told yet";
    }
    if (line.at("ev") != "speak" || told == paces.size()) continue;
    if (line.at("text") == segmentWords(kOhio.segments[told], paces[told])) ++told;
  }
  EXPECT_EQ(driven, 13);
}

TEST_F(Taught, AnyKeyStopsAPreview) {
  take(kPreview).script("wait say  Preview a track. \nwait 900\n" + menuEnter() + "wait 900\n" + menuEnter());
  session.script("wait tick 30\ntap A\nwait say  The lap was stopped. \n");
  const TraceRecord& trace = leave(3);
  EXPECT_THAT(trace.ticks(), SizeIs(testing::Lt(50U)));
}

// --- Lessons

/// What a lesson is begun with.
const std::string kStartByKeys = "press LeftCtrl\nwait 500\ntap End 200\n";

TEST_F(Taught, TheMiddleIsFoundByEar) {
  take(kLessons).script("wait say  Lessons. \nwait 900\n" + menuEnter() +
                        "wait say  Press the key \nwait 500\ntap End 200\n");
  Driver driver;
  driver.until = " That is the middle";
  bool isHeld = false;
  driver.onTick = [&](const TickReport& tick) -> std::string {
    const bool wanted = tick.lateralPosition < 44;
    if (wanted == isHeld) return "";
    isHeld = wanted;
    return wanted ? "press Right" : "release Right";
  };
  session.drive(driver);
  const TraceRecord& trace = leave(2);
  EXPECT_TRUE(trace.said(" That is the middle: both sides are equally loud. "));
  for (const TraceLine& tick : trace.ticks()) EXPECT_NEAR(tick.at("speed").get<double>(), 60, 6);
}

TEST_F(Taught, ALessonThatIsFailedCanBeTriedAgainAndLeft) {
  take(kLessons).script("wait say  Lessons. \nwait 900\n" + menuDown(3) + menuEnter());
  session.script(
      "wait say  Hold the gas, \nwait 500\n" + kStartByKeys +
      "wait say  You came into the turn at \nwait say  try again\nwait 500\ntap End 200\nwait tick 20\n"
      "release LeftCtrl\ntap Escape\n");
  const TraceRecord& trace = leave(2);
  EXPECT_TRUE(trace.said(" miles an hour. Brake while the sound ahead gets loud"));
  int attempts = 0;
  for (const TraceLine& tick : trace.ticks()) attempts += tick.at("raceTicks") == 1;
  EXPECT_EQ(attempts, 2);
}

TEST_F(Taught, GearsAreChangedInTime) {
  take(kLessons).script("wait say  Lessons. \nwait 900\n" + menuDown(2) + menuEnter());
  session.script("wait say  Hold the gas, \nwait 500\n" + kStartByKeys);
  Driver driver;
  driver.until = " Well shifted";
  bool isShifting = false;
  driver.onTick = [&](const TickReport& tick) -> std::string {
    if (std::exchange(isShifting, false)) return "release Up";
    isShifting = tick.engineRpm > 95 && tick.gear < 4;
    return isShifting ? "press Up" : "";
  };
  session.drive(driver).script("release LeftCtrl\n");
  EXPECT_TRUE(leave(2).said(" Well shifted, all three times. "));
}

TEST_F(Taught, AnEarlyShiftIsHinted) {
  take(kLessons).script("wait say  Lessons. \nwait 900\n" + menuDown(2) + menuEnter());
  session.script("wait say  Hold the gas, \nwait 500\n" + kStartByKeys +
                 "wait tick 5\ntap Up 150\nwait say  Too early\nrelease LeftCtrl\nwait 500\ntap Escape\n");
  EXPECT_TRUE(leave(2).said(" Wait until it stops climbing. "));
}

}  // namespace
}  // namespace vorn
