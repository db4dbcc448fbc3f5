#include "bbs/automation/log_out.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

constexpr const char* kLeft = "\x1b[D";

class LogOutTest : public AutomationTest {
 protected:
  LogOutResult LogOutFrom(const std::vector<Turn>& turns) {
    return Follow(turns, [](ScreenWaits& waits) { return LogOut(waits); });
  }
};

std::string Menu(std::u16string_view title) {
  return kClearScreen + At(0, 0, title) + At(12, 24, u"●") + At(12, 25);
}
std::string Question() {
  return At(22, 0, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] ") + FieldAt(22, 48);
}

TEST_F(LogOutTest, FromWhereverTheUserIsGoodbyeIsSaid) {
  const std::string notice = kClearScreen + At(23, 0, u" ◆ 文章沒有送出") + At(23, 79);
  EXPECT_EQ(LogOutFrom({{"", notice},
                        {"\n", ArticleList()},
                        {kLeft, Menu(u"【看板列表】")},
                        {kLeft, Menu(u"【主功能表】")},
                        {"g\r", Question()},
                        {"y\r", kClearScreen + At(5, 0, u"下次再見")}}),
            LogOutResult::kSaidGoodbye);
}

TEST_F(LogOutTest, NothingIsTypedIntoAField) {
  EXPECT_EQ(LogOutFrom({{"", At(0, 0, u"檔案處理：[S]儲存 (A)放棄 (E)繼續編輯? [S] ") + FieldAt(0, 46)}}),
            LogOutResult::kNoWay);
}

}  // namespace
}  // namespace quillet
