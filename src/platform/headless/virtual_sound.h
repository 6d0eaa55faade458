/// Sound in virtual time: a buffer's position moves on by frequency / 1000 frames
/// a millisecond, to the exact fraction, whether anybody listens or not.
#pragma once

#include "platform/headless/world.h"

namespace vorn {

/// Where a recording is being played. Nothing here waits.
class PlayHead {
 public:
  /// A recording of `frames` (at least 1) at `hertz`; stands at 0.
  PlayHead(std::int64_t frames, int hertz) : end_(frames * kPerFrame), frequency_(hertz) {}

  /// Moves to the time `nowMs`; all else takes place then. Time never goes back.
  void moveTo(std::int64_t nowMs);
  void play(bool looping);
  void stop() { isPlaying_ = false; }
  void seek(std::int64_t frame) { position_ = frame * kPerFrame; }
  void setFrequency(int hertz) { frequency_ = hertz; }

  bool isPlaying() const { return isPlaying_; }
  int frequency() const { return frequency_; }
  std::int64_t frame() const { return position_ / kPerFrame; }

 private:
  // A frame's thousandth is what one hertz plays in a millisecond.
  static constexpr std::int64_t kPerFrame = 1000;

  std::int64_t end_;
  int frequency_;
  std::int64_t position_ = 0;
  std::int64_t time_ = 0;
  bool isPlaying_ = false;
  bool isLooping_ = false;
};

class VirtualSoundDevice : public SoundDevice {
 public:
  explicit VirtualSoundDevice(World& world);
  ~VirtualSoundDevice() override;
  void SetCooperativeLevel(int level) override;
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string& slot, const std::string& fileName,
                                                         int flags) override;
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromSamples(const std::string& slot, const std::string& name,
                                                            std::span<const float> samples,
                                                            int hertz) override;

 private:
  World& world_;
};

}  // namespace vorn
