// Lap times and the ghost, in whole races.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "codriver/ghost_store.h"
#include "codriver/lap_times.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
#include "support/program.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr int kKirtlandNumber = 8;
constexpr const char* kFile = "vorn1kirtland.ghost";

/// One lap of the dirt mile after the other, in one folder, always driven in the same way.
class LapsOfTheDirtMile : public testing::Test {
 protected:
  const TraceRecord& race(const std::string& aids, const std::string& behindTheLine = "",
                          bool brakesOnce = false, int track = kKirtlandNumber) {
    session.codriver = CodriverOptions{.aids = aidsNamed(aids)};
    session.options.controller = true;
    WheelScript wheel(*allTracks()[static_cast<std::size_t>(track - 1)]);
    Driver driver;
    driver.until = " Your time for ";
    driver.onTick = [&](const TickReport& tick) {
      const std::string driven = wheel.after(tick);
      const bool isBraking = brakesOnce && tick.raceTicks > 80 && tick.raceTicks < 100;
      return isBraking ? driven + "axis Y 10000\n" : driven;
    };
    session.script(offTheGrid(track, Device::kWheel)).drive(driver);
    session.script(behindTheLine + "get raceTicks\nwait quiet\nend").run();
    EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
    return session.trace();
  }
  GhostReading kept() { return decodeGhosts(session.folder.read(kFile)); }
  std::vector<std::string> said(const std::string& end) {
    std::vector<std::string> texts;
    for (const std::string& text : session.trace().spoken()) {
      if (text.ends_with(end)) texts.push_back(text);
    }
    return texts;
  }

  Session session;
};

TEST_F(LapsOfTheDirtMile, AreToldAtTheirEndAndKept) {
  const TraceRecord& trace = race("laps");
  const auto reading = kept();
  ASSERT_EQ(reading.fault, GhostFault::kNone);
  EXPECT_EQ(reading.file.track, kKirtlandNumber);
  ASSERT_THAT(reading.file.ghosts, SizeIs(1));
  const GhostLap& lap = reading.file.ghosts.front();
  EXPECT_EQ(lap.kind, LapKind{});
  EXPECT_NEAR(lap.ticks, trace.values("raceTicks").back().get<double>(), 0.001) << "the time of the race";
  EXPECT_TRUE(trace.said(" Lap " + lapTimeText(lap.ticks) + ". "));
}

TEST_F(LapsOfTheDirtMile, HoldTheCarsPlacesTickByTick) {
  const auto ticks = race("ghost").ticks();
  const GhostLap lap = kept().file.ghosts.at(0);
  ASSERT_THAT(lap.places, SizeIs(ticks.size()));
  double way = 0;
  int segment = 1;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    for (; segment < ticks[i].at("segment"); ++segment) {
      way += kKirtland.segments[static_cast<std::size_t>(segment - 1)].length;
    }
    EXPECT_NEAR(lap.places[i].ticks, ticks[i].at("raceTicks").get<double>(), 0.001);
    EXPECT_NEAR(lap.places[i].distance, way + ticks[i].at("lapPosition").get<double>(), 0.051);
    EXPECT_NEAR(lap.places[i].lateral, ticks[i].at("lateralPosition").get<double>(), 0.051);
  }
}

TEST_F(LapsOfTheDirtMile, DrivenAgainInTheSameWayAreLevelWithTheGhostFromTheFirstTickToTheLast) {
  race("ghost");
  const TraceRecord& trace = race("ghost");
  EXPECT_THAT(said("level "), SizeIs(kKirtland.segments.size()));
  EXPECT_THAT(said("behind "), IsEmpty());
  EXPECT_THAT(said("ahead "), IsEmpty());
  // The tone stands beside the car all the time.
  const auto tones = trace.soundsOf("codriver ghost");
  EXPECT_THAT(tones, Contains(StartsWith("create")));
  for (const std::string& tone : tones) {
    if (tone.starts_with("SetPan")) {
      EXPECT_LE(std::abs(std::stoi(tone.substr(7))), 4) << tone;
    }
  }
}

TEST_F(LapsOfTheDirtMile, AreComparedWithTheBestAtEachSegmentAndNeverKeptInItsPlace) {
  race("ghost");
  const std::string best = session.folder.read(kFile);
  race("laps,ghost", "", true);
  EXPECT_EQ(session.folder.read(kFile), best);
  EXPECT_THAT(said("behind "), Not(IsEmpty()));
  EXPECT_THAT(said("behind. "), SizeIs(1));
}

TEST_F(LapsOfTheDirtMile, LeaveNoFileAndNoWordWhereBothAidsAreOff) {
  const TraceRecord& trace = race("none");
  EXPECT_FALSE(session.folder.has(kFile));
  EXPECT_FALSE(trace.said(" Lap "));
  EXPECT_THAT(trace.files(), Each(Not(HasSubstr("ghost"))));
}

TEST_F(LapsOfTheDirtMile, TellOfADamagedGhostAndTakeItsPlace) {
  session.folder.write(kFile, "nothing of the kind");
  EXPECT_TRUE(race("ghost").said(" The ghost of the Kirtland Dirt Mile Oval Track is damaged. "));
  EXPECT_EQ(kept().fault, GhostFault::kNone);
}

TEST_F(LapsOfTheDirtMile, TellOfAGhostOfAnotherVersion) {
  race("ghost");
  std::string newer = session.folder.read(kFile);
  newer[9] = 7;
  session.folder.write(kFile, newer);
  EXPECT_TRUE(race("ghost").said(" is of another version of the game. "));
}

TEST_F(LapsOfTheDirtMile, ASharedLapIsRacedInPlaceOfTheOwnOne) {
  race("ghost");
  GhostFile slower = kept().file;
  for (GhostPlace& place : slower.ghosts[0].places) place.ticks += 98;
  slower.ghosts[0].ticks += 98;
  session.folder.write("vorn1kirtland.friend.ghost", encodeGhosts(slower));
  AidSettings settings;
  settings.turn(AidKind::kGhost, true);
  settings.racesFriend = 1;
  session.folder.write(kAidFile, aidFileText(settings));
  race("ghost");
  EXPECT_THAT(said("ahead "), Each(" 10 point 0 ahead "));
  EXPECT_THAT(said("ahead "), SizeIs(kKirtland.segments.size()));
}

TEST_F(LapsOfTheDirtMile, AreAskedForWithF9) {
  race("laps");
  EXPECT_THAT(said("Last lap"), IsEmpty());
  const TraceRecord& trace =
      race("laps",
           "wait say  Enter your name\nwait 50\ntype me\ntap Enter\nwait say  correct, for the new\nwait 50\n"
           "tap Enter\nwait say  Select, repeat race time \nwait 600\ntap F9\nwait say  Last lap \n",
           true);
  const GhostLap best = kept().file.ghosts.at(0);
  EXPECT_TRUE(trace.said(" Best of this session "));
  EXPECT_TRUE(trace.said("Best of all time " + lapTimeText(best.ticks) + ". "));
  EXPECT_TRUE(trace.said(" Sector 2, "));
}

TEST_F(LapsOfTheDirtMile, LeaveTheRaceAsItIs) {
  const auto ticksOf = [](const TraceRecord& trace) {
    std::string text;
    for (const TraceLine& tick : trace.ticks()) text += traceText(tick) + "\n";
    return text;
  };
  const std::string without = ticksOf(race("none"));
  race("laps,ghost");
  EXPECT_EQ(ticksOf(race("laps,ghost")), without);
}

TEST_F(LapsOfTheDirtMile, TheToneStandsOnTheSideOfTheGhostHigherWhereItIsAhead) {
  race("ghost");
  GhostFile other = kept().file;
  for (GhostPlace& place : other.ghosts[0].places) {
    place.ticks -= 5;
    place.lateral -= 20;
  }
  session.folder.write("vorn1kirtland.friend.ghost", encodeGhosts(other));
  AidSettings settings;
  settings.turn(AidKind::kGhost, true);
  settings.racesFriend = 1;
  session.folder.write(kAidFile, aidFileText(settings));
  race("ghost");
  int pan = 0, frequency = 0;
  for (const std::string& tone : session.trace().soundsOf("codriver ghost")) {
    if (tone.starts_with("SetPan ")) pan = std::stoi(tone.substr(7));
    if (tone.starts_with("SetFrequency ")) frequency = std::stoi(tone.substr(13));
  }
  EXPECT_NEAR(pan, -800, 4);
  EXPECT_EQ(frequency, 48 * 275) << "48 frames a period";
}

/// Each track, driven twice in the same way.
class LapsOfEveryTrack : public LapsOfTheDirtMile, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(On, LapsOfEveryTrack, testing::Range(1, 11));

TEST_P(LapsOfEveryTrack, TakeTheTimeOfTheRaceAndAreLevelWithThemselves) {
  const Track& track = *allTracks()[static_cast<std::size_t>(GetParam() - 1)];
  const double ticks = race("ghost", "", false, GetParam()).values("raceTicks").back().get<double>();
  const GhostReading reading = decodeGhosts(session.folder.read(ghostFileName(GetParam())));
  ASSERT_THAT(reading.file.ghosts, SizeIs(1));
  EXPECT_NEAR(reading.file.ghosts[0].ticks, ticks, 0.001);
  race("ghost", "", false, GetParam());
  EXPECT_THAT(said("level "), SizeIs(track.segments.size()));
}

// --- Friends

class BetweenFriends : public LapsOfTheDirtMile {
 protected:
  Finished call(std::vector<std::string> options) {
    options.insert(options.begin(), {VORN_PROGRAM, "--folder", session.folder.path().string()});
    return runProgram(options);
  }
  std::string pathOf(const char* name) { return (elsewhere.path() / name).string(); }

  TemporaryFolder elsewhere;
};

TEST_F(BetweenFriends, LapsGoFromOneFolderToTheOther) {
  race("ghost");
  const std::string own = session.folder.read(kFile);
  EXPECT_EQ(call({"--export-ghost", "8", pathOf("anna.ghost")}).exitStatus, 0);
  EXPECT_EQ(elsewhere.read("anna.ghost"), own);
  const Finished taken = call({"--import-ghost", pathOf("anna.ghost")});
  EXPECT_EQ(taken.exitStatus, 0);
  EXPECT_EQ(taken.output, "Taken in: laps on the Kirtland Dirt Mile Oval Track.\n");
  EXPECT_EQ(session.folder.read("vorn1kirtland.friend.ghost"), own);
}

TEST_F(BetweenFriends, WhatIsNoGhostIsNotTakenIn) {
  elsewhere.write("holiday.ghost", "VORNGHOST, a film");
  const Finished refused = call({"--import-ghost", pathOf("holiday.ghost")});
  EXPECT_EQ(refused.exitStatus, 1);
  EXPECT_THAT(refused.errors, HasSubstr("of another version"));
  EXPECT_EQ(call({"--import-ghost", pathOf("nowhere.ghost")}).exitStatus, 1);
  EXPECT_FALSE(session.folder.has("vorn1kirtland.friend.ghost"));
}

TEST_F(BetweenFriends, WhatIsNotThereIsNotGivenOut) {
  EXPECT_THAT(call({"--export-ghost", "8", pathOf("mine.ghost")}).errors, HasSubstr("no lap is kept"));
  EXPECT_EQ(call({"--export-ghost", "11", pathOf("mine.ghost")}).exitStatus, 2);
  race("ghost");
  elsewhere.write("mine.ghost", "dear to me");
  EXPECT_EQ(call({"--export-ghost", "8", pathOf("mine.ghost")}).exitStatus, 1);
  EXPECT_EQ(elsewhere.read("mine.ghost"), "dear to me");
}

TEST_F(BetweenFriends, AFileInTheFolderIsTakenInFromTheMenu) {
  race("ghost");
  session.folder.write("anna.ghost", session.folder.read(kFile));
  session.codriver = CodriverOptions{};
  session.options.controller = false;
  const std::string toGhost = "tap F2\nwait say  Co-driver.\nwait 900\n" + menuDown(4) + menuEnter() +
                              "wait say  Ghost. \nwait 900\n";
  session
      .script(atMainMenu() + toGhost + menuDown(3) + menuEnter() + "wait say anna.ghost\nwait 900\n" +
              menuEnter() + "wait say  Taken in: laps on the Kirtland \nwait 900\ntap Escape\nwait 900\n" +
              menuUp(2) + menuEnter() + "wait say  drives a friend's laps. \nwait 900\n" + menuDown(3) +
              menuEnter() +
              "wait say vorn1kirtland.ghost, \nwait 900\ntap Escape\nwait 900\ntap Escape\nwait 900\nend")
      .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_EQ(session.folder.read("vorn1kirtland.friend.ghost"), session.folder.read(kFile));
  const auto settings = aidsInFile(session.folder.read(kAidFile));
  ASSERT_TRUE(settings);
  EXPECT_TRUE(settings->isOn(AidKind::kGhost));
  EXPECT_EQ(settings->racesFriend, 1);
}

}  // namespace
}  // namespace vorn
