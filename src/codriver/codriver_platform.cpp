#include "codriver/codriver_platform.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "codriver/aid.h"
#include "codriver/driving_aids.h"
#include "codriver/guest.h"
#include "codriver/lap_aid.h"
#include "codriver/loudness.h"
#include "codriver/menu.h"
#include "platform/common/forwarding_devices.h"
#include "platform/common/key_codes.h"
#include "state/track_names.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kVirtualF1 = 112, kVirtualF12 = 123;
constexpr int kWhere = 1, kMenuOrAids = 2, kFirstAidKey = 3;  // function keys

constexpr const char* kTitle = " Vorn 1 tts version 2 By Ostrin ";
constexpr const char* kEngines = "Start Your Engines!";
constexpr const char* kIntroduction =
    " F 2 in any menu opens the co-driver, who helps you to learn the game. ";
constexpr const char* kForgotten = " The co-driver's settings were damaged, and have been set back. ";

/// Sounds with which the game stops heeding the controls alone: after them any key may mean something.
constexpr const char* kImpact = "vorn15.wav";
constexpr const char* kJumpedStart = "vorn5.wav";
constexpr const char* kFinish = "vorn6.wav";

constexpr int InputState::*kMappedKeys[] = {
    &InputState::keyMapSpeedometer, &InputState::keyMapTrackPosition, &InputState::keyMapStartEngine,
    &InputState::keyMapSayLap,      &InputState::keyMapPitRoad,       &InputState::keyMapElapsedTime,
    &InputState::keyMapSteerLeft,   &InputState::keyMapSteerRight,    &InputState::keyMapUpShift,
    &InputState::keyMapDownShift,   &InputState::keyMapGas,           &InputState::keyMapBrake,
    &InputState::keyMapEnter,       &InputState::keyMapHorn,          &InputState::keyMapSayGear,
};

/// Whether the player has given a key to the game.
bool isMapped(const InputState& in, int virtualKeyCode) {
  const auto keys = allKeys();
  return std::any_of(keys.begin(), keys.end(), [&](const Key& key) {
    return key.virtualKeyCode == virtualKeyCode &&
           std::any_of(std::begin(kMappedKeys), std::end(kMappedKeys),
                       [&](int InputState::*mapped) { return in.*mapped == key.keyCode; });
  });
}

/// What the game is doing, as far as keys are concerned.
enum class Phase {
  kElsewhere,  ///< any key may mean something to it
  kMenu,
  kDriving,  ///< it heeds the controls and Escape
};

class WatchedBuffer;

class Codriver : public CodriverPlatform, private EventReceiver, private Cockpit {
 public:
  Codriver(Platform& inner, const CodriverOptions& options);
  ~Codriver() override { inner().setEventReceiver(nullptr); }

  void watch(const GameState& game) override { seat_.game = &game; }

  void setEventReceiver(EventReceiver* receiver) override { seat_.receiver = receiver; }
  std::unique_ptr<SoundDevice> createSoundDevice() override;
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override;
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override;
  std::unique_ptr<Voice> createVoice() override;
  void carTicked(const TickReport& report) override;
  void menuOffered(bool isOpen) override;
  void enterShutdown() override;

  // From the devices of the game.
  Seat& seat() { return seat_; }
  const AidSettings& heardWith() const { return settings_; }
  std::set<WatchedBuffer*>& buffers() { return buffers_; }
  void deviceOpened(SoundDevice* device);
  void deviceClosed(const SoundDevice* device);
  void soundLoaded(const std::string& fileName);
  void said(const std::string& text, int flags);

 private:
  void Form_KeyDown(int virtualKeyCode, int shiftState) override;
  void DirectXEvent8_DXCallback(int eventId) override;
  void doYield(int atMostMs) override;

  // For the aids.
  void tell(const std::string& text) override;
  ToneBoard& tones() override { return tones_; }
  std::uint32_t now() override { return static_cast<std::uint32_t>(inner().tickCount()); }
  const AidSettings& settings() const override { return settings_; }
  Files& files() override { return inner().files(); }

  void readSettings(const CodriverOptions& options);
  void keepSettings(const AidSet& before);
  bool takeFunctionKey(int number);
  void sayWhere();
  void sayAids();
  void switchAid(AidKind kind);
  void openMenu();
  void waitForHandsOff();
  void beginDriving() {
    phase_ = Phase::kDriving;
    driven_ = seat_.game;
  }
  void endRace(bool isFinished);

  Seat seat_;
  AidSettings settings_;
  AidSet ownAids_{};          ///< as the player has them; options may put others in their place for a session
  bool isForgotten_ = false;  ///< the file was damaged, and nobody knows yet
  bool introducesItself_ = false;
  std::vector<std::unique_ptr<Aid>> aids_;
  ToneBoard tones_{settings_};
  std::set<WatchedBuffer*> buffers_;  ///< of the game, as long as they live
  SoundDevice* device_ = nullptr;     ///< that the tones sound through
  Phase phase_ = Phase::kElsewhere;
  const GameState* driven_ = nullptr;  ///< the game that `kDriving` was told of
  const GameState* raced_ = nullptr;   ///< the game whose race goes on; null: none does
  bool isMenuAsked_ = false;
  std::string lastText_;  ///< that the game has had said in its menu
};

std::vector<std::unique_ptr<Aid>> makeAids(Cockpit& cockpit) {
  std::vector<std::unique_ptr<Aid>> aids = drivingAids(cockpit);
  aids.push_back(std::make_unique<LapAid>(cockpit));
  return aids;
}

// --- What the game opens

/// A buffer of the game, as loud and where the player wants its kind to be.
class WatchedBuffer : public SoundBuffer {
 public:
  WatchedBuffer(std::unique_ptr<SoundBuffer> inner, SoundKind kind, Codriver& codriver)
      : inner_(std::move(inner)), kind_(kind), codriver_(codriver), ownHertz_(inner_->GetFrequency()) {
    codriver_.buffers().insert(this);
    place();
  }
  ~WatchedBuffer() override { codriver_.buffers().erase(this); }

  /// Tells the buffer where it stands, as far as the settings have moved it since it was told last.
  void place() {
    if (heardVolume(settings(), kind_, volume_) != toldVolume_) tellVolume();
    if (heardPan(settings(), pan_) != toldPan_) tellPan();
    tellPitch();
  }

 private:
  void doPlay(bool looping) override {
    isLooping_ = looping;
    inner_->Play(looping ? kLooping : kOnce);
    tellPitch();
  }
  void doStop() override { inner_->Stop(); }
  void doSetVolume(int hundredthsOfDecibel) override {
    volume_ = hundredthsOfDecibel;
    tellVolume();
  }
  void doSetPan(int hundredthsOfDecibel) override {
    pan_ = hundredthsOfDecibel;
    tellPan();
    tellPitch();
  }
  void doSetFrequency(int hertz) override {
    hertz_ = hertz;
    inner_->SetFrequency(toldHertz_ = pitch());
  }
  void doSetCurrentPosition(int byteInTheData) override { inner_->SetCurrentPosition(byteInTheData); }
  int doGetStatus() override { return inner_->GetStatus(); }
  int doGetFrequency() override { return hertz_.value_or(ownHertz_); }
  int doDataBytes() const override { return inner_->dataBytes(); }

  const AidSettings& settings() const { return codriver_.heardWith(); }
  void tellVolume() { inner_->SetVolume(toldVolume_ = heardVolume(settings(), kind_, volume_)); }
  void tellPan() { inner_->SetPan(toldPan_ = heardPan(settings(), pan_)); }
  /// For one ear the pitch of loops tells their side; how long any other sound takes belongs to the game.
  int pitch() {
    const bool tellsSide = isLooping_ && kind_ != SoundKind::kEngine;
    return tellsSide ? heardFrequency(settings(), GetFrequency(), pan_) : GetFrequency();
  }
  void tellPitch() {
    if (pitch() != toldHertz_) inner_->SetFrequency(toldHertz_ = pitch());
  }

  std::unique_ptr<SoundBuffer> inner_;
  const SoundKind kind_;
  Codriver& codriver_;
  const int ownHertz_;
  std::optional<int> hertz_;  ///< that the game has set
  int volume_ = 0, pan_ = 0;  ///< that it has set
  bool isLooping_ = false;
  int toldVolume_ = 0, toldPan_ = 0, toldHertz_ = ownHertz_;  ///< what the buffer knows
};

class WatchedSoundDevice : public SoundDevice {
 public:
  WatchedSoundDevice(std::unique_ptr<SoundDevice> inner, Codriver& codriver)
      : inner_(std::move(inner)), codriver_(codriver) {
    codriver_.deviceOpened(inner_.get());
  }
  ~WatchedSoundDevice() override { codriver_.deviceClosed(inner_.get()); }
  void SetCooperativeLevel(int level) override { inner_->SetCooperativeLevel(level); }
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string& slot, const std::string& fileName,
                                                         int flags) override {
    auto buffer = inner_->CreateSoundBufferFromFile(slot, fileName, flags);
    codriver_.soundLoaded(fileName);
    return std::make_unique<WatchedBuffer>(std::move(buffer), kindOfSlot(slot), codriver_);
  }
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromSamples(const std::string& slot, const std::string& name,
                                                            std::span<const float> samples,
                                                            int hertz) override {
    return inner_->CreateSoundBufferFromSamples(slot, name, samples, hertz);
  }

 private:
  std::unique_ptr<SoundDevice> inner_;
  Codriver& codriver_;
};

/// Holds the place of a device in the seat for as long as it lives.
template <typename Device>
class Place {
 public:
  Place(Device*& place, Device* device) : place_(place), device_(device) { place_ = device_; }
  ~Place() {
    if (place_ == device_) place_ = nullptr;
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

 private:
  Device*& place_;
  Device* device_;
};

class WatchedKeyboard : public ForwardingKeyboard {
 public:
  WatchedKeyboard(std::unique_ptr<KeyboardDevice> watched, Seat& seat)
      : ForwardingKeyboard(std::move(watched)), place_(seat.keyboard, &inner()) {}

 private:
  Place<KeyboardDevice> place_;
};

class WatchedController : public ForwardingController {
 public:
  WatchedController(std::unique_ptr<ControllerDevice> watched, Seat& seat)
      : ForwardingController(std::move(watched)), place_(seat.controller, &inner()) {}

 private:
  Place<ControllerDevice> place_;
};

class WatchedVoice : public ForwardingVoice {
 public:
  WatchedVoice(std::unique_ptr<Voice> watched, Codriver& codriver)
      : ForwardingVoice(std::move(watched)), codriver_(codriver), place_(codriver.seat().voice, &inner()) {}

 private:
  void doSpeak(const std::string& text, int flags) override {
    inner().Speak(text, flags);
    codriver_.said(text, flags);
  }

  Codriver& codriver_;
  Place<Voice> place_;
};

// --- The co-driver

Codriver::Codriver(Platform& inner, const CodriverOptions& options)
    : CodriverPlatform(inner), aids_(makeAids(*this)) {
  readSettings(options);
  inner.setEventReceiver(this);
}

void Codriver::readSettings(const CodriverOptions& options) {
  const bool hasFile = files().find(kAidFile).has_value();
  introducesItself_ = options.introducesItself && !hasFile;
  const auto kept = keptAids(files());
  isForgotten_ = hasFile && !kept;
  settings_ = kept.value_or(AidSettings{});
  ownAids_ = settings_.aids;
  if (options.aids) settings_.aids = *options.aids;
}

/// Those that the player has switched since `before` are his own from now on.
void Codriver::keepSettings(const AidSet& before) {
  AidSettings kept = settings_;
  for (std::size_t i = 0; i < kAidKinds; ++i) {
    if (before[i] != settings_.aids[i]) ownAids_[i] = settings_.aids[i];
  }
  kept.aids = ownAids_;
  if (!carryOn([&] { files().write(kAidFile, aidFileText(kept)); })) {
    tell(" The co-driver's settings could not be kept. ");
  }
}

std::unique_ptr<SoundDevice> Codriver::createSoundDevice() {
  return std::make_unique<WatchedSoundDevice>(inner().createSoundDevice(), *this);
}

std::unique_ptr<KeyboardDevice> Codriver::createKeyboardDevice() {
  return std::make_unique<WatchedKeyboard>(inner().createKeyboardDevice(), seat_);
}

std::unique_ptr<ControllerDevice> Codriver::createControllerDevice(const std::string& identifier) {
  return std::make_unique<WatchedController>(inner().createControllerDevice(identifier), seat_);
}

std::unique_ptr<Voice> Codriver::createVoice() {
  return std::make_unique<WatchedVoice>(inner().createVoice(), *this);
}

void Codriver::deviceOpened(SoundDevice* device) {
  if (device_ == nullptr) tones_.connect(device_ = device);
}

void Codriver::deviceClosed(const SoundDevice* device) {
  if (device_ == device) tones_.connect(device_ = nullptr);
}

void Codriver::soundLoaded(const std::string& fileName) {
  if (fileName != kImpact && fileName != kJumpedStart && fileName != kFinish) return;
  phase_ = Phase::kElsewhere;
  tones_.silence();
  if (fileName != kImpact || raced_ == nullptr) return;
  for (const auto& aid : aids_) aid->crashed();
}

void Codriver::said(const std::string& text, int flags) {
  if (text.find(kEngines) != std::string::npos) beginDriving();
  if (text.find_first_not_of(' ') != std::string::npos) lastText_ = text;
  if (text != kTitle || flags != speak_flags::kSynchronous) return;
  if (std::exchange(introducesItself_, false)) tell(kIntroduction);
  if (std::exchange(isForgotten_, false)) tell(kForgotten);
}

void Codriver::carTicked(const TickReport& report) {
  inner().carTicked(report);
  if (seat_.game == nullptr || seat_.game->trackChoice > kTracks) return;
  const GameState& game = *seat_.game;
  const Scene scene{game, *allTracks()[static_cast<std::size_t>(game.trackChoice - 1)],
                    !seat_.guests.empty()};
  beginDriving();
  if (raced_ != &game) {
    endRace(false);
    raced_ = &game;
    for (const auto& aid : aids_) aid->raceBegan(scene);
  }
  for (const auto& aid : aids_) aid->ticked(scene, report);
  const bool isAtTheLine = report.segment == static_cast<int>(scene.track.segments.size()) &&
                           report.lapPosition >= scene.track.segments.back().length;
  if (isAtTheLine && !(report.lapsCompleted + 1 < game.lapsToRun)) endRace(true);
}

void Codriver::endRace(bool isFinished) {
  if (std::exchange(raced_, nullptr) == nullptr) return;
  for (const auto& aid : aids_) aid->raceEnded(isFinished);
  tones_.silence();
}

void Codriver::menuOffered(bool isOpen) {
  inner().menuOffered(isOpen);
  phase_ = isOpen ? Phase::kMenu : Phase::kElsewhere;
  if (isOpen) endRace(false);
}

/// A race that the player has left by closing the window.
void Codriver::enterShutdown() {
  endRace(false);
  inner().enterShutdown();
}

void Codriver::doYield(int atMostMs) {
  inner().yield(tones_.untilDue(now(), atMostMs));
  tones_.moveTo(now());
  if (raced_ != seat_.game) endRace(false);  // a lesson or a preview is over
  if (std::exchange(isMenuAsked_, false)) openMenu();
}

void Codriver::Form_KeyDown(int virtualKeyCode, int shiftState) {
  const bool isFunctionKey = virtualKeyCode >= kVirtualF1 && virtualKeyCode <= kVirtualF12;
  if (isFunctionKey && seat_.game != nullptr && !isMapped(*seat_.game, virtualKeyCode) &&
      takeFunctionKey(virtualKeyCode - kVirtualF1 + 1)) {
    return;
  }
  if (EventReceiver* const listener = seat_.listener()) listener->Form_KeyDown(virtualKeyCode, shiftState);
}

void Codriver::DirectXEvent8_DXCallback(int eventId) {
  if (EventReceiver* const listener = seat_.listener()) listener->DirectXEvent8_DXCallback(eventId);
}

/// Returns whether the key was the co-driver's.
bool Codriver::takeFunctionKey(int number) {
  const bool isInMenu = phase_ == Phase::kMenu && seat_.guests.empty();
  const bool isDriving =
      phase_ == Phase::kDriving && driven_ == seat_.game && seat_.game->trackChoice <= kTracks;
  if (!isInMenu && !isDriving) return false;
  if (number == kWhere) {
    sayWhere();
    return true;
  }
  if (number == kMenuOrAids) {
    isMenuAsked_ = isInMenu;
    if (!isInMenu) sayAids();
    return true;
  }
  const auto aid = static_cast<std::size_t>(number - kFirstAidKey);
  if (!isInMenu && aid < kAidKinds) {
    switchAid(static_cast<AidKind>(aid));
    return true;
  }
  return std::any_of(aids_.begin(), aids_.end(), [&](const auto& each) { return each->functionKey(number); });
}

void Codriver::tell(const std::string& text) {
  if (seat_.voice == nullptr) return;
  carryOn([&] { seat_.voice->Speak(text, speak_flags::kQueue); });
}

void Codriver::sayWhere() {
  const GameState& game = *seat_.game;
  if (phase_ == Phase::kMenu) {
    tell(" You are in a menu. Up and Down move, Enter chooses, F 2 opens the co-driver's menu. " + lastText_);
    return;
  }
  tell(" You are on the " +
       std::string(kTrackNames.at(static_cast<std::size_t>(game.trackChoice - 1)).spoken) +
       ". F 2 says which aids are on, F 3 to F 8 switch them, Escape gives up the race. ");
}

void Codriver::sayAids() {
  std::string names;
  for (std::size_t i = 0; i < kAidKinds; ++i) {
    if (settings_.aids[i] == 0) continue;
    names += (names.empty() ? "" : ", ") + std::string(kAidNames[i].spoken);
  }
  tell(names.empty() ? " No aids are on. " : " On: " + names + ". ");
}

void Codriver::switchAid(AidKind kind) {
  const AidSet before = settings_.aids;
  settings_.turn(kind, !settings_.isOn(kind));
  tones_.silence();
  tell(std::string(" ") + kAidNames[static_cast<std::size_t>(kind)].spoken +
       (settings_.isOn(kind) ? " on " : " off "));
  keepSettings(before);
}

/// The game stands in its menu's yield meanwhile, and hears nothing of it.
void Codriver::openMenu() {
  const std::string whereHeWas = lastText_;
  {
    GuestPlatform platform(*this, seat_);
    const GameState& waiting = *seat_.game;
    GuestGame guest(platform, seat_);
    guest.state.speechVoice->Speak("", speak_flags::kPurge);
    const AidSettings before = settings_;
    Cabin cabin{guest.state, waiting, settings_, files(), seat_};
    runCodriverMenu(cabin);
    if (aidFileText(before) != aidFileText(settings_)) {
      for (WatchedBuffer* buffer : buffers_) buffer->place();
      keepSettings(before.aids);
    }
    waitForHandsOff();
  }
  endRace(false);
  phase_ = Phase::kMenu;
  tell(whereHeWas);
}

/// Whatever is still held was meant for the co-driver. No longer than a held key that is stuck.
void Codriver::waitForHandsOff() {
  constexpr std::uint32_t kLongestMs = 3000;
  const std::uint32_t began = now();
  const auto isHeld = [&] {
    const KeyboardState keys =
        seat_.keyboard != nullptr ? seat_.keyboard->GetDeviceStateKeyboard() : KeyboardState{};
    JoystickState wheel;
    if (seat_.controller != nullptr) {
      carryOn([&] { wheel = seat_.controller->GetDeviceStateJoystick(); });
    }
    const auto isDown = [](std::uint8_t key) { return key != 0; };
    return std::any_of(keys.begin(), keys.end(), isDown) ||
           std::any_of(wheel.buttons.begin(), wheel.buttons.end(), isDown);
  };
  while (isHeld() && now() - began < kLongestMs) inner().yield();
}

}  // namespace

std::optional<AidSettings> keptAids(Files& files) {
  std::optional<AidSettings> kept;
  carryOn([&] {
    if (files.find(kAidFile)) kept = aidsInFile(files.read(kAidFile));
  });
  return kept;
}

std::unique_ptr<CodriverPlatform> makeCodriverPlatform(Platform& inner, const CodriverOptions& options) {
  return std::make_unique<Codriver>(inner, options);
}

}  // namespace vorn
