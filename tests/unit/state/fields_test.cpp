#include "state/fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "platform/headless/headless_platform.h"

namespace vorn {
namespace {

using testing::Optional;
using testing::VariantWith;

const char* const kWholeFields[] = {
    // shell, speech and sound
    "trackChoice", "voiceIndex", "lastVoiceIndex", "speechRate", "voiceVolume", "soundVolume",
    "baseFrequency", "waveFilesBad",
    // input
    "escapePressed", "joystickPresent", "inputDevice", "joySteering", "joyGasBrake", "btnSpeedometer",
    "btnTrackPosition", "btnStartEngine", "btnPitRoad", "btnSayGear", "btnSayLap", "btnHorn",
    "btnElapsedTime", "btnUpShift", "btnDownShift", "joyCaptureMode", "joyCapturedValue", "joyCaptured",
    "joystickEvent", "joyMapSpeedometer", "joyMapTrackPosition", "joyMapStartEngine", "joyMapPitRoad",
    "joyMapSayGear", "joyMapSayLap", "joyMapHorn", "joyMapElapsedTime", "joyMapUpShift", "joyMapDownShift",
    "joySteeringAxis", "joyGasAxis", "keyMapSpeedometer", "keyMapTrackPosition", "keyMapStartEngine",
    "keyMapSayLap", "keyMapPitRoad", "keyMapElapsedTime", "keyMapSteerLeft", "keyMapSteerRight",
    "keyMapUpShift", "keyMapDownShift", "keyMapGas", "keyMapBrake", "keyMapEnter", "keyMapHorn",
    "keyMapSayGear",
    // race
    "waitUntilTick", "lastTickCount", "lapsCompleted", "raceHours", "raceMinutes", "gear", "topGearUnlimited",
    "upShiftHeld", "downShiftHeld", "idleSoundSkip", "revToggle", "steerKeyLeft", "steerKeyRight",
    "steerKeyTicks", "marblesTicks", "wallTicks", "wallScrapePlaying", "poleSide", "forceCrash",
    "lastSayPositionTick", "lastSayGearTick", "lastSaySpeedTick", "lastSayLapTick", "lastSayTimeTick",
    "lastSayFuelTick",
    // pit, tracks and options
    "pitEntryMissed", "pit", "segment", "warnPan", "warnLoops", "wallSound", "autoSpeedometer",
    "autoGearAnnounce", "pitRoadSnacks", "trackLightPolls", "engineSound"};

const char* const kRealFields[] = {
    "raceTicks", "poleDistance", "raceTime", "raceSeconds", "lapPosition", "lateralPosition", "speed",
    "engineRpm", "soundRpm",     "fuel",     "steerDrag",   "lapsToRun",   "warnDistance",    "warnScale"};

const char* const kTextFields[] = {"lastKeyCode",  "lastKeyChar",    "typedText",
                                   "raceTimeText", "recordFileName", "recordText"};

class Fields : public testing::Test {
 protected:
  HeadlessPlatform platform{{}, {}};
  GameState g{platform};
};

TEST_F(Fields, WholeOnesAreSetToTheNearestWholeNumber) {
  for (const char* name : kWholeFields) {
    EXPECT_TRUE(setField(g, name, 2.5)) << name;
    EXPECT_THAT(getField(g, name), Optional(VariantWith<std::int64_t>(2))) << name;
    EXPECT_TRUE(setField(g, name, 1)) << name;
    EXPECT_THAT(getField(g, name), Optional(VariantWith<std::int64_t>(1))) << name;
  }
}

TEST_F(Fields, RealOnesKeepTheirFraction) {
  for (const char* name : kRealFields) {
    EXPECT_TRUE(setField(g, name, 0.1)) << name;
    EXPECT_THAT(getField(g, name), Optional(VariantWith<double>(0.1))) << name;
  }
}

TEST_F(Fields, TextsAreReadButNotSet) {
  g.lastKeyCode = g.lastKeyChar = g.typedText = g.raceTimeText = g.recordFileName = g.recordText = "text";
  for (const char* name : kTextFields) {
    EXPECT_FALSE(setField(g, name, 1)) << name;
    EXPECT_THAT(getField(g, name), Optional(VariantWith<std::string>("text"))) << name;
  }
}

TEST_F(Fields, ElementsOfArraysAreFieldsOfTheirOwn) {
  for (int i = 0; i < 12; ++i) {
    const std::string name = "speedMarkSaid[" + std::to_string(i) + "]";
    EXPECT_TRUE(setField(g, name, i)) << name;
    EXPECT_EQ(g.speedMarkSaid[i], i);
    EXPECT_THAT(getField(g, name), Optional(VariantWith<std::int64_t>(i)));
  }
  EXPECT_TRUE(setField(g, "keyboardState[200]", 128));
  EXPECT_EQ(g.keyboardState[200], 128);
  EXPECT_TRUE(setField(g, "keyboardState[255]", 255));
  g.trackNames[10] = "the last track";
  EXPECT_THAT(getField(g, "trackNames[10]"), Optional(VariantWith<std::string>("the last track")));
  EXPECT_FALSE(setField(g, "trackNames[10]", 1));
}

TEST_F(Fields, OfOtherNamesThereAreNone) {
  for (const char* name : {"",
                           "Speed",
                           "speed ",
                           "platform",
                           "speechVoice",
                           "record",
                           "speed[0]",
                           "speedMarkSaid",
                           "speedMarkSaid[12]",
                           "speedMarkSaid[-1]",
                           "speedMarkSaid[]",
                           "speedMarkSaid[1",
                           "speedMarkSaid[1]x",
                           "speedMarkSaid[ 1]",
                           "keyboardState[256]",
                           "trackNames[13]",
                           "[1]",
                           "[",
                           "]",
                           "keyboardState[99999999999999999999]"}) {
    EXPECT_FALSE(getField(g, name)) << name;
    EXPECT_FALSE(setField(g, name, 1)) << name;
  }
}

TEST_F(Fields, RefuseWhatTheyCannotHold) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  g.gear = 3;
  g.lastSayGearTick = 3;
  for (const double value : {2147483648.0, -2147483649.0, 1e300, infinity, nan}) {
    EXPECT_FALSE(setField(g, "gear", value)) << value;
    EXPECT_FALSE(setField(g, "lastSayGearTick", value)) << value;
  }
  EXPECT_EQ(g.gear, 3);
  EXPECT_EQ(g.lastSayGearTick, 3);
  EXPECT_FALSE(setField(g, "keyboardState[1]", 256));
  EXPECT_FALSE(setField(g, "keyboardState[1]", -1));
  EXPECT_TRUE(setField(g, "speechRate", 2147483647));
  EXPECT_EQ(g.speechRate, 2147483647);
}

TEST_F(Fields, RefuseWhatTheRulesCannotComputeWith) {
  struct Limits {
    double lowest, highest;
    std::vector<const char*> names;
  };
  constexpr double kTwoTo31 = 2147483648.0;
  const Limits kLimits[] = {
      {0, 4, {"gear"}},
      {1, 12, {"trackChoice"}},
      {0, 32, {"joystickButtons"}},
      {0,
       31,
       {"joyMapSpeedometer", "joyMapTrackPosition", "joyMapStartEngine", "joyMapPitRoad", "joyMapSayGear",
        "joyMapSayLap", "joyMapHorn", "joyMapElapsedTime", "joyMapUpShift", "joyMapDownShift"}},
      {0,
       255,
       {"keyMapSpeedometer", "keyMapTrackPosition", "keyMapStartEngine", "keyMapSayLap", "keyMapPitRoad",
        "keyMapElapsedTime", "keyMapSteerLeft", "keyMapSteerRight", "keyMapUpShift", "keyMapDownShift",
        "keyMapGas", "keyMapBrake", "keyMapEnter", "keyMapHorn", "keyMapSayGear"}},
      {0, 1000, {"engineRpm", "soundRpm"}},
      {0, 1e6, {"speed", "fuel"}},
      {0, 1e9, {"raceTicks", "raceTime"}},
      {-1e9, 1e9, {"lateralPosition", "wallTicks"}},
      {-kTwoTo31,
       kTwoTo31 - 1,
       {"speechRate", "waitUntilTick", "lastTickCount", "lastSayPositionTick", "lastSayGearTick",
        "lastSaySpeedTick", "lastSayLapTick", "lastSayTimeTick", "lastSayFuelTick"}}};
  for (const Limits& limits : kLimits) {
    for (const char* name : limits.names) {
      EXPECT_TRUE(setField(g, name, limits.lowest)) << name;
      EXPECT_TRUE(setField(g, name, limits.highest)) << name;
      EXPECT_FALSE(setField(g, name, limits.lowest - 1)) << name;
      EXPECT_FALSE(setField(g, name, limits.highest + 1)) << name;
      EXPECT_FALSE(setField(g, name, std::numeric_limits<double>::quiet_NaN())) << name;
    }
  }
  EXPECT_TRUE(setField(g, "warnDistance", 1e-6));
  EXPECT_TRUE(setField(g, "warnDistance", 1e9));
  EXPECT_FALSE(setField(g, "warnDistance", 0.9e-6));
  EXPECT_FALSE(setField(g, "warnDistance", 1e9 + 1));
}

TEST_F(Fields, NeverAskedReadsAsZero) {
  EXPECT_THAT(getField(g, "lastSayLapTick"), Optional(VariantWith<std::int64_t>(0)));
}

}  // namespace
}  // namespace vorn
