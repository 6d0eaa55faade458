/// The speaking voice's way into the mix: one thread writes speech as it is
/// synthesised, the mixing thread plays it, the game thread may cut it off.
/// None of them waits for another, and nothing is allocated after construction.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <utility>

#include "platform/mixing/glide.h"
#include "platform/mixing/interpolator.h"

namespace vorn {

class VoiceStream {
 public:
  /// Most samples that wait to be played: about 1.5 s of speech.
  static constexpr std::size_t kCapacity = 1U << 15;
  static constexpr int kChunk = 64;  ///< most frames of one `mixInto`

  VoiceStream();

  // Game thread.
  /// Discards what has been written, at once (it fades out within 3 ms of sound),
  /// and whatever is still written with an older ticket. Returns the new ticket.
  std::uint32_t cancel();
  /// What speech requested from now on is to be written with.
  std::uint32_t ticket() const { return ticket_.load(std::memory_order_acquire); }
  /// True from the first sample written until the last one has been heard.
  bool isSpeaking() const;
  /// Grows while speech is being played.
  std::uint64_t samplesPlayed() const { return taken_.load(std::memory_order_relaxed); }
  /// How long the sound device takes to play what it has been given: so much
  /// longer `isSpeaking` holds. Set before the first sample. 0 at first.
  void setDeviceLatency(int frames) { deviceLatency_ = frames; }

  /// Called by the writing thread after each piece. To be set while there is no such thread.
  void setWaker(std::function<void()> waker) { waker_ = std::move(waker); }

  // Writing thread.
  bool isCancelled(std::uint32_t ticket) const { return ticket != ticket_.load(std::memory_order_acquire); }
  /// Takes as many `samples` (mono, `rate` 1000 .. 100000 hertz) as there is room
  /// for and returns how many: 0 also while another rate is being played out.
  /// Takes nothing for a cancelled ticket.
  std::size_t write(std::uint32_t ticket, int rate, std::span<const std::int16_t> samples);

  // Mixing thread.
  /// Whether all that has been written has been heard.
  bool isSilent() const {
    return heard_.load(std::memory_order_relaxed) == written_.load(std::memory_order_acquire);
  }
  /// Adds the next `count` frames, at most `kChunk`, to both sides.
  void mixInto(const Interpolator& interpolator, float* left, float* right, int count);

 private:
  /// Source samples at hand: those of a chunk at the highest rate and the interpolator's reach.
  static constexpr std::size_t kWindow = 256;

  /// The first sample of a ticket, and that ticket, told in one word.
  static constexpr int kTicketBits = 24;
  static constexpr std::uint32_t kTicketMask = (1U << kTicketBits) - 1;

  static bool opens(std::uint64_t opening, std::uint32_t ticket) {
    return ((opening ^ ticket) & kTicketMask) == 0;
  }

  bool isPlaying() const { return windowSize_ > 0; }
  bool prepare(int count);
  void obeyCancel();
  std::uint64_t readableEnd() const;
  void fillWindow(std::size_t samples, std::uint64_t end);
  void finish(int count);
  void noticeSilence(int count);

  std::unique_ptr<std::int16_t[]> ring_;
  std::function<void()> waker_ = [] {};

  std::atomic<std::uint32_t> ticket_{0};
  std::atomic<int> deviceLatency_{0};

  // Told by the writer.
  std::atomic<std::uint64_t> written_{0};  ///< samples, since ever
  std::atomic<std::uint64_t> opening_{0};  ///< where the writer's ticket begins
  std::atomic<int> rate_{0};
  std::uint64_t writersOpening_ = 0;  ///< its own copy

  // Told by the mixing thread.
  std::atomic<std::uint64_t> taken_{0};  ///< samples taken from the ring, since ever
  std::atomic<std::uint64_t> heard_{0};  ///< samples that have left the device

  // The mixing thread's own.
  std::uint32_t playingTicket_ = 0;
  bool cancelled_ = false;  ///< the game thread has cancelled what plays
  bool cutting_ = false;    ///< and that is fading out
  Fade fade_;
  std::array<float, kWindow> window_{};
  std::size_t windowSize_ = 0;
  std::size_t spokenEnd_ = 0;  ///< end of the last true sample in the window; silence follows
  Phase position_ = 0;         ///< in the window
  Phase step_ = 0;
  int silentFor_ = 0;  ///< frames
};

}  // namespace vorn
