#include "platform/desktop/dispatcher_voices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const DispatcherVoice kOwn{};
const DispatcherVoice kGerman{"espeak-ng", "German", "de"};
const DispatcherVoice kAustrian{"espeak-ng", "German (Austria)", "de-AT"};
const DispatcherVoice kScottish{"espeak-ng", "English (Scotland)", "en-GB-SCOTLAND"};
const DispatcherVoice kAmerican{"espeak-ng", "English (America)", "en-US"};
const DispatcherVoice kSlt{"flite", "slt", "en"};

TEST(DispatcherVoices, AreListedWithoutVariants) {
  EXPECT_THAT(listedVoices("espeak-ng", {"German\tde\tnone", "German+croak\tde\tcroak",
                                         "English (America)\ten-US\tnone", ""}),
              ElementsAre(kGerman, kAmerican));
}

TEST(DispatcherVoices, TheOwnChoiceComesFirstThenTheOwnLanguageThenEnglish) {
  const DispatcherVoice afrikaans{"espeak-ng", "Afrikaans", "af"};
  const std::vector<DispatcherVoice> listed = {afrikaans, kGerman, kScottish, kAmerican, kAustrian, kSlt};
  EXPECT_THAT(offeredVoices(listed, "de_AT"),
              ElementsAre(kOwn, kGerman, kAustrian, kAmerican, kScottish, kSlt, afrikaans));
  EXPECT_THAT(offeredVoices(listed, "de-at"),
              ElementsAre(kOwn, kAustrian, kGerman, kAmerican, kScottish, kSlt, afrikaans));
  EXPECT_THAT(offeredVoices(listed, "en-GB-scotland"),
              ElementsAre(kOwn, kScottish, kAmerican, kSlt, afrikaans, kGerman, kAustrian));
  EXPECT_THAT(offeredVoices({}, ""), ElementsAre(kOwn));
}

TEST(DispatcherVoices, AreKeptFromStartToStart) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "deep" / "voices";
  EXPECT_TRUE(readVoices(file).empty());
  writeVoices(file, {kOwn, kAustrian, kSlt});
  EXPECT_THAT(readVoices(file), ElementsAre(kOwn, kAustrian, kSlt));
  writeVoices(file, {kOwn});
  EXPECT_THAT(readVoices(file), ElementsAre(kOwn));
  EXPECT_NO_THROW(writeVoices("/dev/null/voices", {kOwn}));
}

TEST(DispatcherVoices, HaveNames) {
  EXPECT_EQ(nameOf(kAustrian), "German (Austria)");
  EXPECT_EQ(nameOf(kOwn), "Speech Dispatcher's default voice");
}

TEST(DispatcherRate, GoesByPowersOfThreeAroundTheUsualOne) {
  EXPECT_EQ(dispatcherRate(0, 0), 0);
  EXPECT_EQ(dispatcherRate(0, 35), 35);
  EXPECT_EQ(dispatcherRate(0, -60), -60);
  EXPECT_EQ(dispatcherRate(5, 0), 45);    // 1.73 of 2.64 times the normal speed
  EXPECT_EQ(dispatcherRate(-5, 0), -80);  // 0.58 of 0.47
  EXPECT_EQ(dispatcherRate(-5, dispatcherRate(5, 0)), 0);
  for (const int rate : {10, 1000}) {
    EXPECT_EQ(dispatcherRate(rate, 0), 100) << rate;
    EXPECT_EQ(dispatcherRate(-rate, 0), -100) << rate;
  }
}

TEST(DispatcherVolume, RunsFromSilenceToTheUsualOne) {
  EXPECT_EQ(dispatcherVolume(0, 100), -100);
  EXPECT_EQ(dispatcherVolume(90, 100), 80);
  EXPECT_EQ(dispatcherVolume(100, 100), 100);
  EXPECT_EQ(dispatcherVolume(50, 20), -40);
  EXPECT_EQ(dispatcherVolume(100, -100), -100);
}

TEST(LongestReading, GrowsWithTheTextAndFallsWithTheSpeed) {
  EXPECT_EQ(longestReading("", 0), 0ms);
  EXPECT_EQ(longestReading(" Exit Game ", 0), 1100ms);
  EXPECT_EQ(longestReading("1999", 0), 2400ms);
  EXPECT_GT(longestReading("1999", -100), 5000ms);
  EXPECT_LT(longestReading("1999", 100), 1000ms);
}

}  // namespace
}  // namespace vorn
