// The four settings files at start: absent, whole, and damaged in every way.

#include <gmock/gmock.h>

#include <filesystem>

#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;

const std::string kJoystickDefaults = "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n";
const std::string kKeyboardDefaults =
    "54\r\n157\r\n207\r\n209\r\n199\r\n211\r\n203\r\n205\r\n200\r\n208\r\n29\r\n42\r\n28\r\n210\r\n201\r\n";
const std::string kJoystickReset = " The joystick has been reset back to default settings.";
const std::string kKeyboardReset = " The key board has been set back to the default settings. ";

const std::vector<std::string> kJoystickFields = {
    "joyMapSpeedometer", "joyMapTrackPosition", "joyMapStartEngine", "joyMapPitRoad",
    "joyMapSayGear",     "joyMapSayLap",        "joyMapHorn",        "joyMapElapsedTime",
    "joyMapUpShift",     "joyMapDownShift",     "joySteeringAxis",   "joyGasAxis"};
const std::vector<std::string> kKeyboardFields = {
    "keyMapSpeedometer", "keyMapTrackPosition", "keyMapStartEngine", "keyMapSayLap",  "keyMapPitRoad",
    "keyMapElapsedTime", "keyMapSteerLeft",     "keyMapSteerRight",  "keyMapUpShift", "keyMapDownShift",
    "keyMapGas",         "keyMapBrake",         "keyMapEnter",       "keyMapHorn",    "keyMapSayGear"};

/// A file's content and what is left of it in its fields, a line each.
struct Reading {
  std::string what;
  std::string bytes;
  std::string values;  ///< a line end after each
  bool isAllNumbers = true;
};

const std::string kNotRead = " Sorry, but some settings could not be read. ";

// The start of the program with `bytes` in `file`; an empty line for each answer.
std::string startWith(Session& s, const std::string& file, const std::string& bytes,
                      const std::vector<std::string>& fields) {
  s.folder.write(file, bytes);
  s.script("wait 50\ntap Space\n" + atMainMenu() + get(fields)).run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  std::string values;
  for (const std::string& field : fields) values += answer(s.trace(), field) + "\r\n";
  return values;
}

// --- control maps ---

struct Map {
  std::string file, defaults, message;
  std::vector<std::string> fields;
};

const Map kJoystick{"vorn1joy.cfg", kJoystickDefaults, kJoystickReset, kJoystickFields};
const Map kKeyboard{"vorn1key.cfg", kKeyboardDefaults, kKeyboardReset, kKeyboardFields};

// `whole` is left as it is, and read as `values`.
void expectAccepted(const Map& map, const Reading& whole) {
  Session s;
  EXPECT_EQ(startWith(s, map.file, whole.bytes, map.fields), whole.values) << whole.what;
  EXPECT_EQ(s.folder.read(map.file), whole.bytes) << whole.what;
  EXPECT_FALSE(s.trace().said("reset back")) << whole.what;
  EXPECT_FALSE(s.trace().said("set back")) << whole.what;
}

// `bytes` are replaced by the defaults, and once the voice is ready it says so.
void expectReplaced(const Map& map, const std::string& what, const std::string& bytes) {
  Session s;
  EXPECT_EQ(startWith(s, map.file, bytes, map.fields), map.defaults) << what;
  EXPECT_EQ(s.folder.read(map.file), map.defaults) << what;
  EXPECT_THAT(speechIn(storyOf(s.trace())),
              ElementsAre("say  ", "say " + map.message, "say  Vorn 1 tts version 2 By Ostrin ",
                          "queue  Select. Exit Game. "))
      << what;
  EXPECT_LT(timeOf(s.trace(), "write " + map.file), timeOf(s.trace(), "voice create")) << what;
  // The next start finds them in order.
  s.script("wait 50\ntap Space\n" + atMainMenu()).run();
  EXPECT_FALSE(s.trace().said(map.message)) << what;
}

TEST(ControlMaps, AreNotWrittenWhereThereIsNone) {
  Session s;
  s.script(atMainMenu() + get(kJoystickFields) + get(kKeyboardFields)).run();
  EXPECT_FALSE(s.folder.has("vorn1joy.cfg"));
  EXPECT_FALSE(s.folder.has("vorn1key.cfg"));
  EXPECT_THAT(s.trace().files(), ElementsAre("append vorn1log.txt"));
  std::string values;
  for (const auto& field : kJoystickFields) values += answer(s.trace(), field) + "\r\n";
  EXPECT_EQ(values, kJoystickDefaults);
  values = "";
  for (const auto& field : kKeyboardFields) values += answer(s.trace(), field) + "\r\n";
  EXPECT_EQ(values, kKeyboardDefaults);
}

TEST(JoystickMap, IsReadWhateverEndsItsLines) {
  const std::string values = "31\r\n30\r\n29\r\n28\r\n27\r\n26\r\n25\r\n24\r\n23\r\n22\r\n2\r\n2\r\n";
  expectAccepted(kJoystick, {"CR LF", values, values});
  expectAccepted(kJoystick, {"LF", "31\n30\n29\n28\n27\n26\n25\n24\n23\n22\n2\n2\n", values});
  expectAccepted(kJoystick, {"CR", "31\r30\r29\r28\r27\r26\r25\r24\r23\r22\r2\r2\r", values});
  expectAccepted(kJoystick, {"no last end", "31\n30\n29\n28\n27\n26\n25\n24\n23\n22\n2\n2", values});
  expectAccepted(kJoystick, {"commas", "31,30,29,28,27,26,25,24,23,22,2,2", values});
  expectAccepted(kJoystick, {"blanks", " 31 \n 30\n29 \n28\n27\n26\n25\n24\n23\n22\n 2\n\t2\n", values});
  expectAccepted(kJoystick, {"a line more", values + "77\r\n", values});
}

// Another selector than 1 or 2 freezes the axis, nothing else.
TEST(JoystickMap, TakesAxisSelectorsAsTheyAre) {
  const std::string bytes = "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n0\r\n-7\r\n";
  expectAccepted(kJoystick, {"selectors 0 and -7", bytes, bytes});
  Session s;
  s.options.controller = true;
  s.folder.write("vorn1joy.cfg", bytes);
  s.script("axis X -5000\naxis Rx -5000\naxis Y 4000\naxis Ry 4000\nbutton 3 down\n" + atMainMenu() +
           get({"joySteering", "joyGasBrake", "btnPitRoad"}))
      .run();
  EXPECT_EQ(answer(s.trace(), "joySteering"), "0");
  EXPECT_EQ(answer(s.trace(), "joyGasBrake"), "0");
  EXPECT_EQ(answer(s.trace(), "btnPitRoad"), "1");
}

TEST(JoystickMap, SelectsTheOtherAxesWith2) {
  Session s;
  s.options.controller = true;
  s.folder.write("vorn1joy.cfg", "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n2\r\n2\r\n");
  s.script("axis X -5000\naxis Rx 300\naxis Y 4000\naxis Ry -200\n" + atMainMenu() +
           get({"joySteering", "joyGasBrake"}))
      .run();
  EXPECT_EQ(answer(s.trace(), "joySteering"), "300");
  EXPECT_EQ(answer(s.trace(), "joyGasBrake"), "-200");
}

TEST(JoystickMap, IsReplacedWhereItIsShortOrBad) {
  expectReplaced(kJoystick, "empty", "");
  expectReplaced(kJoystick, "11 lines", kJoystickDefaults.substr(0, kJoystickDefaults.size() - 3));
  expectReplaced(kJoystick, "letters", "fast\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n");
  expectReplaced(kJoystick, "a hole", "0\r\n\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n");
  expectReplaced(kJoystick, "button 32", "0\r\n1\r\n32\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n");
  expectReplaced(kJoystick, "button -1", "0\r\n1\r\n-1\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n");
  expectReplaced(kJoystick, "a huge number",
                 "99999999999999999999\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n");
  expectReplaced(kJoystick, "an axis without end", "0\n1\n2\n3\n4\n5\n6\n7\n8\n9\n1\n1e300\n");
  expectReplaced(kJoystick, "NULs", std::string(300, '\0'));
  expectReplaced(kJoystick, "CR only and short", "1\r2\r3\r");
  expectReplaced(kJoystick, "a megabyte", std::string(1'000'000, 'x'));
}

TEST(KeyboardMap, IsReadWhateverEndsItsLines) {
  const std::string values =
      "1\r\n0\r\n255\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n12\r\n13\r\n14\r\n15\r\n";
  expectAccepted(kKeyboard, {"CR LF", values, values});
  expectAccepted(kKeyboard, {"CR", "1\r0\r255\r4\r5\r6\r7\r8\r9\r10\r11\r12\r13\r14\r15", values});
  expectAccepted(kKeyboard, {"commas and lines", "1,0,255,4,5\n6,7,8,9,10\n11,12,13,14,15\n", values});
}

TEST(KeyboardMap, IsReplacedWhereItIsShortOrBad) {
  expectReplaced(kKeyboard, "empty", "");
  expectReplaced(kKeyboard, "14 lines", kKeyboardDefaults.substr(0, kKeyboardDefaults.size() - 5));
  expectReplaced(kKeyboard, "a joystick's", kJoystickDefaults);
  expectReplaced(kKeyboard, "key 256", "256" + kKeyboardDefaults.substr(2));
  expectReplaced(kKeyboard, "key -1", "-1" + kKeyboardDefaults.substr(2));
  expectReplaced(kKeyboard, "a letter at the end",
                 kKeyboardDefaults.substr(0, kKeyboardDefaults.size() - 5) + "x\r\n");
  expectReplaced(kKeyboard, "NULs", std::string(40, '\0'));
  expectReplaced(kKeyboard, "a megabyte of digits", std::string(1'000'000, '9'));
}

TEST(ControlMaps, BothReplacedTheJoystickIsSpokenOfFirst) {
  Session s;
  s.folder.write("vorn1key.cfg", "");
  s.folder.write("vorn1joy.cfg", "");
  s.script("wait 50\ntap Space\n" + atMainMenu()).run();
  EXPECT_THAT(speechIn(storyOf(s.trace())),
              ElementsAre("say  ", "say " + kJoystickReset, "say " + kKeyboardReset,
                          "say  Vorn 1 tts version 2 By Ostrin ", "queue  Select. Exit Game. "));
  EXPECT_THAT(s.trace().files(), ElementsAre("read vorn1joy.cfg", "write vorn1joy.cfg", "read vorn1key.cfg",
                                             "write vorn1key.cfg", "append vorn1log.txt"));
}

TEST(ControlMaps, AreFoundWhateverTheirCase) {
  Session s;
  s.folder.write("VORN1KEY.CFG", "");
  s.script("wait 50\ntap Space\n" + atMainMenu()).run();
  EXPECT_TRUE(s.trace().said(kKeyboardReset));
  EXPECT_EQ(s.folder.read("VORN1KEY.CFG"), kKeyboardDefaults);
  EXPECT_FALSE(s.folder.has("vorn1key.cfg"));
}

TEST(ControlMaps, AFolderOfTheirNameIsNoFile) {
  Session s;
  std::filesystem::create_directory(s.folder.path() / "vorn1joy.cfg");
  s.script("wait 50\ntap Space\n" + atMainMenu()).run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_FALSE(s.trace().said(kJoystickReset));
}

// --- game options ---

const std::vector<std::string> kOptionFields = {"wallSound",     "autoSpeedometer", "autoGearAnnounce",
                                                "pitRoadSnacks", "trackLightPolls", "engineSound"};

TEST(Options, AreReadAsFarAsTheyGo) {
  const Reading readings[] = {
      {"whole", "2\r\n2\r\n2\r\n2\r\n2\r\n6\r\n", "2\r\n2\r\n2\r\n2\r\n2\r\n6\r\n"},
      {"empty", "", "1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n"},
      {"two lines", "3\r\n2\r\n", "3\r\n2\r\n1\r\n1\r\n1\r\n1\r\n"},
      {"no last end", "3\r\n2\r\n2", "3\r\n2\r\n2\r\n1\r\n1\r\n1\r\n"},
      {"LF", "2\n1\n2\n1\n2\n3\n", "2\r\n1\r\n2\r\n1\r\n2\r\n3\r\n"},
      {"CR", "2\r1\r2\r1\r2\r3\r", "2\r\n1\r\n2\r\n1\r\n2\r\n3\r\n"},
      {"commas", "2,1,2,1,2,3", "2\r\n1\r\n2\r\n1\r\n2\r\n3\r\n"},
      {"not checked", "9\r\n-1\r\n0\r\n3\r\n77\r\n9\r\n", "9\r\n-1\r\n0\r\n3\r\n77\r\n9\r\n"},
      {"letters", "on\r\n2\r\noff\r\n", "1\r\n2\r\n1\r\n1\r\n1\r\n1\r\n", false},
      {"blank lines", "\r\n \r\n2\r\n", "1\r\n1\r\n2\r\n1\r\n1\r\n1\r\n", false},
      {"huge numbers", "99999999999999999999\r\n-1e300\r\n", "0\r\n0\r\n1\r\n1\r\n1\r\n1\r\n"},
      {"NULs", std::string(20, '\0'), "1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n", false},
      {"lines more", "1\r\n1\r\n1\r\n1\r\n1\r\n2\r\n3\r\n4\r\n", "1\r\n1\r\n1\r\n1\r\n1\r\n2\r\n"},
  };
  for (const Reading& reading : readings) {
    Session s;
    EXPECT_EQ(startWith(s, "vorn1ops.cfg", reading.bytes, kOptionFields), reading.values) << reading.what;
    EXPECT_EQ(s.folder.read("vorn1ops.cfg"), reading.bytes) << reading.what;
    Story spoken{" ", " Vorn 1 tts version 2 By Ostrin ", " Select. Exit Game. "};
    if (!reading.isAllNumbers) spoken.insert(spoken.begin() + 1, kNotRead);
    EXPECT_EQ(s.trace().spoken(), spoken) << reading.what;
  }
}

TEST(Options, AnEngineThatDoesNotExistEndsTheProgramAtStartGame) {
  Session s;
  s.folder.write("vorn1ops.cfg", "1\r\n1\r\n1\r\n1\r\n1\r\n9\r\n");
  s.script(atMainMenu() + menuUp() + menuEnter() + "wait 10000\n").run();
  EXPECT_EQ(s.exitStatus(), 1);
  EXPECT_EQ(s.trace().texts("error").size(), 1u);
  EXPECT_NE(s.diagnostics(), "");
}

// --- voice settings ---

const std::vector<std::string> kVoiceFields = {"voiceIndex", "speechRate", "voiceVolume", "soundVolume"};

/// A voice file, the fields after it (the sounds always start at full volume),
/// and which settings the voice has taken.
struct VoiceReading {
  std::string what, bytes, values;
  Story taken;
  bool isAllNumbers = true;
};

TEST(VoiceSettings, AreReadAsFarAsTheyGo) {
  const VoiceReading readings[] = {
      {"whole", "2\r\n-3\r\n55\r\n-1200\r\n", "2\r\n-3\r\n55\r\n0\r\n", {"Voice 2", "Volume 55", "Rate -3"}},
      {"leading blanks",
       " 2\r\n 3\r\n 55\r\n-1200\r\n",
       "2\r\n3\r\n55\r\n0\r\n",
       {"Voice 2", "Volume 55", "Rate 3"}},
      {"LF", "1\n2\n35\n0\n", "1\r\n2\r\n35\r\n0\r\n", {"Voice 1", "Volume 35", "Rate 2"}},
      {"CR", "1\r2\r35\r0\r", "1\r\n2\r\n35\r\n0\r\n", {"Voice 1", "Volume 35", "Rate 2"}},
      {"commas", "1,2,35,-100", "1\r\n2\r\n35\r\n0\r\n", {"Voice 1", "Volume 35", "Rate 2"}},
      {"empty", "", "0\r\n0\r\n90\r\n0\r\n", {"Voice 0", "Volume 90", "Rate 0"}},
      {"one line", "1\r\n", "1\r\n0\r\n90\r\n0\r\n", {"Voice 1", "Volume 90", "Rate 0"}},
      {"two lines", "1\r\n4", "1\r\n4\r\n90\r\n0\r\n", {"Voice 1", "Volume 90", "Rate 4"}},
      {"index beyond the list", "3\r\n1\r\n80\r\n0\r\n", "3\r\n1\r\n80\r\n0\r\n", {"Volume 80", "Rate 1"}},
      {"index below 0", "-1\r\n1\r\n80\r\n0\r\n", "-1\r\n1\r\n80\r\n0\r\n", {"Volume 80", "Rate 1"}},
      {"volume 500", "0\r\n1\r\n500\r\n0\r\n", "0\r\n1\r\n500\r\n0\r\n", {"Voice 0", "Rate 1"}},
      {"volume -5", "0\r\n1\r\n-5\r\n0\r\n", "0\r\n1\r\n-5\r\n0\r\n", {"Voice 0", "Rate 1"}},
      {"rate 99", "0\r\n99\r\n90\r\n0\r\n", "0\r\n99\r\n90\r\n0\r\n", {"Voice 0", "Volume 90", "Rate 99"}},
      {"rate -99",
       "0\r\n-99\r\n90\r\n0\r\n",
       "0\r\n-99\r\n90\r\n0\r\n",
       {"Voice 0", "Volume 90", "Rate -99"}},
      {"letters",
       "voice\r\n4\r\nloud\r\nx\r\n",
       "0\r\n4\r\n90\r\n0\r\n",
       {"Voice 0", "Volume 90", "Rate 4"},
       false},
      {"blank lines", "\r\n\r\n\r\n\r\n", "0\r\n0\r\n90\r\n0\r\n", {"Voice 0", "Volume 90", "Rate 0"}, false},
      {"huge numbers",
       "99999999999\r\n-1e300\r\n1e10\r\n0\r\n",
       "0\r\n0\r\n0\r\n0\r\n",
       {"Voice 0", "Volume 0", "Rate 0"}},
      {"NULs", std::string(9, '\0'), "0\r\n0\r\n90\r\n0\r\n", {"Voice 0", "Volume 90", "Rate 0"}, false},
      {"sounds beyond their range",
       "0\r\n0\r\n90\r\n5000\r\n",
       "0\r\n0\r\n90\r\n0\r\n",
       {"Voice 0", "Volume 90", "Rate 0"}},
  };
  for (const VoiceReading& reading : readings) {
    Session s;
    EXPECT_EQ(startWith(s, "vorn1voc.cfg", reading.bytes, kVoiceFields), reading.values) << reading.what;
    EXPECT_EQ(s.folder.read("vorn1voc.cfg"), reading.bytes) << reading.what;
    EXPECT_THAT(s.trace().voice(), ElementsAreArray(Story{"create"} + reading.taken)) << reading.what;
    EXPECT_EQ(s.trace().said(kNotRead), !reading.isAllNumbers) << reading.what;
  }
}

TEST(VoiceSettings, AreTheVoiceOfTheFirstSentence) {
  Session s;
  s.folder.write("vorn1voc.cfg", "2\r\n-3\r\n55\r\n-1200\r\n");
  s.script("wait 50\ntap Space\n" + atMainMenu()).run();
  for (const TraceLine& line : s.trace().of("speak")) {
    EXPECT_EQ(line.at("voice"), 2);
    EXPECT_EQ(line.at("rate"), -3);
    EXPECT_EQ(line.at("volume"), 55);
  }
}

TEST(VoiceSettings, OfTheSoundsAreNotCarriedIntoTheRun) {
  Session s;
  s.folder.write("vorn1voc.cfg", "0\r\n0\r\n90\r\n-1200\r\n");
  s.script(atMainMenu() + "get soundVolume\n" + menuUp() + menuEnter() + "wait say  Select the track\n")
      .run();
  EXPECT_EQ(answer(s.trace(), "soundVolume"), "0");
  EXPECT_THAT(s.trace().soundsOf("oneShotBuffer"), Contains("SetVolume 0"));
  EXPECT_THAT(s.trace().soundsOf("wallLeftBuffer"), Contains("SetVolume -1000"));
}

// What was saved of the sounds is overwritten by the full volume of this run.
TEST(VoiceSettings, AreSavedWithTheSoundsOfTheRun) {
  Session s;
  s.folder.write("vorn1voc.cfg", "1\r\n2\r\n80\r\n-1200\r\n");
  s.script(atMainMenu() + menuDown(8) + menuEnter() + "wait say to adjust\nwait 20\ntap Enter\nwait 500\n")
      .run();
  EXPECT_EQ(s.folder.read("vorn1voc.cfg"), "1\r\n2\r\n80\r\n0\r\n");
}

TEST(VoiceSettings, AreFoundWhateverTheirCase) {
  Session s;
  s.folder.write("Vorn1Voc.CFG", "1\r\n0\r\n90\r\n0\r\n");
  s.script("wait 50\ntap Space\n" + atMainMenu() + "get voiceIndex\n").run();
  EXPECT_EQ(answer(s.trace(), "voiceIndex"), "1");
}

TEST(SettingsFiles, AreReadInThisOrder) {
  Session s;
  s.folder.write("vorn1voc.cfg", "0\r\n0\r\n90\r\n0\r\n");
  s.folder.write("vorn1ops.cfg", "1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n");
  s.folder.write("vorn1key.cfg", kKeyboardDefaults);
  s.folder.write("vorn1joy.cfg", kJoystickDefaults);
  s.script(atMainMenu()).run();
  EXPECT_THAT(s.trace().files(), ElementsAre("read vorn1joy.cfg", "read vorn1key.cfg", "read vorn1ops.cfg",
                                             "read vorn1voc.cfg", "append vorn1log.txt"));
}

}  // namespace
}  // namespace vorn
