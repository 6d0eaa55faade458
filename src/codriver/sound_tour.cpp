#include "codriver/sound_tour.h"

#include <utility>

#include "clock/waits.h"
#include "codriver/entries.h"
#include "codriver/teaching.h"
#include "input/events.h"
#include "pit/rules.h"
#include "race/cue.h"
#include "race/drive_train.h"
#include "race/steering.h"
#include "race/walls.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "text/numbers.h"
#include "tracks/catalogue.h"
#include "tracks/cue_names.h"

namespace vorn {
namespace {

using Play = std::function<void(GameState&)>;

constexpr double kStepSeconds = 0.1;  // as long as a car tick
constexpr int kCueSteps = 50;
constexpr double kTourSpeed = 150;  // mph, where a sound goes by the speed
constexpr const char* kHorn = "vorn7";
constexpr const char* kLeftBell = "vorn6";

/// A car that stands in the middle of the road, and nothing sounding.
void restore(GameState& g) {
  stopall(g);
  stopOneShot(g);
  static_cast<RaceState&>(g) = RaceState();
  g.lateralPosition = kMiddle;
  g.joySteering = 0;
  g.joyGasBrake = 0;
}

bool isCutShort(GameState& g) {
  pollController(g);
  return !g.lastKeyCode.empty() || g.btnSpeedometer == 1;
}

/// Does `step` ten times a second, `steps` times; `share` runs from 0 to 1.
template <typename Step>
void sweep(GameState& g, int steps, Step step) {
  for (int i = 0; i < steps && !isCutShort(g); ++i) {
    step(static_cast<double>(i) / (steps - 1));
    dyke(g, kStepSeconds);
  }
}

void pause(GameState& g, double seconds) {
  sweep(g, roundToInt(seconds / kStepSeconds), [](double) {});
}

Play once(const char* file) {
  return [file](GameState& g) { play3(g, file); };
}

Play fromSide(const char* file, int pan) {
  return [=](GameState& g) {
    PlayPan(g, file, pan);
    while (g.panBuffer.isPlaying() && !isCutShort(g)) g.platform.yield();
    g.panBuffer->Stop();
  };
}

/// From nearly silent to its end, and over the joint.
void approach(GameState& g, const Cue& cue) {
  startwarn(g, cue);
  sweep(g, kCueSteps, [&](double share) {
    g.lapPosition = cue.length * share;
    awarn(g);
  });
  g.warnBuffer->Stop();
  playmark(g);
  pause(g, 0.5);
}

/// From idle to full revolutions and, for a moment, beyond.
Play engine(int number) {
  return [number](GameState& g) {
    g.engineSound = number;
    scars(g);
    g.engineBuffer->Play(SoundBuffer::kLooping);
    sweep(g, 40, [&](double share) {
      g.soundRpm = 100 * share;
      aprpms(g);
    });
    pause(g, 0.5);
  };
}

/// From the middle to the left wall and over to the right one.
Play walls(int number) {
  return [number](GameState& g) {
    g.wallSound = number;
    setwaves(g);
    sars(g);
    sweep(g, 60, [&](double share) {
      g.lateralPosition = share < 0.3 ? 50 - 160 * share : 2 + 96 * (share - 0.3) / 0.7;
      SetWind(g);
    });
  };
}

void brake(GameState& g) {
  g.inputDevice = kJoystick;
  g.joyGasBrake = 10000;
  sweep(g, 40, [&](double share) {
    g.speed = 200 * (1 - share);
    dobk(g);
  });
}

void scrubTyres(GameState& g) {
  g.inputDevice = kJoystick;
  sars(g);
  sweep(g, 30, [&](double share) {
    g.speed = kTourSpeed;
    g.lateralPosition = kMiddle;
    g.joySteering = roundToInt(10000 * share);
    SteerIt(g);
  });
}

Play marbles(double lateral) {
  return [lateral](GameState& g) {
    sars(g);
    g.speed = kTourSpeed;
    g.lateralPosition = lateral;
    sweep(g, 20, [&](double) { SteerIt(g); });
  };
}

Play scrape(double wall) {
  return [wall](GameState& g) {
    g.lateralPosition = wall;
    c4c(g);
    pause(g, 2);
    stopWallScrape(g);
  };
}

void passLightPoles(GameState& g) {
  g.trackLightPolls = kOn;
  g.speed = kTourSpeed;
  for (int pole = 0; pole < 4 && !isCutShort(g); ++pole) {
    playsignpoll(g);
    pause(g, 1.4);
  }
}

Play slot(SoundSlot SoundState::*buffer) {
  return [buffer](GameState& g) {
    (g.*buffer)->Play(SoundBuffer::kOnce);
    while ((g.*buffer).isPlaying() && !isCutShort(g)) g.platform.yield();
    (g.*buffer)->Stop();
    (g.*buffer)->SetCurrentPosition(0);
  };
}

void refuel(GameState& g) {
  loadSlot(g, g.oneShotBuffer, "vorn25");
  g.oneShotBuffer->Play(SoundBuffer::kLooping);
  pause(g, 3);
}

void enterPitLane(GameState& g) {
  approach(g, {.number = 72, .length = 4500, .scale = 18, .pan = -2000});
}

void countDownToTheBox(GameState& g) {
  loadSlot(g, g.panBuffer, cueFile(73));
  g.panBuffer->SetPan(-1000);
  g.panBuffer->SetFrequency(roundToInt(boxVoiceFrequency(50)));
  g.panBuffer->Play(SoundBuffer::kOnce);
  while (g.panBuffer.isPlaying() && !isCutShort(g)) g.platform.yield();
  g.panBuffer->Stop();
}

TourGroup car() {
  return {" Your car. ",
          {
              {" Engine 1, a stock car. The higher, the nearer to the end of its gear. ", "vorn1", engine(1)},
              {" Engine 2, a howling ten cylinder. ", "vorn30", engine(2)},
              {" Engine 3, a buzzing rally car. ", "vorn31", engine(3)},
              {" Engine 4, a diesel truck. ", "vorn32", engine(4)},
              {" Engine 5, a two stroke. ", "vorn33", engine(5)},
              {" Engine 6, a turbine. ", "vorn34", engine(6)},
              {" Gear lever. You have shifted. ", "vorn19", slot(&SoundState::sound19Buffer)},
              {" Brakes. The duller they get, the slower you are. ", "vorn8", brake},
              {" Tyres. You steer; the louder, the more speed it costs. ", "vorn9", scrubTyres},
              {" Horn. ", kHorn, slot(&SoundState::hornBuffer)},
          }};
}

TourGroup road() {
  return {" Walls and road. ",
          {
              {" Crowd. Louder on the side of the nearer wall. ", "vorn16", walls(1)},
              {" Nature. The wall sound for who likes it quieter. ", "vorn24", walls(2)},
              {" Wind. The third wall sound. ", "vorn23", walls(3)},
              {" Marbles on the left. The wall is near: steer right. ", "vorn18", marbles(2)},
              {" Marbles on the right. Steer left. ", "vorn18", marbles(98)},
              {" Scrape on the left. You are at the wall, and too many of these are a crash. ", "vorn10",
               scrape(kLeftWall)},
              {" Scrape on the right. ", "vorn10", scrape(kRightWall)},
              {" Expansion joint. One part of the track ends and the next one begins. ", "vorn17",
               slot(&SoundState::markBuffer)},
              {" Light poles. They pass on both sides; the closer together, the faster you are. ", "vorn29",
               passLightPoles},
              {" Ramp. You jump over the swimming hole. ", "vorn20", once("vorn20")},
              {" Flight. The tune of your horn, while you are in the air. ", kHorn, once(kHorn)},
              {" Landing. You are over it. ", "vorn21", once("vorn21")},
              {" Splash. You are in it. ", "vorn22", once("vorn22")},
          }};
}

std::string turnName(Turn turn) {
  switch (turn) {
    case Turn::kLeft:
      return "left turn";
    case Turn::kRight:
      return "right turn";
    case Turn::kNone:
      break;
  }
  return "straight";
}

TourGroup cues(const Track& track) {
  TourGroup group{std::string(" Cues of the ") + track.name + ". ", {}};
  for (const Segment& segment : track.segments) {
    const std::string side = segment.pan < 0 ? ", left" : segment.pan > 0 ? ", right" : ", in the middle";
    group.sounds.push_back({" " + std::to_string(group.sounds.size() + 1) + ", " +
                                turnName(segment.push.turn) + ", " + cueName(segment.cue) + side + ". ",
                            cueFile(segment.cue),
                            [&segment](GameState& g) { approach(g, segmentCue(segment)); }});
  }
  return group;
}

TourGroup start() {
  return {
      " Start. ",
      {
          {" Title. The game has started. ", "vorn0", once("vorn0")},
          {" Engine start. Your engine turns over. ", "vorn2", once("vorn2")},
          {" Air horn. Go; and at the finish, the race is over. ", "vorn4", slot(&SoundState::sound4Buffer)},
          {" Wheels spin. You have shifted into first gear with the gas down. ", "vorn3", once("vorn3")},
          {" Whistle and buzzer. You were off before the air horn. ", "vorn5", once("vorn5")},
      }};
}

TourGroup pitRoad() {
  return {" Pit road. ",
          {
              {" Gate. You are on pit road. ", "vorn28", fromSide("vorn28", -1000)},
              {" Lane. Brake down to fifty miles an hour until the joint. ", "vorn1t72", enterPitLane},
              {" Box. At two, stop at the wall on the left. ", "vorn1t73", countDownToTheBox},
              {" Wheel gun, off. A wheel comes off. ", "vorn26", fromSide("vorn26", 400)},
              {" Wheel gun, on. A wheel goes on. ", "vorn27", fromSide("vorn27", 400)},
              {" Fuel. Your tank is filled. ", "vorn25", refuel},
          }};
}

TourGroup crashes() {
  return {" Crash. ",
          {
              {" Impact. You have hit a wall once too often. ", "vorn15", once("vorn15")},
              {" Wreck. Your car tumbles. ", "vorn11", once("vorn11")},
              {" Marshal. Start your engine. ", "vorn12", once("vorn12")},
              {" Marshal. Gas, then shift up. ", "vorn13", once("vorn13")},
              {" Wrench. You can drive on. ", "vorn14", once("vorn14")},
          }};
}

TourGroup results() {
  return {" Results. ", {{" Bell. The race is over; your time follows. ", kLeftBell, once(kLeftBell)}}};
}

void hear(GameState& g, const TourSound& sound) {
  clk(g);
  const OptionsState options = g;
  const int device = g.inputDevice;
  restore(g);
  carryOn([&] { sound.play(g); });
  restore(g);
  const bool isAnothersSound = g.wallSound != options.wallSound || g.engineSound != options.engineSound;
  static_cast<OptionsState&>(g) = options;
  if (isAnothersSound) setwaves(g);
  g.inputDevice = device;
  clk(g);
}

}  // namespace

std::vector<TourGroup> soundTour() {
  std::vector<TourGroup> groups{car(), road()};
  for (const Track* track : allTracks()) groups.push_back(cues(*track));
  for (auto* group : {&start, &pitRoad, &crashes, &results}) groups.push_back((*group)());
  return groups;
}

void takeSoundTour(GameState& g) {
  openSounds(g);
  const std::vector<TourGroup> groups = soundTour();
  std::vector<std::string> names;
  for (const TourGroup& group : groups) names.push_back(group.name);
  offerEntries(g, " Learn the sounds. ", names, [&](std::size_t chosen) {
    const TourGroup& group = groups[chosen];
    std::vector<std::string> texts;
    for (const TourSound& sound : group.sounds) texts.push_back(sound.text);
    offerEntries(g, group.name + " Enter plays a sound, any key stops it. ", texts,
                 [&](std::size_t number) { hear(g, group.sounds[number]); });
    say2(g, group.name);
  });
  releaseSounds(g);
}

}  // namespace vorn
