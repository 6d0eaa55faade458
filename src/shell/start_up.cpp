#include "shell/start_up.h"

#include "clock/waits.h"
#include "input/control_maps.h"
#include "input/events.h"
#include "options/options.h"
#include "options/voice_settings.h"
#include "records/log.h"
#include "shell/main_flow.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/losses.h"
#include "speech/speech.h"
#include "state/track_names.h"

namespace vorn {
namespace {

constexpr int kPriorityLevel = 2;
constexpr int kVolumePanAndFrequency = 0x80 + 0x40 + 0x20;
constexpr const char* kLauncher = "arcadehub.exe";
constexpr int kMaximised = 3;
constexpr std::uint32_t kLongestFarewellMs = 60000;

void setStartValues(GameState& g) {
  g.joystickPresent = 1;
  g.inputDevice = kNoDevice;
  g.escapePressed = 0;
  // Where there is no options file everything is on, with the first sounds.
  for (int* option : {&g.wallSound, &g.autoSpeedometer, &g.autoGearAnnounce, &g.pitRoadSnacks,
                      &g.trackLightPolls, &g.engineSound}) {
    *option = kOn;
  }
}

void readSettings(GameState& g) {
  jhk(g);
  getJoyCFG(g);
  getKeyCFG(g);
  getgops(g);
}

void openSound(GameState& g) {
  carryOn([&] { g.directSound = g.platform.createSoundDevice(); });
  if (g.directSound) carryOn([&] { g.directSound->SetCooperativeLevel(kPriorityLevel); });
  g.bufferFlags = kVolumePanAndFrequency;
}

/// Returns how many voices there are.
int openVoice(GameState& g) {
  g.platform.yield();
  int voices = 0;
  carryOn([&] { g.speechVoice = g.platform.createVoice(); });
  if (g.speechVoice) carryOn([&] { voices = static_cast<int>(g.speechVoice->GetVoices().size()); });
  return voices;
}

void showBox(GameState& g, const std::string& complaint, std::string& answer) {
  carryOn([&] { answer = std::to_string(g.platform.messageBox(complaint + "\rPlease contact Ostrin")); });
}

void complainOfSounds(GameState& g) {
  carryOn([&] { g.oneShotBuffer->Stop(); });
  clk(g);
  g.platform.yield();
  say2(g, "Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin.");
  showBox(g, "Sorry but one or more of the wave files seem to be corrupt", g.lastKeyChar);
}

void readVoiceSettings(GameState& g) {
  clk(g);
  g.platform.yield();
  g.voiceIndex = 0;
  g.voiceVolume = 90;
  g.speechRate = 0;
  getCFG(g);
}

void applyVoiceSettings(GameState& g) {
  carryOn([&] { g.speechVoice->setVoice(g.voiceIndex); });
  carryOn([&] { g.speechVoice->setVolume(g.voiceVolume); });
  carryOn([&] { g.speechVoice->setRate(g.speechRate); });
  carryOn([&] { g.speechVoice->Speak(" ", speak_flags::kSynchronous); });
  for (const std::string& message : g.startUpMessages) say(g, message);
  g.startUpMessages.clear();
}

void waitForTitleSound(GameState& g) {
  do {
    g.platform.yield();
  } while (g.oneShotBuffer.isPlaying() && g.lastKeyCode.empty());
  stopOneShot(g);
  clk(g);
  g.platform.yield();
  startlog(g);
}

void nameTracks(ShellState& shell) {
  for (int track = 1; track <= kTracks; ++track) shell.trackNames[track] = kTrackNames[track - 1].spoken;
  shell.trackNames[kTracks + 1] = " Go to main menu ";
  shell.trackNames[kTracks + 2] = " Exit Game ";
}

/// Returns false where the game cannot be played and shutdown follows.
bool startUp(GameState& g) {
  g.platform.setCaption(" Vorn 1 TTS Version 2  By Ostrin ");
  const bool isShared = g.platform.files().claim();
  setStartValues(g);
  readSettings(g);
  openSound(g);
  setUpKeyboard(g);
  detectController(g);
  const int voices = openVoice(g);
  if (voices == 0) {
    showBox(g, "Sorry but I couldn't find any voices to use", g.lastKeyCode);
    return false;
  }
  g.lastVoiceIndex = voices - 1;
  // Without its title the game can still say what is wrong with its sounds.
  carryOn([&] { play2(g, "vorn0"); });
  g.waveFilesBad = 0;
  checkwaves(g);
  if (g.waveFilesBad == 1) {
    complainOfSounds(g);
    return false;
  }
  readVoiceSettings(g);
  applyVoiceSettings(g);
  waitForTitleSound(g);
  nameTracks(g);
  g.soundVolume = 0;  // every run starts at full sound volume, whatever was saved
  dyke(g, 0.3);
  say(g, " Vorn 1 tts version 2 By Ostrin ");
  if (isShared) say2(g, " Another game is using this folder. ");
  sayLosses(g);
  g.platform.yield();
  return true;
}

void releaseDevices(InputState& g) {
  g.joystickEvent = 0;
  if (g.joystickDevice) carryOn([&] { g.joystickDevice->Unacquire(); });
  g.joystickDevice.reset();
  g.keyboardDevice.reset();
}

void waitForFarewell(GameState& g) {
  const std::int32_t start = g.platform.tickCount();
  carryOn([&] {
    while (g.speechVoice->RunningState() == Voice::kSpeaking &&
           millisecondsSince(g, start) < kLongestFarewellMs) {
      g.platform.yield();
    }
  });
}

void leaveToLauncher(GameState& g) {
  if (const auto launcher = g.platform.files().find(kLauncher)) {
    carryOn([&] { g.platform.startProgram(*launcher, kMaximised); });
  } else if (g.speechVoice) {
    carryOn([&] { say(g, " exiting program "); });
  }
}

void shutDown(GameState& g) {
  g.platform.enterShutdown();
  if (g.speechVoice) {
    carryOn([&] {
      sayLosses(g);
      say2(g, " Thank you for playing Vorn 1 tts, By Ostrin. ");
    });
  }
  releaseSounds(g);
  releaseDevices(g);
  if (g.speechVoice) waitForFarewell(g);
  leaveToLauncher(g);
  g.speechVoice.reset();
}

/// Delivers events for as long as the program runs.
class EventConnection {
 public:
  explicit EventConnection(GameState& g) : g_(g), events_(g) { g_.platform.setEventReceiver(&events_); }
  ~EventConnection() { g_.platform.setEventReceiver(nullptr); }
  EventConnection(const EventConnection&) = delete;
  EventConnection& operator=(const EventConnection&) = delete;

 private:
  GameState& g_;
  GameEvents events_;
};

}  // namespace

void Form_Load(GameState& g) {
  const EventConnection events(g);
  try {
    if (startUp(g)) runMainFlow(g);
  } catch (const WindowClosed&) {
    // No results, record or log line of a race that was going on.
    if (g.speechVoice) carryOn([&] { stopspeech(g); });
  }
  shutDown(g);
}

}  // namespace vorn
