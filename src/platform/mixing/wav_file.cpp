#include "platform/mixing/wav_file.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/errors.h"

namespace vorn {
namespace {

constexpr int kSlowest = 100, kFastest = 100000;  ///< hertz, as a sound buffer plays them
constexpr std::size_t kFormatBytes = 16;          ///< of a format chunk, at least
constexpr unsigned kPcm = 1, kExtensible = 0xFFFE;
constexpr std::size_t kSubFormatAt = 24;  ///< in an extensible format chunk: what would stand in front

[[noreturn]] void fail(const std::string& fileName, const std::string& reason) {
  throw PlatformError("CreateSoundBufferFromFile", fileName, reason);
}

/// The little-endian number of `size` bytes at `at`.
unsigned numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  unsigned number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number |= static_cast<unsigned>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
  }
  return number;
}

/// The two chunks that matter; one that is cut short counts as far as it goes.
struct Chunks {
  std::optional<std::string_view> format, data;
};

Chunks chunksOf(std::string_view bytes) {
  constexpr std::size_t kRiffHeader = 12, kChunkHeader = 8;
  Chunks found;
  if (bytes.size() < kRiffHeader || !bytes.starts_with("RIFF") || bytes.substr(8, 4) != "WAVE") {
    return found;
  }
  bytes.remove_prefix(kRiffHeader);
  while (bytes.size() >= kChunkHeader && !(found.format && found.data)) {
    const std::string_view name = bytes.substr(0, 4);
    const std::size_t size = numberAt(bytes, 4, 4);
    const std::string_view content = bytes.substr(kChunkHeader, size);
    if (name == "fmt " && !found.format) {
      found.format = content;
    } else if (name == "data" && !found.data) {
      found.data = content;
    }
    const std::size_t padding = size % 2;
    bytes.remove_prefix(kChunkHeader + content.size());
    bytes.remove_prefix(std::min(padding, bytes.size()));
  }
  return found;
}

/// Bytes of one sample, 0 where the game plays no such format.
std::size_t sampleBytes(std::string_view format) {
  unsigned tag = numberAt(format, 0, 2);
  if (tag == kExtensible && format.size() >= kSubFormatAt + 2) {
    tag = numberAt(format, kSubFormatAt, 2);
  }
  const unsigned bits = numberAt(format, 14, 2);
  return tag == kPcm && (bits == 8 || bits == 16) ? bits / 8 : 0;
}

/// Eight bits count from 0, sixteen have a sign.
float sampleAt(std::string_view data, std::size_t at, std::size_t size) {
  const int number = static_cast<int>(numberAt(data, at, size));
  return size == 1 ? static_cast<float>(number - 128) / 128.0F
                   : static_cast<float>(static_cast<std::int16_t>(number)) / 32768.0F;
}

}  // namespace

Recording readWav(const std::string& fileName, const std::string& bytes) {
  const Chunks chunks = chunksOf(bytes);
  if (!chunks.format || chunks.format->size() < kFormatBytes) {
    fail(fileName, "not a WAV file");
  }
  const std::string_view format = *chunks.format;
  const std::size_t size = sampleBytes(format);
  if (size == 0) {
    fail(fileName, "not a WAV file of 8-bit unsigned or 16-bit samples");
  }
  const unsigned channels = numberAt(format, 2, 2);
  if (channels != 1 && channels != 2) {
    fail(fileName, "neither mono nor stereo");
  }
  const unsigned rate = numberAt(format, 4, 4);
  if (rate < kSlowest || rate > kFastest) {
    fail(fileName, "made for " + std::to_string(rate) + " hertz, which cannot be played");
  }
  const std::string_view data = chunks.data.value_or("");
  const std::size_t frameBytes = size * channels, frames = data.size() / frameBytes;
  if (frames == 0) {
    fail(fileName, "holds no sound");
  }

  Recording recording;
  recording.rate = static_cast<int>(rate);
  recording.channels = static_cast<int>(channels);
  recording.bytesPerFrame = static_cast<int>(frameBytes);
  for (std::size_t channel = 0; channel < channels; ++channel) {
    auto& plane = recording.planes[channel];
    plane.resize(frames);
    for (std::size_t frame = 0; frame < frames; ++frame) {
      plane[frame] = sampleAt(data, frame * frameBytes + channel * size, size);
    }
  }
  return recording;
}

Recording recordingOf(std::span<const float> samples, int hertz) {
  Recording recording;
  recording.rate = hertz;
  recording.channels = 1;
  recording.bytesPerFrame = sizeof(std::int16_t);
  recording.planes[0].assign(samples.begin(), samples.end());
  return recording;
}

}  // namespace vorn
