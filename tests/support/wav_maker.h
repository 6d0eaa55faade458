/// Small WAV files for tests.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vorn {

struct WavFormat {
  int rate = 22050;
  int channels = 1;
  int bits = 16;  ///< 8 or 16
};

/// A plain WAV file of `frames` frames; `sample` gives each, -1 .. 1, on every channel.
inline std::string makeWav(
    int frames, const WavFormat& format = {},
    const std::function<double(int frame)>& sample = [](int) { return 0.0; }) {
  const int blockBytes = format.channels * format.bits / 8;
  std::string bytes;
  const auto put = [&bytes](std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
  };
  const auto dataBytes = static_cast<std::uint32_t>(frames * blockBytes);
  bytes += "RIFF";
  put(36 + dataBytes, 4);
  bytes += "WAVEfmt ";
  put(16, 4);
  put(1, 2);
  put(static_cast<std::uint32_t>(format.channels), 2);
  put(static_cast<std::uint32_t>(format.rate), 4);
  put(static_cast<std::uint32_t>(format.rate * blockBytes), 4);
  put(static_cast<std::uint32_t>(blockBytes), 2);
  put(static_cast<std::uint32_t>(format.bits), 2);
  bytes += "data";
  put(dataBytes, 4);
  for (int frame = 0; frame < frames; ++frame) {
    for (int channel = 0; channel < format.channels; ++channel) {
      if (format.bits == 8) {
        put(static_cast<std::uint32_t>(128 + static_cast<int>(sample(frame) * 127)), 1);
      } else {
        put(static_cast<std::uint32_t>(static_cast<int>(sample(frame) * 32767)), 2);
      }
    }
  }
  return bytes;
}

}  // namespace vorn
