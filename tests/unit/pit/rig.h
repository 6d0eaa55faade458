/// A car on a test bench: a game whose platform lets a millisecond pass at each
/// yield, writes down what is done with sounds and voice, and lets a test step in
/// at every car tick and every yield. No file is read.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "input/control_maps.h"
#include "sound/loading.h"
#include "state/game_state.h"

namespace vorn {

class RigPlatform : public Platform {
 public:
  std::int32_t now = 1000;             ///< milliseconds
  std::vector<std::string> log;        ///< "warnBuffer create vorn1t72.wav", "markBuffer Play 0", "say  go! "
  std::vector<std::int32_t> logTimes;  ///< when each line was written
  std::vector<TickReport> ticks;       ///< every car tick
  std::function<void()> onTick;        ///< after the car's tick, before its wait
  std::function<void()> onYield;
  std::set<std::string> missingFiles;
  std::map<std::string, int> milliseconds;  ///< how long a file plays at its own rate; others: a second
  KeyboardState keys{};
  double chance = 0;
  int reseeded = 0;

  void note(const std::string& line) {
    log.push_back(line);
    logTimes.push_back(now);
  }
  void clearLog() {
    log.clear();
    logTimes.clear();
  }
  /// When `line` was first written; -1: never.
  std::int32_t timeOf(const std::string& line) const {
    const auto found = std::find(log.begin(), log.end(), line);
    return found == log.end() ? -1 : logTimes[found - log.begin()];
  }
  /// The log lines that begin with `prefix`.
  std::vector<std::string> logOf(const std::string& prefix) const {
    std::vector<std::string> found;
    std::copy_if(log.begin(), log.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.rfind(prefix, 0) == 0; });
    return found;
  }
  /// The slots whose buffers sound just now, with "looping" where they do.
  std::set<std::string> sounding() const;

  std::int32_t tickCount() override { return now; }
  double secondsSinceMidnight() override { return now / 1000.0; }
  Date today() override { return {3, 7, 2026}; }
  void setCaption(const std::string&) override {}
  void setEventReceiver(EventReceiver*) override {}
  int messageBox(const std::string&) override { return 1; }
  void enterShutdown() override {}
  std::unique_ptr<SoundDevice> createSoundDevice() override;
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override;
  std::vector<std::string> attachedControllers() override { return {}; }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string&) override { return nullptr; }
  std::unique_ptr<Voice> createVoice() override;
  Files& files() override { throw PlatformError("files", "", "the bench has none"); }
  void startProgram(const std::string&, int) override {}
  double randomFraction() override { return chance; }
  void reseedRandom() override { ++reseeded; }
  void carTicked(const TickReport& report) override {
    ticks.push_back(report);
    if (onTick) onTick();
  }

 private:
  class Buffer;
  class Device;
  std::set<Buffer*> buffers_;

  void doYield(int atMostMs) override;
};

/// A sound that lasts as long as it is told to.
class RigPlatform::Buffer : public SoundBuffer {
 public:
  Buffer(RigPlatform& rig, std::string slot, double frames)
      : rig_(rig), slot_(std::move(slot)), frames_(frames) {
    rig_.buffers_.insert(this);
  }
  ~Buffer() override {
    rig_.buffers_.erase(this);
    rig_.note(slot_ + " release");
  }
  void passMillisecond() {
    if (!isPlaying_) return;
    at_ += frequency_ / 1000.0;
    if (isLooping_ || at_ < frames_) return;
    isPlaying_ = false;
    at_ = 0;
  }
  std::string state() const { return isPlaying_ ? slot_ + (isLooping_ ? " looping" : "") : ""; }

 private:
  RigPlatform& rig_;
  std::string slot_;
  double frames_;
  double at_ = 0;
  int frequency_ = 22050;
  bool isPlaying_ = false;
  bool isLooping_ = false;

  void note(const std::string& what) { rig_.note(slot_ + " " + what); }
  void doPlay(bool looping) override {
    isPlaying_ = true;
    isLooping_ = looping;
    note(looping ? "Play 1" : "Play 0");
  }
  void doStop() override {
    isPlaying_ = false;
    note("Stop");
  }
  void doSetVolume(int value) override { note("SetVolume " + std::to_string(value)); }
  void doSetPan(int value) override { note("SetPan " + std::to_string(value)); }
  void doSetFrequency(int hertz) override {
    frequency_ = hertz;
    note("SetFrequency " + std::to_string(hertz));
  }
  void doSetCurrentPosition(int byte) override {
    at_ = byte / 2.0;
    note("SetCurrentPosition " + std::to_string(byte));
  }
  int doGetStatus() override { return isPlaying_ ? kPlaying : 0; }
  int doGetFrequency() override { return frequency_; }
  int doDataBytes() const override { return 400000; }
};

class RigPlatform::Device : public SoundDevice {
 public:
  explicit Device(RigPlatform& rig) : rig_(rig) {}
  void SetCooperativeLevel(int) override {}
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string& slot, const std::string& fileName,
                                                         int) override {
    const std::string baseName = fileName.substr(0, fileName.find('.'));
    if (rig_.missingFiles.count(baseName)) throw PlatformError("create", fileName, "missing");
    rig_.note(slot + " create " + baseName);
    const auto found = rig_.milliseconds.find(baseName);
    const int milliseconds = found == rig_.milliseconds.end() ? 1000 : found->second;
    return std::make_unique<Buffer>(rig_, slot, milliseconds * 22.05);
  }
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromSamples(const std::string&, const std::string& name,
                                                            std::span<const float>, int) override {
    throw PlatformError("create", name, "the bench makes no sound");
  }

 private:
  RigPlatform& rig_;
};

inline std::set<std::string> RigPlatform::sounding() const {
  std::set<std::string> states;
  for (const Buffer* buffer : buffers_) states.insert(buffer->state());
  states.erase("");
  return states;
}

inline std::unique_ptr<SoundDevice> RigPlatform::createSoundDevice() {
  return std::make_unique<Device>(*this);
}

inline std::unique_ptr<KeyboardDevice> RigPlatform::createKeyboardDevice() {
  class Keyboard : public KeyboardDevice {
   public:
    explicit Keyboard(RigPlatform& rig) : rig_(rig) {}
    void SetCommonDataFormat(int) override {}
    void SetCooperativeLevel(int) override {}
    void Acquire() override {}
    KeyboardState GetDeviceStateKeyboard() override { return rig_.keys; }

   private:
    RigPlatform& rig_;
  };
  return std::make_unique<Keyboard>(*this);
}

inline std::unique_ptr<Voice> RigPlatform::createVoice() {
  class Recorder : public Voice {
   public:
    explicit Recorder(RigPlatform& rig) : rig_(rig) {}
    std::vector<std::string> GetVoices() override { return {"one"}; }

   private:
    RigPlatform& rig_;
    void doSetVoice(int) override {}
    void doSetVolume(int) override {}
    void doSetRate(int) override {}
    void doSpeak(const std::string& text, int) override {
      if (!text.empty()) rig_.note("say " + text);
    }
    int doRunningState() override { return 1; }
  };
  return std::make_unique<Recorder>(*this);
}

inline void RigPlatform::doYield(int) {
  ++now;
  for (Buffer* buffer : buffers_) buffer->passMillisecond();
  if (onYield) onYield();
}

/// A game with its race sounds loaded and a car in first gear, driven by controller.
struct Rig {
  RigPlatform platform;
  GameState g{platform};

  Rig() {
    g.directSound = platform.createSoundDevice();
    g.keyboardDevice = platform.createKeyboardDevice();
    g.speechVoice = platform.createVoice();
    jhk(g);
    for (int* option : {&g.wallSound, &g.autoGearAnnounce, &g.pitRoadSnacks, &g.engineSound}) *option = kOn;
    g.autoSpeedometer = kOff;
    g.trackLightPolls = kOff;
    g.joystickPresent = 1;
    g.inputDevice = kJoystick;
    setwaves(g);
    g.gear = 1;
    g.fuel = 20;
    g.steerDrag = 1;
    g.lateralPosition = 50;
    g.lastTickCount = platform.now;
    fillSlot(g, g.warnBuffer, "vorn1t1");
    platform.clearLog();
  }
};

}  // namespace vorn
