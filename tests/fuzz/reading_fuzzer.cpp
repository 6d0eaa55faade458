// The log and the summary of the records: every line is read, and reading ends.

#include <algorithm>

#include "fuzz/checks.h"
#include "fuzz/memory_platform.h"
#include "records/log.h"
#include "records/reading.h"
#include "records/records.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

class SpokenLines : public TraceSink {
 public:
  void write(const TraceLine& line) override {
    if (line.at("ev") == "speak" && line.at("flags") == 1) ++count;
  }
  void flush() override {}
  std::size_t count = 0;
};

constexpr std::size_t kMostBytes = 20000;  // longer ones take long to be said

void checkBlocks(const std::vector<std::string>& lines) {
  std::vector<std::string> joined;
  const auto blocks = readingBlocks(lines);
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const auto& block = blocks[i];
    require(!block.empty() && block.size() <= 111, "a block has 1 to 111 lines");
    require(i + 1 == blocks.size() || block.size() == 111 || block.back().starts_with(' '),
            "a block ends at a line that begins with a blank");
    require(
        std::none_of(block.begin(), block.end() - 1, [](const auto& line) { return line.starts_with(' '); }),
        "a line that begins with a blank ends its block");
    joined.insert(joined.end(), block.begin(), block.end());
  }
  require(joined == lines, "the blocks hold all lines");
}

void readAloud(void (*procedure)(GameState&), const char* file, const std::string& bytes, std::size_t lines) {
  SpokenLines spoken;
  MemoryPlatform platform(&spoken);
  platform.inMemory.contents[file] = bytes;
  GameState g(platform);
  g.speechVoice = platform.createVoice();
  g.speechVoice->setRate(15);
  procedure(g);
  require(spoken.count == lines, "every line is said");
}

}  // namespace
}  // namespace vorn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  const std::string bytes = bytesOf(data, std::min(size, kMostBytes));
  const std::vector<std::string> lines = textLines(bytes);
  checkBlocks(lines);
  readAloud(readlog, kLogFile, bytes, lines.size());
  readAloud(readrecords, kRecordsSummaryFile, bytes, lines.size());
  return 0;
}
