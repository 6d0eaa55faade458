#include "platform/headless/virtual_sound.h"

#include <utility>

namespace vorn {
namespace {

class VirtualSoundBuffer : public SoundBuffer {
 public:
  VirtualSoundBuffer(World& world, std::string slot, std::shared_ptr<const Recording> recording)
      : world_(world),
        slot_(std::move(slot)),
        recording_(std::move(recording)),
        head_(recording_->frames(), recording_->rate) {
    if (world.render != nullptr) heard_ = world.render->mixer().createBuffer(recording_);
  }
  ~VirtualSoundBuffer() override { world_.trace.sound(slot_, "release"); }

 private:
  void doPlay(bool looping) override {
    headNow().play(looping);
    if (heard_) heard_->Play(looping ? 1 : 0);
    world_.trace.sound(slot_, "Play", looping ? 1 : 0);
  }
  void doStop() override {
    headNow().stop();
    if (heard_) heard_->Stop();
    world_.trace.sound(slot_, "Stop");
  }
  void doSetVolume(int hundredthsOfDecibel) override {
    if (heard_) heard_->SetVolume(hundredthsOfDecibel);
    world_.trace.sound(slot_, "SetVolume", hundredthsOfDecibel);
  }
  void doSetPan(int hundredthsOfDecibel) override {
    if (heard_) heard_->SetPan(hundredthsOfDecibel);
    world_.trace.sound(slot_, "SetPan", hundredthsOfDecibel);
  }
  void doSetFrequency(int hertz) override {
    headNow().setFrequency(hertz);
    if (heard_) heard_->SetFrequency(hertz);
    world_.trace.sound(slot_, "SetFrequency", hertz);
  }
  void doSetCurrentPosition(int byteInTheData) override {
    headNow().seek(byteInTheData / recording_->bytesPerFrame);
    if (heard_) heard_->SetCurrentPosition(byteInTheData);
    world_.trace.sound(slot_, "SetCurrentPosition", byteInTheData);
  }
  int doGetStatus() override { return headNow().isPlaying() ? kPlaying : 0; }
  int doGetFrequency() override { return head_.frequency(); }
  int doDataBytes() const override { return static_cast<int>(recording_->dataBytes()); }

  PlayHead& headNow() {
    head_.moveTo(world_.clock.now());
    return head_;
  }

  World& world_;
  std::string slot_;
  std::shared_ptr<const Recording> recording_;
  PlayHead head_;
  std::unique_ptr<SoundBuffer> heard_;  ///< where somebody listens
};

}  // namespace

void PlayHead::moveTo(std::int64_t nowMs) {
  const std::int64_t passed = nowMs - std::exchange(time_, nowMs);
  if (!isPlaying_) return;
  position_ += passed * frequency_;
  if (position_ < end_) return;
  if (isLooping_) {
    position_ %= end_;
  } else {
    position_ = 0;
    isPlaying_ = false;
  }
}

void PlayHead::play(bool looping) {
  isPlaying_ = true;
  isLooping_ = looping;
}

VirtualSoundDevice::VirtualSoundDevice(World& world) : world_(world) {
  world_.trace.device("sound", "create");
}

VirtualSoundDevice::~VirtualSoundDevice() {
  world_.trace.device("sound", "release");
}

void VirtualSoundDevice::SetCooperativeLevel(int level) {
  world_.trace.device("sound", "SetCooperativeLevel", level);
}

std::unique_ptr<SoundBuffer> VirtualSoundDevice::CreateSoundBufferFromFile(const std::string& slot,
                                                                           const std::string& fileName, int) {
  auto buffer =
      std::make_unique<VirtualSoundBuffer>(world_, slot, world_.recordings->load(world_.files, fileName));
  world_.trace.sound(slot, "create", fileName);
  return buffer;
}

std::unique_ptr<SoundBuffer> VirtualSoundDevice::CreateSoundBufferFromSamples(const std::string& slot,
                                                                              const std::string& name,
                                                                              std::span<const float> samples,
                                                                              int hertz) {
  auto buffer = std::make_unique<VirtualSoundBuffer>(
      world_, slot, std::make_shared<const Recording>(recordingOf(samples, hertz)));
  world_.trace.sound(slot, "create", name);
  return buffer;
}

}  // namespace vorn
