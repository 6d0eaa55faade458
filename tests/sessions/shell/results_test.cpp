// What follows a race: the result told and logged, the record, its holder, the
// summary, and the menu after it.

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::string kNamePrompt = "queue  Enter your name as the new record holder. ";
const std::string kMenuPrompt = "queue  Select, repeat race time ";
const std::string kMapleWelcome = "say  Welcome to the Maple Leaf Try Oval Track ";
const std::string kFarewell = "queue  Thank you for playing Vorn 1 tts, By Ostrin. ";

// A record file, byte for byte.
std::string recordBytes(double time, int month, int day, int year, const std::string& holder) {
  std::string bytes;
  const auto put = [&](std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
  };
  put(std::bit_cast<std::uint64_t>(time), 8);
  for (const int part : {month, day, year}) {
    put(2, 2);
    put(static_cast<std::uint64_t>(part), 2);
  }
  put(3, 2);
  put(holder.size(), 4);
  for (const char c : holder) {
    put(2, 2);
    put(static_cast<unsigned char>(c), 2);
  }
  return bytes;
}

class Results : public testing::Test {
 protected:
  // A race on Maple that ended so; then `statements`.
  void race(const Finish& how, const std::string& statements) {
    s.script(raceOver() + finish(how) + statements).run();
    EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  }
  // The one text of the result.
  std::string told() const {
    for (const std::string& text : s.trace().spoken()) {
      if (text.starts_with(" Your time for ")) return text;
    }
    return "nothing";
  }
  std::string log() const { return s.folder.read("vorn1log.txt").substr(kLogHeader.size()); }

  Session s;
};

const std::string kAtName = "wait say  Enter your name\nwait 20\n";
const std::string kConfirmName =
    "tap Enter\nwait say  correct, for the new record holder\nwait 20\ntap Enter\n";
const std::string kAtMenu = "wait say  Select, repeat race time \nwait 550\n";
const std::string kMarkFinish = "echo finished\n";

// --- the result ---

TEST_F(Results, AreToldInOneTextAndLoggedInFiveLines) {
  race({}, kMarkFinish + kAtName);
  const std::string time =
      " Your time for 1 lap on the Maple Leaf Tri Oval Track is, 1 minute 15 point 5 0 0 seconds. ";
  const std::string comparison = " Which sets a new record! ";
  const std::string record = " The record was  0 point 0 0 0  seconds. ";
  const std::string holder = " By No One on 9/9/2009. ";
  const std::string fuel = " You finished the race with 20.5 gallons of fuel. ";
  const Story story = storyAfter(s.trace(), "finished");
  EXPECT_THAT(only(story, {"say ", "queue ", "purge", "append ", "read ", "write "}),
              ElementsAre("append vorn1log.txt", "append vorn1log.txt", "append vorn1log.txt",
                          "queue " + time + comparison + record + holder + fuel, kNamePrompt));
  EXPECT_EQ(log(), time + "\r\n" + comparison + "\r\n" + record + "\r\n" + holder + "\r\n" + fuel + "\r\n");
}

TEST_F(Results, ComeAfterAllLoopsHaveStopped) {
  race({}, kMarkFinish + kAtName);
  const Story story = storyAfter(s.trace(), "finished");
  const auto firstAppend = std::find(story.begin(), story.end(), "append vorn1log.txt");
  ASSERT_GE(firstAppend - story.begin(), 8);
  EXPECT_THAT(
      Story(firstAppend - 8, firstAppend),
      ElementsAre("engineBuffer Stop", "wallLeftBuffer Stop", "wallRightBuffer Stop", "warnBuffer Stop",
                  "sound18Buffer Stop", "sound9Buffer Stop", "sound10Buffer Stop", "sound8Buffer Stop"));
}

TEST_F(Results, TakeNoMoreTimeThanTheirPauses) {
  race({}, kAtName);
  const auto appends = timesOf(s.trace(), "append vorn1log.txt");
  ASSERT_THAT(appends, SizeIs(4));  // the first is the start of the run
  EXPECT_EQ(appends[2], appends[1]);
  EXPECT_EQ(appends[3], appends[2] + 201);
  EXPECT_EQ(timeOf(s.trace(), "queue " + told()), appends[3]);
  // keys forgotten, 0.2 s, keys forgotten; the prompt forgets them twice and yields twice
  EXPECT_EQ(timeOf(s.trace(), kNamePrompt), appends[3] + 3 + 201 + 3 + 8);
}

TEST_F(Results, SayHoursMinutesAndSeconds) {
  race({.raceTime = 3725.5, .raceHours = 1, .raceMinutes = 2, .raceSeconds = 5.5}, kAtName);
  EXPECT_THAT(told(), StartsWith(" Your time for 1 lap on the Maple Leaf Tri Oval Track is, "
                                 "1 hour 2 minutes 5 point 5 0 0 seconds.  Which"));
  race({.raceTime = 7260, .raceHours = 2, .raceMinutes = 1, .raceSeconds = 0}, kAtName);
  EXPECT_THAT(told(), HasSubstr(" is, 2 hours 1 minute 0 point 0 0 0 seconds. "));
  race({.raceTime = 45.678, .raceHours = 0, .raceMinutes = 0, .raceSeconds = 45.678}, kAtName);
  EXPECT_THAT(told(), HasSubstr(" is, 45 point 6 7 8 seconds. "));
}

TEST_F(Results, SayTheLapsAsTyped) {
  struct Laps {
    std::string number, words, file;
  };
  const Laps laps[] = {
      {"2", "2 laps", "vorn1maple0002.rec"},       {"12", "12 laps", "vorn1maple0012.rec"},
      {"100", "100 laps", "vorn1maple0100.rec"},   {"9999", "9999 laps", "vorn1maple9999.rec"},
      {"2.5", "2.5 laps", "vorn1maple0002.5.rec"}, {"0.5", "0.5 lap", "vorn1maple0000.5.rec"},
      {"-3", "-3 lap", "vorn1maple000-3.rec"}};
  for (const Laps& each : laps) {
    race({},
         "set lapsToRun " + each.number + "\n" + kAtName + kConfirmName + kAtMenu + "get recordFileName\n");
    EXPECT_THAT(told(), StartsWith(" Your time for " + each.words + " on the ")) << each.number;
    EXPECT_EQ(answer(s.trace(), "recordFileName"), each.file);
    EXPECT_TRUE(s.folder.has(each.file)) << each.number;
  }
}

TEST_F(Results, BelongToTheirTrack) {
  race({}, "set trackChoice 10\nset lapsToRun 12\n" + kAtName + kConfirmName + kAtMenu);
  EXPECT_THAT(told(), StartsWith(" Your time for 12 laps on the Geneva Oval Track is, "));
  EXPECT_TRUE(s.folder.has("vorn1geneva0012.rec"));
}

TEST_F(Results, SayTheFuelToTwoPlaces) {
  const std::pair<double, std::string> fuels[] = {{22, "22"},     {12.345, "12.34"}, {12.375, "12.38"},
                                                  {7.999, "8"},   {0.5, "0.5"},      {0, "0"},
                                                  {19.005, "19"}, {3.1, "3.1"}};
  for (const auto& [gallons, words] : fuels) {
    race({.fuel = gallons}, kAtName);
    EXPECT_TRUE(told().ends_with("  You finished the race with " + words + " gallons of fuel. ")) << told();
  }
}

// --- compared with the record ---

TEST_F(Results, BeatARecord) {
  s.folder.write("vorn1maple0001.rec", recordBytes(80.25, 12, 31, 2025, "Zo\xEB"));
  race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu);
  EXPECT_THAT(told(),
              HasSubstr(" seconds.  Which sets a new record!  by,  4 point 7 5 0  seconds.  The record was "
                        "1 minute 20 point 2 5 0  seconds.  By Zo\u00EB on 12/31/2025.  You finished"));
  EXPECT_THAT(log(),
              HasSubstr("\r\n Which sets a new record!  by,  4 point 7 5 0  seconds. \r\n The record was 1 "
                        "minute 20 point 2 5 0  seconds. \r\n By Zo\xEB on 12/31/2025. \r\n You finished"));
  // The shorter name leaves nothing of the longer one behind.
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), recordBytes(75.5, 3, 7, 2026, "bo"));
}

TEST_F(Results, AreSlowerThanARecord) {
  const std::string record = recordBytes(70, 1, 2, 2024, "Ann");
  s.folder.write("vorn1maple0001.rec", record);
  race({}, kMarkFinish + kAtMenu);
  EXPECT_THAT(
      told(),
      HasSubstr(" seconds.  which is slower than the record, by,  5 point 5 0 0  seconds.  The record is "
                "1 minute 10 point 0 0 0  seconds.  By Ann on 1/2/2024.  You finished"));
  EXPECT_THAT(speechIn(storyAfter(s.trace(), "finished")), ElementsAre("queue " + told(), kMenuPrompt));
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), record);
  EXPECT_FALSE(s.folder.has("vorn1records.txt"));
}

TEST_F(Results, EqualToARecordAreNotFaster) {
  const std::string record = recordBytes(75.5, 1, 2, 2024, "Ann");
  s.folder.write("vorn1maple0001.rec", record);
  race({}, kAtMenu);
  EXPECT_THAT(told(),
              HasSubstr("  which is slower than the record, by,  0 point 0 0 0  seconds.  The record is "));
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), record);
}

TEST_F(Results, AMillisecondDecides) {
  s.folder.write("vorn1maple0001.rec", recordBytes(75.501, 1, 2, 2024, "Ann"));
  race({}, kAtName);
  EXPECT_THAT(
      told(),
      HasSubstr("  Which sets a new record!  by,  0 point 0 0 1  seconds.  The record was 1 minute 15 "
                "point 5 0 1  seconds. "));
  s.folder.write("vorn1maple0001.rec", recordBytes(75.499, 1, 2, 2024, "Ann"));
  race({}, kAtMenu);
  EXPECT_THAT(told(),
              HasSubstr("  which is slower than the record, by,  0 point 0 0 1  seconds.  The record is 1 "
                        "minute 15 point 4 9 9  seconds. "));
}

TEST_F(Results, DifferByMinutesAndHours) {
  s.folder.write("vorn1maple0001.rec", recordBytes(7325.625, 1, 2, 2024, "Ann"));
  race({.raceTime = 60.5, .raceMinutes = 1, .raceSeconds = 0.5}, kAtName);
  EXPECT_THAT(told(),
              HasSubstr("  by, 2 hours 1 minute 5 point 1 2 5  seconds.  The record was 2 hours 2 minutes 5 "
                        "point 6 2 5  seconds. "));
}

TEST_F(Results, AreComparedWithARecordFileWhateverItsCase) {
  s.folder.write("VORN1MAPLE0001.REC", recordBytes(80.25, 12, 31, 2025, "Ann"));
  race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu);
  EXPECT_EQ(s.folder.read("VORN1MAPLE0001.REC"), recordBytes(75.5, 3, 7, 2026, "bo"));
  EXPECT_FALSE(s.folder.has("vorn1maple0001.rec"));
}

TEST_F(Results, TakeADamagedRecordForNone) {
  const std::string whole = recordBytes(70, 1, 2, 2024, "Ann");
  std::string wrongTag = whole, longName = whole, noEnd = whole;
  wrongTag[8] = 7;
  longName[22] = 99;
  noEnd[25] = '\xFF';
  for (const std::string& bytes :
       {std::string(), std::string("garbage"), whole.substr(0, whole.size() - 1), wrongTag, longName, noEnd,
        recordBytes(-5, 1, 2, 2024, "Ann"), std::string(1000, '\0'), std::string(1000, '\xFF')}) {
    s.folder.write("vorn1maple0001.rec", bytes);
    race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu);
    EXPECT_THAT(told(), HasSubstr("  Which sets a new record!  The record was  0 point 0 0 0  seconds. "))
        << bytes;
    EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), recordBytes(75.5, 3, 7, 2026, "bo"));
    s.folder.write("vorn1log.txt", "");
  }
}

// --- the holder's name ---

class Name : public Results {
 protected:
  // What is said and set from the prompt for the name on.
  Story naming(const std::string& statements) {
    race({}, kAtName + "echo here\n" + statements);
    return only(storyAfter(s.trace(), "here"), {"say ", "queue ", "purge", "voice ", "value "});
  }
  static std::string question(const std::string& name) {
    return "queue  Is " + name + " correct, for the new record holder? yes ";
  }
  std::string record() const { return s.folder.read("vorn1maple0001.rec"); }
};

TEST_F(Name, IsEchoedConfirmedAndWritten) {
  EXPECT_THAT(naming("type Bo\ntap Enter\nwait 100\ntap Enter\nwait 400\n"),
              ElementsAreArray(Story{"purge", "purge"} + echoed("B") + Story{"purge"} + echoed("o") +
                               Story{"purge", question("Bo"), "purge", kMenuPrompt}));
  EXPECT_EQ(record(), recordBytes(75.5, 3, 7, 2026, "Bo"));
  EXPECT_EQ(record().size(), 26u + 4 * 2);
}

TEST_F(Name, MayBeEmpty) {
  EXPECT_THAT(naming("tap Enter\nwait 100\ntap Enter\nwait 400\n"),
              ElementsAre("purge", question(""), "purge", kMenuPrompt));
  EXPECT_EQ(record(), recordBytes(75.5, 3, 7, 2026, ""));
  EXPECT_EQ(record().size(), 26u);
  s.folder.write("vorn1log.txt", "");
  race({.raceTime = 80, .raceMinutes = 1, .raceSeconds = 20}, kAtMenu);
  EXPECT_THAT(told(), HasSubstr("  By  on 3/7/2026. "));
}

TEST_F(Name, IsMadeOfEveryKeysCode) {
  // Each key but Enter, Backspace, the shifts and F1 gives the lower-case character of its code.
  const std::pair<const char*, int> keys[] = {{"A", 'a'},
                                              {"Z", 'z'},
                                              {"0", '0'},
                                              {"9", '9'},
                                              {"Space", ' '},
                                              {"Escape", 27},
                                              {"Tab", 9},
                                              {"Left", 37},
                                              {"Up", 38},
                                              {"Right", 39},
                                              {"Down", 40},
                                              {"Home", 36},
                                              {"End", 35},
                                              {"PageUp", 33},
                                              {"PageDown", 34},
                                              {"Insert", 45},
                                              {"Delete", 46},
                                              {"LeftCtrl", 17},
                                              {"RightCtrl", 17},
                                              {"LeftAlt", 18},
                                              {"RightAlt", 18},
                                              {"CapsLock", 20},
                                              {"F2", 'q'},
                                              {"F12", '{'},
                                              {"Numpad0", 96},
                                              {"Numpad1", 'a'},
                                              {"Numpad9", 'i'},
                                              {"Comma", 188},
                                              {"Period", 190},
                                              {"Minus", 189},
                                              {"Equals", 187},
                                              {"Semicolon", 186},
                                              {"Slash", 191},
                                              {"Apostrophe", 254},
                                              {"Backslash", 252},
                                              {"LeftBracket", 251},
                                              {"RightBracket", 253},
                                              {"Grave", 224}};
  std::string typed, name;
  for (const auto& [key, code] : keys) {
    typed += std::string("tap ") + key + "\n";
    name += static_cast<char>(code);
  }
  race({}, kAtName + typed + kConfirmName + kAtMenu);
  EXPECT_EQ(record(), recordBytes(75.5, 3, 7, 2026, name));
  EXPECT_THAT(s.folder.read("vorn1records.txt"), HasSubstr("\r\nBy " + name + "\r\n"));
}

// With Shift the keys beyond ASCII have capitals too, where there are any.
TEST_F(Name, HasCapitalsBeyondAscii) {
  race({}, kAtName + taps("LeftShift Grave RightShift Apostrophe LeftShift Comma LeftShift 7") +
               kConfirmName + kAtMenu);
  EXPECT_EQ(record(), recordBytes(75.5, 3, 7, 2026,
                                  "\xC0\xDE\xBC"
                                  "7"));
}

TEST_F(Name, IsSaidAndReadBackBeyondAscii) {
  naming("tap Grave\ntap Enter\nwait 100\ntap Enter\nwait 400\n");
  EXPECT_TRUE(s.trace().said(" Is \u00E0 correct, for the new record holder? yes "));
  race({.raceTime = 80, .raceMinutes = 1, .raceSeconds = 20}, kAtMenu);
  EXPECT_THAT(told(), HasSubstr("  By \u00E0 on 3/7/2026. "));
}

TEST_F(Name, IsAskedForAgainAfterNo) {
  EXPECT_THAT(
      naming("type a\ntap Enter\nwait 100\ntap Up\ntap Enter\nwait 100\ntype c\ntap Enter\nwait 100\n"),
      ElementsAreArray(Story{"purge"} + echoed("a") +
                       Story{"purge", question("a"), "purge", "queue  no ", "purge", kNamePrompt, "purge"} +
                       echoed("c") + Story{"purge", question("c")}));
}

TEST_F(Name, ConfirmationKnowsTheseKeys) {
  const std::string typed = "type a\ntap Enter\nwait 100\n";
  const Story asked = Story{"purge"} + echoed("a") + Story{"purge", question("a")};
  EXPECT_THAT(
      naming(typed + "tap Up\ntap Down\ntap Down\n"),
      ElementsAreArray(asked + Story{"purge", "queue  no ", "purge", "queue  yes ", "purge", "queue  no "}));
  EXPECT_THAT(
      naming(typed + "tap Up\ntap F1\nwait 100\ntap Enter\nwait 400\n"),
      ElementsAreArray(asked + Story{"purge", "queue  no ", "purge", question("a"), "purge", kMenuPrompt}))
      << "F1 asks again, from yes";
  std::filesystem::remove(s.folder.path() / "vorn1maple0001.rec");
  EXPECT_THAT(
      naming(typed + "tap Up\ntap X\nwait 100\n"),
      ElementsAreArray(asked + Story{"purge", "queue  no ", "purge"} + echoed("x") + Story{question("a")}))
      << "another key is spoken and asks again";
  EXPECT_THAT(naming(typed + "tap N\nwait 100\n"),
              ElementsAreArray(asked + Story{"purge"} + echoed("n") + Story{kNamePrompt}));
  EXPECT_THAT(
      naming(typed + "tap Up\ntap Y\nwait 400\n"),
      ElementsAreArray(asked + Story{"purge", "queue  no ", "purge"} + echoed("y") + Story{kMenuPrompt}));
}

// --- record and summary ---

TEST_F(Results, DoNotReplaceABetterOneThatAnotherProgramHasSetMeanwhile) {
  s.folder.write("vorn1maple0001.rec", recordBytes(90, 3, 1, 2026, "Ann"));
  s.script(raceOver() + finish({}) + "wait say  Enter your name\nwait 20\ntype bo\ntap Enter\nwait 50\n")
      .meanwhile([&] { s.folder.write("vorn1maple0001.rec", recordBytes(70, 3, 2, 2026, "Cid")); })
      .script("tap Enter\nwait say  Select, repeat race time \n")
      .run();
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), recordBytes(70, 3, 2, 2026, "Cid"));
  EXPECT_THAT(s.folder.read("vorn1records.txt"), testing::HasSubstr("By Cid\r\n"));
}

TEST_F(Results, WriteTheRecordAndThenTheSummary) {
  race({}, kAtName + "type bo\n" + kMarkFinish + kConfirmName + kAtMenu);
  EXPECT_THAT(only(storyAfter(s.trace(), "finished"), {"read ", "write ", "append "}),
              ElementsAre("write vorn1maple0001.rec", "read vorn1maple0001.rec", "write vorn1records.txt"));
  EXPECT_EQ(s.folder.read("vorn1records.txt"),
            "Vorn 1 tts records  By Ostrin\r\n"
            " \r\n"
            "The record for 1 lap on the Maple Leaf Tri Oval Track is\r\n"
            "1 minute 15 point 5 0 0  seconds \r\n"
            "By bo\r\n"
            "On 3/7/2026\r\n"
            " \r\n");
}

TEST_F(Results, SummaryHoldsEveryRecordInOrder) {
  s.folder.write("vorn1geneva0012.rec", recordBytes(3725.5, 12, 25, 2025, "Gen"));
  s.folder.write("vorn1maple0010.rec", recordBytes(600, 1, 1, 2026, "M10"));
  s.folder.write("VORN1MAPLE0002.REC", recordBytes(59.999, 1, 1, 2026, "M2"));
  s.folder.write("vorn1maple1000.rec", recordBytes(7322.001, 1, 1, 2026, ""));
  s.folder.write("vorn1pain0002.5.rec", recordBytes(60.001, 1, 1, 2026, "P\xEB"));
  s.folder.write("vorn1pain000-1.rec", recordBytes(5, 1, 1, 2026, "minus"));
  s.folder.write("vorn1erie0001.rec", "damaged");
  s.folder.write("vorn1chardon0001.rec", recordBytes(0.5, 2, 3, 2026, "C").substr(0, 20));
  s.folder.write("vorn1other0001.rec", recordBytes(5, 1, 1, 2026, "no track"));
  s.folder.write("vorn1mentor0001.rec.bak", recordBytes(5, 1, 1, 2026, "no record"));
  s.folder.write("vorn1records.txt", "old\r\n");
  race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu);
  const auto block = [](const std::string& laps, const std::string& track, const std::string& time,
                        const std::string& holder, const std::string& date) {
    return "The record for " + laps + " on the " + track + " is\r\n" + time + " seconds \r\nBy " + holder +
           "\r\nOn " + date + "\r\n \r\n";
  };
  const std::string maple = "Maple Leaf Tri Oval Track", pain = "Painsville Oval Track";
  EXPECT_EQ(
      s.folder.read("vorn1records.txt"),
      "Vorn 1 tts records  By Ostrin\r\n \r\n" +
          block("1 lap", maple, "1 minute 15 point 5 0 0 ", "bo", "3/7/2026") +
          block("2 laps", maple, "59 point 9 9 9 ", "M2", "1/1/2026") +
          block("10 laps", maple, "10 minutes 0 point 0 0 0 ", "M10", "1/1/2026") +
          block("1000 laps", maple, "2 hours 2 minutes 2 point 0 0 1 ", "", "1/1/2026") +
          block("0 lap", pain, "5 point 0 0 0 ", "minus", "1/1/2026") +
          block("2.5 laps", pain, "1 minute 0 point 0 0 1 ", "P\xEB", "1/1/2026") +
          block("12 laps", "Geneva Oval Track", "1 hour 2 minutes 5 point 5 0 0 ", "Gen", "12/25/2025"));
}

TEST_F(Results, AreDatedTheDayTheyWereRaced) {
  using namespace std::chrono;
  s.options.date = year_month_day(year(2027), December, day(31));
  s.options.timeOfDay = 23h + 59min + 30s;  // the finish lies beyond midnight
  race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu);
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), recordBytes(75.5, 1, 1, 2028, "bo"));
}

TEST_F(Results, OfTheNextRaceAreComparedWithTheNewRecord) {
  const std::string again = kAtMenu + menuDown() + menuEnter() + "wait say  Welcome to the \n" +
                            enterLaps("1") + startOnKeyboard() +
                            "release LeftCtrl\nset lapPosition 1000000\nwait tick 6\n";
  s.script(raceOver() + finish({}) + kAtName + "type bo\n" + kConfirmName + again +
           finish({.raceTime = 70, .raceSeconds = 10}) + kAtName + "type al\n" + kConfirmName + again +
           finish({.raceTime = 71, .raceSeconds = 11}) + kAtMenu)
      .run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_TRUE(
      s.trace().said("  Which sets a new record!  by,  5 point 5 0 0  seconds.  The record was 1 minute 15 "
                     "point 5 0 0  seconds.  By bo on 3/7/2026. "));
  EXPECT_TRUE(s.trace().said(
      "  which is slower than the record, by,  1 point 0 0 0  seconds.  The record is 1 minute "
      "10 point 0 0 0  seconds.  By al on 3/7/2026. "));
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), recordBytes(70, 3, 7, 2026, "al"));
}

// --- abandoned races ---

class AbandonedRace : public Results {
 protected:
  void expectNothingLeft(const std::string& script) {
    s.script(script + "wait say  Select. Exit Game. \nwait 550\nget escapePressed\necho here\n" + menuUp())
        .run();
    EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
    EXPECT_EQ(log(), "");
    EXPECT_FALSE(s.trace().said("Your time"));
    EXPECT_FALSE(s.folder.has("vorn1maple0001.rec"));
    EXPECT_FALSE(s.folder.has("vorn1records.txt"));
    EXPECT_EQ(answer(s.trace(), "escapePressed"), "0");
    EXPECT_THAT(speechIn(storyAfter(s.trace(), "here")), ElementsAre("purge", "queue  Start Game. "));
  }
};

TEST_F(AbandonedRace, LeavesNothingBehind) {
  // The prompt of the start is waited for first.
  expectNothingLeft(atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() +
                    "wait tick 10\ntap Escape\n");
}

TEST_F(AbandonedRace, AtTheEngineLeavesNothingBehind) {
  expectNothingLeft(atMainMenu() + toTrack(1) + enterLaps("1") + "wait say  Ladies\nwait 50\ntap Escape\n");
}

// Whatever the time would have been: Escape gives the race up until the shell has looked.
TEST_F(AbandonedRace, WhileTheFinishIsCelebratedLeavesNothingBehind) {
  expectNothingLeft(raceOver() + "wait 300\ntap Escape\n");
}

TEST_F(AbandonedRace, IsNoMoreOnceTheResultIsThere) {
  race({}, "wait say  Your time for\ntap Escape\n" + kAtName);
  EXPECT_NE(log(), "");
}

TEST_F(AbandonedRace, LetsTheNextOneBeDriven) {
  s.script(atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() +
           "wait tick 10\ntap Escape\nrelease LeftCtrl\n" + atMainMenu() + toTrack(1) + enterLaps("1") +
           startOnKeyboard() + "release LeftCtrl\nset lapPosition 1000000\nwait tick 6\n" + finish({}) +
           kAtName)
      .run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_THAT(told(), HasSubstr("1 minute 15 point 5 0 0 seconds. "));
}

// --- the menu after a race ---

class PostRaceMenu : public Results {
 protected:
  Story choosing(const std::string& statements) {
    race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu + "echo here\n" + statements);
    return speechIn(storyAfter(s.trace(), "here"));
  }
};

TEST_F(PostRaceMenu, ComesAfterAPause) {
  race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu);
  EXPECT_EQ(timeOf(s.trace(), kMenuPrompt), timeOf(s.trace(), "write vorn1records.txt") + 301);
}

TEST_F(PostRaceMenu, GoesDownAndAroundItsFiveEntries) {
  EXPECT_THAT(choosing(menuDown(5)),
              ElementsAre("purge", "queue  Run the same track again ", "purge",
                          "queue  Run a different track ", "purge", "queue  Go to main menu ", "purge",
                          "queue  Exit game ", "purge", "queue  repeat race time "));
}

TEST_F(PostRaceMenu, GoesUpAndAroundItsFiveEntries) {
  EXPECT_THAT(choosing(menuUp(5)),
              ElementsAre("purge", "queue  Exit game ", "purge", "queue  Go to main menu ", "purge",
                          "queue  Run a different track ", "purge", "queue  Run the same track again ",
                          "purge", "queue  repeat race time "));
}

TEST_F(PostRaceMenu, RepeatsTheResultAndStaysWhereItIs) {
  const Story repeated = choosing(menuEnter() + "wait 550\n" + menuEnter() + "wait 550\n" + menuDown());
  EXPECT_THAT(repeated, ElementsAre("purge", "queue " + told(), "purge", "queue " + told(), "purge",
                                    "queue  Run the same track again "));
  EXPECT_THAT(told(), StartsWith(" Your time for 1 lap "));
  EXPECT_TRUE(told().ends_with(" gallons of fuel. "));
}

TEST_F(PostRaceMenu, RunsTheSameTrackAgain) {
  EXPECT_THAT(choosing("set topGearUnlimited 1\n" + menuDown() + menuEnter() +
                       "wait say  Enter the number\n"
                       "get topGearUnlimited\n"),
              ElementsAre("purge", "queue  Run the same track again ", "purge", "purge", kMapleWelcome,
                          "queue  Enter the number of laps that you wish to run. "));
  EXPECT_EQ(answer(s.trace(), "topGearUnlimited"), "0");
}

TEST_F(PostRaceMenu, LeadsToADifferentTrack) {
  EXPECT_THAT(
      choosing(menuDown(2) + menuEnter() + "wait 1500\n"),
      ElementsAre("purge", "queue  Run the same track again ", "purge", "queue  Run a different track ",
                  "purge", "queue  Select the track you wish to run, Maple Leaf Try Oval "));
}

TEST_F(PostRaceMenu, LeadsToTheMainMenuFromItsTop) {
  EXPECT_THAT(choosing(menuUp(2) + menuEnter() + "wait 550\n" + menuUp()),
              ElementsAre("purge", "queue  Exit game ", "purge", "queue  Go to main menu ", "purge",
                          "queue  Select. Exit Game. ", "purge", "queue  Start Game. "));
}

TEST_F(PostRaceMenu, LeavesTheGame) {
  EXPECT_THAT(choosing(menuUp() + menuEnter() + "wait 60000\n"),
              ElementsAre("purge", "queue  Exit game ", "purge", kFarewell, "say  exiting program "));
}

// The sounds of the race are loaded at Start Game only.
TEST_F(PostRaceMenu, LoadsNoSoundsAnew) {
  race({}, kAtName + "type bo\n" + kConfirmName + kAtMenu + menuDown() + menuEnter() +
               "wait say  Enter the number\n");
  EXPECT_THAT(only(storyOf(s.trace()), {"wallLeftBuffer create"}), SizeIs(1));
  race({.raceTime = 90, .raceSeconds = 30}, kAtMenu + menuUp(2) + menuEnter() +
                                                "wait say  Select. Exit Game. \nwait 550\n" + menuUp() +
                                                menuEnter() + "wait say  Select the track\n");
  EXPECT_THAT(only(storyOf(s.trace()), {"wallLeftBuffer create"}), SizeIs(2));
}

}  // namespace
}  // namespace vorn
