/// How late something came, counted while it goes on: by one thread, to be asked by another.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace vorn {

class Lateness {
 public:
  static constexpr double kStepMs = 0.05;  ///< how exactly it is counted
  static constexpr double kMostMs = 100;   ///< what is later counts as this

  /// Something came `lateMs` after its time, 0 or more.
  void note(double lateMs) {
    const auto step = static_cast<std::size_t>(std::clamp(lateMs, 0.0, kMostMs) / kStepMs);
    ++steps_[std::min(step, steps_.size() - 1)];
    ++count_;
  }
  int count() const { return static_cast<int>(count_.load()); }
  /// Milliseconds that `share` of all stayed below, 0 .. 1; 0 where nothing has come yet.
  double below(double share) const {
    const std::uint32_t all = count_;
    if (all == 0) return 0;
    const double wanted = std::clamp(share, 0.0, 1.0) * all;
    std::uint32_t soFar = 0;
    for (std::size_t i = 0; i < steps_.size(); ++i) {
      soFar += steps_[i];
      if (soFar > 0 && soFar >= wanted) return static_cast<double>(i + 1) * kStepMs;
    }
    return kMostMs;
  }

 private:
  std::array<std::atomic<std::uint32_t>, static_cast<std::size_t>(kMostMs / kStepMs)> steps_{};
  std::atomic<std::uint32_t> count_{0};
};

}  // namespace vorn
