/// How large the sound device's buffer has to be on this machine: found out from
/// the times at which the device asks for more. Pure; nothing here waits.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace vorn {

/// Tells whether a device has run dry. One that was merely served late makes up
/// for it with its next requests; what it played as silence it never asks for again.
class HoleFinder {
 public:
  using Time = std::chrono::steady_clock::time_point;

  explicit HoleFinder(int framesASecond) : rate_(framesASecond) {}

  /// `frames` were handed over at `now`. Returns the milliseconds of silence that
  /// the device has put in, some requests after it did; 0 where there was none.
  /// Silence shorter than a request is found only together with more of it.
  double handedOver(Time now, int frames);
  /// What was before is no measure for what comes: the device has just begun.
  void restart() { *this = HoleFinder(rate_); }

 private:
  int rate_;
  bool hasBegun_ = false;
  Time last_;
  double lead_ = 0;      ///< milliseconds handed over beyond those that have passed
  double bestLead_ = 0;  ///< that of a full buffer
  int lateFor_ = 0;      ///< requests in a row
  double leastLate_ = 0;
};

/// The size of the buffer, which grows where holes come too often for chance.
class BufferGrowth {
 public:
  static constexpr int kSmallest = 512, kLargest = 4096;  ///< frames

  /// `frames` is one of the sizes that it can grow to, or any other that stays.
  explicit BufferGrowth(int frames, bool mayGrow) : frames_(frames), mayGrow_(mayGrow) {}

  int frames() const { return frames_; }
  /// Takes note of a hole of so many milliseconds.
  void hole(HoleFinder::Time now, double milliseconds);

 private:
  int frames_;
  bool mayGrow_;
  bool hasLastHole_ = false;
  HoleFinder::Time lastHole_;
};

/// A size that was kept as text, as `BufferGrowth` has it; the smallest where the text is anything else.
int bufferFromText(const std::string& text);
std::string bufferAsText(int frames);

}  // namespace vorn
