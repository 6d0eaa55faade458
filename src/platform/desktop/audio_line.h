/// Between the game, which has the mixer, and the thread that keeps a sound device
/// and plays what the mixer renders. Either may go before the other.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "platform/desktop/buffer_growth.h"
#include "platform/mixing/mixer.h"

namespace vorn {

/// How the player wants to be played to.
struct AudioWishes {
  std::string device;  ///< as `audioDevices` names it; empty: whichever the desktop plays to
  int frames = BufferGrowth::kSmallest;  ///< of the device's buffer
  bool mayGrow = true;                   ///< where that many are too few
};

class AudioLine {
 public:
  AudioLine(Mixer& mixer, AudioWishes wishes);
  AudioLine(const AudioLine&) = delete;
  AudioLine& operator=(const AudioLine&) = delete;

  // Game's thread.
  /// Why the first device could not be opened: empty where it could be, nothing where neither is known in
  /// time.
  std::optional<std::string> waitForOpening(std::chrono::milliseconds atMost);
  /// Waits for a device to take samples.
  void waitUntilTaken(std::chrono::milliseconds atMost);
  bool isTaken() const { return isTaken_; }
  /// Renders unheard up to `now`, in the place of a device that does not. Returns `isTaken`.
  bool renderUnheard(std::chrono::steady_clock::time_point& upTo, std::chrono::steady_clock::time_point now);
  /// The mixer is about to go. Waits for the keeper to end; false where it does not in time.
  bool end(std::chrono::milliseconds atMost);

  // Any thread.
  /// Of the device's buffer, as things stand.
  int frames() const { return frames_; }
  /// Milliseconds that the device itself takes from a sample to its sound; 0 where that is not known.
  int deviceDelay() const { return deviceDelay_; }
  bool isDeviceMissing() const { return isDeviceMissing_; }  ///< the one wished for

  // Keeper's and device's threads.
  const std::string& wishedDevice() const { return wishedDevice_; }
  void tellDelay(int milliseconds) { deviceDelay_ = milliseconds; }
  void tellMissing(bool isMissing) { isDeviceMissing_ = isMissing; }
  /// An attempt to open a device has ended; `problem` is empty where there was none.
  void tellOpening(std::string problem);
  void tellEnded();
  /// A device has begun to take samples, or it takes none any more. Nothing is rendered for one that does
  /// not.
  void setTaken(bool isTaken);
  /// Fills `frames` frames, with silence once the game has gone.
  void render(float* interleaved, int frames);
  /// A device begins, or begins anew, which holds `latency` frames: what came before is no measure for it.
  void begin(int latency);
  /// Lets `time` pass, or less when the game ends. False: it does.
  bool rest(std::chrono::milliseconds time);
  bool isEnding();
  /// Called, on any thread, when a sleeping device is to wake or the game ends. It must not wait.
  void setWaker(std::function<void()> waker);
  /// Whether the device may sleep, for nothing has sounded for `frames`. If so it need not render until
  /// `isAsleep` has become false.
  bool fallAsleep(int frames);
  bool isAsleep() const { return isAsleep_; }

 private:
  void wake();

  const std::string wishedDevice_;

  std::mutex rendering_;  ///< over what follows
  Mixer* mixer_;          ///< null once the game has gone
  HoleFinder holes_{Mixer::kRate};
  BufferGrowth growth_;

  std::atomic<int> frames_;
  std::atomic<int> deviceDelay_{0};
  std::atomic<bool> isTaken_{false}, isAsleep_{false}, isDeviceMissing_{false};

  std::mutex mutex_;  ///< over what follows
  std::condition_variable changed_;
  std::optional<std::string> problem_;  ///< of the last attempt to open a device
  std::function<void()> waker_;
  bool isEnding_ = false, hasEnded_ = false;
};

}  // namespace vorn
