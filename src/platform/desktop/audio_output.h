/// The sound device: plays what the mixer renders until it is destroyed. A thread
/// of its own keeps the device: where it fails (the sound server ends, its last
/// output is unplugged, it takes no samples) that thread opens what is there
/// instead, and goes on trying while there is nothing.
#pragma once

#include <chrono>
#include <memory>
#include <thread>

#include "platform/desktop/audio_line.h"

namespace vorn {

class AudioOutput {
 public:
  /// Opens the device and begins to play. The mixer is not owned. Throws
  /// `DesktopUnavailable` where there is none, or none that answers within ten
  /// seconds; one that is there in the place of the one wished for will do.
  AudioOutput(Mixer& mixer, const AudioWishes& wishes);
  /// Waits for the device to be closed, a second at most.
  ~AudioOutput();
  AudioOutput(const AudioOutput&) = delete;
  AudioOutput& operator=(const AudioOutput&) = delete;

  /// Whether a device takes what is played. To be asked in every wait: while none
  /// does, it lets the mixer run on by the clock, unheard, so that sounds and
  /// texts still end in their time.
  bool isHeard();
  const AudioLine& line() const { return *line_; }

 private:
  void close();
  static void keep(AudioLine& line);

  std::shared_ptr<AudioLine> line_;  ///< the keeper's too: a hung device may hold it beyond the end
  std::thread keeper_;
  std::chrono::steady_clock::time_point renderedUpTo_;
};

}  // namespace vorn
