// The program from its first call to the main menu.

#include <gmock/gmock.h>

#include <filesystem>

#include "platform/common/folder_use.h"
#include "platform/mixing/wav_file.h"
#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const Story kOpenSoundAndKeyboard = {"window  Vorn 1 TTS Version 2  By Ostrin ",
                                     "sound create",
                                     "sound SetCooperativeLevel 2",
                                     "keyboard create",
                                     "keyboard SetCommonDataFormat 1",
                                     "keyboard SetCooperativeLevel 10",
                                     "keyboard Acquire"};
const Story kOpenController = {"controller create",
                               "controller SetCommonDataFormat 3",
                               "controller SetCooperativeLevel 10",
                               "controller SetEventNotification 1",
                               "controller DIPROP_RANGE [-10000,10000]",
                               "controller DIPROP_DEADZONE [0,800]",
                               "controller DIPROP_DEADZONE [4,800]",
                               "controller DIPROP_SATURATION [0,10000]",
                               "controller DIPROP_SATURATION [4,10000]",
                               "controller Acquire"};
const Story kVoiceAndTitle = {"voice create",
                              "oneShotBuffer create vorn0.wav",
                              "oneShotBuffer SetCurrentPosition 0",
                              "oneShotBuffer SetVolume 0",
                              "oneShotBuffer SetFrequency 22051",
                              "oneShotBuffer Play 0",
                              "voice Voice 0",
                              "voice Volume 90",
                              "voice Rate 0",
                              "say  "};
const Story kTitleToMenu = {"oneShotBuffer Stop", "oneShotBuffer release", "append vorn1log.txt",
                            "say  Vorn 1 tts version 2 By Ostrin ", "queue  Select. Exit Game. "};

TEST(StartUp, TakesTheseStepsInThisOrder) {
  Session s;
  s.script("wait 1000\ntap Space\nwait say  Select. Exit Game. \n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(storyOf(s.trace()),
              ElementsAreArray(kOpenSoundAndKeyboard + kVoiceAndTitle + kTitleToMenu + Story{"end 0"}));
}

TEST(StartUp, OpensAControllerAfterTheKeyboard) {
  Session s;
  s.options.controller = true;
  s.script("wait 1000\ntap Space\nwait say  Select. Exit Game. \n").run();
  EXPECT_THAT(storyOf(s.trace()), ElementsAreArray(kOpenSoundAndKeyboard + kOpenController + kVoiceAndTitle +
                                                   kTitleToMenu + Story{"end 0"}));
}

TEST(StartUp, TakesNoMoreTimeThanItsPauses) {
  Session s;
  s.script("wait 1000\npress Space\nwait say  Select. Exit Game. \n").run();
  const TraceRecord& trace = s.trace();
  EXPECT_EQ(timeOf(trace, "keyboard Acquire"), 0);
  EXPECT_EQ(timeOf(trace, "voice create"), 1);           // one yield
  EXPECT_EQ(timeOf(trace, "oneShotBuffer Play 0"), 4);   // keys forgotten
  EXPECT_EQ(timeOf(trace, "say  "), 8);                  // keys forgotten, one yield
  EXPECT_EQ(timeOf(trace, "oneShotBuffer Stop"), 1001);  // the key comes 1000 ms after the first yield
  EXPECT_EQ(timeOf(trace, "append vorn1log.txt"), 1005);
  EXPECT_EQ(timeOf(trace, "say  Vorn 1 tts version 2 By Ostrin "), 1005 + 301);
  EXPECT_EQ(timeOf(trace, "queue  Select. Exit Game. "),
            1005 + 301 + spokenMs(" Vorn 1 tts version 2 By Ostrin ") + 1);
}

TEST(StartUp, FillsTheFields) {
  Session s;
  s.script(atMainMenu() +
           get({"joystickPresent", "inputDevice",     "escapePressed",    "bufferFlags",    "waveFilesBad",
                "voiceIndex",      "speechRate",      "voiceVolume",      "soundVolume",    "lastVoiceIndex",
                "wallSound",       "autoSpeedometer", "autoGearAnnounce", "pitRoadSnacks",  "trackLightPolls",
                "engineSound",     "joyMapDownShift", "keyMapSayGear",    "joyCaptureMode", "raceHours"}))
      .run();
  EXPECT_THAT(only(storyOf(s.trace()), {"value "}),
              ElementsAre("value joystickPresent 0", "value inputDevice 2", "value escapePressed 0",
                          "value bufferFlags 224", "value waveFilesBad 0", "value voiceIndex 0",
                          "value speechRate 0", "value voiceVolume 90", "value soundVolume 0",
                          "value lastVoiceIndex 2", "value wallSound 1", "value autoSpeedometer 1",
                          "value autoGearAnnounce 1", "value pitRoadSnacks 1", "value trackLightPolls 1",
                          "value engineSound 1", "value joyMapDownShift 9", "value keyMapSayGear 201",
                          "value joyCaptureMode 0", "value raceHours 0"));
}

TEST(StartUp, NamesTheTracks) {
  Session s;
  std::string asked;
  for (int i = 0; i <= 12; ++i) asked += "get trackNames[" + std::to_string(i) + "]\n";
  s.script(atMainMenu() + asked).run();
  EXPECT_THAT(
      only(storyOf(s.trace()), {"value "}),
      ElementsAre(
          "value trackNames[0] ", "value trackNames[1] Maple Leaf Tri Oval Track",
          "value trackNames[2] Painsville Oval Track", "value trackNames[3] Chagrin River Speedway",
          "value trackNames[4] Ohio Motor Speedway", "value trackNames[5] Chardon Hill Top Raceway",
          "value trackNames[6] Erie Lake Front Motor Speedway", "value trackNames[7] Mentor Road Race Track",
          "value trackNames[8] Kirtland Dirt Mile Oval Track",
          "value trackNames[9] Chesterland Dirt Road Race Track", "value trackNames[10] Geneva Oval Track",
          "value trackNames[11]  Go to main menu ", "value trackNames[12]  Exit Game "));
}

TEST(StartUp, LeavesTheDeviceOpenWhereThereIsAController) {
  Session s;
  s.options.controller = true;
  s.script("axis X -4000\naxis Y 700\nbutton 6 down\n" + atMainMenu() +
           get({"joystickPresent", "inputDevice", "joySteering", "joyGasBrake", "btnHorn"}))
      .run();
  EXPECT_EQ(answer(s.trace(), "joystickPresent"), "1");
  EXPECT_EQ(answer(s.trace(), "inputDevice"), "0");
  EXPECT_EQ(answer(s.trace(), "joySteering"), "-4000");
  EXPECT_EQ(answer(s.trace(), "joyGasBrake"), "700");
  EXPECT_EQ(answer(s.trace(), "btnHorn"), "1");
}

// --- the title sound ---

TEST(TitleSound, IsHeardWholeWithoutAKey) {
  Session s;
  s.script("wait say  Vorn 1 tts version 2 By Ostrin \n").run();
  const Recording title = readWav("vorn0.wav", s.folder.read("vorn0.wav"));
  const std::int64_t milliseconds = (title.frames() * 1000 + 22050) / 22051;
  EXPECT_GT(milliseconds, 3000);
  EXPECT_EQ(timeOf(s.trace(), "oneShotBuffer Stop"),
            timeOf(s.trace(), "oneShotBuffer Play 0") + milliseconds);
}

TEST(TitleSound, IsCutByAnyKeyAtOnce) {
  for (const char* key :
       {"Space", "A", "LeftShift", "RightCtrl", "F1", "Escape", "Enter", "Up", "CapsLock"}) {
    Session s;
    s.script(std::string("wait 700\ntap ") + key + "\nwait say  Vorn 1 tts version 2 By Ostrin \n").run();
    EXPECT_EQ(timeOf(s.trace(), "oneShotBuffer Stop"),
              timeOf(s.trace(), std::string("input key ") + key + " 1"))
        << key;
  }
}

TEST(TitleSound, IsNotCutByTheController) {
  Session s;
  s.options.controller = true;
  s.script("wait 700\nbutton 0 down\nwait 50\nbutton 0 up\naxis X -10000\nwait say  Vorn 1 tts\n").run();
  EXPECT_GT(timeOf(s.trace(), "oneShotBuffer Stop"), 3000);
}

TEST(TitleSound, IsNotCutByAKeyWithoutTheFocus) {
  Session s;
  s.script("focus off\nwait 700\ntap Space\nfocus on\nwait say  Vorn 1 tts\n").run();
  EXPECT_GT(timeOf(s.trace(), "oneShotBuffer Stop"), 3000);
}

// Until the sounds have been checked keys are forgotten.
TEST(TitleSound, IsNotCutByAKeyThatCameBeforeTheCheck) {
  Session s;
  s.script("wait 1\npress Space\nwait say  Vorn 1 tts\n").run();
  EXPECT_LT(timeOf(s.trace(), "input key Space 1"), timeOf(s.trace(), "oneShotBuffer Play 0"));
  EXPECT_GT(timeOf(s.trace(), "oneShotBuffer Stop"), 3000);
}

TEST(TitleSound, IsCutByAKeyThatCameAfterTheCheck) {
  Session s;
  s.script("wait 6\npress Space\nwait say  Vorn 1 tts\n").run();
  EXPECT_EQ(timeOf(s.trace(), "oneShotBuffer Stop"), timeOf(s.trace(), "say  ") + 2);
}

// --- voices ---

TEST(Voices, AreCounted) {
  for (const int voices : {1, 2, 3, 9}) {
    Session s;
    s.options.voices = voices;
    s.script(atMainMenu() + "get lastVoiceIndex\n").run();
    EXPECT_EQ(answer(s.trace(), "lastVoiceIndex"), std::to_string(voices - 1));
  }
}

TEST(Voices, WithoutAnyAMessageBoxSaysSoAndTheProgramEnds) {
  Session s;
  s.options.voices = 0;
  s.script("wait 100000\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(storyOf(s.trace()),
              ElementsAreArray(kOpenSoundAndKeyboard +
                               Story{"voice create",
                                     "box Sorry but I couldn't find any voices to use\rPlease contact Ostrin",
                                     "queue  Thank you for playing Vorn 1 tts, By Ostrin. ", "sound release",
                                     "keyboard release", "say  exiting program ", "voice release", "end 0"}));
  EXPECT_FALSE(s.folder.has("vorn1log.txt"));
}

// --- the check of the sounds ---

class BadSounds : public testing::Test {
 protected:
  // The session ends with the complaint.
  void expectComplaint(const std::string& what) {
    s.script("wait 100000\n").run();
    EXPECT_EQ(s.exitStatus(), 0) << what;
    EXPECT_THAT(
        storyOf(s.trace()),
        ElementsAreArray(
            kOpenSoundAndKeyboard + Story(kVoiceAndTitle.begin(), kVoiceAndTitle.begin() + 6) +
            Story{
                "oneShotBuffer Stop",
                "queue Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin.",
                "box Sorry but one or more of the wave files seem to be corrupt\rPlease contact Ostrin",
                "queue  Thank you for playing Vorn 1 tts, By Ostrin. ", "oneShotBuffer release",
                "sound release", "keyboard release", "say  exiting program ", "voice release", "end 0"}))
        << what;
    EXPECT_FALSE(s.folder.has("vorn1log.txt")) << what;
  }

  Session s;
};

TEST_F(BadSounds, AMissingOne) {
  std::filesystem::remove(s.folder.path() / "vorn9.wav");
  expectComplaint("vorn9 is the last that is looked at");
}

TEST_F(BadSounds, AFolderOfItsName) {
  std::filesystem::remove(s.folder.path() / "vorn1t40.wav");
  std::filesystem::create_directory(s.folder.path() / "vorn1t40.wav");
  expectComplaint("a folder is no file");
}

TEST_F(BadSounds, AByteTooMany) {
  s.folder.write("vorn1t1.wav", s.folder.read("vorn1t1.wav") + '\0');
  expectComplaint("one byte more");
}

TEST_F(BadSounds, AByteTooFew) {
  const std::string bytes = s.folder.read("vorn33.wav");
  s.folder.write("vorn33.wav", bytes.substr(0, bytes.size() - 1));
  expectComplaint("one byte less");
}

TEST_F(BadSounds, AnEmptyOne) {
  s.folder.write("vorn5.wav", "");
  expectComplaint("no bytes");
}

// It has one item, up to an end mark far behind this byte.
TEST_F(BadSounds, OneOfTheRightSizeWithACommaMore) {
  std::string bytes = s.folder.read("vorn1.wav");
  bytes[50] = ',';
  s.folder.write("vorn1.wav", bytes);
  expectComplaint("a comma more");
}

TEST_F(BadSounds, OneOfTheRightSizeThatEndsEarly) {
  std::string bytes = s.folder.read("vorn12.wav");
  bytes[45] = 26;
  s.folder.write("vorn12.wav", bytes);
  expectComplaint("an end mark before its 126 items");
}

// The complaint is heard whole, and then the farewell.
TEST_F(BadSounds, AreComplainedOfWhole) {
  std::filesystem::remove(s.folder.path() / "vorn9.wav");
  s.script("wait 100000\n").run();
  const std::string complaint =
      "Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin.";
  const std::int64_t asked = timeOf(s.trace(), "queue " + complaint);
  EXPECT_EQ(asked, 8);  // keys forgotten and one yield, after the title has started
  EXPECT_EQ(timeOf(s.trace(), "say  exiting program "),
            asked + spokenMs(complaint) + spokenMs(" Thank you for playing Vorn 1 tts, By Ostrin. "));
}

TEST_F(BadSounds, WithoutTheTitleTheRestIsSaid) {
  std::filesystem::remove(s.folder.path() / "vorn0.wav");
  s.script("wait 100000\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(
      storyOf(s.trace()),
      Contains("queue Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin."));
  EXPECT_THAT(storyOf(s.trace()), Not(Contains(StartsWith("oneShotBuffer"))));
}

TEST_F(BadSounds, AreNotThoseWhoseNamesDifferInCase) {
  std::filesystem::rename(s.folder.path() / "vorn7.wav", s.folder.path() / "VORN7.Wav");
  std::filesystem::rename(s.folder.path() / "vorn0.wav", s.folder.path() / "Vorn0.WAV");
  s.script(atMainMenu() + "get waveFilesBad\n").run();
  EXPECT_EQ(answer(s.trace(), "waveFilesBad"), "0");
  EXPECT_THAT(s.trace().spoken(),
              ElementsAre(" ", " Vorn 1 tts version 2 By Ostrin ", " Select. Exit Game. "));
}

TEST(GoodSounds, AreNotSpokenOf) {
  Session s;
  s.script(atMainMenu()).run();
  EXPECT_THAT(s.trace().spoken(),
              ElementsAre(" ", " Vorn 1 tts version 2 By Ostrin ", " Select. Exit Game. "));
  EXPECT_THAT(s.trace().texts("box"), IsEmpty());
}

// --- the log ---

TEST(Log, OpensWithABlankLineAndTheDate) {
  Session s;
  s.script(atMainMenu()).run();
  EXPECT_EQ(s.folder.read("vorn1log.txt"), " \r\nVorn 1 log for 3/7/2026 By Ostrin \r\n");
  using namespace std::chrono;
  s.options.date = year_month_day(year(2031), December, day(25));
  s.script(atMainMenu()).run();
  EXPECT_EQ(s.folder.read("vorn1log.txt"),
            " \r\nVorn 1 log for 3/7/2026 By Ostrin \r\n \r\nVorn 1 log for 12/25/2031 By Ostrin \r\n");
}

TEST(Log, IsFoundWhateverItsCase) {
  Session s;
  s.folder.write("VORN1LOG.TXT", "old\r\n");
  s.script(atMainMenu()).run();
  EXPECT_EQ(s.folder.read("VORN1LOG.TXT"), "old\r\n" + kLogHeader);
  EXPECT_FALSE(s.folder.has("vorn1log.txt"));
}

TEST(SharedFolder, IsSpokenOfAfterTheTitleByTheSecondGameAlone) {
  const std::string kShared = "queue  Another game is using this folder. ";
  Session alone;
  alone.script(atMainMenu()).run();
  EXPECT_THAT(storyOf(alone.trace()), testing::Not(testing::Contains(kShared)));

  Session second;
  FolderUse first(second.folder.path());
  first.claim();
  second.script(atMainMenu() + menuUp()).run();
  EXPECT_EQ(second.exitStatus(), 0);
  EXPECT_THAT(speechIn(storyOf(second.trace())),
              testing::ElementsAre("say  ", "say  Vorn 1 tts version 2 By Ostrin ", kShared,
                                   "queue  Select. Exit Game. ", "purge", "queue  Start Game. "));
}

}  // namespace
}  // namespace vorn
