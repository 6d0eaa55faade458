/// Keeps the page's ring of sound filled from the mixer, on a thread of its own. Where
/// nobody reads the ring the sound plays on unheard, so that the game does not stand still.
#pragma once

#include <atomic>
#include <thread>

#include "platform/web/page.h"

namespace vorn {

class SoundOutput {
 public:
  /// Neither is owned.
  SoundOutput(Mixer& mixer, SoundRing& ring);
  ~SoundOutput();
  SoundOutput(const SoundOutput&) = delete;
  SoundOutput& operator=(const SoundOutput&) = delete;

 private:
  void work();
  void fill(std::uint32_t ahead);

  Mixer& mixer_;
  SoundRing& ring_;
  std::atomic<bool> isEnding_{false};
  std::thread worker_;
};

}  // namespace vorn
