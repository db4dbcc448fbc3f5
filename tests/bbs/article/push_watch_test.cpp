#include "bbs/article/push_watch.h"

#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

constexpr std::uint32_t kConfirmed = PF_PUSH_LINE | PF_PUSH_CONFIRM;
constexpr std::uint32_t kEnd = PF_READING | PF_READ_END;
constexpr char16_t kAsked[] = u"推 me: 好    確定[y/N]:";
constexpr char16_t kTaken[] = u"推 me: 好                  10/06 22:00";

class PushWatchTest : public WithTables {
 protected:
  bool Look(std::uint32_t flags, std::u16string_view line = {}) {
    ScreenBuilder builder;
    builder.Put(flags == PF_PUSH_LINE ? kBottomRow : 20, 0, line).Cursor(kBottomRow, 23);
    builder.screen.pageFlags = flags;
    return watch_.Look(builder.screen, Understand(builder.screen));
  }
  PushWatch watch_;
};

TEST_F(PushWatchTest, APushByHandIsNoticedWhenItIsTaken) {
  EXPECT_FALSE(Look(kConfirmed));
  EXPECT_FALSE(Look(0));
  EXPECT_FALSE(Look(PF_READING | PF_STAR_LINE)) << "over whatever it was";
  EXPECT_TRUE(Look(PF_READING));
  EXPECT_FALSE(Look(PF_READING));
  // The "y" taken back, and a refusal.
  EXPECT_FALSE(Look(kConfirmed));
  EXPECT_FALSE(Look(PF_PUSH_LINE));
  EXPECT_FALSE(Look(PF_READING));
  // The answer came and went unseen: only the new line tells.
  EXPECT_FALSE(Look(PF_PUSH_LINE, kAsked));
  EXPECT_FALSE(Look(PF_READING, u"推 me: 好吃                10/06 22:00"));
  EXPECT_TRUE(Look(kEnd, kTaken));
}

TEST_F(PushWatchTest, NothingIsCarriedToAnotherPageArticleOrConnection) {
  for (const std::uint32_t left : {kEnd, std::uint32_t{PF_LIST_CURSOR}}) {
    Look(PF_PUSH_LINE, kAsked);
    EXPECT_FALSE(Look(left));
    EXPECT_FALSE(Look(kEnd, kTaken)) << left;
  }
  Look(PF_PUSH_LINE, u"推 me:       確定[y/N]:");
  EXPECT_FALSE(Look(PF_READING, kTaken)) << "without words it begins every push of his";
  Look(PF_PUSH_LINE, kAsked);
  watch_.Forget();
  EXPECT_FALSE(Look(PF_READING, kTaken));
  Look(kConfirmed);
  watch_.Forget();
  EXPECT_FALSE(Look(PF_READING));
}

}  // namespace
}  // namespace quillet
