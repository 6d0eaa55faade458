#include "platform/mixing/voice_stream.h"

#include <algorithm>
#include <cstring>

#include "platform/mixing/sound_channel.h"

namespace vorn {
namespace {

constexpr int kCutFade = 144;                      ///< 3 ms
constexpr int kSlowest = 1000, kFastest = 100000;  ///< hertz
constexpr std::size_t kReach = Interpolator::kReach;

}  // namespace

VoiceStream::VoiceStream() : ring_(std::make_unique<std::int16_t[]>(kCapacity)) {}

std::uint32_t VoiceStream::cancel() {
  return ticket_.fetch_add(1, std::memory_order_acq_rel) + 1;
}

bool VoiceStream::isSpeaking() const {
  return opens(opening_.load(std::memory_order_acquire), ticket()) &&
         heard_.load(std::memory_order_acquire) != written_.load(std::memory_order_acquire);
}

std::size_t VoiceStream::write(std::uint32_t ticket, int rate, std::span<const std::int16_t> samples) {
  if (isCancelled(ticket)) {
    return 0;
  }
  const std::uint64_t written = written_.load(std::memory_order_relaxed);
  if (!opens(writersOpening_, ticket)) {
    writersOpening_ = written << kTicketBits | (ticket & kTicketMask);
    opening_.store(writersOpening_, std::memory_order_release);
  }
  if (std::clamp(rate, kSlowest, kFastest) != rate_.load(std::memory_order_relaxed)) {
    if (heard_.load(std::memory_order_acquire) != written) {
      return 0;
    }
    rate_.store(std::clamp(rate, kSlowest, kFastest), std::memory_order_relaxed);
  }
  const std::size_t waiting = written - taken_.load(std::memory_order_acquire);
  const std::size_t count = std::min(samples.size(), kCapacity - waiting);
  for (std::size_t i = 0; i < count; ++i) {
    ring_[(written + i) % kCapacity] = samples[i];
  }
  written_.store(written + count, std::memory_order_release);
  waker_();
  return count;
}

void VoiceStream::mixInto(const Interpolator& interpolator, float* left, float* right, int count) {
  if (!prepare(count)) {
    return;
  }
  std::array<Phase, kChunk> offsets;
  for (int i = 0; i < count; ++i) {
    offsets[i] = static_cast<Phase>(i) * step_;
  }
  std::array<float, kChunk> samples;
  const SampleSource source{window_.data(), static_cast<std::int64_t>(windowSize_), false, position_};
  interpolator.read(source, offsets.data(), step_, samples.data(), count);
  fade_.apply(samples.data(), count);
  for (int i = 0; i < count; ++i) {
    left[i] += samples[i];
    right[i] += samples[i];
  }
  finish(count);
}

/// Gets the source samples of the next `count` frames ready. False: silence.
bool VoiceStream::prepare(int count) {
  obeyCancel();
  const std::uint64_t end = readableEnd();
  if (!isPlaying()) {
    if (end == taken_.load(std::memory_order_relaxed)) {
      noticeSilence(count);
      return false;
    }
    window_.fill(0);
    windowSize_ = spokenEnd_ = kReach;
    position_ = static_cast<Phase>(kReach) << kPhaseBits;
    step_ =
        (static_cast<Phase>(rate_.load(std::memory_order_relaxed)) << kPhaseBits) / SoundChannel::kOutputRate;
    silentFor_ = 0;
  }
  const Phase last = position_ + static_cast<Phase>(count) * step_;
  fillWindow(static_cast<std::size_t>(last >> kPhaseBits) + kReach + 1, end);
  return true;
}

/// After a cancel: fades out what sounds, drops the rest of it and goes on
/// where the writer has begun anew.
void VoiceStream::obeyCancel() {
  const std::uint32_t ticket = ticket_.load(std::memory_order_acquire);
  cancelled_ = ticket != playingTicket_;
  if (!cancelled_) {
    return;
  }
  if (isPlaying() && !cutting_) {
    cutting_ = true;
    fade_ = Fade(1, 0, kCutFade);
  }
  if (isPlaying() && !fade_.done()) {
    return;
  }
  windowSize_ = 0;
  cutting_ = false;
  fade_ = Fade();
  // All that had been written before the writer's new opening is old.
  const std::uint64_t written = written_.load(std::memory_order_acquire);
  const std::uint64_t opening = opening_.load(std::memory_order_acquire);
  const bool begun = opens(opening, ticket);
  taken_.store(begun ? opening >> kTicketBits : written, std::memory_order_release);
  if (begun) {
    playingTicket_ = ticket;
    cancelled_ = false;
  }
}

/// Up to where the ring may be played now.
std::uint64_t VoiceStream::readableEnd() const {
  const std::uint64_t taken = taken_.load(std::memory_order_relaxed);
  const std::uint64_t written = written_.load(std::memory_order_acquire);
  if (cancelled_ && !cutting_) {
    return taken;
  }
  const std::uint64_t opening = opening_.load(std::memory_order_acquire);
  return opens(opening, playingTicket_) ? written : std::clamp(opening >> kTicketBits, taken, written);
}

/// Fills the window up to `samples`, with silence where nothing has been written.
void VoiceStream::fillWindow(std::size_t samples, std::uint64_t end) {
  std::uint64_t taken = taken_.load(std::memory_order_relaxed);
  for (; windowSize_ < samples; ++windowSize_) {
    if (taken < end) {
      window_[windowSize_] = static_cast<float>(ring_[taken++ % kCapacity]) / 32768.0F;
      spokenEnd_ = windowSize_ + 1;
    } else {
      window_[windowSize_] = 0;
    }
  }
  taken_.store(taken, std::memory_order_release);
}

/// Moves on by `count` frames and forgets what no later frame draws on.
void VoiceStream::finish(int count) {
  fade_.skip(count);
  position_ += static_cast<Phase>(count) * step_;
  const std::size_t passed = static_cast<std::size_t>(position_ >> kPhaseBits) - kReach;
  std::memmove(window_.data(), window_.data() + passed, (windowSize_ - passed) * sizeof(float));
  windowSize_ -= passed;
  position_ -= static_cast<Phase>(passed) << kPhaseBits;
  spokenEnd_ -= std::min(spokenEnd_, passed);
  if (spokenEnd_ == 0) {
    windowSize_ = 0;
    noticeSilence(0);
  }
}

/// Counts `count` silent frames: once the device has played what it was given,
/// the last sample has been heard.
void VoiceStream::noticeSilence(int count) {
  silentFor_ = std::min(silentFor_ + count, 1 << 20);
  if (silentFor_ >= deviceLatency_.load(std::memory_order_relaxed)) {
    heard_.store(taken_.load(std::memory_order_relaxed), std::memory_order_release);
  }
}

}  // namespace vorn
