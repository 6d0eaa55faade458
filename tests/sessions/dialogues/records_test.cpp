// Reading the summary of the records aloud and resetting records.
#include "records/records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "dialogue.h"

namespace vorn {
namespace {

const std::string kSummary = "vorn1records.txt";
const std::string kRecord = encodeRecord({61.5, {3, 6, 2026}, "Ann"});

const Told kQuestion = {"queue  select the track record to reset, all "};
const Told kResetAll = {"queue  Reset  all  records? no "};
const Told kAllReset = {"say  All  records have been reset. "};

const Told kNames = {"Maple Leaf Tri Oval Track",        "Painsville Oval Track",
                     "Chagrin River Speedway",           "Ohio Motor Speedway",
                     "Chardon Hill Top Raceway",         "Erie Lake Front Motor Speedway",
                     "Mentor Road Race Track",           "Kirtland Dirt Mile Oval Track",
                     "Chesterland Dirt Road Race Track", "Geneva Oval Track"};
const Told kWords = {"maple", "pain",   "chagrin",  "ohio",        "chardon",
                     "erie",  "mentor", "kirtland", "chesterland", "geneva"};

/// Files of the folder that are no sounds.
Told filesOf(const Dialogue& dialogue) {
  Told names = dialogue.session.folder.names();
  std::erase_if(names, [](const std::string& name) { return name.ends_with(".wav"); });
  return names;
}

/// What looks like a record and is none.
const Told kOthers = {"myvorn1maple0001.rec", "vorn1maple0001.rec.bak", "vorn1maple0001.txt",
                      "vorn2maple0001.rec", "vornmaple0001.rec"};

/// Two records of each track, and what looks like one.
void writeRecords(Dialogue& dialogue) {
  for (const std::string& word : kWords) {
    dialogue.session.folder.write("vorn1" + word + "0005.rec", kRecord);
    dialogue.session.folder.write("VORN1" + word + "0012.Rec", kRecord);
  }
  for (const std::string& name : kOthers) dialogue.session.folder.write(name, "kept");
  dialogue.session.folder.write(kSummary, "as it was");
  std::filesystem::create_directory(dialogue.session.folder.path() / "vorn1maple0007.rec");
}

TEST(ReadRecords, WithoutASummaryItSaysSo) {
  Dialogue dialogue(" reed records file ");
  EXPECT_EQ(dialogue.play("", {"speak", "file"}),
            (Told{"purge", "say  Sorry, but there was no records file to reed. "}));
}

TEST(ReadRecords, ReadsBlockByBlockWithoutAPauseBefore) {
  Dialogue dialogue(" reed records file ");
  dialogue.session.folder.write(kSummary,
                                "Vorn 1 tts records  By Ostrin\r\n \r\n"
                                "The record for 1 lap on the Geneva Oval Track is\r\n"
                                "1 minute 1 point 5 0 0  seconds \r\nBy Ann\r\nOn 3/6/2026\r\n \r\n");
  EXPECT_EQ(dialogue.play("wait 20000\n", {"speak", "file"}),
            (Told{"purge", "file read vorn1records.txt", "queue Vorn 1 tts records  By Ostrin", "queue  ",
                  "queue The record for 1 lap on the Geneva Oval Track is",
                  "queue 1 minute 1 point 5 0 0  seconds ", "queue By Ann", "queue On 3/6/2026", "queue  "}));
  const auto& ms = dialogue.moments();
  EXPECT_LE(ms[2] - ms[0], 4);
  EXPECT_NEAR(ms[3] - ms[2], 60 * 23, 1) << "within a block nothing waits";
  EXPECT_NEAR(ms[4] - ms[3], 1 + 201, 1) << "between blocks 0.2 s";
  EXPECT_NEAR(ms[8] - ms[7], 60 * 10, 1);
}

TEST(ReadRecords, AnyKeyStopsThem) {
  Dialogue dialogue(" reed records file ");
  dialogue.session.folder.write(kSummary, "a long first line\r\nthe second\r\n");
  EXPECT_EQ(dialogue.play("wait 200\n" + keys("X")), (Told{"purge", "queue a long first line", "purge"}));
}

TEST(ReadRecords, AnEmptyOrDamagedSummaryIsReadAsItStands) {
  Dialogue empty(" reed records file ");
  empty.session.folder.write(kSummary, "");
  EXPECT_EQ(empty.play(""), taken());

  Dialogue damaged(" reed records file ");
  damaged.session.folder.write(kSummary, std::string("\0\0\r\r\n\xFF", 6));
  EXPECT_EQ(damaged.play("wait 2000\n"),
            (Told{"purge", std::string("queue \0\0", 8), "queue ", "queue \u00FF"}));
}

const std::string kEmptySummary = "Vorn 1 tts records  By Ostrin\r\n \r\n";

TEST(ResetRecords, EnterOnAllAndYesDeletesEveryRecordAndNothingElse) {
  Dialogue dialogue(" reset records ");
  writeRecords(dialogue);
  EXPECT_EQ(dialogue.play(keys("Enter Y")), kQuestion + taken() + kResetAll + echoed("y") + kAllReset);
  Told left = kOthers;
  left.insert(left.end(), {"vorn1log.txt", "vorn1maple0007.rec", kSummary});
  EXPECT_THAT(filesOf(dialogue), ::testing::UnorderedElementsAreArray(left));
  EXPECT_EQ(dialogue.file(kSummary), kEmptySummary) << "reading it tells the truth";
}

TEST(ResetRecords, OfOneTrackLeavesTheOthers) {
  for (std::size_t track = 1; track <= kNames.size(); ++track) {
    Dialogue dialogue(" reset records ");
    writeRecords(dialogue);
    const std::string name = kNames[track - 1];
    std::string downs;
    Told moves;
    for (std::size_t i = 1; i <= track; ++i) {
      downs += "Down ";
      moves = moves + taken(kNames[i - 1]);
    }
    EXPECT_EQ(dialogue.play(keys(downs + "Enter Up Enter")),
              kQuestion + moves + taken() + Told{"queue  Reset the " + name + " records? no "} +
                  taken(" yes ") + taken() + Told{"say  The " + name + " records have been reset. "});
    const Told files = filesOf(dialogue);
    EXPECT_EQ(files.size(), kOthers.size() + 3 + 2 * (kWords.size() - 1)) << name;
    EXPECT_FALSE(dialogue.session.folder.has("vorn1" + kWords[track - 1] + "0005.rec"));
    EXPECT_FALSE(dialogue.session.folder.has("VORN1" + kWords[track - 1] + "0012.Rec"));
  }
}

TEST(ResetRecords, TheListWrapsBothWays) {
  Dialogue dialogue(" reset records ");
  EXPECT_EQ(dialogue.play(keys("Up Up Down Down Enter N")),
            kQuestion + taken("Geneva Oval Track") + taken("Chesterland Dirt Road Race Track") +
                taken("Geneva Oval Track") + taken(" all ") + taken() + kResetAll + echoed("n"));
}

TEST(ResetRecords, AKeyThatMeansNothingAsksAgainFromAll) {
  Dialogue dialogue(" reset records ");
  EXPECT_EQ(dialogue.play(keys("Down X Down F1 Down Escape Y N Enter Enter")),
            kQuestion + taken(kNames[0]) + echoed("x") +             //
                kQuestion + taken(kNames[0]) + echoedF1() +          //
                kQuestion + taken(kNames[0]) + echoed("\x1b") +      //
                kQuestion + echoed("y") + kQuestion + echoed("n") +  //
                kQuestion + taken() + kResetAll + taken());
}

struct ConfirmCase {
  const char* keys;
  Told told;
  bool resets;
};

void PrintTo(const ConfirmCase& c, std::ostream* out) {
  *out << c.keys;
}

class ConfirmReset : public ::testing::TestWithParam<ConfirmCase> {};

TEST_P(ConfirmReset, Answers) {
  const auto& [pressed, told, resets] = GetParam();
  Dialogue dialogue(" reset records ");
  writeRecords(dialogue);
  EXPECT_EQ(dialogue.play(keys("Enter ") + keys(pressed)),
            kQuestion + taken() + kResetAll + told + (resets ? kAllReset : Told{}));
  EXPECT_EQ(dialogue.session.folder.has("vorn1maple0005.rec"), !resets);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, ConfirmReset,
    ::testing::Values(ConfirmCase{"Enter", taken(), false},  //
                      ConfirmCase{"Up Enter", taken(" yes ") + taken(), true},
                      ConfirmCase{"Down Down Enter", taken(" yes ") + taken(" no ") + taken(), false},
                      ConfirmCase{"Y", echoed("y"), true},  //
                      ConfirmCase{"N", echoed("n"), false},
                      ConfirmCase{"Up X Enter", taken(" yes ") + echoed("x") + kResetAll + taken(), false},
                      ConfirmCase{"Up F1 Enter", taken(" yes ") + taken() + kResetAll + taken(), false},
                      ConfirmCase{"Escape Y", echoed("\x1b") + kResetAll + echoed("y"), true}));

TEST(ResetRecords, WithoutRecordsItSaysTheSame) {
  Dialogue dialogue(" reset records ");
  EXPECT_EQ(dialogue.play(keys("Enter Y"), {"speak", "file"}),
            kQuestion + taken() + kResetAll + echoed("y") + Told{"file write vorn1records.txt"} + kAllReset);
}

}  // namespace
}  // namespace vorn
