#include "input/sure_answer.h"

#include <gtest/gtest.h>

#include "core/key_sequence.h"
#include "tests/support/pages.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using SureAnswerTest = WithTables;

bool IsAnswered(const ScreenSnapshot& screen, const KeyAction& action) {
  return IsSurelyAnswered(screen, Understand(screen), action);
}

TEST_F(SureAnswerTest, OnlyWhatTheBbsCannotLeaveUnshownIsWaitedFor) {
  const KeyAction text{.kind = KeyActionKind::kSendText, .text = u"a"};
  EXPECT_TRUE(IsAnswered(TypingPage(), text));
  EXPECT_FALSE(IsAnswered(
      Classified(
          ScreenBuilder().Put(21, 0, u"請輸入您的密碼: ").Fill(21, 16, 30, kAttrInputField).Cursor(21, 16)),
      text))
      << "a password shows nowhere";
  const auto key = [](int virtualKey) {
    return KeyAction{.kind = KeyActionKind::kSendKey, .virtualKey = virtualKey};
  };
  EXPECT_TRUE(IsAnswered(ArticleList(5, 9), key(kKeyUp)));
  EXPECT_FALSE(IsAnswered(ArticleList(3, 3), key(kKeyUp))) << "there is no other line";
  EXPECT_FALSE(IsAnswered(MenuPage(12), key(kKeyLeft))) << "the first menu is left for nowhere";
  EXPECT_TRUE(IsAnswered(ReaderMiddle(), key(kKeyLeft)));
}

}  // namespace
}  // namespace quillet
