#include "platform/web/page_inbox.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(PageInbox, GivesWhatWasPutInInItsOrderAndWithItsTime) {
  PageInbox inbox;
  const auto before = PageInbox::Time::clock::now();
  inbox.put({PageEvent::Kind::kKeyDown, "KeyA", "a"});
  inbox.put({PageEvent::Kind::kKeyUp, "KeyA", "a"});
  const auto after = PageInbox::Time::clock::now();
  inbox.waitUntil(PageInbox::Time::max());
  for (const auto kind : {PageEvent::Kind::kKeyDown, PageEvent::Kind::kKeyUp}) {
    const auto event = inbox.take();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->kind, kind);
    EXPECT_EQ(event->code, "KeyA");
    EXPECT_GE(event->at, before);
    EXPECT_LE(event->at, after);
  }
  EXPECT_FALSE(inbox.take());
}

TEST(PageInbox, KnowsTheFocusBeforeAnybodyTakesWordOfIt) {
  PageInbox inbox;
  EXPECT_TRUE(inbox.hasFocus());
  inbox.put({PageEvent::Kind::kBlur});
  inbox.put({PageEvent::Kind::kKeyUp, "KeyA", "a"});
  EXPECT_FALSE(inbox.hasFocus());
  inbox.put({PageEvent::Kind::kFocus});
  EXPECT_TRUE(inbox.hasFocus());
}

}  // namespace
}  // namespace vorn
