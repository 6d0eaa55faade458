// A whole lap of the Maple Leaf Tri Oval, every tick of it worked out anew.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "sessions/race/paper_car.h"
#include "sessions/race/race_scene.h"
#include "sessions/tracks/keyboard_driver.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kMaplesNumber = 1;

template <typename SomeDriver>
OneRace lapOf(Device device) {
  SomeDriver driver(kMaple);
  return OneRace(kMaplesNumber, device, [&](const TickReport& tick) { return driver.after(tick); });
}

// A driver who now and then strays into the marbles beside a straight.
OneRace strayingLap() {
  WheelScript driver(kMaple);
  return OneRace(kMaplesNumber, Device::kWheel, [&, ticks = 0](const TickReport& tick) mutable {
    const std::string statements = driver.after(tick);
    const bool isOnAStraight = tick.segment == 1 || tick.segment == 4;
    if (!isOnAStraight || ++ticks % 60 < 48) return statements;
    const double toTheMarbles = std::clamp((97.5 - tick.lateralPosition) * 1500, 0.0, 9000.0);
    return statements + "axis X " + std::to_string(static_cast<int>(toTheMarbles)) + "\n";
  });
}

TickReport tickOf(const TraceLine& line) {
  return {.raceTicks = line.at("raceTicks"),
          .speed = line.at("speed"),
          .gear = line.at("gear"),
          .engineRpm = line.at("engineRpm"),
          .soundRpm = line.at("soundRpm"),
          .fuel = line.at("fuel"),
          .lapPosition = line.at("lapPosition"),
          .lateralPosition = line.at("lateralPosition"),
          .lapsCompleted = line.at("lapsCompleted"),
          .segment = line.at("segment"),
          .poleDistance = line.at("poleDistance"),
          .joySteering = line.at("joySteering"),
          .joyGasBrake = line.at("joyGasBrake"),
          .steerKeyTicks = line.at("steerKeyTicks"),
          .marblesTicks = line.at("marblesTicks"),
          .wallTicks = line.at("wallTicks"),
          .pit = line.at("pit")};
}

// Reads a trace tick by tick: what is held, and what has been done with each buffer since the last tick.
class TickReader {
 public:
  TickReader(const OneRace& race, bool isKeyboard) : race_(race), isKeyboard_(isKeyboard) {}

  // Goes on to the next tick. Returns false at the end.
  bool next() {
    done_.clear();
    for (; line_ < race_.trace().lines().size(); ++line_) {
      const TraceLine& line = race_.trace().lines()[line_];
      const std::string event = line.at("ev");
      if (event == "input" && line.at("source") == "key") held_[line.at("name")] = line.at("value") == 1;
      if (event == "sound" && line.at("value").is_number()) {
        done_[line.at("buffer").get<std::string>() + " " + line.at("op").get<std::string>()] =
            line.at("value");
      }
      if (event != "tick") continue;
      ++line_;
      tick_ = tickOf(line);
      return true;
    }
    return false;
  }

  const TickReport& tick() const { return tick_; }
  Hands hands() {
    if (!isKeyboard_) return {.pedal = tick_.joyGasBrake};
    return {.pedal = std::nullopt,
            .gasKey = held_["LeftCtrl"],
            .brakeKey = held_["LeftShift"],
            .leftKey = held_["Left"],
            .rightKey = held_["Right"]};
  }
  // The value that was set last; a number no setting has where it was not set.
  int done(const std::string& what) const {
    const auto found = done_.find(what);
    return found == done_.end() ? 123456789 : found->second;
  }

 private:
  const OneRace& race_;
  bool isKeyboard_;
  std::size_t line_ = 0;
  TickReport tick_{};
  std::map<std::string, bool> held_;
  std::map<std::string, int> done_;
};

// To within the last digits: the sums are made in another order here.
void expectSameTick(const TickReport& seen, const TickReport& expected) {
  constexpr double kLastDigits = 1e-9;
  EXPECT_NEAR(seen.speed, expected.speed, kLastDigits);
  EXPECT_NEAR(seen.lateralPosition, expected.lateralPosition, kLastDigits);
  EXPECT_NEAR(seen.lapPosition, expected.lapPosition, kLastDigits);
  EXPECT_NEAR(seen.engineRpm, expected.engineRpm, kLastDigits);
  EXPECT_NEAR(seen.soundRpm, expected.soundRpm, kLastDigits);
  EXPECT_NEAR(seen.fuel, expected.fuel, kLastDigits);
  EXPECT_NEAR(seen.poleDistance, expected.poleDistance, kLastDigits);
  EXPECT_EQ(seen.raceTicks, expected.raceTicks);
  EXPECT_EQ(seen.steerKeyTicks, expected.steerKeyTicks);
  EXPECT_EQ(seen.marblesTicks, expected.marblesTicks);
  EXPECT_EQ(seen.wallTicks, expected.wallTicks);
  EXPECT_EQ(seen.lapsCompleted, expected.lapsCompleted);
  EXPECT_EQ(seen.pit, expected.pit);
}

void expectSameSounds(const TickReader& reader, const PaperSounds& expected) {
  EXPECT_EQ(reader.done("warnBuffer SetVolume"), expected.cueVolume);
  EXPECT_EQ(reader.done("warnBuffer SetPan"), expected.cuePan);
  EXPECT_EQ(reader.done("engineBuffer SetFrequency"), expected.engineHertz);
  EXPECT_EQ(reader.done("wallLeftBuffer SetPan"), expected.wallLeftPan);
  EXPECT_EQ(reader.done("wallRightBuffer SetPan"), expected.wallRightPan);
  EXPECT_EQ(reader.done("wallLeftBuffer SetVolume"), expected.wallLeftVolume);
  EXPECT_EQ(reader.done("wallRightBuffer SetVolume"), expected.wallRightVolume);
  EXPECT_EQ(reader.done("sound9Buffer SetVolume"), expected.tyreVolume);
}

// Returns how many ticks were spent in the marbles.
int expectEveryTickAsWorkedOut(const OneRace& race, bool isKeyboard) {
  EXPECT_TRUE(race.isFinished()) << race.diagnostics();
  TickReader reader(race, isKeyboard);
  EXPECT_TRUE(reader.next());
  TickReport last = reader.tick();
  int inMarbles = 0;
  while (reader.next() && !testing::Test::HasFailure()) {
    SCOPED_TRACE("tick " + std::to_string(reader.tick().raceTicks));
    const PaperTick expected = nextTick(last, reader.tick(), reader.hands());
    expectSameTick(reader.tick(), expected.car);
    expectSameSounds(reader, expected.sounds);
    last = reader.tick();
    inMarbles += last.marblesTicks > 0;
  }
  return inMarbles;
}

TEST(EveryTickOfALap, ByWheelIsAsWorkedOut) {
  expectEveryTickAsWorkedOut(lapOf<WheelScript>(Device::kWheel), false);
}

TEST(EveryTickOfALap, ByKeysIsAsWorkedOut) {
  expectEveryTickAsWorkedOut(lapOf<ReflexDriver>(Device::kKeys), true);
}

TEST(EveryTickOfALap, ThroughTheMarblesIsAsWorkedOut) {
  EXPECT_GT(expectEveryTickAsWorkedOut(strayingLap(), false), 5);
}

TEST(EveryTickOfALap, TakesNinetyNineMilliseconds) {
  const OneRace race = lapOf<WheelScript>(Device::kWheel);
  const auto ticks = race.trace().ticks();
  for (std::size_t i = 2; i < ticks.size(); ++i) {  // the first is overdue
    const auto taken = ticks[i].at("ms").get<int>() - ticks[i - 1].at("ms").get<int>();
    // A shift or a light pole comes a millisecond or two before the tick is traced.
    EXPECT_NEAR(taken, 99, 3) << i;
  }
  const int lap = ticks.back().at("ms").get<int>() - ticks.at(1).at("ms").get<int>();
  EXPECT_NEAR(lap, 99 * static_cast<int>(ticks.size() - 2), 3);
}

TEST(TheSameDriver, GivesTheSameTraceByteForByte) {
  for (const Device device : {Device::kWheel, Device::kKeys}) {
    const auto drive = [&] {
      return device == Device::kWheel ? lapOf<WheelScript>(device) : lapOf<ReflexDriver>(device);
    };
    EXPECT_TRUE(drive().trace().text() == drive().trace().text());
  }
}

TEST(AnotherSeed, ChangesNothingButTheEnginesTape) {
  const auto race = [](std::uint64_t seed) {
    Session session;
    session.options.seed = seed;
    raceInAHurry(session);
    session.run();
    std::string kept, tape;
    for (const TraceLine& line : session.trace().lines()) {
      const std::string what = describe(line);
      (what.starts_with("engineBuffer SetCurrentPosition") ? tape : kept) += what + "\n";
    }
    return std::pair(kept, tape);
  };
  const auto [firstKept, firstTape] = race(1);
  const auto [secondKept, secondTape] = race(2);
  EXPECT_TRUE(firstKept == secondKept);
  EXPECT_FALSE(firstTape == secondTape);
}

// The engine's tape stands where the revolutions say, and at most its jitter further on.
TEST(EngineTape, FollowsTheRevolutionsThroughTheLap) {
  const OneRace race = lapOf<WheelScript>(Device::kWheel);
  TickReader reader(race, false);
  while (reader.next()) {
    const double place = 2001 * reader.tick().soundRpm;
    const int position = reader.done("engineBuffer SetCurrentPosition");
    EXPECT_GE(position, place + 0.5) << reader.tick().raceTicks;
    EXPECT_LE(position, place + 525.5) << reader.tick().raceTicks;
  }
}

}  // namespace
}  // namespace vorn
