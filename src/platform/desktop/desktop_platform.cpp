#include "platform/desktop/desktop_platform.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <optional>
#include <utility>

#include "platform/common/folder_files.h"
#include "platform/common/notices.h"
#include "platform/common/random.h"
#include "platform/common/rumble.h"
#include "platform/common/service_voice.h"
#include "platform/common/system_clock.h"
#include "platform/common/windows1252.h"
#include "platform/desktop/audio_output.h"
#include "platform/desktop/controllers.h"
#include "platform/desktop/desktop_services.h"
#include "platform/desktop/keyboard.h"
#include "platform/desktop/launcher.h"
#include "platform/desktop/tick_clock.h"
#include "platform/desktop/window.h"
#include "platform/mixing/felt_sound_device.h"
#include "platform/mixing/mixer.h"

namespace vorn {
namespace {

constexpr const char* kSoundIsBack = " Sound is back. ";
constexpr const char* kOtherDevice = " The sound device that was asked for is not there. ";

/// Where the size of the sound device's buffer stands, once it has grown.
constexpr const char* kBufferFile = "vorn1buffer.txt";

int keptBuffer(Files& files) {
  int frames = BufferGrowth::kSmallest;
  carryOn([&] {
    if (const auto name = files.find(kBufferFile)) frames = bufferFromText(files.read(*name));
  });
  return frames;
}

AudioWishes wishesOf(const DesktopOptions& options, int keptFrames) {
  const bool isFixed = options.bufferFrames > 0;
  return {options.audioDevice, isFixed ? options.bufferFrames : keptFrames, !isFixed};
}

class DesktopPlatform : public Platform {
 public:
  explicit DesktopPlatform(const DesktopOptions& options)
      : options_(options),
        files_(options.folder),
        random_(clockSeed()),
        keptFrames_(keptBuffer(files_)),
        audio_(mixer_, wishesOf(options, keptFrames_)),
        display_(makeTextDisplay(window_.handle())),
        speech_(makeSpeechService(
            options.speech, {mixer_, window_, files_, [this](const std::string& text) { read(text); }})) {
    if (display_) {
      display_->setInFront(true);
    }
    mixer_.setDucking(options.duckDecibels);
    mixer_.setVolume(options.quieterDecibels);
    mixer_.setEarsSwapped(options.swapsEars);
  }
  ~DesktopPlatform() override { keepBuffer(); }

  std::int32_t tickCount() override { return clock_.now(); }
  double secondsSinceMidnight() override { return localSecondsSinceMidnight(); }
  Date today() override { return localDate(); }

  void setCaption(const std::string& caption) override { window_.setCaption(caption); }
  void setEventReceiver(EventReceiver* receiver) override { receiver_ = receiver; }
  int messageBox(const std::string& text) override;
  void enterShutdown() override { window_.enterShutdown(); }

  std::unique_ptr<SoundDevice> createSoundDevice() override {
    return std::make_unique<FeltSoundDevice>(mixer_, files_,
                                             [this](const std::optional<Rumble>& rumble) { feel(rumble); });
  }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    return std::make_unique<SdlKeyboard>(window_.taps());
  }
  std::vector<std::string> attachedControllers() override { return controllers_.attached(); }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override {
    return controllers_.open(identifier);
  }
  std::unique_ptr<Voice> createVoice() override;

  Files& files() override { return files_; }
  void startProgram(const std::string& name, int windowStyle) override;

  double randomFraction() override { return random_.fraction(); }
  void reseedRandom() override { random_.reseed(clockSeed()); }
  void carTicked(const TickReport& report) override {
    lastTick_ = std::chrono::steady_clock::now();
    feel(rumbleSense_.tick(report));
  }

 private:
  void doYield(int atMostMs) override;
  bool pause();
  void lookAfterFocus();
  void lookAfterSound();
  void feel(const std::optional<Rumble>& rumble);
  void lookAfterDevice();
  void keepBuffer();
  bool isRacing() const;
  void announce(const std::string& text);
  void read(const std::string& text);

  const DesktopOptions options_;
  FolderFiles files_;
  RandomSource random_;
  TickClock clock_;
  Mixer mixer_;
  int keptFrames_;  ///< of the sound device's buffer
  AudioOutput audio_;
  Window window_;
  std::unique_ptr<TextDisplay> display_;  ///< null: none
  Controllers controllers_;
  RumbleSense rumbleSense_;
  SpeechSettings voiceSettings_;
  bool hasHadVoice_ = false;
  EventReceiver* receiver_ = nullptr;
  bool isHeard_ = true;
  bool isKeyMoved_ = false;
  bool isInBackground_ = false;
  bool hasSpoken_ = false;
  bool isDelayTold_ = false, isMissingTold_ = false;
  std::chrono::steady_clock::time_point lastTick_;  ///< of the car
  std::unique_ptr<SpeechService> speech_;  ///< the last one, for it reads to the player while it is made
};

void DesktopPlatform::startProgram(const std::string& name, int) {
  const std::filesystem::path program = files_.pathOf("Shell", name);
  if (!options_.startsPrograms) {
    std::cerr << program.string() << " was not started: give its folder with --folder to have it started."
              << std::endl;
    return;
  }
  launch(program);
}

int DesktopPlatform::messageBox(const std::string& text) {
  constexpr int kOk = 1;
  std::string shown = utf8FromWindows1252(text);
  std::replace(shown.begin(), shown.end(), '\r', '\n');
  std::cerr << shown << std::endl;
  if (!options_.answerBoxes) {
    window_.showBox(shown);
  }
  return kOk;
}

/// After a key has moved the next wait is none: a game that looks at the keyboard
/// before it waits would else look a whole wait late.
void DesktopPlatform::doYield(int atMostMs) {
  if (atMostMs > 0 && !isKeyMoved_) {
    clock_.waitForEvent(atMostMs);
  }
  lookAfterFocus();
  lookAfterSound();
  isKeyMoved_ = window_.deliver(receiver_);
  controllers_.notify(receiver_);
  for (const std::string& news : controllers_.takeNews()) {
    announce(news);
  }
}

/// After the first one a voice is made where the player looks for another.
std::unique_ptr<Voice> DesktopPlatform::createVoice() {
  const bool introducesItself = std::exchange(hasHadVoice_, true);
  return std::make_unique<ServiceVoice>(
      *speech_, voiceSettings_, introducesItself, [this] { return pause(); },
      [this](const std::string& text) { read(text); });
}

/// A moment of a synchronous text; false where the player closes the window.
bool DesktopPlatform::pause() {
  constexpr int kMomentMs = 2;
  window_.pump();
  lookAfterFocus();
  lookAfterSound();
  TickClock::sleep(kMomentMs);
  return !window_.isToBeClosed();
}

/// Game sounds and the braille display belong to the window in front. In a race,
/// which does not wait, whoever loses them without meaning to has to hear of it.
void DesktopPlatform::lookAfterFocus() {
  const bool isInBackground = window_.isInBackground();
  if (isInBackground == isInBackground_) {
    return;
  }
  isInBackground_ = isInBackground;
  mixer_.setMuted(isInBackground);
  if (display_) {
    display_->setInFront(!isInBackground);
  }
  if (isRacing()) {
    announce(isInBackground ? kInBackground : kInFrontAgain);
  }
}

bool DesktopPlatform::isRacing() const {
  constexpr auto kHasTicked = std::chrono::seconds(2);
  return std::chrono::steady_clock::now() - lastTick_ < kHasTicked;
}

/// Where nothing can be heard the player is told so by all other means, and by the
/// voice once it can be.
void DesktopPlatform::lookAfterSound() {
  // To be asked in every moment anyhow: the game may not ask for long, and a voice that fails is to be
  // noticed.
  const bool isSpeaking = speech_->isSpeaking();
  mixer_.setDucked(isSpeaking);
  if (hasSpoken_ && !isSpeaking && !isRacing()) {
    lookAfterDevice();
  }
  const bool isHeard = audio_.isHeard();
  if (isHeard == isHeard_) {
    return;
  }
  isHeard_ = isHeard;
  window_.setNotice(isHeard ? "" : " (no sound)");
  if (isHeard) {
    std::cerr << "Sound is back." << std::endl;
    announce(kSoundIsBack);
  } else {
    std::cerr << "No sound: the sound device takes none. The game goes on, and looks for one." << std::endl;
  }
}

void DesktopPlatform::feel(const std::optional<Rumble>& rumble) {
  if (rumble && options_.rumbles) {
    controllers_.rumble(*rumble);
  }
}

/// What can wait until nothing is being said and nobody drives.
void DesktopPlatform::lookAfterDevice() {
  keepBuffer();
  if (!isMissingTold_ && audio_.line().isDeviceMissing()) {
    isMissingTold_ = true;
    announce(kOtherDevice);
  } else if (!isDelayTold_ && audio_.line().deviceDelay() > kLateMs) {
    isDelayTold_ = true;
    announce(lateDevice(audio_.line().deviceDelay()));
  }
}

/// A buffer that has grown is needed again next time.
void DesktopPlatform::keepBuffer() {
  const int frames = audio_.line().frames();
  if (options_.bufferFrames > 0 || frames == keptFrames_) {
    return;
  }
  keptFrames_ = frames;
  carryOn([&] { files_.write(kBufferFile, bufferAsText(frames)); });
}

/// Says something of the platform's own as the game's texts are said.
void DesktopPlatform::announce(const std::string& text) {
  speech_->say(text, voiceSettings_);
  read(text);
}

/// Speech for eyes and fingers.
void DesktopPlatform::read(const std::string& text) {
  hasSpoken_ = true;
  if (options_.captions != nullptr) {
    *options_.captions << text << std::endl;
  }
  window_.showSpoken(text);
  if (display_) {
    display_->show(text);
  }
}

std::string explained(DesktopUnavailable::Missing thing, const std::string& reason) {
  return thing == DesktopUnavailable::Missing::kDisplay
             ? "There is no display (" + reason +
                   "). Start the game from a graphical desktop, or set DISPLAY or WAYLAND_DISPLAY to one."
             : "There is no sound device (" + reason +
                   "). Connect one and start the desktop's sound server (PipeWire or PulseAudio).";
}

}  // namespace

DesktopUnavailable::DesktopUnavailable(Missing thing, const std::string& reason)
    : std::runtime_error(explained(thing, reason)), missing(thing) {}

DesktopUnavailable::DesktopUnavailable(const DesktopUnavailable& display, const DesktopUnavailable& sound)
    : std::runtime_error(std::string(display.what()) + "\n" + sound.what()), missing(Missing::kBoth) {}

std::unique_ptr<Platform> makeDesktopPlatform(const DesktopOptions& options) {
  try {
    return std::make_unique<DesktopPlatform>(options);
  } catch (const DesktopUnavailable& sound) {
    const std::string noDisplay =
        sound.missing == DesktopUnavailable::Missing::kSound ? Window::missingDisplay() : "";
    if (noDisplay.empty()) {
      throw;
    }
    throw DesktopUnavailable(DesktopUnavailable(DesktopUnavailable::Missing::kDisplay, noDisplay), sound);
  }
}

}  // namespace vorn
