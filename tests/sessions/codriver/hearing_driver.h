/// A driver with a wheel who hears the turn calls and the slider and nothing else. He
/// knows his car and the surface, counts the ticks, and reckons where he is from what
/// he has done; the tones put him right.
#pragma once

#include <deque>
#include <span>
#include <string>

#include "codriver/tones.h"
#include "platform/headless/trace.h"
#include "state/race_state.h"

namespace vorn {

class HearingDriver {
 public:
  /// `steerDrag`: the surface. `aheadMs`: how long before a turn it is called.
  HearingDriver(double steerDrag, int aheadMs);

  /// A tick has passed, and in it `lines` have been traced: whatever is no tone of the co-driver's is not
  /// heard. Statements, one a line.
  std::string after(std::span<const TraceLine> lines);

 private:
  /// A turn or a jump as it has been called.
  struct Called {
    double start, length;  ///< units of the driver's own way
    double push;           ///< lateral units a tick at `speed`
    double speed;
    int side;  ///< -1 left, 1 right, 0 a jump
  };
  /// A tone as it is heard.
  struct Heard {
    int hertz = 0, pan = 0;
    std::int64_t since = -1;  ///< ms; negative: silent
  };

  void hear(const TraceLine& line);
  void reckon();
  std::string drive();
  void listenToSlider();
  void noteCall(std::int64_t lengthMs);
  double pushOn(double way, double speed) const;
  double bearable(const Called& turn) const;
  double limit() const;
  double line() const;
  const Called* at(double way) const;
  const Called* next() const;
  bool isMakingForRamp() const;

  const double drag_;
  const int aheadMs_;
  Heard turn_, slider_;
  int tonesOfCall_ = 0;
  std::deque<Called> called_;

  RaceState car_;  ///< as the driver reckons it
  double way_ = 0;
  int steering_ = 0, pedals_ = -10000;
  int shift_ = 0;  ///< that the next tick will carry out
  std::string held_;
};

}  // namespace vorn
