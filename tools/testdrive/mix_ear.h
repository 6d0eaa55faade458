/// Someone who listens to a session, and what one buffer has to do with what he hears.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/headless/render.h"
#include "platform/headless/trace.h"
#include "platform/mixing/wav_file.h"
#include "synth/signal.h"

namespace vorn {

enum class Ear { kLeft, kRight };

/// Keeps a mix whole.
class MixEar : public RenderSink {
 public:
  void write(std::span<const std::int16_t> samples) override {
    samples_.insert(samples_.end(), samples.begin(), samples.end());
  }
  void flush() override {}

  /// What an ear has heard between two moments, ms; full scale is 1.
  synth::Signal heard(Ear ear, std::int64_t from, std::int64_t to) const;
  /// The largest sample of both ears between two moments, ms.
  double peak(std::int64_t from, std::int64_t to) const;
  /// The most samples in a row of one ear that are all as high as its highest:
  /// more than a few have been cut off.
  int longestPlateau(std::int64_t from, std::int64_t to) const;
  std::int64_t duration() const;  ///< ms

 private:
  std::vector<std::int16_t> samples_;
};

/// What the game told a buffer from the moment of a `create` on, until the next one.
struct BufferCourse {
  std::string file;
  std::int64_t from = 0, to = 0;  ///< ms
  std::vector<TraceLine> lines;
};

/// The courses of `buffer` in a trace, in order; the last one ends at `end` (ms).
std::vector<BufferCourse> coursesOf(const std::vector<TraceLine>& trace, const std::string& buffer,
                                    std::int64_t end);

/// A course without its volumes: as loud as recorded all the way.
BufferCourse asLoudAsRecorded(BufferCourse course);

/// The buffer alone, played by a mixer of its own as the game has played it, but
/// in the middle: its samples between two moments, ms, in step with those of the
/// whole mix. One at a time.
synth::Signal playedAlone(const BufferCourse& course, const Recording& recording, std::int64_t from,
                          std::int64_t to);

/// By how much two sounds have to be multiplied for their sum to be a whole, as
/// well as can be said from all that was heard of them.
class TwoShares {
 public:
  void hear(std::span<const double> whole, std::span<const double> one, std::span<const double> other);
  double ofOne() const { return (oneWhole_ * otherOther_ - otherWhole_ * oneOther_) / determinant(); }
  double ofOther() const { return (otherWhole_ * oneOne_ - oneWhole_ * oneOther_) / determinant(); }

 private:
  double determinant() const { return oneOne_ * otherOther_ - oneOther_ * oneOther_; }

  double oneOne_ = 0, oneOther_ = 0, otherOther_ = 0, oneWhole_ = 0, otherWhole_ = 0;
};

/// By how much `part` has to be multiplied to be as much of `whole` as it can be.
double shareIn(const synth::Signal& whole, const synth::Signal& part);

}  // namespace vorn
