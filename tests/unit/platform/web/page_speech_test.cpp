#include "platform/web/page_speech.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace vorn {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> diagnoses;  ///< that the page was told of

class PageSpeechTest : public testing::Test {
 protected:
  PageSpeechTest() { diagnoses.clear(); }

  /// How many milliseconds of silence the speech endures.
  milliseconds::rep untilGivenUp() {
    const auto begin = std::chrono::steady_clock::now();
    while (speech.isSpeaking()) {
      std::this_thread::sleep_for(milliseconds(1));
    }
    return std::chrono::floor<milliseconds>(std::chrono::steady_clock::now() - begin).count();
  }

  Page page;
  PageSpeech speech{page, milliseconds(50)};
  const SpeechSettings normal{}, slowest{.rate = -10};
  const std::string aLongText = std::string(2300, 'x');
};

TEST_F(PageSpeechTest, SpeaksUntilThePageHasSaidIt) {
  EXPECT_FALSE(speech.isSpeaking());
  speech.say("one", normal);
  speech.say("two", normal);
  page.noteSaid(1);
  EXPECT_TRUE(speech.isSpeaking());
  page.noteSaid(2);
  EXPECT_FALSE(speech.isSpeaking());
  EXPECT_THAT(diagnoses, IsEmpty());
}

TEST_F(PageSpeechTest, GivesAPageUpThatIsSilentForLongerThanTheTextsTake) {
  speech.say("x", normal);
  EXPECT_GE(untilGivenUp(), 50 + 300);
  EXPECT_THAT(diagnoses, ElementsAre("The voice has fallen silent."));
  speech.say("x", slowest);
  speech.say("x", normal);
  EXPECT_GE(untilGivenUp(), 50 + 900 + 300);
}

TEST_F(PageSpeechTest, ALongTextMayTakeLong) {
  speech.say("x", normal);
  speech.say(aLongText, normal);
  const auto end = std::chrono::steady_clock::now() + milliseconds(1500);
  while (std::chrono::steady_clock::now() < end) {
    ASSERT_TRUE(speech.isSpeaking());
    std::this_thread::sleep_for(milliseconds(1));
  }
  speech.say("x", normal);
  page.noteSaid(2);  // what is left is short
  EXPECT_LT(untilGivenUp(), 60000);
}

TEST_F(PageSpeechTest, WhatIsReportedLateTakesNothingBack) {
  speech.say("one", normal);
  speech.say("two", normal);
  speech.purge();
  page.noteSaid(1);
  EXPECT_FALSE(speech.isSpeaking());
  speech.say("three", normal);
  page.noteSaid(2);
  EXPECT_TRUE(speech.isSpeaking());
}

}  // namespace

void Page::tell(Tell what, int, std::string_view text) {
  if (what == Tell::kDiagnosis) {
    diagnoses.emplace_back(text);
  }
}

}  // namespace vorn
