#include "sound/playback.h"

#include "clock/waits.h"
#include "input/events.h"
#include "sound/loading.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kSpeakerTestPan = 2000;
constexpr const char* kAnyKey = "1";

/// The looping sounds, in the order in which they are stopped.
constexpr SoundSlot SoundState::*kLoops[] = {
    &SoundState::engineBuffer,  &SoundState::wallLeftBuffer, &SoundState::wallRightBuffer,
    &SoundState::warnBuffer,    &SoundState::sound18Buffer,  &SoundState::sound9Buffer,
    &SoundState::sound10Buffer, &SoundState::sound8Buffer,
};

void startOneShot(GameState& g, const std::string& baseName) {
  clk(g);
  loadSlot(g, g.oneShotBuffer, baseName);
  g.oneShotBuffer->Play(SoundBuffer::kOnce);
}

void testSpeaker(GameState& g, const std::string& announcement, const std::string& baseName, int pan) {
  say(g, announcement);
  clk(g);
  dyke(g, 0.2);
  loadSlot(g, g.oneShotBuffer, baseName);
  g.oneShotBuffer->SetPan(pan);
  g.oneShotBuffer->Play(SoundBuffer::kOnce);
  waitWhilePlaying(g.platform, g.oneShotBuffer);
  g.oneShotBuffer->Stop();
}

}  // namespace

void play(GameState& g, const std::string& baseName) {
  startOneShot(g, baseName);
  waitWhilePlaying(g.platform, g.oneShotBuffer);
  stopOneShot(g);
}

bool playUnlessEscaped(GameState& g, const std::string& baseName) {
  startOneShot(g, baseName);
  if (!hearOut(g)) return false;
  stopOneShot(g);
  return true;
}

bool hearOut(GameState& g) {
  do {
    g.platform.yield();
  } while (g.oneShotBuffer.isPlaying() && g.escapePressed != 1);
  if (g.escapePressed != 1) return true;
  stopOneShot(g);
  return false;
}

void play2(GameState& g, const std::string& baseName) {
  startOneShot(g, baseName);
}

void play3(GameState& g, const std::string& baseName) {
  startOneShot(g, baseName);
  while (g.lastKeyCode.empty() && g.oneShotBuffer.isPlaying()) {
    if (g.inputDevice == kJoystick) pollController(g);
    g.platform.yield();
    if (g.btnSpeedometer == 1) g.lastKeyCode = kAnyKey;
  }
  stopOneShot(g);
}

void waitWhilePlaying(Platform& platform, SoundSlot& slot) {
  do {
    platform.yield();
  } while (slot.isPlaying());
}

void stopOneShot(SoundState& g) {
  carryOn([&] { g.oneShotBuffer->Stop(); });
  g.oneShotBuffer.release();
}

void PlayPan(GameState& g, const std::string& baseName, double pan) {
  clk(g);
  loadSlot(g, g.panBuffer, baseName);
  g.panBuffer->SetPan(roundToInt(pan));
  g.panBuffer->Play(SoundBuffer::kOnce);
}

void playmark(SoundState& g) {
  g.markBuffer->Play(SoundBuffer::kOnce);
}

void playhorn(SoundState& g) {
  g.hornBuffer->Play(SoundBuffer::kOnce);
}

void sars(GameState& g) {
  const int wallVolume = g.soundVolume - kWallsQuieterBy;
  g.wallLeftBuffer->SetVolume(wallVolume);
  g.wallLeftBuffer->SetPan(-kWallPan);
  g.wallRightBuffer->SetVolume(wallVolume);
  g.wallRightBuffer->SetPan(kWallPan);
  g.wallLeftBuffer->Play(SoundBuffer::kLooping);
  g.wallRightBuffer->Play(SoundBuffer::kLooping);
  g.sound18Buffer->SetVolume(kNearlySilent);
  g.sound18Buffer->Play(SoundBuffer::kLooping);
  g.sound9Buffer->SetVolume(kNearlySilent);
  g.sound9Buffer->Play(SoundBuffer::kLooping);
  dyke(g, 0.1);
}

void releaseSounds(SoundState& g) {
  for (const auto slot : kSoundSlots) (g.*slot).release();
  g.directSound.reset();
}

void stopall(SoundState& g) {
  for (const auto slot : kLoops) {
    carryOn([&] { (g.*slot)->Stop(); });
  }
}

void stopall2(SoundState& g) {
  for (const auto slot : kLoops) (g.*slot)->Stop();
}

void checkspeakers(GameState& g) {
  testSpeaker(g, " The next sound that you hear will come out of the left speaker. ", "vorn6",
              -kSpeakerTestPan);
  dyke(g, 0.2);
  testSpeaker(g, " The next sound that you hear will come out of the right speaker. ", "vorn14",
              kSpeakerTestPan);
  clk(g);
}

}  // namespace vorn
