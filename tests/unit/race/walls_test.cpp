// The walls as they are heard, scraped and hit.

#include "race/walls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/race/on_track.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The two wall sounds.

struct WallsAt {
  double lateralPosition;
  int leftPan, rightPan, leftVolume, rightVolume;
};

class WallSounds : public testing::TestWithParam<WallsAt> {};

TEST_P(WallSounds, AreLouderOnTheNearerSide) {
  const WallsAt& at = GetParam();
  GameRig rig;
  rig.g.soundVolume = -3500;  // not taken
  rig.g.lateralPosition = at.lateralPosition;
  EXPECT_THAT(rig.told(SetWind), ElementsAre("wallLeftBuffer SetPan " + std::to_string(at.leftPan),
                                             "wallRightBuffer SetPan " + std::to_string(at.rightPan),
                                             "wallLeftBuffer SetVolume " + std::to_string(at.leftVolume),
                                             "wallRightBuffer SetVolume " + std::to_string(at.rightVolume)));
}

INSTANTIATE_TEST_SUITE_P(Places, WallSounds,
                         testing::Values(WallsAt{50, -1100, 1100, -1000, -1000},
                                         WallsAt{0, -100, 2100, 0, -2000}, WallsAt{100, -2100, 100, -2000, 0},
                                         WallsAt{25, -600, 1600, -500, -1500},
                                         WallsAt{75, -1600, 600, -1500, -500},
                                         WallsAt{49.96, -1100, 1100, -999, -1001},   // 0.8: nothing whole
                                         WallsAt{50.06, -1101, 1099, -1001, -999},   // 1.2
                                         WallsAt{40.05, -901, 1299, -801, -1199}));  // 199

// Light poles.

struct PoleAt {
  int lastSide;  // the pole is on the other one
  double lateralPosition;
  int pan, volume;
};

class LightPole : public testing::TestWithParam<PoleAt> {};

TEST_P(LightPole, SoundsOnTheOtherSideThanTheLast) {
  const PoleAt& at = GetParam();
  GameRig rig;
  rig.g.poleSide = at.lastSide;
  rig.g.lateralPosition = at.lateralPosition;
  rig.g.speed = 123.456;
  EXPECT_THAT(
      rig.told(playsignpoll),
      ElementsAre("sound29Buffer SetPan " + std::to_string(at.pan),
                  "sound29Buffer SetVolume " + std::to_string(at.volume), "sound29Buffer SetFrequency 12346",
                  "sound29Buffer SetCurrentPosition 0", "sound29Buffer Play 0"));
}

INSTANTIATE_TEST_SUITE_P(LeftAndRight, LightPole,
                         testing::Values(PoleAt{0, 50, 1400, -500}, PoleAt{1, 50, 1400, -500},
                                         PoleAt{2, 50, -1400, -500}, PoleAt{2, 0, -400, 0},
                                         PoleAt{2, 100, -400, -1000}, PoleAt{1, 0, 2400, -1000},
                                         PoleAt{1, 100, 2400, 0}, PoleAt{1, 75.03, 1900, -250},
                                         PoleAt{2, 25.25, -905, -252}));

TEST(LightPoles, AlternateFromTheRightOn) {
  GameRig rig;
  rig.g.speed = 100;
  rig.g.lateralPosition = 50;
  std::vector<int> sides;
  for (int i = 0; i < 4; ++i) {
    playsignpoll(rig.g);
    sides.push_back(rig.g.poleSide);
  }
  EXPECT_THAT(sides, ElementsAre(2, 1, 2, 1));
}

TEST(LightPoles, AreHeardFromEightyMilesAnHourOn) {
  GameRig rig;
  rig.g.lateralPosition = 50;
  rig.g.speed = 79;
  EXPECT_THAT(rig.told(playsignpoll),
              ElementsAre("sound29Buffer SetPan 1400", "sound29Buffer SetVolume -500"));
  rig.g.speed = 79.99;
  EXPECT_THAT(rig.told(playsignpoll),
              ElementsAre("sound29Buffer SetPan -1400", "sound29Buffer SetVolume -500"));
  rig.g.speed = 80;
  EXPECT_THAT(rig.told(playsignpoll), Contains("sound29Buffer SetFrequency 8000"));
}

TEST(LightPoles, AreAsLoudWhateverTheVolumeOfTheSounds) {
  GameRig rig;
  rig.g.soundVolume = -3500;  // not taken
  rig.g.lateralPosition = 30;
  rig.g.speed = 100;
  EXPECT_THAT(rig.told(playsignpoll), Contains("sound29Buffer SetVolume -700"));
  EXPECT_THAT(rig.told(playsignpoll), Contains("sound29Buffer SetVolume -300"));
}

TEST(LightPoles, YieldTwiceWhereTheySound) {
  GameRig rig;
  rig.g.lateralPosition = 50;
  rig.g.speed = 100;
  EXPECT_EQ(rig.timed(playsignpoll), 2);
  rig.g.speed = 50;
  EXPECT_EQ(rig.timed(playsignpoll), 0);
}

TEST(LightPoles, AreNotThereWithTheOptionOff) {
  GameRig rig;
  rig.g.speed = 100;
  rig.g.trackLightPolls = kOff;
  EXPECT_THAT(rig.told(playsignpoll), IsEmpty());
  EXPECT_EQ(rig.g.poleSide, 0);
}

// Scraping.

TEST(WallContact, ScrapesAtTheRightWall) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.lateralPosition = 103;
  EXPECT_THAT(rig.told(c4c), ElementsAre("sound10Buffer SetPan 500", "sound10Buffer Play 1"));
  EXPECT_EQ(rig.g.lateralPosition, 100);
  EXPECT_EQ(rig.g.speed, 98);
  EXPECT_EQ(rig.g.wallTicks, 1);
  EXPECT_EQ(rig.g.wallScrapePlaying, 1);
}

TEST(WallContact, ScrapesAtTheLeftWall) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.lateralPosition = -3;
  EXPECT_THAT(rig.told(c4c), ElementsAre("sound10Buffer SetPan -500", "sound10Buffer Play 1"));
  EXPECT_EQ(rig.g.lateralPosition, 0);
  EXPECT_EQ(rig.g.speed, 98);
}

TEST(WallContact, GoesOnScraping) {
  GameRig rig;
  putOnTrack(rig, 1, 1);
  rig.g.lateralPosition = 100;
  c4c(rig.g);
  EXPECT_EQ(rig.g.speed, 0);  // and not less
  EXPECT_THAT(rig.told(c4c), IsEmpty());
  EXPECT_EQ(rig.g.wallTicks, 2);
}

TEST(WallContact, IsMadeTwiceATickAtTheRightWall) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.lateralPosition = 100;
  EXPECT_THAT(rig.toldTo("sound10Buffer", checkstuff), ElementsAre("SetPan 500", "Play 1"));
  EXPECT_EQ(rig.g.wallTicks, 2);
  EXPECT_DOUBLE_EQ(rig.g.speed, 100 - 2 - 2.8 - 2 - 2);  // contact, coasting, contact, marbles
}

TEST(WallContact, IsMadeTwiceATickAtTheLeftWallWithTheScrapeInterrupted) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.lateralPosition = 0;
  EXPECT_THAT(rig.toldTo("sound10Buffer", checkstuff),
              ElementsAre("SetPan -500", "Play 1", "Stop", "SetPan -500", "Play 1"));
  EXPECT_EQ(rig.g.wallTicks, 2);
  EXPECT_EQ(rig.g.wallScrapePlaying, 1);
}

TEST(WallScrape, StopsAtTheNextTickOffTheWall) {
  for (const double place : {3.0, 50.0, 99.9}) {
    GameRig rig;
    putOnTrack(rig, 100, 4);
    rig.g.lateralPosition = 100;
    tick(rig);
    rig.g.lateralPosition = place;
    EXPECT_THAT(rig.toldTo("sound10Buffer", checkstuff), ElementsAre("Stop")) << place;
    EXPECT_EQ(rig.g.wallScrapePlaying, 0);
    EXPECT_THAT(rig.toldTo("sound10Buffer", checkstuff), IsEmpty());
  }
}

// How many contacts a car survives. A crash needs a driver: these have none, and leave.
int contactsUntilCrash(int marblesTicks) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  rig.g.marblesTicks = marblesTicks;
  int contacts = 0;
  rig.plan({"wait 100", "press Escape"});
  while (rig.g.escapePressed == 0 && contacts < 50) {
    ++contacts;
    c4c(rig.g);
  }
  return contacts;
}

TEST(Crash, ComesAtTheTenthContactForACarStraightFromTheGroove) {
  EXPECT_EQ(contactsUntilCrash(0), 10);
  EXPECT_EQ(contactsUntilCrash(10), 10);
}

TEST(Crash, ComesAtTheTwentyFirstContactForACarOutOfTheMarbles) {
  EXPECT_EQ(contactsUntilCrash(11), 21);
}

TEST(Crash, ComesInTheFifthTickOfACarThatStaysAtTheWall) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  tick(rig, 4);
  EXPECT_EQ(rig.g.wallTicks, 8);
  rig.plan({"wait 100", "press Escape"});
  tick(rig);
  EXPECT_EQ(rig.g.escapePressed, 1);
  EXPECT_EQ(rig.g.wallTicks, 10);
}

TEST(Crash, CountsTheContactsOfAllVisitsToTheWall) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  tick(rig, 3);
  rig.g.lateralPosition = 50;
  tick(rig, 3);
  EXPECT_EQ(rig.g.wallTicks, 6);
  EXPECT_EQ(rig.g.marblesTicks, 0);
}

TEST(Crash, CanBeForcedAnywhere) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.forceCrash = 1;
  rig.plan({"wait 100", "press Escape"});
  const auto told = rig.told(c4c);
  EXPECT_EQ(told.at(0), "oneShotBuffer create vorn15.wav");
  EXPECT_EQ(rig.g.forceCrash, 0);
  EXPECT_EQ(rig.g.wallTicks, 0);
}

}  // namespace
}  // namespace vorn
