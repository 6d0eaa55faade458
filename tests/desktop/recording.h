/// What the sound device of with_desktop.sh --record has played so far.
#pragma once

#include <functional>
#include <string>

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
  /// How much of what is recorded from second `from` on is no silence, in seconds: however often a busy
  /// machine halts what plays, that is as long as ever.
  double secondsOfSound(double from) const;
  /// Whether a speech recogniser hears the first of `sentences`, separated by bars, in what `say` has said;
  /// that returns the second when it began, and `seconds` from there are listened to. On a busy machine
  /// speech stumbles, so it gets three chances.
  bool isUnderstood(const std::string& sentences, double seconds, const std::function<double()>& say) const;

 private:
  /// Which of `sentences` is heard.
  std::string recognise(double from, double seconds, const std::string& sentences) const;

  std::string file_;
};

}  // namespace vorn
