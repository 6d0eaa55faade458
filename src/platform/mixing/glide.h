/// Gains that never jump: what the mixer multiplies sound with. Allocates nothing.
#pragma once

#include <algorithm>
#include <cmath>

namespace vorn {

/// Adds `in` times `gain` to `sum`; the inner loop is one the compiler makes parallel.
inline void addScaled(float* __restrict sum, const float* __restrict in, float gain, int count) {
  constexpr int kAtOnce = 8;
  int i = 0;
  for (; i + kAtOnce <= count; i += kAtOnce) {
    for (int k = 0; k < kAtOnce; ++k) {
      sum[i + k] += in[i + k] * gain;
    }
  }
  for (; i < count; ++i) {
    sum[i] += in[i] * gain;
  }
}

/// A gain on its straight way to where it was last aimed.
class Glide {
 public:
  static constexpr int kFrames = 240;  ///< a glide's length: 5 ms

  explicit Glide(float value) : value_(value), target_(value) {}

  /// Sets off for `target`, to be there after `frames`.
  void aim(float target, int frames = kFrames) {
    target_ = target;
    step_ = (target - value_) / static_cast<float>(frames);
    left_ = frames;
  }
  float target() const { return target_; }
  void snap(float value) {
    value_ = target_ = value;
    left_ = 0;
  }
  /// Adds `in`, times the gain on its way, to `sum`.
  void mixInto(float* sum, const float* in, int count) {
    const int gliding = std::min(count, left_);
    for (int i = 0; i < gliding; ++i) {
      sum[i] += in[i] * (value_ + step_ * static_cast<float>(i));
    }
    skip(gliding);
    addScaled(sum + gliding, in + gliding, value_, count - gliding);
  }
  /// Lets `count` frames pass unheard.
  void skip(int count) {
    const int gliding = std::min(count, left_);
    left_ -= gliding;
    value_ = left_ == 0 ? target_ : value_ + step_ * static_cast<float>(gliding);
  }

 private:
  float value_, target_, step_ = 0;
  int left_ = 0;
};

/// One fade along a smooth curve. Two fades with the same `likeness` and length,
/// one in and one out, cross each other at an even loudness.
class Fade {
 public:
  Fade() = default;
  /// `likeness`: how alike the two sounds of a crossfade are, 0 (strangers) ..
  /// 1 (the same; also right for a fade that crosses nothing).
  Fade(float from, float to, int frames, float likeness = 1)
      : from_(from), to_(to), likeness_(likeness), frames_(frames) {}

  bool done() const { return at_ >= frames_; }
  void skip(int count) { at_ = std::min(frames_, at_ + count); }

  float gain() const {
    if (done()) {
      return to_;
    }
    const float way = static_cast<float>(at_) / static_cast<float>(frames_);
    const float in = way * way * (3 - 2 * way), out = 1 - in;
    const float loudness = std::sqrt(in * in + out * out + 2 * likeness_ * in * out);
    return (from_ * out + to_ * in) / loudness;
  }
  /// Multiplies `count` samples by the gains from here on.
  void apply(float* samples, int count) const {
    Fade fade = *this;
    for (int i = 0; i < count && (!fade.done() || to_ != 1); ++i) {
      samples[i] *= fade.gain();
      fade.skip(1);
    }
  }

 private:
  float from_ = 1, to_ = 1, likeness_ = 1;
  int at_ = 0, frames_ = 0;
};

}  // namespace vorn
