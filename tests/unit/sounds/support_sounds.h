/// What several tests of the sounds share.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <random>
#include <sndfile.hh>
#include <string>
#include <string_view>
#include <vector>

#include "sound/catalogue.h"
#include "synth/signal.h"

namespace vorn {

inline void PrintTo(const ItemFigures& figures, std::ostream* out) {
  *out << figures.items << " items, the last of " << figures.lastItemLength;
}

}  // namespace vorn

namespace vorn::test {

/// A second item reader, one state a byte: what it is in the middle of decides
/// what the next byte means.
inline ItemFigures readItemsInOnePass(std::string_view bytes) {
  enum class State { kBlanks, kPlain, kQuoted, kAfterQuote, kAfterReturn };
  State state = State::kBlanks;
  int finished = 0, length = 0, lastLength = 0;
  bool open = false;  // something of an item, if only blanks, has been seen
  const auto finish = [&] {
    ++finished;
    lastLength = length;
    length = 0;
    open = false;
  };
  for (const char c : bytes) {
    if (c == 0) continue;
    if (c == 26) break;
    if (state == State::kAfterReturn) {
      state = State::kBlanks;
      if (c == '\n') continue;
    }
    open = true;
    const bool ends = c == ',' || c == '\r' || c == '\n';
    if (state == State::kQuoted) {
      if (c == '"') {
        state = State::kAfterQuote;
      } else {
        ++length;
      }
    } else if (ends) {
      finish();
      state = c == '\r' ? State::kAfterReturn : State::kBlanks;
    } else if (state == State::kBlanks && c == '"') {
      state = State::kQuoted;
    } else if (state == State::kPlain || (state == State::kBlanks && c != ' ')) {
      state = State::kPlain;
      ++length;
    }
  }
  if (open || finished == 0) finish();
  return {finished, lastLength};
}

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
