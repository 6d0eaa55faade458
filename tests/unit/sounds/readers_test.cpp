// The files are ordinary WAV files: other programs read the same samples from them.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/temporary_folder.h"
#include "support_sounds.h"

namespace vorn::sounds {
namespace {

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

/// A file and where its samples are to go, as they are and nothing else.
struct Task {
  std::string from, to;
  bool isEightBit;
};

using Tasks = std::vector<Task>;

std::string forSox(const Tasks& tasks) {
  std::string command;
  for (const Task& task : tasks) command += "sox -V1 " + task.from + " -t raw -L " + task.to + " && ";
  return command + "true";
}

// One process for all: each takes a while to start.
std::string forFfmpeg(const Tasks& tasks) {
  std::string command = "ffmpeg -v error -nostdin", outputs;
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    command += " -i " + tasks[i].from;
    outputs +=
        " -map " + std::to_string(i) + ":a -f " + (tasks[i].isEightBit ? "u8 " : "s16le ") + tasks[i].to;
  }
  return command + outputs;
}

std::string forPython(const Tasks& tasks) {
  std::string command =
      "python3 -c 'import sys, wave\n"
      "for source, target in zip(sys.argv[1::2], sys.argv[2::2]):\n"
      "  sound = wave.open(source)\n"
      "  open(target, \"wb\").write(sound.readframes(sound.getnframes()))'";
  for (const Task& task : tasks) command += " " + task.from + " " + task.to;
  return command;
}

struct Reader {
  const char* name;
  std::string (*command)(const Tasks&);
};

void PrintTo(const Reader& reader, std::ostream* out) {
  *out << reader.name;
}

class Readers : public testing::TestWithParam<Reader> {};

TEST_P(Readers, AgreeOnEverySample) {
  const TemporaryFolder folder;
  Tasks tasks;
  std::vector<std::string> expected;
  for (const CatalogueEntry& entry : soundCatalogue()) {
    const test::Heard heard = test::hearSound(entry.name);
    tasks.push_back({test::pathOf(entry.name), folder.path() / entry.name, heard.bits == 8});
    expected.push_back(interleaved(heard));
  }
  ASSERT_EQ(tasks.size(), 108U);
  ASSERT_EQ(std::system(GetParam().command(tasks).c_str()), 0);
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    EXPECT_FALSE(expected[i].empty()) << tasks[i].from;
    const std::string name(soundCatalogue()[i].name);
    EXPECT_TRUE(folder.read(name) == expected[i]) << name;  // too long to print
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Readers,
                         testing::Values(Reader{"SoX", &forSox}, Reader{"FFmpeg", &forFfmpeg},
                                         Reader{"Python", &forPython}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace vorn::sounds
