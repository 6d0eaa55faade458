#include "codriver/settings.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

AidSettings everythingSet() {
  AidSettings settings;
  settings.aids = {1, 0, 1, 0, 1, 1};
  settings.callStyle = kCallBoth;
  settings.callAhead = 40;
  settings.engineLevel = kQuietestLevel;
  settings.cueLevel = -100;
  settings.wallLevel = -200;
  settings.carLevel = -300;
  settings.codriverLevel = -400;
  settings.width = 0;
  settings.balance = -kFullBalance;
  settings.swapsEars = 1;
  settings.hearsInOne = 1;
  return settings;
}

TEST(AidsNamed, AreThoseOfTheList) {
  EXPECT_EQ(aidsNamed("none"), AidSet{});
  EXPECT_EQ(aidsNamed("turns"), (AidSet{1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(aidsNamed("ghost,slider"), (AidSet{0, 1, 0, 0, 0, 1}));
  EXPECT_EQ(aidsNamed("turns,slider,lights,warnings,laps,ghost"), (AidSet{1, 1, 1, 1, 1, 1}));
}

TEST(AidsNamed, ComeBackFromTheirList) {
  for (const AidSet& aids :
       {AidSet{}, AidSet{1, 0, 0, 0, 0, 0}, AidSet{0, 1, 0, 1, 0, 1}, AidSet{1, 1, 1, 1, 1, 1}}) {
    EXPECT_EQ(aidsNamed(aidList(aids)), aids);
  }
}

TEST(AidsNamed, AreNoneWhereAWordIsUnknown) {
  for (const char* list : {"", "turn", "Turns", "turns,", ",turns", "turns, slider", "turns,none", "none,"}) {
    EXPECT_FALSE(aidsNamed(list)) << list;
  }
}

TEST(AidFile, KeepsEverything) {
  const std::string text = aidFileText(everythingSet());
  const auto read = aidsInFile(text);
  ASSERT_TRUE(read);
  EXPECT_EQ(aidFileText(*read), text);
  EXPECT_EQ(read->aids, everythingSet().aids);
  EXPECT_EQ(read->callAhead, 40);
  EXPECT_EQ(read->balance, -kFullBalance);
  EXPECT_EQ(read->hearsInOne, 1);
}

TEST(AidFile, OfAnotherVersionOrDamagedIsNone) {
  const std::string text = aidFileText(AidSettings{});
  ASSERT_TRUE(aidsInFile(text));
  EXPECT_FALSE(aidsInFile(""));
  EXPECT_FALSE(aidsInFile("2" + text.substr(1)));
  EXPECT_FALSE(aidsInFile(text.substr(0, text.size() / 2)));
  EXPECT_FALSE(aidsInFile(text + "0\r\n"));
  EXPECT_FALSE(aidsInFile("x" + text.substr(1)));
}

TEST(AidFile, HoldsNothingOutOfRange) {
  const auto isRead = [](auto change) {
    AidSettings settings;
    change(settings);
    return aidsInFile(aidFileText(settings)).has_value();
  };
  EXPECT_TRUE(isRead([](AidSettings&) {}));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.aids[2] = 2; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.callStyle = 0; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.callStyle = 4; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.callAhead = 9; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.callAhead = 41; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.engineLevel = 1; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.codriverLevel = kQuietestLevel - 1; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.width = 101; }));
  EXPECT_FALSE(isRead([](AidSettings& s) { s.balance = kFullBalance + 1; }));
}

}  // namespace
}  // namespace vorn
