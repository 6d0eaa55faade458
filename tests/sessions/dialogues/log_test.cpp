// Reading the log aloud and deleting it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "dialogue.h"

namespace vorn {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

const std::string kLog = "vorn1log.txt";
const std::string kTodaysHeader = " \r\nVorn 1 log for 3/7/2026 By Ostrin \r\n";
const Told kTodaysLines = {"queue  ", "queue Vorn 1 log for 3/7/2026 By Ostrin "};

const Told kQuestion = {"queue  Are you sure that you want to delete the log file? no "};
const Told kDeleted = {"say  The log file has been deleted. "};

void removeLog(Dialogue& dialogue) {
  dialogue.beforeChoice = [&] { std::filesystem::remove(dialogue.session.folder.path() / kLog); };
}

TEST(ReadLog, OfTheFirstDayIsABlankAndTheHeader) {
  Dialogue dialogue(" reed log file ");
  EXPECT_EQ(dialogue.play("wait 3000\n", {"speak", "file"}),
            (Told{"purge", "file read vorn1log.txt"} + kTodaysLines));
}

TEST(ReadLog, ReadsLineByLineWithAPauseBetweenBlocks) {
  Dialogue dialogue(" reed log file ");
  dialogue.session.folder.write(kLog,
                                " \r\nVorn 1 log for 3/6/2026 By Ostrin \r\n The time\r\nab\r\n cd\r\n");
  EXPECT_EQ(dialogue.play("wait 20000\n"),
            (Told{"purge", "queue  ", "queue Vorn 1 log for 3/6/2026 By Ostrin ", "queue  The time",
                  "queue ab", "queue  cd"} +
             kTodaysLines));
  // A line takes 60 ms a letter, a blank one the least there is. A block ends
  // with a line that begins with a blank, and then there are 0.2 s.
  const auto& ms = dialogue.moments();
  const int line[] = {1, 60 * 27, 60 * 7, 60 * 2, 60 * 2, 1};
  const int pause[] = {201, 0, 201, 0, 201, 201};
  EXPECT_EQ(ms[1] - ms[0], 101);
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(ms[i + 2] - ms[i + 1], line[i] + pause[i], 1) << i;
}

TEST(ReadLog, BlankAndEmptyLinesNeverHang) {
  Dialogue dialogue(" reed log file ");
  dialogue.session.folder.write(kLog, "\r\n\r\n \r\n   \r\n\r\nx\r\n");
  EXPECT_EQ(dialogue.play("wait 20000\n"),
            (Told{"purge", "queue ", "queue ", "queue  ", "queue    ", "queue ", "queue x"} + kTodaysLines));
}

TEST(ReadLog, TakesAnyLineEndAndALastLineWithoutOne) {
  Dialogue dialogue(" reed log file ");
  dialogue.session.folder.write(kLog, "one\ntwo\rthree\r\nfour");
  // The header of today is appended to what there is.
  EXPECT_EQ(dialogue.play("wait 20000\n"), (Told{"purge", "queue one", "queue two", "queue three",
                                                 "queue four ", "queue Vorn 1 log for 3/7/2026 By Ostrin "}));
}

TEST(ReadLog, ReadsDamagedBytesAsTheyStand) {
  Dialogue dialogue(" reed log file ");
  dialogue.session.folder.write(kLog, std::string("a\0b\r\n\x80\xFF\r\n\x01\x1A\r\n", 13));
  EXPECT_EQ(
      dialogue.play("wait 20000\n"),
      (Told{"purge", std::string("queue a\0b", 9), "queue \u20AC\u00FF", "queue \x01\x1A"} + kTodaysLines));
}

TEST(ReadLog, ABlockBeyond111LinesIsReadOn) {
  std::string bytes;
  Told lines;
  for (int i = 0; i < 300; ++i) {
    bytes += "x\r\n";
    lines.push_back("queue x");
  }
  Dialogue dialogue(" reed log file ");
  dialogue.session.folder.write(kLog, bytes);
  EXPECT_EQ(dialogue.play("wait 40000\n"), taken() + lines + kTodaysLines);
}

TEST(ReadLog, AnyKeyStopsTheVoiceAtOnceAndIsNotActedOn) {
  for (const char* key : {"Enter", "Escape", "F1", "Up", "Down", "Y", "X"}) {
    Dialogue dialogue(" reed log file ");
    EXPECT_EQ(dialogue.play("wait 700\n" + keys(key)), taken() + kTodaysLines + taken()) << key;
    EXPECT_LE(dialogue.moments().back(), 800) << key;
  }
}

TEST(ReadLog, AKeyInThePauseStopsItWithTheNextLine) {
  Dialogue dialogue(" reed log file ");
  EXPECT_EQ(dialogue.play("wait 100\n" + keys("X")), taken() + kTodaysLines + taken());
  EXPECT_EQ(dialogue.moments()[3] - dialogue.moments()[2], 1);
}

TEST(ReadLog, WithoutALogItSaysSo) {
  Dialogue dialogue(" reed log file ");
  removeLog(dialogue);
  EXPECT_EQ(dialogue.play("", {"speak", "file"}),
            (Told{"purge", "say  sorry, there was no log file to reed. "}));
}

TEST(ReadLog, FindsTheLogInAnyCase) {
  Dialogue dialogue(" reed log file ");
  dialogue.session.folder.write("Vorn1Log.TXT", "old\r\n");
  EXPECT_EQ(dialogue.play("wait 20000\n", {"speak", "file"}),
            (Told{"purge", "file read Vorn1Log.TXT", "queue old"} + kTodaysLines));
}

struct DeleteCase {
  const char* keys;
  Told told;
  bool deletes;
};

void PrintTo(const DeleteCase& c, std::ostream* out) {
  *out << c.keys;
}

class DeleteLog : public ::testing::TestWithParam<DeleteCase> {};

TEST_P(DeleteLog, Answers) {
  const auto& [pressed, told, deletes] = GetParam();
  Dialogue dialogue(" delete log file ");
  dialogue.session.folder.write(kLog, "old\r\n");
  dialogue.session.folder.write("vorn1log.txt.old", "kept");
  dialogue.session.folder.write("vorn1maple0005.rec", "kept");
  EXPECT_EQ(dialogue.play(keys(pressed)), kQuestion + told + (deletes ? kDeleted : Told{}));
  EXPECT_EQ(dialogue.file(kLog), deletes ? kTodaysHeader : "old\r\n" + kTodaysHeader);
  EXPECT_EQ(dialogue.file("vorn1log.txt.old"), "kept");
  EXPECT_EQ(dialogue.file("vorn1maple0005.rec"), "kept");
}

INSTANTIATE_TEST_SUITE_P(
    Keys, DeleteLog,
    ::testing::Values(DeleteCase{"Enter", taken(), false},  //
                      DeleteCase{"Up Enter", taken(" yes ") + taken(), true},
                      DeleteCase{"Down Enter", taken(" yes ") + taken(), true},
                      DeleteCase{"Up Up Enter", taken(" yes ") + taken(" no ") + taken(), false},
                      DeleteCase{"Up Down Up Enter",
                                 taken(" yes ") + taken(" no ") + taken(" yes ") + taken(), true},
                      DeleteCase{"Y", echoed("y"), true},  //
                      DeleteCase{"N", echoed("n"), false},
                      DeleteCase{"Up N", taken(" yes ") + echoed("n"), false},
                      DeleteCase{"X Enter", echoed("x") + kQuestion + taken(), false},
                      DeleteCase{"Up X Enter", taken(" yes ") + echoed("x") + kQuestion + taken(), false},
                      DeleteCase{"Up F1 Enter", taken(" yes ") + taken() + kQuestion + taken(), false},
                      DeleteCase{"F1 Y", taken() + kQuestion + echoed("y"), true},
                      DeleteCase{"Escape Enter", echoed("\x1b") + kQuestion + taken(), false}));

TEST(DeleteLog, DoesNothingElseToTheFolder) {
  Dialogue dialogue(" delete log file ");
  Told before;
  dialogue.beforeChoice = [&] { before = dialogue.session.folder.names(); };
  EXPECT_EQ(dialogue.play(keys("Y"), {"file"}),
            (Told{"file delete vorn1log.txt", "file append vorn1log.txt"}));
  EXPECT_EQ(dialogue.session.folder.names(), before);
}

TEST(DeleteLog, WithoutALogItSaysSoAndAsksNothing) {
  Dialogue dialogue(" delete log file ");
  removeLog(dialogue);
  EXPECT_EQ(dialogue.play(""), (Told{"say  sorry, there was no log file to delete. "}));
  EXPECT_FALSE(dialogue.session.folder.has(kLog));
}

TEST(DeleteLog, TheNextStartAddsItsHeader) {
  Dialogue dialogue(" delete log file ");
  dialogue.play(keys("Y"));
  dialogue.play(keys("N"));
  EXPECT_EQ(dialogue.file(kLog), kTodaysHeader + kTodaysHeader);
}

}  // namespace
}  // namespace vorn
