#include "options/voice_settings.h"

#include <algorithm>
#include <string>
#include <vector>

#include "clock/waits.h"
#include "input/choosers.h"
#include "input/events.h"
#include "input/settings_reading.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/losses.h"
#include "speech/speech.h"
#include "state/key_names.h"
#include "text/numbers.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr const char* kVoiceFile = "vorn1voc.cfg";

constexpr int kQuietestVoice = 0, kLoudestVoice = 100, kVoiceStep = 5;
constexpr int kQuietestSounds = -3500, kLoudestSounds = 0, kSoundsStep = 100;
constexpr const char* kVolumeSample = "vorn7";

constexpr int kVoiceSamples = 71;         // the first so many cues
constexpr int kSampleQuieterBy = 500;     // than the sounds, to leave the voice in front
constexpr int kLastIndexOfTwoVoices = 1;  // with two there is no asking

/// 1 for the up arrow, -1 for the down arrow, 0 for any other key.
int arrowDirection(const GameState& g) {
  if (g.lastKeyCode == key::kUp) return 1;
  return g.lastKeyCode == key::kDown ? -1 : 0;
}

bool isEnter(const GameState& g) {
  return g.lastKeyCode == key::kEnter;
}

void waitForKey(GameState& g) {
  g.lastKeyCode.clear();
  do {
    g.platform.yield();
  } while (g.lastKeyCode.empty());
}

void stepVoiceVolume(GameState& g, int direction) {
  const int wanted = saturatedSum(g.voiceVolume, direction * kVoiceStep);
  g.voiceVolume = std::clamp(wanted, kQuietestVoice, kLoudestVoice);
  g.speechVoice->setVolume(g.voiceVolume);
  if (direction > 0) {
    say2(g, wanted >= kLoudestVoice ? " maximum " : " louder ");
  } else {
    say2(g, wanted <= kQuietestVoice ? " minimum " : " quieter ");
  }
}

/// Unlike the voice, the sounds reach their quietest as " quieter ": only the step beyond it is refused.
void stepSoundVolume(GameState& g, int direction) {
  const int wanted = saturatedSum(g.soundVolume, direction * kSoundsStep);
  g.soundVolume = std::clamp(wanted, kQuietestSounds, kLoudestSounds);
  if (direction > 0) {
    say2(g, wanted >= kLoudestSounds ? " maximum " : " louder ");
  } else {
    say2(g, wanted < kQuietestSounds ? " minimum " : " quieter ");
  }
}

/// A key that means nothing is echoed; F1 only silences.
void adjustVoiceVolume(GameState& g) {
  do {
    clk(g);
    say2(g,
         " use the up and down arrow keys to raise and lower the volume of the voice. "
         "  Press enter when you have the volume set the way that you want it. ");
    for (getkey(g); arrowDirection(g) != 0; getkey(g)) stepVoiceVolume(g, arrowDirection(g));
    if (!isEnter(g) && g.lastKeyCode != key::kF1) saykey(g);
  } while (!isEnter(g));
}

/// Plays the sample at the new volume until it ends or a key is pressed.
void playVolumeSample(GameState& g) {
  clk(g);
  dyke(g, 0.2);
  g.oneShotBuffer->SetCurrentPosition(0);
  g.oneShotBuffer->SetVolume(g.soundVolume);
  g.oneShotBuffer->Play(SoundBuffer::kOnce);
  do {
    g.platform.yield();
  } while (g.oneShotBuffer.isPlaying() && g.lastKeyCode.empty());
  g.oneShotBuffer->Stop();
}

/// Handles arrows until another key comes, which may have cut a sample short.
void stepSoundVolumeByKeys(GameState& g) {
  getkey(g);
  while (arrowDirection(g) != 0) {
    stopspeech(g);
    stepSoundVolume(g, arrowDirection(g));
    playVolumeSample(g);
    if (g.lastKeyCode.empty()) getkey(g);
  }
}

void adjustSoundVolume(GameState& g) {
  clk(g);
  loadSlot(g, g.oneShotBuffer, kVolumeSample);
  g.oneShotBuffer->Play(SoundBuffer::kOnce);
  dyke(g, 1.5);
  g.oneShotBuffer->Stop();
  do {
    say2(g,
         " use the up and down arrow keys to adjust the volume of the sounds. "
         "  Press enter when you have the volume set the way that you want it. ");
    stepSoundVolumeByKeys(g);
    if (!isEnter(g) && g.lastKeyCode != key::kF1) saykey(g);
  } while (!isEnter(g));
  clk(g);
  stopOneShot(g);
}

void loadVoiceSample(GameState& g) {
  g.platform.reseedRandom();
  const int number = wholePart(g.platform.randomFraction() * kVoiceSamples) + 1;
  fillSlot(g, g.oneShotBuffer, "vorn1t" + std::to_string(number));
  g.oneShotBuffer->SetVolume(g.soundVolume - kSampleQuieterBy);
  g.oneShotBuffer->SetPan(0);
}

void loopSample(GameState& g) {
  g.oneShotBuffer->SetCurrentPosition(0);
  g.oneShotBuffer->Play(SoundBuffer::kLooping);
}

/// A new voice object each time: what the old one was saying ends with it. The
/// blank makes the new one ready before the sample stops.
void replaceVoice(GameState& g) {
  g.speechVoice.reset();
  g.speechVoice = g.platform.createVoice();
  g.speechVoice->setRate(g.speechRate);
  g.speechVoice->setVoice(g.voiceIndex);
  // A volume out of range can only come from a damaged file; as at start-up, the voice then keeps its own.
  carryOn([&] { g.speechVoice->setVolume(g.voiceVolume); });
  say(g, " ");
  g.oneShotBuffer->Stop();
}

bool acceptsVoice(GameState& g) {
  return askYesNo(g, {.prompt = " do you wish to use this voice? yes ", .clearsKeysFirst = true});
}

void tryVoices(GameState& g) {
  loopSample(g);
  g.voiceIndex = 0;
  replaceVoice(g);
  while (!acceptsVoice(g)) {
    dyke(g, 0.1);
    loopSample(g);
    g.voiceIndex = g.voiceIndex < g.lastVoiceIndex ? g.voiceIndex + 1 : 0;
    replaceVoice(g);
    dyke(g, 0.2);
  }
}

}  // namespace

void getCFG(GameState& g) {
  loadSettings(g, kVoiceFile, {&g.voiceIndex, &g.speechRate, &g.voiceVolume, &g.soundVolume});
}

void printCFG(GameState& g) {
  const std::string text = settingsText({g.voiceIndex, g.speechRate, g.voiceVolume, g.soundVolume});
  keep(g, Kept::kSettings, [&] { g.platform.files().write(kVoiceFile, text); });
}

void changevoice(GameState& g) {
  stopspeech(g);
  clk(g);
  loadVoiceSample(g);
  clk(g);
  if (g.lastVoiceIndex != kLastIndexOfTwoVoices) tryVoices(g);
  printCFG(g);
  clk(g);
}

void adjrate(GameState& g) {
  do {
    clk(g);
    g.speechVoice->setRate(g.speechRate);
    say2(g, "to adjust the speech rate, use the arrow keys and then press enter");
    say2(g, std::to_string(g.speechRate));
    for (waitForKey(g); arrowDirection(g) != 0; waitForKey(g)) {
      g.speechRate = saturatedSum(g.speechRate, arrowDirection(g));
      g.speechVoice->setRate(g.speechRate);
      stopspeech(g);
      say2(g, std::to_string(g.speechRate));
    }
  } while (!isEnter(g));
  printCFG(g);
  clk(g);
}

void adjvol(GameState& g) {
  adjustVoiceVolume(g);
  adjustSoundVolume(g);
  printCFG(g);
  clk(g);
}

}  // namespace vorn
