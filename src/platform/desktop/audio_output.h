/// The sound device: plays what the mixer renders until it is destroyed. A thread
/// of its own keeps the device: where it fails (the sound server ends, its last
/// output is unplugged, it takes no samples) that thread opens what is there
/// instead, and goes on trying while there is nothing.
#pragma once

#include <chrono>
#include <memory>
#include <thread>

#include "platform/mixing/mixer.h"

namespace vorn {

class AudioOutput {
 public:
  /// Opens the default device with a buffer of `frames` and begins to play. The
  /// mixer is not owned. Throws `DesktopUnavailable` where there is none, or none
  /// that answers within ten seconds.
  AudioOutput(Mixer& mixer, int frames);
  /// Waits for the device to be closed, a second at most.
  ~AudioOutput();
  AudioOutput(const AudioOutput&) = delete;
  AudioOutput& operator=(const AudioOutput&) = delete;

  /// Whether a device takes what is played. To be asked in every wait: while none
  /// does, it lets the mixer run on by the clock, unheard, so that sounds and
  /// texts still end in their time.
  bool isHeard();

 private:
  struct Line;
  class Device;
  void close();
  static void keep(Line& line, int frames);
  static void watch(Line& line, Device& device);

  std::shared_ptr<Line> line_;  ///< the keeper's too: a hung sound server may hold it beyond the end
  std::thread keeper_;
  std::chrono::steady_clock::time_point renderedUpTo_;
};

}  // namespace vorn
