/// The game's sound: everything that sounds, mixed to 48 kHz stereo. The game
/// thread makes buffers and tells them what to do; one other thread, or the same
/// one offline, calls `render`. Neither waits for the other, and `render` allocates
/// nothing. Rendered by one thread, the same calls give the same samples to the bit.
#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <memory>

#include "platform/mixing/interpolator.h"
#include "platform/mixing/limiter.h"
#include "platform/mixing/sound_channel.h"
#include "platform/mixing/voice_stream.h"
#include "platform/mixing/wav_file.h"
#include "platform/sound_device.h"

namespace vorn {

class Mixer {
 public:
  static constexpr int kRate = SoundChannel::kOutputRate;  ///< frames a second
  static constexpr int kMostBuffers = 128;
  static constexpr int kDelay = Limiter::kDelay;  ///< frames from `render` to what it makes heard

  Mixer() = default;
  Mixer(const Mixer&) = delete;
  Mixer& operator=(const Mixer&) = delete;

  // Game thread.
  /// A new silent buffer, to be destroyed before the mixer. What its procedures
  /// ask for is heard from the next `render` on; its status is right at once.
  /// Throws `PlatformError` where `kMostBuffers` are alive already.
  std::unique_ptr<SoundBuffer> createBuffer(std::shared_ptr<const Recording> recording);
  /// Silences every buffer, but not the voice; they all run on meanwhile.
  void setMuted(bool muted) { muted_ = muted; }
  /// Lowers every buffer under a voice, or lets it rise again; slow enough to be
  /// no event of its own. By how much `setDucking` tells, in decibels from 0.
  void setDucked(bool ducked) { ducked_ = ducked; }
  void setDucking(double decibels);
  /// Turns down everything, the voice too, by decibels from 0.
  void setVolume(double decibels);
  /// Exchanges left and right, for headphones that are worn the other way round.
  void setEarsSwapped(bool swapped) { earsSwapped_ = swapped; }
  VoiceStream& voice() { return voice_; }
  /// Called, on the thread that asks for it, whenever something is to be heard that
  /// may end a silence; it must not wait. To be set while no other thread speaks or plays.
  void setWaker(std::function<void()> waker);

  // Rendering thread.
  /// Writes the next `frames` frames, left and right in turn, each -1 .. 1.
  void render(float* interleaved, int frames);
  /// Whether it has been silent for `frames` (`kDelay` .. `kRate`) and stays so until something is told to
  /// play.
  bool isSilentFor(int frames) const;

 private:
  class Buffer;
  static constexpr int kChunk = 64;
  static constexpr int kDuckFrames = kRate * 30 / 1000;
  static constexpr int kRiseFrames = kRate * 250 / 1000;

  void mixChunk(float* left, float* right, int count);
  void aimLoudness();
  void reclaim();

  const Interpolator interpolator_;
  VoiceStream voice_;
  std::function<void()> waker_ = [] {};
  std::atomic<bool> muted_{false}, ducked_{false}, earsSwapped_{false};
  std::atomic<float> duckedGain_{1}, volume_{1};

  // A channel stands in its place until the rendering thread, finding it released
  // and silent, clears the place; then the game thread frees it.
  std::array<std::atomic<SoundChannel*>, kMostBuffers> places_{};
  std::array<std::unique_ptr<SoundChannel>, kMostBuffers> owned_;  ///< the game thread's

  // The rendering thread's own.
  Glide loudness_{1};
  Limiter limiter_;
  int silentFor_ = 0;  ///< frames
};

}  // namespace vorn
