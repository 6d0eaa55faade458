#include "platform/desktop/fallback_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/errors.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNotice = " The first does not answer. The second speaks instead. ";

/// What a service was told, "2:one" for the text "one" in voice 2.
using Told = std::vector<std::string>;

void note(Told& told, const std::string& text, const SpeechSettings& settings) {
  told.push_back(std::to_string(settings.voice) + ":" + text);
}

struct First : FallibleService {
  explicit First(Told& log) : told(log) {}
  std::vector<std::string> voices() override { return failed ? std::vector<std::string>{} : names; }
  void say(const std::string& text, const SpeechSettings& settings) override {
    note(told, text, settings);
    left.push_back({text, settings});
  }
  void purge() override { left.clear(); }
  bool isSpeaking() override { return !left.empty(); }
  bool hasFailed() override { return failed; }
  std::vector<Utterance> unsaid() override { return left; }
  std::string problem() override { return "broken by the test"; }

  Told& told;
  std::vector<std::string> names = {"a", "b", "c", "d"};
  std::vector<Utterance> left;
  bool failed = false;
};

struct Second : SpeechService {
  explicit Second(Told& log) : told(log) {}
  std::vector<std::string> voices() override { return names; }
  void say(const std::string& text, const SpeechSettings& settings) override {
    if (names.empty()) throw PlatformError("Speak", text, "there are no voices");
    note(told, text, settings);
  }
  void purge() override { told.push_back("purge"); }
  bool isSpeaking() override { return true; }

  Told& told;
  std::vector<std::string> names = {"x", "y", "z"};
};

class FallbackServiceTest : public testing::Test {
 protected:
  FallbackService& service(bool mayBeMissing = false) {
    if (!service_) {
      auto first = std::make_unique<First>(toFirst);
      first_ = first.get();
      first_->failed = isMissing;
      auto second = std::make_unique<Second>(toSecond);
      if (isSecondMute) second->names.clear();
      service_ = std::make_unique<FallbackService>(
          std::move(first), std::move(second), FallbackWords{"The first", kNotice}, mayBeMissing,
          [this](const std::string& text) { captions.push_back(text); });
    }
    return *service_;
  }

  Told toFirst, toSecond;
  std::vector<std::string> captions;
  bool isMissing = false, isSecondMute = false;
  First* first_ = nullptr;

 private:
  std::unique_ptr<FallbackService> service_;
};

TEST_F(FallbackServiceTest, WhereTheSecondHasNoVoicesCaptionsGoOnAlone) {
  isSecondMute = true;
  service().voices();
  service().say("one", {});
  first_->failed = true;
  EXPECT_NO_THROW(service().isSpeaking());
  EXPECT_NO_THROW(service().say("two", {}));
  EXPECT_THAT(toSecond, IsEmpty());
  EXPECT_THAT(captions, ElementsAre(kNotice));
  EXPECT_EQ(service().voices().size(), 4U);
}

TEST_F(FallbackServiceTest, TheFirstSpeaksForAsLongAsItCan) {
  EXPECT_THAT(service().voices(), ElementsAre("a", "b", "c", "d"));
  EXPECT_FALSE(service().isSpeaking());
  service().say("one", {.voice = 3});
  EXPECT_TRUE(service().isSpeaking());
  service().purge();
  EXPECT_FALSE(service().isSpeaking());
  EXPECT_THAT(toFirst, ElementsAre("3:one"));
  EXPECT_THAT(toSecond, IsEmpty());
  EXPECT_THAT(captions, IsEmpty());
}

TEST_F(FallbackServiceTest, WhatItLeavesUnsaidTheSecondSaysAfterTheNotice) {
  service().voices();
  service().say("one", {.voice = 2});
  service().say("two", {.voice = 2});
  first_->failed = true;
  EXPECT_TRUE(service().isSpeaking());
  service().say("three", {.voice = 2});
  EXPECT_THAT(toSecond, ElementsAre(std::string("0:") + kNotice, "0:one", "0:two", "0:three"));
  EXPECT_THAT(captions, ElementsAre(kNotice));
  service().purge();
  EXPECT_EQ(toSecond.back(), "purge");
}

TEST_F(FallbackServiceTest, FailingInSilenceItIsReplacedAtTheNextText) {
  service().voices();
  service().say("one", {});
  service().purge();
  first_->failed = true;
  service().isSpeaking();
  EXPECT_THAT(toSecond, IsEmpty());
  service().say("two", {});
  EXPECT_THAT(toSecond, ElementsAre(std::string("0:") + kNotice, "0:two"));
}

TEST_F(FallbackServiceTest, AfterTheSwitchEveryPlaceOfTheListHasAVoice) {
  service().voices();
  service().say("one", {.voice = 1});
  first_->failed = true;
  service().purge();
  EXPECT_THAT(service().voices(), ElementsAre("x", "x", "z", "x"));
  toSecond.clear();
  for (int voice = 0; voice < 4; ++voice) {
    service().say("two", {.voice = voice});
  }
  EXPECT_THAT(toSecond, ElementsAre("0:two", "0:two", "2:two", "0:two"));
}

TEST_F(FallbackServiceTest, OneThatWasNeverThereIsReplacedInSilenceWhereItMayBeMissing) {
  isMissing = true;
  EXPECT_THAT(service(true).voices(), ElementsAre("x", "y", "z"));
  service().say("one", {.voice = 2});
  EXPECT_THAT(toSecond, ElementsAre("2:one"));
  EXPECT_THAT(captions, IsEmpty());
}

TEST_F(FallbackServiceTest, OneThatWasAskedForAndIsNotThereIsToldOf) {
  isMissing = true;
  EXPECT_THAT(service(false).voices(), ElementsAre("x", "y", "z"));
  service().say("one", {.voice = 2});
  service().say("two", {.voice = 2});
  EXPECT_THAT(toSecond, ElementsAre(std::string("2:") + kNotice, "2:one", "2:two"));
  EXPECT_THAT(captions, ElementsAre(kNotice));
}

}  // namespace
}  // namespace vorn
