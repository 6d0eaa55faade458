#include "platform/mixing/mixer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/errors.h"

namespace vorn {

/// A channel as the game sees it.
class Mixer::Buffer final : public SoundBuffer {
 public:
  Buffer(SoundChannel& channel, const std::function<void()>& waker) : channel_(channel), waker_(waker) {}
  ~Buffer() override { channel_.release(); }

 private:
  void doPlay(bool looping) override {
    channel_.play(looping);
    waker_();
  }
  void doStop() override { channel_.stop(); }
  void doSetVolume(int hundredthsOfDecibel) override { channel_.setVolume(hundredthsOfDecibel); }
  void doSetPan(int hundredthsOfDecibel) override { channel_.setPan(hundredthsOfDecibel); }
  void doSetFrequency(int hertz) override { channel_.setFrequency(hertz); }
  void doSetCurrentPosition(int byteInTheData) override {
    channel_.seek(static_cast<std::uint32_t>(byteInTheData / channel_.recording().bytesPerFrame));
  }
  int doGetStatus() override { return channel_.isPlaying() ? kPlaying : 0; }
  int doGetFrequency() override { return channel_.frequency(); }
  int doDataBytes() const override { return static_cast<int>(channel_.recording().dataBytes()); }

  SoundChannel& channel_;
  const std::function<void()>& waker_;
};

std::unique_ptr<SoundBuffer> Mixer::createBuffer(std::shared_ptr<const Recording> recording) {
  if (recording->frames() < 1 || recording->dataBytes() > std::numeric_limits<int>::max()) {
    throw PlatformError("CreateSoundBufferFromFile", std::to_string(recording->dataBytes()),
                        "no such recording can be played");
  }
  reclaim();
  const auto place = std::find(owned_.begin(), owned_.end(), nullptr);
  if (place == owned_.end()) {
    throw PlatformError("CreateSoundBufferFromFile", std::to_string(kMostBuffers), "too many sound buffers");
  }
  *place = std::make_unique<SoundChannel>(std::move(recording));
  places_[static_cast<std::size_t>(place - owned_.begin())].store(place->get(), std::memory_order_release);
  return std::make_unique<Buffer>(**place, waker_);
}

/// Frees what the rendering thread has let go of.
void Mixer::reclaim() {
  for (std::size_t i = 0; i < owned_.size(); ++i) {
    if (places_[i].load(std::memory_order_acquire) == nullptr) {
      owned_[i].reset();
    }
  }
}

void Mixer::setWaker(std::function<void()> waker) {
  waker_ = waker ? std::move(waker) : [] {};
  voice_.setWaker(waker_);
}

void Mixer::setDucking(double decibels) {
  duckedGain_ = static_cast<float>(std::pow(10, -decibels / 20));
}

void Mixer::setVolume(double decibels) {
  volume_ = static_cast<float>(std::pow(10, -decibels / 20));
}

/// Muting is quick, and ducking as quick as a voice begins and as slow as an ear forgets it.
void Mixer::aimLoudness() {
  const float duckedGain = duckedGain_.load(std::memory_order_relaxed);
  const bool muted = muted_.load(std::memory_order_relaxed);
  const bool ducked = ducked_.load(std::memory_order_relaxed);
  const float aim = muted ? 0 : ducked ? duckedGain : 1;
  if (aim == loudness_.target()) {
    return;
  }
  const bool concernsMuting = muted || loudness_.target() == 0;
  loudness_.aim(aim, concernsMuting ? Glide::kFrames : ducked ? kDuckFrames : kRiseFrames);
}

bool Mixer::isSilentFor(int frames) const {
  const auto isQuiet = [](const std::atomic<SoundChannel*>& place) {
    const SoundChannel* channel = place.load(std::memory_order_acquire);
    return channel == nullptr || channel->isSilent();
  };
  return silentFor_ >= frames && voice_.isSilent() && std::all_of(places_.begin(), places_.end(), isQuiet);
}

void Mixer::render(float* interleaved, int frames) {
  std::array<float, kChunk> left, right;
  const bool swapped = earsSwapped_.load(std::memory_order_relaxed);
  const auto& first = swapped ? right : left;
  const auto& second = swapped ? left : right;
  for (int done = 0; done < frames; done += kChunk) {
    const int count = std::min(kChunk, frames - done);
    mixChunk(left.data(), right.data(), count);
    for (int i = 0; i < count; ++i) {
      *interleaved++ = first[i];
      *interleaved++ = second[i];
    }
  }
}

void Mixer::mixChunk(float* left, float* right, int count) {
  std::array<float, kChunk> gameLeft{}, gameRight{};
  bool isSounding = false;
  for (auto& place : places_) {
    SoundChannel* channel = place.load(std::memory_order_acquire);
    if (channel == nullptr) {
      continue;
    }
    channel->render(interpolator_, gameLeft.data(), gameRight.data(), count);
    isSounding |= !channel->isSilent();
    if (channel->isFinished()) {
      place.store(nullptr, std::memory_order_release);
    }
  }
  aimLoudness();
  std::fill_n(left, count, 0.0F);
  std::fill_n(right, count, 0.0F);
  Glide sameLoudness = loudness_;
  loudness_.mixInto(left, gameLeft.data(), count);
  sameLoudness.mixInto(right, gameRight.data(), count);
  voice_.mixInto(interpolator_, left, right, count);
  silentFor_ = isSounding || !voice_.isSilent() ? 0 : std::min(silentFor_ + count, kRate);
  const float volume = volume_.load(std::memory_order_relaxed);
  for (int i = 0; volume != 1 && i < count; ++i) {
    left[i] *= volume;
    right[i] *= volume;
  }
  limiter_.process(left, right, count);
}

}  // namespace vorn
