/// What several tests of the sounds share.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <sndfile.hh>
#include <string>
#include <string_view>
#include <vector>

#include "sound/catalogue.h"
#include "synth/signal.h"

namespace vorn::test {

/// A recording read back from its file.
struct Heard {
  int rate = 0;
  int bits = 16;
  std::vector<std::vector<std::int16_t>> channels;  ///< in steps of the file's own depth

  const std::vector<std::int16_t>& mono() const { return channels.front(); }
  double fullScale() const { return bits == 8 ? 128 : 32768; }
  /// The first channel, full scale 1.
  synth::Signal signal() const {
    synth::Signal result;
    for (const std::int16_t value : mono()) result.push_back(value / fullScale());
    return result;
  }
};

inline Heard hear(const std::string& path) {
  SndfileHandle file(path);
  EXPECT_EQ(file.error(), SF_ERR_NO_ERROR) << path << ": " << file.strError();
  Heard heard;
  heard.rate = file.samplerate();
  heard.bits = (file.format() & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_U8 ? 8 : 16;
  const auto channels = static_cast<std::size_t>(file.channels());
  std::vector<std::int16_t> frames(static_cast<std::size_t>(file.frames()) * channels);
  EXPECT_EQ(file.readf(frames.data(), file.frames()), file.frames()) << path;
  heard.channels.resize(channels);
  // The library hands 8-bit samples out as the upper half of 16 bits.
  for (std::size_t i = 0; i < frames.size(); ++i) {
    heard.channels[i % channels].push_back(
        static_cast<std::int16_t>(heard.bits == 8 ? frames[i] / 256 : frames[i]));
  }
  return heard;
}

/// Where the test run has made the sound `name`.
inline std::string pathOf(std::string_view name) {
  std::string path = VORN_SOUNDS_FOLDER;
  return path.append("/").append(soundFileName(name));
}

/// The recording `name` of the set that the test run made.
inline Heard hearSound(std::string_view name) {
  return hear(pathOf(name));
}

}  // namespace vorn::test
