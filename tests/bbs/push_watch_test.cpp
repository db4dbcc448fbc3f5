#include "bbs/push_watch.h"

#include <gtest/gtest.h>

#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

class PushWatchTest : public WithTables {
 protected:
  bool Look(std::uint32_t flags, std::u16string_view line = {}) {
    ScreenBuilder builder;
    builder.Put(20, 0, line);
    builder.screen.pageFlags = flags;
    return watch_.Look(builder.screen);
  }
  bool LookAtQuestion() {
    ScreenBuilder builder;
    builder.Put(kBottomRow, 0, u"推 me: 好    確定[y/N]:").Cursor(kBottomRow, 23);
    builder.screen.pageFlags = PF_PUSH_LINE;
    return watch_.Look(builder.screen);
  }
  static constexpr std::uint32_t kConfirmed = PF_PUSH_LINE | PF_PUSH_CONFIRM;
  static constexpr const char16_t* kTaken = u"推 me: 好                  10/06 22:00";

  PushWatch watch_;
};

TEST_F(PushWatchTest, APushByHandIsNoticedWhenItIsTaken) {
  EXPECT_FALSE(Look(kConfirmed));
  EXPECT_FALSE(Look(0));
  EXPECT_FALSE(Look(PF_READING | PF_STAR_LINE)) << "over whatever it was";
  EXPECT_TRUE(Look(PF_READING));
  EXPECT_FALSE(Look(PF_READING));
  // The "y" taken back, and a refusal.
  Look(kConfirmed);
  EXPECT_FALSE(Look(PF_PUSH_LINE));
  EXPECT_FALSE(Look(PF_READING));
}

TEST_F(PushWatchTest, AnAnswerThatCameAndWentUnseenIsToldByTheNewLine) {
  EXPECT_FALSE(LookAtQuestion());
  EXPECT_FALSE(Look(PF_READING, u"推 me: 好吃                10/06 22:00"));
  EXPECT_TRUE(Look(PF_READING | PF_READ_END, kTaken));
  EXPECT_FALSE(LookAtQuestion());
  EXPECT_FALSE(Look(PF_READING | PF_READ_END));
  EXPECT_FALSE(Look(PF_READING | PF_READ_END, kTaken));
}

TEST_F(PushWatchTest, NothingIsCarriedToAnotherArticleOrConnection) {
  LookAtQuestion();
  EXPECT_FALSE(Look(PF_LIST_CURSOR)) << "the article was left";
  EXPECT_FALSE(Look(PF_READING, kTaken));
  LookAtQuestion();
  watch_.Forget();
  EXPECT_FALSE(Look(PF_READING, kTaken));
  Look(kConfirmed);
  watch_.Forget();
  EXPECT_FALSE(Look(PF_READING));
}

}  // namespace
}  // namespace quillet
