// The files are ordinary WAV files: another program reads the same samples from them.

#include <gtest/gtest.h>

#include <cstdio>

#include "support_sounds.h"

namespace vorn::sounds {
namespace {

/// The samples as SoX decodes them, in the file's own format.
std::string decodedBySox(const std::string& path) {
  std::FILE* pipe = popen(("sox -V1 '" + path + "' -t raw -L -").c_str(), "r");
  std::string bytes;
  for (int c; (c = std::fgetc(pipe)) != EOF;) bytes += static_cast<char>(c);
  EXPECT_EQ(pclose(pipe), 0) << path;
  return bytes;
}

/// The samples as the game's own library has them, in the file's own format.
std::string interleaved(const test::Heard& heard) {
  std::string bytes;
  for (std::size_t frame = 0; frame < heard.mono().size(); ++frame) {
    for (const auto& channel : heard.channels) {
      const int sample = channel[frame];
      if (heard.bits == 8) {
        bytes += static_cast<char>(sample + 128);
      } else {
        bytes += static_cast<char>(sample & 0xFF);
        bytes += static_cast<char>(sample >> 8 & 0xFF);
      }
    }
  }
  return bytes;
}

TEST(Readers, AgreeOnEverySample) {
  int read = 0;
  for (const CatalogueEntry& entry : soundCatalogue()) {
    const std::string path = std::string(VORN_SOUNDS_FOLDER) + "/" + soundFileName(entry.name);
    const std::string expected = interleaved(test::hear(path));
    EXPECT_FALSE(expected.empty()) << path;
    EXPECT_TRUE(decodedBySox(path) == expected) << path;  // too long to print
    ++read;
  }
  EXPECT_EQ(read, 108);
}

}  // namespace
}  // namespace vorn::sounds
