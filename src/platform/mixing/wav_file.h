/// Reads the game's sounds: RIFF/WAVE with 8-bit unsigned or 16-bit samples,
/// mono or stereo, whatever other chunks stand in the file. One reader of our
/// own, so that a sound is the same on every machine that the game is built for; knows no folder. Nothing
/// here waits.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vorn {

/// A recording in memory, as the mixer plays it.
struct Recording {
  int rate = 0;           ///< hertz, 100 .. 100000
  int channels = 0;       ///< 1 or 2
  int bytesPerFrame = 0;  ///< in the file's data: 1, 2 or 4
  /// Samples -1 .. 1, a plane a channel; a mono recording leaves the second empty.
  std::array<std::vector<float>, 2> planes;

  std::int64_t frames() const { return static_cast<std::int64_t>(planes[0].size()); }
  std::int64_t dataBytes() const { return frames() * bytesPerFrame; }
};

/// The recording in `bytes`, the content of the WAV file `fileName` (used in
/// messages alone). Throws `PlatformError` with the name and the reason where
/// this is no such file or holds no sound.
Recording readWav(const std::string& fileName, const std::string& bytes);

/// A mono recording of `samples`, -1 .. 1, `hertz` of them a second.
Recording recordingOf(std::span<const float> samples, int hertz);

}  // namespace vorn
