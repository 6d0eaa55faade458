/// Spoken words, synthesised in this process. The engine is started once a
/// process, and the same calls in a fresh process give the same samples; a
/// repeat inside one process differs a little.
#pragma once

#include <string>

#include "signal.h"

namespace vorn::synth {

struct Words {
  std::string text;
  std::string voice = "en-us";  ///< with its variant, such as "en-us+m3"
  int wordsPerMinute = 165;
  int pitch = 50;  ///< 0..100
};

/// `words` at `rate`, silence in front and behind cut off.
/// Throws `std::runtime_error` when the voice is not there.
Signal spoken(const Words& words, double rate);

/// `words` at their own speed or, if that takes longer than `seconds`, at the
/// slowest speed that does not.
Signal spokenWithin(Words words, double seconds, double rate);

}  // namespace vorn::synth
