#include "platform/mixing/wav_file.h"

#include <sndfile.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

#include "platform/errors.h"

namespace vorn {
namespace {

constexpr int kSlowest = 100, kFastest = 100000;  ///< hertz, as a sound buffer plays them

/// A file in memory, read through libsndfile's callbacks.
struct MemoryFile {
  const std::string& bytes;
  sf_count_t position = 0;

  sf_count_t size() const { return static_cast<sf_count_t>(bytes.size()); }
};

MemoryFile& fileOf(void* user) {
  return *static_cast<MemoryFile*>(user);
}

sf_count_t fileLength(void* user) {
  return fileOf(user).size();
}

sf_count_t fileSeek(sf_count_t offset, int whence, void* user) {
  MemoryFile& file = fileOf(user);
  const sf_count_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.position : file.size();
  file.position = std::clamp<sf_count_t>(base + offset, 0, file.size());
  return file.position;
}

sf_count_t fileRead(void* target, sf_count_t count, void* user) {
  MemoryFile& file = fileOf(user);
  const sf_count_t available = std::clamp<sf_count_t>(count, 0, file.size() - file.position);
  std::memcpy(target, file.bytes.data() + file.position, static_cast<std::size_t>(available));
  file.position += available;
  return available;
}

sf_count_t fileWrite(const void*, sf_count_t, void*) {
  return 0;
}

sf_count_t fileTell(void* user) {
  return fileOf(user).position;
}

[[noreturn]] void fail(const std::string& fileName, const std::string& reason) {
  throw PlatformError("CreateSoundBufferFromFile", fileName, reason);
}

/// Bytes of one sample in the file, 0 where the game plays no such format.
int sampleBytes(int format) {
  const int container = format & SF_FORMAT_TYPEMASK;
  if (container != SF_FORMAT_WAV && container != SF_FORMAT_WAVEX) {
    return 0;
  }
  switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_U8:
      return 1;
    case SF_FORMAT_PCM_16:
      return 2;
    default:
      return 0;
  }
}

}  // namespace

Recording readWav(const std::string& fileName, const std::string& bytes) {
  MemoryFile memory{bytes};
  SF_VIRTUAL_IO callbacks{fileLength, fileSeek, fileRead, fileWrite, fileTell};
  SF_INFO info{};
  const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(
      sf_open_virtual(&callbacks, SFM_READ, &info, &memory), sf_close);
  if (!file) {
    fail(fileName, sf_strerror(nullptr));
  }
  const int bytesPerSample = sampleBytes(info.format);
  if (bytesPerSample == 0) {
    fail(fileName, "not a WAV file of 8-bit unsigned or 16-bit samples");
  }
  if (info.channels != 1 && info.channels != 2) {
    fail(fileName, "neither mono nor stereo");
  }
  if (info.samplerate < kSlowest || info.samplerate > kFastest) {
    fail(fileName, "made for " + std::to_string(info.samplerate) + " hertz, which cannot be played");
  }
  if (info.frames <= 0 || info.frames > static_cast<sf_count_t>(bytes.size())) {
    fail(fileName, "holds no sound");
  }

  const auto channels = static_cast<std::size_t>(info.channels);
  std::vector<float> interleaved(static_cast<std::size_t>(info.frames) * channels);
  const sf_count_t frames = sf_readf_float(file.get(), interleaved.data(), info.frames);
  if (frames <= 0) {
    fail(fileName, "holds no sound");
  }
  Recording recording;
  recording.rate = info.samplerate;
  recording.channels = info.channels;
  recording.bytesPerFrame = bytesPerSample * info.channels;
  for (std::size_t channel = 0; channel < channels; ++channel) {
    auto& plane = recording.planes[channel];
    plane.resize(static_cast<std::size_t>(frames));
    for (std::size_t frame = 0; frame < plane.size(); ++frame) {
      plane[frame] = interleaved[frame * channels + channel];
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
