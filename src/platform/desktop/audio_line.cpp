#include "platform/desktop/audio_line.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace vorn {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

AudioLine::AudioLine(Mixer& mixer, AudioWishes wishes)
    : wishedDevice_(std::move(wishes.device)),
      mixer_(&mixer),
      growth_(wishes.frames, wishes.mayGrow),
      frames_(wishes.frames) {
  mixer.setWaker([this] { wake(); });
}

std::optional<std::string> AudioLine::waitForOpening(milliseconds atMost) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, atMost, [this] { return problem_.has_value(); });
  return problem_;
}

void AudioLine::waitUntilTaken(milliseconds atMost) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, atMost, [this] { return isTaken_.load(); });
}

bool AudioLine::renderUnheard(steady_clock::time_point& upTo, steady_clock::time_point now) {
  constexpr int kPiece = 480;  // frames: a hundredth of a second
  constexpr auto kPieceTime = milliseconds(10);
  std::array<float, 2 * kPiece> unheard;
  const std::lock_guard lock(rendering_);
  for (; upTo + kPieceTime <= now && !isTaken_; upTo += kPieceTime) {
    mixer_->render(unheard.data(), kPiece);
  }
  return isTaken_;
}

bool AudioLine::end(milliseconds atMost) {
  {
    const std::lock_guard lock(rendering_);
    mixer_->setWaker(nullptr);
    mixer_ = nullptr;
  }
  std::unique_lock lock(mutex_);
  isEnding_ = true;
  if (waker_) {
    waker_();
  }
  changed_.notify_all();
  return changed_.wait_for(lock, atMost, [this] { return hasEnded_; });
}

void AudioLine::tellOpening(std::string problem) {
  {
    const std::lock_guard lock(mutex_);
    problem_ = std::move(problem);
  }
  changed_.notify_all();
}

void AudioLine::tellEnded() {
  {
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
  }
  changed_.notify_all();
}

void AudioLine::setTaken(bool isTaken) {
  {
    const std::lock_guard lock(rendering_);
    isTaken_ = isTaken;
    isAsleep_ = false;
  }
  { const std::lock_guard newsLock(mutex_); }
  changed_.notify_all();
}

void AudioLine::render(float* interleaved, int frames) {
  const std::lock_guard lock(rendering_);
  if (mixer_ == nullptr) {
    std::fill_n(interleaved, 2 * frames, 0.0F);
    return;
  }
  mixer_->render(interleaved, frames);
  const auto now = steady_clock::now();
  if (const double hole = holes_.handedOver(now, frames); hole > 0) {
    growth_.hole(now, hole);
    frames_ = growth_.frames();
  }
}

void AudioLine::begin(int latency) {
  const std::lock_guard lock(rendering_);
  holes_.restart();
  if (mixer_ != nullptr) {
    mixer_->voice().setDeviceLatency(latency);
  }
}

bool AudioLine::rest(milliseconds time) {
  std::unique_lock lock(mutex_);
  return !changed_.wait_for(lock, time, [this] { return isEnding_; });
}

bool AudioLine::isEnding() {
  const std::lock_guard lock(mutex_);
  return isEnding_;
}

void AudioLine::setWaker(std::function<void()> waker) {
  const std::lock_guard lock(mutex_);
  waker_ = std::move(waker);
}

/// Whoever wants something played says so first and looks for a sleeper then; here
/// it is the other way round. Both look by exchanging, so that the later one sees all that
/// the other has said before.
bool AudioLine::fallAsleep(int frames) {
  const std::lock_guard lock(rendering_);
  if (mixer_ == nullptr) {
    return false;
  }
  isAsleep_.exchange(true);
  if (!mixer_->isSilentFor(frames)) {
    isAsleep_ = false;
  }
  return isAsleep_;
}

void AudioLine::wake() {
  if (!isAsleep_.exchange(false)) {
    return;
  }
  const std::lock_guard lock(mutex_);
  if (waker_) {
    waker_();
  }
}

}  // namespace vorn
