#include "records/records.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace vorn {
namespace {

TEST(RecordFileName, HasFourDigitsOfLaps) {
  EXPECT_EQ(recordFileName(1, 5), "vorn1maple0005.rec");
  EXPECT_EQ(recordFileName(10, 12), "vorn1geneva0012.rec");
  EXPECT_EQ(recordFileName(2, 100), "vorn1pain0100.rec");
  EXPECT_EQ(recordFileName(3, 1000), "vorn1chagrin1000.rec");
  EXPECT_EQ(recordFileName(9, 9999), "vorn1chesterland9999.rec");
  EXPECT_EQ(recordFileName(4, 2.5), "vorn1ohio0002.5.rec");
  EXPECT_EQ(recordFileName(5, -1), "vorn1chardon000-1.rec");
}

TEST(RecordFile, HasTheseBytes) {
  const std::string bytes = encodeRecord({1.5, {3, 7, 2026}, "A\xE9"});
  EXPECT_EQ(bytes, std::string("\0\0\0\0\0\0\xF8\x3F"  // 1.5
                               "\x02\0\x03\0"          // month
                               "\x02\0\x07\0"          // day
                               "\x02\0\xEA\x07"        // year
                               "\x03\0\x02\0\0\0"      // characters
                               "\x02\0A\0\x02\0\xE9\0",
                               34));
}

TEST(RecordFile, GrowsByFourBytesACharacter) {
  EXPECT_EQ(encodeRecord({1, {1, 1, 2026}, ""}).size(), 26u);
  EXPECT_EQ(encodeRecord({1, {1, 1, 2026}, "seven c"}).size(), 26u + 4 * 7);
}

TEST(RecordFile, ReadsBackWhatWasWritten) {
  const auto record = decodeRecord(encodeRecord({61.999, {12, 31, 2026}, "Zo\xEB \x1b"}));
  ASSERT_TRUE(record);
  EXPECT_EQ(record->time, 61.999);
  EXPECT_EQ(record->date.month, 12);
  EXPECT_EQ(record->date.day, 31);
  EXPECT_EQ(record->date.year, 2026);
  EXPECT_EQ(record->holder, "Zo\xEB \x1b");
}

TEST(RecordFile, CutAnywhereItIsDamaged) {
  const std::string whole = encodeRecord({61.999, {12, 31, 2026}, "Name"});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(decodeRecord(whole.substr(0, length))) << length;
  }
}

TEST(RecordFile, WithAWrongTagOrLengthItIsDamaged) {
  const std::string whole = encodeRecord({61.999, {12, 31, 2026}, "Name"});
  for (const std::size_t tag : {8, 12, 16, 20, 26, 30, 34, 38}) {
    std::string bytes = whole;
    bytes[tag] = 9;
    EXPECT_FALSE(decodeRecord(bytes)) << tag;
  }
  for (const char* length : {"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\x7F", "\x05\0\0\0"}) {
    std::string bytes = whole;
    bytes.replace(22, 4, length, 4);
    EXPECT_FALSE(decodeRecord(bytes));
  }
}

TEST(RecordFile, HoldsCharactersUpTo255) {
  std::string bytes = encodeRecord({61.999, {12, 31, 2026}, "A\xFF"});
  const auto record = decodeRecord(bytes);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->holder, "A\xFF");
  const std::size_t upperByte = bytes.size() - 1;
  bytes[upperByte] = 1;  // 0x1FF
  EXPECT_FALSE(decodeRecord(bytes));
  bytes[upperByte - 1] = 0;  // 0x100
  EXPECT_FALSE(decodeRecord(bytes));
  bytes[upperByte] = '\xFF';  // below 0
  EXPECT_FALSE(decodeRecord(bytes));
}

TEST(RecordFile, WithAnImpossibleTimeItIsDamaged) {
  for (const double time :
       {-1.0, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(decodeRecord(encodeRecord({time, {1, 1, 2026}, "x"}))) << time;
  }
}

TEST(TimeInWords, StartsWithABlankWithoutHoursAndMinutes) {
  EXPECT_EQ(timeInWords(0), " 0 point 0 0 0 ");
  EXPECT_EQ(timeInWords(3.25), " 3 point 2 5 0 ");
  EXPECT_EQ(timeInWords(59.9996), "1 minute 0 point 0 0 0 ");
}

TEST(TimeInWords, TakesOutMinutesAndHours) {
  EXPECT_EQ(timeInWords(60), "1 minute 0 point 0 0 0 ");
  EXPECT_EQ(timeInWords(61.999), "1 minute 1 point 9 9 9 ");
  EXPECT_EQ(timeInWords(3600), "1 hour 0 point 0 0 0 ");
  EXPECT_EQ(timeInWords(3723.5), "1 hour 2 minutes 3 point 5 0 0 ");
  EXPECT_EQ(timeInWords(7323.5), "2 hours 2 minutes 3 point 5 0 0 ");
}

// Minutes taken out of a binary fraction leave noise behind.
TEST(TimeInWords, AWholeHourHasNoMinutes) {
  EXPECT_EQ(timeInWords(3600), "1 hour 0 point 0 0 0 ");
  EXPECT_EQ(timeInWords(3599.999), "59 minutes 59 point 9 9 9 ");
}

TEST(TimeInWords, KeepsEveryMillisecondOfALongTime) {
  for (const int hours : {0, 1, 2, 27}) {
    for (int ms = 0; ms < 3600000; ms += 331) {
      const std::string words = timeInWords(hours * 3600 + ms / 1000.0);
      std::ostringstream end;
      end << ' ' << ms / 1000 % 60 << " point " << ms / 100 % 10 << ' ' << ms / 10 % 10 << ' ' << ms % 10
          << ' ';
      ASSERT_TRUE(words.ends_with(end.str())) << words << "for " << hours << " hours and " << ms << " ms";
    }
  }
  EXPECT_EQ(timeInWords(60.001), "1 minute 0 point 0 0 1 ");
}

}  // namespace
}  // namespace vorn
