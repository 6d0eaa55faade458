/// What the sound device of with_desktop.sh --record has played so far.
#pragma once

#include <string>

#include "support/temporary_folder.h"

namespace vorn {

class Recording {
 public:
  static constexpr double kBeforeCaption = 0.3;  ///< seconds of silence to begin with, for the recogniser

  Recording();

  double now() const;  ///< seconds recorded
  /// Root mean square of both channels together, 0 .. 1.
  double level(double from, double seconds) const;
  /// The same of the steps from sample to sample: what is high counts for more.
  double steepness(double from, double seconds) const;
  /// Milliseconds from second `from` to the first sound; as long as the recording where it is silent.
  double millisecondsToSound(double from) const;
  /// Which of `sentences`, separated by bars, a speech recogniser hears. `folder` is for its files.
  std::string recognise(double from, double seconds, const std::string& sentences,
                        const TemporaryFolder& folder) const;

 private:
  std::string file_;
};

}  // namespace vorn
