/// What a headless session sounds like: the stereo mix, 48 frames a virtual
/// millisecond, as 16-bit samples. Calls block for the disk or for a listener.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/mixing/mixer.h"

namespace vorn {

/// Where the mix goes.
class RenderSink {
 public:
  virtual ~RenderSink() = default;
  /// Left and right in turn. Throws `PlatformError` where they cannot be written.
  virtual void write(std::span<const std::int16_t> samples) = 0;
  virtual void flush() = 0;  ///< everything written so far reaches the listener
};

/// A WAV file for a name that ends in ".wav"; raw little-endian samples for any
/// other path and, for "-", to standard output. Throws `PlatformError`.
std::unique_ptr<RenderSink> openRenderSink(const std::string& path);

class Render {
 public:
  static constexpr int kFramesPerMs = Mixer::kRate / 1000;

  /// The sink is not owned.
  explicit Render(RenderSink& sink) : sink_(sink) {}

  Mixer& mixer() { return mixer_; }
  /// Appends `samples`, mono, `rate` hertz (the same for all), to what is being said.
  void speak(int rate, std::span<const std::int16_t> samples);
  void silence();  ///< what is being said ends here
  void advance(std::int64_t milliseconds);
  void flush() { sink_.flush(); }

 private:
  void feedVoice();

  RenderSink& sink_;
  Mixer mixer_;
  int speechRate_ = 0;
  std::deque<std::int16_t> speech_;  ///< what the mixer had no room for yet
};

}  // namespace vorn
