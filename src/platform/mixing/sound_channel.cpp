#include "platform/mixing/sound_channel.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr int kSeekFade = 288;               ///< 6 ms: a seek in a sounding recording
constexpr int kStartFade = 96;               ///< 2 ms: a start in its middle, or of a loop
constexpr int kStopFade = 144;               ///< 3 ms
constexpr std::int64_t kMostCompared = 512;  ///< source frames that tell how alike two places are

constexpr int kSilent = -10000;

float amplitude(int hundredthsOfDecibel) {
  return hundredthsOfDecibel <= kSilent
             ? 0.0F
             : static_cast<float>(std::pow(10.0, static_cast<double>(hundredthsOfDecibel) / 2000.0));
}

Phase stepOf(int hertz) {
  return (static_cast<Phase>(hertz) << kPhaseBits) / SoundChannel::kOutputRate;
}

}  // namespace

std::uint64_t SoundChannel::Wish::packed() const {
  return std::uint64_t{position} | std::uint64_t{seeks & kSeeksMask} << 31 |
         std::uint64_t{plays & kPlaysMask} << 45 | std::uint64_t{playing} << 61 |
         std::uint64_t{looping} << 62 | std::uint64_t{released} << 63;
}

SoundChannel::Wish SoundChannel::Wish::unpacked(std::uint64_t word) {
  Wish wish;
  wish.position = static_cast<std::uint32_t>(word & 0x7FFFFFFF);
  wish.seeks = static_cast<std::uint32_t>(word >> 31) & kSeeksMask;
  wish.plays = static_cast<std::uint32_t>(word >> 45) & kPlaysMask;
  wish.playing = (word >> 61 & 1) != 0;
  wish.looping = (word >> 62 & 1) != 0;
  wish.released = (word >> 63 & 1) != 0;
  return wish;
}

SoundChannel::SoundChannel(std::shared_ptr<const Recording> recording)
    : recording_(std::move(recording)),
      length_(static_cast<Phase>(recording_->frames()) << kPhaseBits),
      word_(Wish{}.packed()),
      frequency_(recording_->rate) {}

void SoundChannel::play(bool looping) {
  // Each play has a number of its own: the recording may be ending right now.
  wish_.plays = (wish_.plays + 1) & kPlaysMask;
  wish_.playing = true;
  wish_.looping = looping;
  tell();
}

void SoundChannel::stop() {
  wish_.playing = false;
  tell();
}

void SoundChannel::seek(std::uint32_t frame) {
  wish_.position = frame;
  wish_.seeks = (wish_.seeks + 1) & kSeeksMask;
  tell();
}

void SoundChannel::release() {
  wish_.playing = false;
  wish_.released = true;
  tell();
}

bool SoundChannel::isPlaying() const {
  return wish_.playing && endedPlay_.load(std::memory_order_acquire) != wish_.plays;
}

bool SoundChannel::isSilent() const {
  const Wish wish = Wish::unpacked(word_.load(std::memory_order_acquire));
  return !isSounding() && (!wish.playing || wish.plays == obeyed_.plays);
}

/// Carries out what the game thread has told since the last chunk.
void SoundChannel::obey() {
  const Wish wish = Wish::unpacked(word_.load(std::memory_order_acquire));
  const bool startWanted = wish.plays != obeyed_.plays && wish.playing;
  const bool seekWanted = wish.seeks != obeyed_.seeks;
  released_ = wish.released;
  if (playing_ && !wish.playing) {
    leave(Fade(fade_.gain(), 0, kStopFade));
    playing_ = false;
  }
  if (seekWanted) {
    jump(static_cast<Phase>(wish.position) << kPhaseBits);
  }
  looping_ = wish.looping;
  if (startWanted && !playing_) {
    start();
  }
  obeyed_ = wish;
  aimGains(false);
  aimStep(false);
}

/// Starts where the channel stands. A recording played once from its beginning
/// keeps its own attack; anything else would begin with a click.
void SoundChannel::start() {
  if (tailCount_ == 0) {
    aimGains(true);
    aimStep(true);
  }
  playing_ = true;
  fade_ = position_ == 0 && !looping_ ? Fade() : Fade(0, 1, kStartFade);
}

/// Turns the sounding head into a tail.
void SoundChannel::leave(const Fade& fade) {
  const auto quietest = std::min_element(
      tails_.begin(), tails_.end(),
      [](const Tail& one, const Tail& other) { return one.fade.gain() < other.fade.gain(); });
  Tail& tail = tailCount_ < tails_.size() ? tails_[tailCount_++] : *quietest;
  tail = {position_, looping_, fade};
}

void SoundChannel::jump(Phase position) {
  if (playing_ && fade_.gain() > 0) {
    const float alike = likeness(position_, position);
    leave(Fade(fade_.gain(), 0, kSeekFade, alike));
    fade_ = Fade(0, 1, kSeekFade, alike);
  }
  position_ = position;
}

/// How alike the sound is at two places, over the length of a crossfade: their
/// normalised correlation, 0 .. 1.
float SoundChannel::likeness(Phase here, Phase there) const {
  const auto compared = std::clamp<std::int64_t>(
      static_cast<std::int64_t>((static_cast<Phase>(kSeekFade) * step_) >> kPhaseBits), 16, kMostCompared);
  const auto& samples = recording_->planes[0];
  const auto frames = static_cast<std::int64_t>(samples.size());
  const auto sampleAt = [&](Phase from, std::int64_t offset) {
    const std::int64_t frame = static_cast<std::int64_t>(from >> kPhaseBits) + offset;
    return frame < frames ? samples[frame] : looping_ ? samples[frame % frames] : 0.0F;
  };
  float both = 0, first = 0, second = 0;
  for (std::int64_t i = 0; i < compared; ++i) {
    const float one = sampleAt(here, i), other = sampleAt(there, i);
    both += one * other;
    first += one * one;
    second += other * other;
  }
  const float scale = std::sqrt(first * second);
  return scale > 0 ? std::clamp(both / scale, 0.0F, 1.0F) : 0.0F;
}

void SoundChannel::aimGains(bool atOnce) {
  const int volume = volume_.load(std::memory_order_relaxed), pan = pan_.load(std::memory_order_relaxed);
  if (!atOnce && volume == gainVolume_ && pan == gainPan_) {
    return;
  }
  gainVolume_ = volume;
  gainPan_ = pan;
  const float left = amplitude(volume) * amplitude(-std::max(pan, 0));
  const float right = amplitude(volume) * amplitude(std::min(pan, 0));
  if (atOnce) {
    leftGain_.snap(left);
    rightGain_.snap(right);
  } else {
    leftGain_.aim(left);
    rightGain_.aim(right);
  }
}

void SoundChannel::aimStep(bool atOnce) {
  const int frequency = frequency_.load(std::memory_order_relaxed);
  if (!atOnce && frequency == stepFrequency_) {
    return;
  }
  stepFrequency_ = frequency;
  targetStep_ = stepOf(frequency);
  if (atOnce) {
    step_ = targetStep_;
    stepLeft_ = 0;
  } else {
    stepLeft_ = Glide::kFrames;
    stepChange_ = (static_cast<std::int64_t>(targetStep_) - static_cast<std::int64_t>(step_)) / stepLeft_;
  }
}

/// Moves the step on by `count` frames. Returns how far they lead, and in
/// `offsets` how far each of them lies from the first.
Phase SoundChannel::advance(int count, Phase* offsets) {
  Phase travelled = 0;
  int i = 0;
  for (; i < count && stepLeft_ > 0; ++i) {
    offsets[i] = travelled;
    travelled += step_;
    step_ = --stepLeft_ == 0 ? targetStep_ : step_ + static_cast<Phase>(stepChange_);
  }
  for (; i < count; ++i) {
    offsets[i] = travelled;
    travelled += step_;
  }
  return travelled;
}

Phase SoundChannel::moved(Phase position, Phase by, bool looping) const {
  const Phase there = position + by;
  return looping && there >= length_ ? there % length_ : there;
}

/// Replaces the two planes (a mono recording has one) by what is read from `position` on.
void SoundChannel::readPlanes(const Interpolator& interpolator, Phase position, bool looping,
                              const Fade& fade, const Phase* offsets, Planes& planes, int count) const {
  for (int channel = 0; channel < recording_->channels; ++channel) {
    const SampleSource source{recording_->planes[channel].data(), recording_->frames(), looping, position};
    interpolator.read(source, offsets, step_, planes[channel].data(), count);
    fade.apply(planes[channel].data(), count);
  }
}

void SoundChannel::render(const Interpolator& interpolator, float* left, float* right, int count) {
  obey();
  if (!isSounding()) {
    return;
  }
  std::array<Phase, kChunk> offsets;
  const Phase travelled = advance(count, offsets.data());
  Planes planes;
  if (playing_) {
    readPlanes(interpolator, position_, looping_, fade_, offsets.data(), planes, count);
  } else {
    planes = {};
  }
  for (std::size_t i = 0; i < tailCount_; ++i) {
    const Tail& tail = tails_[i];
    Planes fading;
    readPlanes(interpolator, tail.position, tail.looping, tail.fade, offsets.data(), fading, count);
    for (int channel = 0; channel < recording_->channels; ++channel) {
      addScaled(planes[channel].data(), fading[channel].data(), 1, count);
    }
  }
  leftGain_.mixInto(left, planes.front().data(), count);
  rightGain_.mixInto(right, planes[recording_->channels - 1].data(), count);
  endChunk(travelled, count);
}

/// Moves the heads on, drops the tails that have died away and notices the end.
void SoundChannel::endChunk(Phase travelled, int count) {
  fade_.skip(count);
  for (std::size_t i = 0; i < tailCount_;) {
    tails_[i].fade.skip(count);
    tails_[i].position = moved(tails_[i].position, travelled, tails_[i].looping);
    if (tails_[i].fade.done()) {
      tails_[i] = tails_[--tailCount_];
    } else {
      ++i;
    }
  }
  if (!playing_) {
    return;
  }
  position_ = moved(position_, travelled, looping_);
  if (position_ >= length_) {
    // What is left of the last sample in the interpolator still sounds.
    leave(Fade(fade_.gain(), 0, kStopFade));
    playing_ = false;
    position_ = 0;
    endedPlay_.store(obeyed_.plays, std::memory_order_release);
  }
}

}  // namespace vorn
