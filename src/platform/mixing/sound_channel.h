/// One sound buffer inside the mixer: the game thread tells it what to do, the
/// mixing thread plays it. Neither waits for the other; whatever is told between
/// two chunks is carried out together at the next one.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/mixing/glide.h"
#include "platform/mixing/interpolator.h"
#include "platform/mixing/wav_file.h"

namespace vorn {

class SoundChannel {
 public:
  static constexpr int kOutputRate = 48000;  ///< hertz
  static constexpr int kChunk = 64;          ///< most frames of one `render`
  static constexpr std::int64_t kMostFrames = (std::int64_t{1} << 31) - 1;

  /// `recording` is not empty and holds at most `kMostFrames` frames.
  explicit SoundChannel(std::shared_ptr<const Recording> recording);

  const Recording& recording() const { return *recording_; }

  // Game thread. Ranges are `SoundBuffer`'s.
  void play(bool looping);
  void stop();
  void seek(std::uint32_t frame);
  void setVolume(int hundredthsOfDecibel) { volume_ = hundredthsOfDecibel; }
  void setPan(int hundredthsOfDecibel) { pan_ = hundredthsOfDecibel; }
  void setFrequency(int hertz) { frequency_ = hertz; }
  int frequency() const { return frequency_; }
  /// True from `play` on until `stop` or the recording's end.
  bool isPlaying() const;
  /// Stops it for good; once `isFinished` the mixing thread knows it no more.
  void release();

  // Mixing thread.
  /// Adds the next `count` frames, at most `kChunk`.
  void render(const Interpolator& interpolator, float* left, float* right, int count);
  /// Whether it is silent and has not been told to play.
  bool isSilent() const;
  bool isFinished() const { return released_ && !playing_ && tailCount_ == 0; }

 private:
  /// What the game thread wants, told in one word so that it is seen whole.
  struct Wish {
    std::uint32_t position = 0;  ///< source frame of the last seek
    std::uint32_t seeks = 0;     ///< how many there were
    std::uint32_t plays = 0;     ///< how many times it was started
    bool playing = false, looping = false, released = false;

    std::uint64_t packed() const;
    static Wish unpacked(std::uint64_t word);
  };
  static constexpr std::uint32_t kPlaysMask = 0xFFFF, kSeeksMask = 0x3FFF;

  using Planes = std::array<std::array<float, kChunk>, 2>;

  /// A sound on its way out: it reads on where the channel has left.
  struct Tail {
    Phase position = 0;
    bool looping = false;
    Fade fade;
  };

  void tell() { word_.store(wish_.packed(), std::memory_order_release); }

  bool isSounding() const { return playing_ || tailCount_ > 0; }
  void obey();
  void start();
  void leave(const Fade& fade);
  void jump(Phase position);
  float likeness(Phase here, Phase there) const;
  void aimGains(bool atOnce);
  void aimStep(bool atOnce);
  Phase advance(int count, Phase* offsets);
  Phase moved(Phase position, Phase by, bool looping) const;
  void readPlanes(const Interpolator& interpolator, Phase position, bool looping, const Fade& fade,
                  const Phase* offsets, Planes& planes, int count) const;
  void endChunk(Phase travelled, int count);

  const std::shared_ptr<const Recording> recording_;
  const Phase length_;

  // Told by the game thread.
  Wish wish_;  ///< its own copy
  std::atomic<std::uint64_t> word_;
  std::atomic<int> volume_{0}, pan_{0}, frequency_;
  // Told by the mixing thread: the number of the last play that ran to its end.
  std::atomic<std::uint32_t> endedPlay_{0};

  // The mixing thread's own.
  Wish obeyed_;
  bool playing_ = false, looping_ = false, released_ = false;
  Phase position_ = 0;
  Fade fade_;
  std::array<Tail, 4> tails_;
  std::size_t tailCount_ = 0;
  int gainVolume_ = 0, gainPan_ = 0;  ///< what the gains are aimed at
  Glide leftGain_{1}, rightGain_{1};
  int stepFrequency_ = 0;  ///< what the step is aimed at
  Phase step_ = 0, targetStep_ = 0;
  std::int64_t stepChange_ = 0;
  int stepLeft_ = 0;
};

}  // namespace vorn
