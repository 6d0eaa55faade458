#include "platform/common/reader_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a reader was told, "!one" for the text "one" that interrupts.
using Told = std::vector<std::string>;

struct Listener : ScreenReader {
  explicit Listener(Told& log) : told(log) {}
  std::string problem() override { return missing; }
  bool isListening() override { return isThere; }
  void tell(const std::string& text, bool interrupts) override {
    told.push_back((interrupts ? "!" : "") + text);
  }

  Told& told;
  std::string missing;
  bool isThere = true;
};

class ReaderServiceTest : public testing::Test {
 protected:
  ReaderServiceTest() { pass(1s); }

  /// Time that is looked at as often as the game does.
  void pass(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 10ms) {
      now_ += 10ms;
      service.hasFailed();
    }
  }

  Told told;

 private:
  ReaderService::Time now_;
  std::unique_ptr<Listener> made_ = std::make_unique<Listener>(told);

 protected:
  Listener& listener = *made_;
  ReaderService service{
      std::move(made_), {.pace = 10ms, .settling = 1s, .patience = 5s}, [this] { return now_; }};
};

TEST_F(ReaderServiceTest, GivesTheReaderItsTextsOneAfterTheOtherAtItsPace) {
  service.say(" one ", {});
  service.say("second", {});
  EXPECT_THAT(told, ElementsAre(" one "));
  pass(20ms);
  EXPECT_THAT(told, ElementsAre(" one "));
  pass(10ms);  // for the letters, not for the blanks around them
  EXPECT_THAT(told, ElementsAre(" one ", "second"));
}

TEST_F(ReaderServiceTest, SpeaksFromTheRequestOnUntilTheLastTextIsTakenToBeRead) {
  EXPECT_FALSE(service.isSpeaking());
  service.say("one", {});
  service.say("two", {});
  EXPECT_TRUE(service.isSpeaking());
  pass(50ms);
  EXPECT_TRUE(service.isSpeaking());
  pass(10ms);
  EXPECT_FALSE(service.isSpeaking());
}

TEST_F(ReaderServiceTest, APurgeLetsTheNextTextAndNoOtherInterrupt) {
  service.say("long long long", {});
  service.say("never", {});
  service.purge();
  EXPECT_FALSE(service.isSpeaking());
  service.say("now", {});
  service.say("then", {});
  pass(30ms);
  EXPECT_THAT(told, ElementsAre("long long long", "!now", "then"));
}

TEST_F(ReaderServiceTest, BlankTextsAreNotForReaders) {
  service.say("  ", {});
  service.say("", {});
  EXPECT_FALSE(service.isSpeaking());
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReaderServiceTest, ReadersGetEveryLetterAndNoControlCharacter) {
  service.say("caf\xE9\tlap", {});
  EXPECT_THAT(told, ElementsAre("café lap"));
}

TEST_F(ReaderServiceTest, WaitsForSomebodyToListenButNotForEver) {
  listener.isThere = false;
  service.say("one", {});
  pass(4s);
  EXPECT_FALSE(service.hasFailed());
  listener.isThere = true;
  pass(10ms);
  EXPECT_THAT(told, ElementsAre("one"));
  pass(30ms);
  listener.isThere = false;
  service.say("two", {});
  service.say("three", {});
  pass(6s);
  EXPECT_TRUE(service.hasFailed());
  EXPECT_EQ(service.problem(), "nobody listens");
  ASSERT_EQ(service.unsaid().size(), 2U);
  EXPECT_EQ(service.unsaid().front().text, "two");
  EXPECT_THAT(told, ElementsAre("one"));
}

TEST_F(ReaderServiceTest, SilenceIsNoReasonToFail) {
  listener.isThere = false;
  pass(20s);
  EXPECT_FALSE(service.hasFailed());
  EXPECT_THAT(service.voices(), ElementsAre("Screen reader"));
}

TEST(ReaderService, LetsTheReaderTellOfTheWindowFirst) {
  Told told;
  ReaderService::Time now;
  ReaderService service(std::make_unique<Listener>(told), {.settling = 1s}, [&] { return now; });
  service.say("one", {});
  EXPECT_TRUE(service.isSpeaking());
  EXPECT_THAT(told, IsEmpty());
  now += 1s;
  EXPECT_TRUE(service.isSpeaking());
  EXPECT_THAT(told, ElementsAre("one"));
}

TEST(ReaderService, WhereNoReaderCanBeReachedItHasFailedFromTheBeginning) {
  Told told;
  auto nobody = std::make_unique<Listener>(told);
  nobody->missing = "there is no way";
  ReaderService service(std::move(nobody), {});
  EXPECT_TRUE(service.hasFailed());
  EXPECT_EQ(service.problem(), "there is no way");
  EXPECT_THAT(service.voices(), IsEmpty());
}

TEST(ReadingPace, IsTheTimeForACharacterWithinReason) {
  const std::string text(100, 'x');
  EXPECT_EQ(readingPace(text, 4200ms), 42ms);
  EXPECT_EQ(readingPace(text, 499ms), kUsualReadingPace);  // nobody reads so quickly
  EXPECT_EQ(readingPace(text, 500ms), 5ms);
  EXPECT_EQ(readingPace(text, 60s), 200ms);
  EXPECT_EQ(readingPace("", 60s), 200ms);
}

}  // namespace
}  // namespace vorn
