/// The voice of Windows, of which sapi_double.cpp takes the place.

#include "platform/desktop/sapi_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <sstream>
#include <thread>

#include "support/temporary_folder.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class SapiServiceTest : public testing::Test {
 protected:
  SapiServiceTest() { ::_wputenv_s(L"VORN_SAPI_LOG", log.c_str()); }

  /// What SAPI has been asked for so far.
  std::vector<std::string> asked() const {
    std::vector<std::string> lines;
    std::istringstream text(folder.has("log") ? folder.read("log") : "");
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }
  bool waitUntil(const std::function<bool()>& isSo) const {
    for (int i = 0; i < 2000; ++i) {
      if (isSo()) return true;
      std::this_thread::sleep_for(5ms);
    }
    return false;
  }
  TemporaryFolder folder;
  const std::filesystem::path log = folder.path() / "log";
};

TEST_F(SapiServiceTest, IsToBeHad) {
  EXPECT_EQ(SapiService::problem(), "");
}

TEST_F(SapiServiceTest, NamesTheInstalledVoicesInTheirOwnLettersTheUsualOneFirst) {
  SapiService service;
  EXPECT_THAT(service.voices(), ElementsAre("Žofie", "Anna"));
}

TEST_F(SapiServiceTest, SaysTextsInTurnEachAsItWasAskedFor) {
  SapiService service;
  constexpr int zofie = 0, anna = 1;
  service.say(" Start Game. ", {.voice = anna, .volume = 80, .rate = 3});
  service.say("<b>caf\xE9", {.voice = zofie, .volume = 100, .rate = -40});
  ASSERT_TRUE(waitUntil([&] { return !service.isSpeaking(); }));
  // 17: returns at once, and what looks like a mark is a text.
  EXPECT_THAT(asked(), ElementsAre("speak 17 3 80 Anna| Start Game. ", "speak 17 -10 100 Zofie|<b>café"));
}

TEST_F(SapiServiceTest, SpeaksFromTheRequestOnUntilTheLastWord) {
  SapiService service;
  EXPECT_FALSE(service.isSpeaking());
  const auto begun = std::chrono::steady_clock::now();
  service.say("0123456789", {});
  EXPECT_TRUE(service.isSpeaking());
  ASSERT_TRUE(waitUntil([&] { return !service.isSpeaking(); }));
  EXPECT_GE(std::chrono::steady_clock::now() - begun, 200ms);
}

TEST_F(SapiServiceTest, IsSilencedAtOnceWithWhatWasStillToBeSaid) {
  SapiService service;
  service.say(std::string(10000, 'x'), {});
  service.say("never", {});
  ASSERT_TRUE(waitUntil([&] { return !asked().empty(); }));
  service.purge();
  EXPECT_FALSE(service.isSpeaking());
  service.say("next", {});
  ASSERT_TRUE(waitUntil([&] { return !service.isSpeaking(); }));
  const auto lines = asked();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[1], "purge");
  EXPECT_THAT(lines[2], HasSubstr("|next"));
}

TEST_F(SapiServiceTest, ABlankEndsToo) {
  SapiService service;
  service.say(" ", {});
  EXPECT_TRUE(waitUntil([&] { return !service.isSpeaking(); }));
}

TEST_F(SapiServiceTest, EndsWhileItSpeaks) {
  {
    SapiService service;
    service.say(std::string(10000, 'x'), {});
    ASSERT_TRUE(waitUntil([&] { return !asked().empty(); }));
  }
  EXPECT_THAT(asked(), Contains("purge"));
}

}  // namespace
}  // namespace vorn
