#include "platform/web/web_platform.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/common/key_latch.h"
#include "platform/common/notices.h"
#include "platform/common/random.h"
#include "platform/common/rumble.h"
#include "platform/common/service_voice.h"
#include "platform/common/system_clock.h"
#include "platform/common/windows1252.h"
#include "platform/mixing/felt_sound_device.h"
#include "platform/mixing/synth_service.h"
#include "platform/web/page_keys.h"
#include "platform/web/page_speech.h"
#include "platform/web/page_synth.h"
#include "platform/web/sound_output.h"

namespace vorn {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kMoment{2};

/// The browser's own store, through the page.
class PageStore : public FileStore {
 public:
  explicit PageStore(Page& page) : page_(page) {}

  void put(const std::string& name, const std::string& bytes) override {
    carryOut(Tell::kStore, "write", name, name + '\0' + bytes);
  }
  void remove(const std::string& name) override { carryOut(Tell::kRemove, "delete", name, name); }

 private:
  void carryOut(Tell what, const char* call, const std::string& name, const std::string& request) {
    constexpr auto kPatience = std::chrono::seconds(10);
    page_.tell(what, ++asked_, request);
    const auto end = steady_clock::now() + kPatience;
    while (page_.stored != asked_) {
      if (page_.refused == asked_ || steady_clock::now() >= end) {
        throw PlatformError(call, name, "the browser did not store it");
      }
      std::this_thread::sleep_for(kMoment);
    }
  }

  Page& page_;
  std::int32_t asked_ = 0;
};

class PageKeyboard : public KeyboardDevice {
 public:
  /// Neither is owned.
  PageKeyboard(const KeyboardState& held, KeyLatch& taps) : held_(held), taps_(taps) {}

  void SetCommonDataFormat(int format) override {
    constexpr int kKeyboard = 1;
    if (format != kKeyboard) {
      throw PlatformError("SetCommonDataFormat", std::to_string(format), "this is a keyboard");
    }
  }
  void SetCooperativeLevel(int) override {}  // a browser shares its keys with whom it likes
  void Acquire() override {}
  KeyboardState GetDeviceStateKeyboard() override {
    return taps_.read(held_, static_cast<std::uint32_t>(steadyTickCount()));
  }

 private:
  const KeyboardState& held_;
  KeyLatch& taps_;
};

class WebPlatform : public Platform {
 public:
  explicit WebPlatform(Page& page)
      : page_(page),
        store_(page),
        files_(page.files, page.sounds, store_),
        random_(clockSeed()),
        output_(mixer_, page.ring),
        synth_(page),
        speech_(makeSpeech()) {
    constexpr double kDuckDecibels = 8;
    mixer_.setDucking(kDuckDecibels);
  }

  std::int32_t tickCount() override { return steadyTickCount(); }
  double secondsSinceMidnight() override { return localSecondsSinceMidnight(); }
  Date today() override { return localDate(); }

  void setCaption(const std::string& caption) override { page_.tell(Tell::kCaption, 0, caption); }
  void setEventReceiver(EventReceiver* receiver) override { receiver_ = receiver; }
  int messageBox(const std::string& text) override;
  void enterShutdown() override {}  // a page that is closed does not ask the game

  std::unique_ptr<SoundDevice> createSoundDevice() override {
    return std::make_unique<FeltSoundDevice>(mixer_, files_,
                                             [this](const std::optional<Rumble>& rumble) { feel(rumble); });
  }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    return std::make_unique<PageKeyboard>(held_, taps_);
  }
  std::vector<std::string> attachedControllers() override { return page_.pads.attached(); }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override {
    return page_.pads.open(identifier);
  }
  std::unique_ptr<Voice> createVoice() override;

  Files& files() override { return files_; }
  void startProgram(const std::string& name, int) override {
    throw PlatformError("Shell", name, "a browser starts no programs");
  }

  double randomFraction() override { return random_.fraction(); }
  void reseedRandom() override { random_.reseed(clockSeed()); }
  void carTicked(const TickReport& report) override {
    page_.lastTick =
        std::chrono::duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
    feel(rumbleSense_.tick(report));
  }

 private:
  void doYield(int atMostMs) override;
  void waitUntil(steady_clock::time_point end);
  void deliver(const PageEvent& event);
  void noteKey(const PageEvent& event);
  void changeFocus(bool isInBackground);
  void feel(const std::optional<Rumble>& rumble);
  void announce(const std::string& text);
  void lookAfterDevice();
  bool pause();
  std::unique_ptr<SpeechService> makeSpeech();

  Page& page_;
  PageStore store_;
  StoredFiles files_;
  RandomSource random_;
  Mixer mixer_;
  SoundOutput output_;
  PageSynth synth_;
  std::unique_ptr<SpeechService> speech_;
  SpeechSettings voiceSettings_;
  bool hasHadVoice_ = false;
  EventReceiver* receiver_ = nullptr;
  RumbleSense rumbleSense_;
  bool isInBackground_ = false;
  KeyboardState held_{};
  KeyLatch taps_;
  bool isKeyMoved_ = false;
  bool isDelayTold_ = false;
};

std::unique_ptr<SpeechService> WebPlatform::makeSpeech() {
  if (synth_.voices().empty()) {
    return std::make_unique<PageSpeech>(page_);
  }
  return std::make_unique<SynthService>(synth_, mixer_.voice());
}

int WebPlatform::messageBox(const std::string& text) {
  constexpr int kOk = 1;
  std::string shown = utf8FromWindows1252(text);
  std::replace(shown.begin(), shown.end(), '\r', '\n');
  page_.tell(Tell::kBox, 0, shown);
  for (;;) {
    ++page_.pulse;
    page_.inbox.waitUntil(steady_clock::now() + std::chrono::seconds(1));
    while (const auto event = page_.inbox.take()) {
      if (event->kind == PageEvent::Kind::kAnswered) {
        return kOk;
      }
      if (event->kind != PageEvent::Kind::kKeyDown) {
        deliver(*event);  // or the focus, or a key let go of, would be mistaken for good
      }
    }
  }
}

/// After a key has moved the next wait is none: a game that looks at the keyboard
/// before it waits would else look a whole wait late.
void WebPlatform::doYield(int atMostMs) {
  ++page_.pulse;
  if (!std::exchange(isKeyMoved_, false) && atMostMs > 0) {
    waitUntil(steady_clock::time_point(wholeMilliseconds() + milliseconds(atMostMs)));
  }
  const bool isSpeaking = speech_->isSpeaking();
  mixer_.setDucked(isSpeaking);
  if (!isSpeaking && !page_.isRacing()) {
    lookAfterDevice();
  }
  while (const auto event = page_.inbox.take()) {
    deliver(*event);
  }
  page_.pads.notify(receiver_);
  for (const std::string& news : page_.pads.takeNews()) {
    announce(news);
  }
}

void WebPlatform::waitUntil(steady_clock::time_point end) {
  page_.inbox.waitUntil(end);
  const auto now = steady_clock::now();
  if (page_.isRacing() && now >= end) {  // and so ends a tick, unless a key has ended the wait
    page_.tickWaits.note(std::chrono::duration<double, std::milli>(now - end).count());
  }
}

void WebPlatform::deliver(const PageEvent& event) {
  switch (event.kind) {
    case PageEvent::Kind::kKeyDown:
    case PageEvent::Kind::kKeyUp:
      isKeyMoved_ = true;
      noteKey(event);
      break;
    case PageEvent::Kind::kFocus:
      changeFocus(false);
      break;
    case PageEvent::Kind::kBlur:
      changeFocus(true);
      break;
    case PageEvent::Kind::kAnswered:
      break;
  }
}

void WebPlatform::noteKey(const PageEvent& event) {
  const bool isDown = event.kind == PageEvent::Kind::kKeyDown;
  if (const Key* const key = keyAtPlace(event.code)) {
    held_[static_cast<std::size_t>(key->keyCode)] = isDown ? KeyLatch::kKeyIsDown : 0;
    if (isDown) {
      taps_.wentDown(key->keyCode);
    } else {
      taps_.wentUp(key->keyCode, static_cast<std::uint32_t>(steadyTickCount(event.at)));
    }
  }
  const Key* const pressed = isDown && receiver_ != nullptr ? menuKey(event.code, event.key) : nullptr;
  if (pressed != nullptr) {
    receiver_->Form_KeyDown(pressed->virtualKeyCode, event.shiftState);
  }
}

/// In a race, which does not wait, whoever loses the focus without meaning to has to hear of it. Nobody
/// reports the keys that are let go of elsewhere.
void WebPlatform::changeFocus(bool isInBackground) {
  mixer_.setMuted(isInBackground);
  held_ = {};
  if (std::exchange(isInBackground_, isInBackground) != isInBackground && page_.isRacing()) {
    announce(isInBackground ? kInBackground : kInFrontAgain);
  }
}

void WebPlatform::feel(const std::optional<Rumble>& rumble) {
  if (!rumble) {
    return;
  }
  for (const int pad : page_.pads.inHand()) {
    page_.tell(Tell::kRumble, pad,
               std::to_string(rumble->heavy) + ' ' + std::to_string(rumble->light) + ' ' +
                   std::to_string(rumble->ms));
  }
}

/// Says something of the platform's own as the game's texts are said.
void WebPlatform::announce(const std::string& text) {
  speech_->say(text, voiceSettings_);
  page_.tell(Tell::kSpoken, 0, text);
}

/// What can wait until nothing is being said and nobody drives.
void WebPlatform::lookAfterDevice() {
  if (const int delay = page_.deviceMs; !isDelayTold_ && delay > kLateMs) {
    isDelayTold_ = true;
    announce(lateDevice(delay));
  }
}

/// After the first one a voice is made where the player looks for another.
std::unique_ptr<Voice> WebPlatform::createVoice() {
  const bool introducesItself = std::exchange(hasHadVoice_, true);
  return std::make_unique<ServiceVoice>(
      *speech_, voiceSettings_, introducesItself, [this] { return pause(); },
      [this](const std::string& text) { page_.tell(Tell::kSpoken, 0, text); });
}

/// A moment of a synchronous text: what happens meanwhile is delivered after it, but nobody
/// hears the game from the background.
bool WebPlatform::pause() {
  ++page_.pulse;
  mixer_.setMuted(!page_.inbox.hasFocus());
  mixer_.setDucked(speech_->isSpeaking());
  std::this_thread::sleep_for(kMoment);
  return true;
}

}  // namespace

std::unique_ptr<Platform> makeWebPlatform(Page& page) {
  return std::make_unique<WebPlatform>(page);
}

}  // namespace vorn
