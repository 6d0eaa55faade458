#include "pit/pit_road.h"

#include <algorithm>

#include "clock/waits.h"
#include "input/events.h"
#include "pit/rules.h"
#include "pit/snacks.h"
#include "race/car_tick.h"
#include "race/controls.h"
#include "race/cue.h"
#include "race/drive_train.h"
#include "race/walls.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr const char* kEntryChime = "vorn28";
constexpr const char* kFuelHose = "vorn25";
constexpr const char* kWheelOff = "vorn26";
constexpr const char* kWheelOn = "vorn27";
constexpr int kLaneCue = 72;
constexpr int kBoxVoice = 73;

constexpr double kLaneLength = 4500;
constexpr double kBoxAreaLength = 5000;
constexpr double kEndOfBoxArea = 4750;  // the car cannot run past it
constexpr double kExitLength = 3000;
constexpr double kExitLeadsOn = 555;  // units beyond the place of the entry
constexpr double kStanding = 1;       // mph; no more than this is a stop

constexpr int kServiceTicks = 140;
constexpr int kHoseStarts = 20;
constexpr int kHoseStops = 130;
constexpr int kHoseQuieterBy = 350;

/// What the crew is heard doing, and when. A pan above 0 is away from the pit wall.
struct CrewSound {
  int tick;
  const char* baseName;
  int pan;
};
constexpr CrewSound kCrew[] = {
    {35, kWheelOff, 400}, {65, kWheelOn, 400}, {90, kWheelOff, -400}, {120, kWheelOn, -400}};

void openLane(GameState& g, const PitSide& side) {
  PlayPan(g, kEntryChime, side.panOutward(1000));
  g.lateralPosition = lanePlace(side, g.lapPosition);
  g.warnBuffer->Stop();
  playmark(g);
  startwarn(g, {kLaneCue, kLaneLength, 18, side.panOutward(2000)});
}

/// The lane and the way out differ in the bend alone. Returns false where the driver gave up.
template <typename Bend>
bool driveLeg(GameState& g, double length, Bend bend) {
  g.lapPosition = 0;
  while (g.lapPosition < length) {
    bend();
    awarn(g);
    if (g.escapePressed == 1) return false;
    checkstuff(g);
  }
  return true;
}

/// The voice takes the place of the cue, so that the cue's pan and volume go with it.
bool startBoxVoice(GameState& g, const PitSide& side) {
  const int pan = side.panOutward(1000);
  followCue(g, {kBoxVoice, kBoxAreaLength, 2, pan});
  return carryOn([&] {
    fillSlot(g, g.warnBuffer, cueFile(kBoxVoice));
    g.warnBuffer->SetCurrentPosition(0);
    g.warnBuffer->SetVolume(g.soundVolume);
    g.warnBuffer->SetPan(pan);
    g.warnBuffer->Play(SoundBuffer::kOnce);
  });
}

/// Until the car stands or the voice has ended. Returns false where the driver gave up.
bool approachBox(GameState& g, const PitSide& side, PitArrival& arrival) {
  g.lapPosition = 0;
  if (startBoxVoice(g, side)) {
    do {
      awarn(g);
      if (g.escapePressed == 1) return false;
      checkstuff(g);
      if (g.escapePressed == 1) return false;
      g.warnBuffer->SetFrequency(roundToInt(boxVoiceFrequency(g.speed)));
      if (isSpeeding(g.speed)) arrival.speeding = g.speed;
      g.lapPosition = std::min(g.lapPosition, kEndOfBoxArea);
    } while (g.speed > kStanding && g.warnBuffer.isPlaying());
  }
  arrival.lapPosition = g.lapPosition;
  arrival.lateralPosition = g.lateralPosition;
  return true;
}

/// No car tick tends the sounds of driving while the car is serviced.
void haltCar(GameState& g) {
  g.speed = 0;
  carryOn([&] { g.warnBuffer->Stop(); });  // the box voice; there is none where it could not be loaded
  g.sound8Buffer->Stop();
  g.sound8Buffer->SetCurrentPosition(0);
  g.sound10Buffer->Stop();
  g.wallScrapePlaying = 0;
  g.sound18Buffer->Stop();
  g.sound9Buffer->Stop();
}

void tellVerdict(GameState& g, const PitVerdict& verdict) {
  g.raceTicks += verdict.ticks;
  std::string message = verdict.message;
  if (message.empty() && g.pitRoadSnacks == kOn) {
    getfood(g);
    message = g.typedText;
  }
  if (!message.empty()) say2(g, message);
}

void prepareHose(GameState& g) {
  carryOn([&] {
    fillSlot(g, g.oneShotBuffer, kFuelHose);
    g.oneShotBuffer->SetCurrentPosition(0);
    g.oneShotBuffer->SetVolume(g.soundVolume - kHoseQuieterBy);
    g.baseFrequency = g.oneShotBuffer->GetFrequency() + 1;
    g.oneShotBuffer->SetFrequency(g.baseFrequency);
  });
}

void rev(GameState& g) {
  readRaceDevice(g);
  g.engineRpm = revsAsked(g);
  PlayRPM(g);
}

/// A sound of the crew that cannot be loaded is missing, the work is done all the same.
void soundCrew(GameState& g, const PitSide& side, int tick) {
  if (tick == kHoseStarts) carryOn([&] { g.oneShotBuffer->Play(SoundBuffer::kLooping); });
  for (const CrewSound& sound : kCrew) {
    if (tick == sound.tick) carryOn([&] { PlayPan(g, sound.baseName, side.panInward(sound.pan)); });
  }
  if (tick == kHoseStops) stopOneShot(g);
}

/// Returns false where the driver gave up.
bool serviceCar(GameState& g, const PitSide& side) {
  prepareHose(g);
  for (int tick = 1; tick <= kServiceTicks; ++tick) {
    if (g.escapePressed == 1) {
      stopOneShot(g);  // a looping hose that no one else would stop
      return false;
    }
    rev(g);
    soundCrew(g, side, tick);
    dyz(g);
  }
  g.raceTicks += kServiceTicks;
  return true;
}

void sendOut(GameState& g, const PitSide& side) {
  for (SoundSlot* loop : {&g.sound18Buffer, &g.sound9Buffer}) {
    (*loop)->SetVolume(kNearlySilent);
    (*loop)->Play(SoundBuffer::kLooping);
  }
  say2(g, " go! go! go! ");
  playmark(g);
  startwarn(g, {kLaneCue, kExitLength, 18, side.panInward(2000)});
  g.lateralPosition = side.exitPlace;
}

void rejoin(GameState& g, const PitSide& side, double entryPosition) {
  g.lapPosition = entryPosition + kExitLeadsOn;
  g.lateralPosition = side.trackPlace;
  g.fuel = kFullTank;
  g.warnBuffer->Stop();
  playmark(g);
}

/// From the lane to the end of the way out. Returns false where the driver gave up.
bool makeStop(GameState& g, const PitSide& side) {
  if (!driveLeg(g, kLaneLength, [&] { driftInLane(g, side); })) return false;
  PitArrival arrival;
  if (!approachBox(g, side, arrival)) return false;
  haltCar(g);
  tellVerdict(g, judge(arrival, side));
  if (!serviceCar(g, side)) return false;
  sendOut(g, side);
  return driveLeg(g, kExitLength, [] {});
}

}  // namespace

void pitroad(GameState& g, int side) {
  if (g.lapPosition > kLastPitEntry) {
    clk(g);
    g.pitEntryMissed = 1;
    return;
  }
  g.pitEntryMissed = 0;
  const double entryPosition = g.lapPosition;
  const PitSide& pits = pitSide(side);
  openLane(g, pits);
  g.pit = 1;
  g.segment = 0;
  if (makeStop(g, pits)) {
    rejoin(g, pits, entryPosition);
  } else {
    carryOn([&] { g.panBuffer->Stop(); });
    carryOn([&] { g.warnBuffer->Stop(); });
  }
  g.pit = 0;
}

}  // namespace vorn
