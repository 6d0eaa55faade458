// A record file: damaged it is no record, else it is read as it was written, and
// the summary names it exactly then.

#include "fuzz/checks.h"
#include "fuzz/memory_platform.h"
#include "records/records.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  const std::string bytes = bytesOf(data, size);
  const auto record = decodeRecord(bytes);
  if (record) {
    require(bytes.starts_with(encodeRecord(*record)), "a record is read as it was written");
    require(record->time >= 0, "no time is below 0");
    const std::string words = timeInWords(record->time);
    require(words.find(" point ") != std::string::npos, "a time has a point");
  }

  MemoryPlatform platform;
  platform.inMemory.contents["vorn1maple0005.rec"] = bytes;
  GameState g(platform);
  WriteNewRecordFile(g);
  const std::string summary = platform.inMemory.contents.at(kRecordsSummaryFile);
  require((summary.find("The record for 5 laps on the ") != std::string::npos) == record.has_value(),
          "the summary holds every record that is one");

  g.trackChoice = 1;
  g.lapsToRun = 5;
  g.raceTime = 61.5;
  sayrecord(g);
  require(g.recordText.ends_with(". "), "the holder ends the announcement");
  return 0;
}
