#include "records/records.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "input/choosers.h"
#include "input/events.h"
#include "records/log.h"
#include "speech/losses.h"
#include "text/numbers.h"

namespace vorn {
namespace {

/// Every value but the time is preceded by its type.
constexpr std::uint64_t kTag16 = 2;
constexpr std::uint64_t kTag32 = 3;

void put(std::string& bytes, std::uint64_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

void putTagged16(std::string& bytes, int value) {
  put(bytes, kTag16, 2);
  put(bytes, static_cast<std::uint16_t>(value), 2);
}

/// Reads little-endian values one after the other; a failed read makes it fail for good.
class Reader {
 public:
  explicit Reader(const std::string& bytes) : bytes_(bytes) {}

  std::uint64_t take(std::size_t size) {
    if (bytes_.size() - at_ < size) {
      ok_ = false;
      return 0;
    }
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      value |= std::uint64_t{static_cast<unsigned char>(bytes_[at_ + i])} << (8 * i);
    }
    at_ += size;
    return value;
  }
  int take16() {
    expect(kTag16);
    return static_cast<std::int16_t>(take(2));
  }
  int take32() {
    expect(kTag32);
    return static_cast<std::int32_t>(take(4));
  }
  std::size_t left() const { return bytes_.size() - at_; }
  bool ok() const { return ok_; }

 private:
  void expect(std::uint64_t tag) {
    if (take(2) != tag) ok_ = false;
  }

  const std::string& bytes_;
  std::size_t at_ = 0;
  bool ok_ = true;
};

constexpr std::size_t kBytesACharacter = 4;
constexpr double kLongestTime = 1e9;  // seconds; beyond it the file is damaged

std::string plural(double count) {
  return count > 1 ? "s" : "";
}

std::string withoutLeadingBlank(const std::string& text) {
  return text.front() == ' ' ? text.substr(1) : text;
}

/// One of the blocks that the summary is made of, without its lines' ends.
std::string summaryBlock(const std::string& lapsText, const std::string& trackName,
                         const TrackRecord& record) {
  const double laps = leadingNumber(lapsText);
  return "The record for " + numberText(laps) + " lap" + plural(laps) + " on the " + trackName + " is\r\n" +
         withoutLeadingBlank(timeInWords(record.time)) + " seconds \r\n" + "By " + record.holder + "\r\n" +
         "On " + dateText(record.date) + "\r\n" + " \r\n";
}

/// The four characters before the last dot of a record file's name.
std::string lapsOfFile(const std::string& fileName) {
  const std::size_t dot = fileName.rfind('.');
  return fileName.substr(dot - 4, 4);
}

/// The record in a file; nothing where there is none or it is damaged. Throws where it cannot be read.
std::optional<TrackRecord> storedRecord(GameState& g, const std::string& fileName) {
  if (!g.platform.files().find(fileName)) return {};
  return decodeRecord(g.platform.files().read(fileName));
}

bool isBetter(double time, const TrackRecord& record) {
  return record.time == 0 || time < record.time;
}

}  // namespace

std::string recordPrefix(int track) {
  return std::string("vorn1") + kTrackNames.at(track - 1).word;
}

std::string recordFileName(int track, double laps) {
  std::string zeros;
  for (const double limit : {10.0, 100.0, 1000.0}) {
    if (laps < limit) zeros += '0';
  }
  return recordPrefix(track) + zeros + numberText(laps) + kRecordSuffix;
}

std::string encodeRecord(const TrackRecord& record) {
  std::string bytes;
  std::uint64_t timeBits = 0;
  std::memcpy(&timeBits, &record.time, sizeof timeBits);
  put(bytes, timeBits, sizeof timeBits);
  putTagged16(bytes, record.date.month);
  putTagged16(bytes, record.date.day);
  putTagged16(bytes, record.date.year);
  put(bytes, kTag32, 2);
  put(bytes, record.holder.size(), 4);
  for (const char c : record.holder) putTagged16(bytes, static_cast<unsigned char>(c));
  return bytes;
}

std::optional<TrackRecord> decodeRecord(const std::string& bytes) {
  Reader reader(bytes);
  TrackRecord record;
  const std::uint64_t timeBits = reader.take(sizeof record.time);
  std::memcpy(&record.time, &timeBits, sizeof record.time);
  record.date.month = reader.take16();
  record.date.day = reader.take16();
  record.date.year = reader.take16();
  const int characters = reader.take32();
  if (!reader.ok() || !(record.time >= 0 && record.time <= kLongestTime)) return {};
  if (characters < 0 || static_cast<std::size_t>(characters) > reader.left() / kBytesACharacter) return {};
  record.holder.clear();
  for (int i = 0; i < characters; ++i) {
    const int code = reader.take16();
    if (code < 0 || code > 255) return {};
    record.holder += static_cast<char>(code);
  }
  if (!reader.ok()) return {};
  return record;
}

std::string timeInWords(double seconds) {
  const double rounded = roundDecimals(seconds, 3);
  const double allMinutes = std::floor(rounded / 60);
  const double hours = std::floor(allMinutes / 60);
  const double minutes = allMinutes - 60 * hours;
  std::string words;
  if (hours > 0) words += countedUnit(hours, "hour");
  if (minutes > 0) words += (words.empty() ? "" : " ") + countedUnit(minutes, "minute");
  // Rounded again: taking out the minutes leaves noise that would be heard as other digits.
  const std::string text = numberText(roundDecimals(rounded - 60 * allMinutes, 3));
  return words + " " + text.substr(0, text.find('.')) + " point " + fractionDigits(text);
}

void sayrecord(GameState& g) {
  g.recordFileName = recordFileName(g.trackChoice, g.lapsToRun);
  g.record = TrackRecord{};
  carryOn([&] { g.record = storedRecord(g, g.recordFileName).value_or(TrackRecord{}); });
  const bool hasRecord = g.record.time != 0;
  const bool isFaster = isNewRecord(g);
  const double difference = std::fabs(g.raceTime - g.record.time);

  std::string comparison;
  if (!isFaster) {
    comparison = " which is slower than the record, by, " + timeInWords(difference) + " seconds. ";
  } else {
    comparison = " Which sets a new record! ";
    if (hasRecord) comparison += " by, " + timeInWords(difference) + " seconds. ";
  }
  const std::string record =
      (isFaster ? " The record was " : " The record is ") + timeInWords(g.record.time) + " seconds. ";
  const std::string holder = " By " + g.record.holder + " on " + dateText(g.record.date) + ". ";

  g.recordText = comparison + record + holder;
  appendToLog(g, {comparison, record, holder});
}

bool isNewRecord(const GameState& g) {
  return isBetter(g.raceTime, g.record);
}

void GetNewRecName(GameState& g) {
  g.typedText.clear();
  do {
    getter(g, " Enter your name as the new record holder. ");
  } while (!askYesNo(g, {.prompt = " Is " + g.typedText + " correct, for the new record holder? yes "}));
}

void writeRecord(GameState& g) {
  keep(g, Kept::kRecord, [&] {
    // Another program on this folder may have set a better one meanwhile, or may be about to.
    const auto lock = g.platform.files().lock();
    if (!isBetter(g.raceTime, storedRecord(g, g.recordFileName).value_or(TrackRecord{}))) return;
    const TrackRecord record{g.raceTime, g.platform.today(), g.typedText};
    g.platform.files().write(g.recordFileName, encodeRecord(record));
  });
}

void WriteNewRecordFile(GameState& g) {
  keep(g, Kept::kRecord, [&] {
    Files& files = g.platform.files();
    const auto lock = files.lock();
    std::string summary = "Vorn 1 tts records  By Ostrin\r\n \r\n";
    for (int track = 1; track <= kTracks; ++track) {
      for (const std::string& name : files.list(recordPrefix(track), kRecordSuffix)) {
        std::optional<TrackRecord> record;
        carryOn([&] { record = storedRecord(g, name); });
        if (record) summary += summaryBlock(lapsOfFile(name), g.trackNames[track], *record);
      }
    }
    files.write(kRecordsSummaryFile, summary);
  });
}

}  // namespace vorn
