// The pages of the BBS's login dialogue as byte streams, and what must be typed at each: for tests that play
// the BBS themselves.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/turns.h"

namespace quillet::login_pages {

inline std::string Id() {
  return kClearScreen + At(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊: ");
}
inline std::string Password() {
  return At(21, 0, u"請輸入您的密碼: ");
}
inline std::string UnknownUser() {
  return At(21, 0, u"這裡沒有這個代號，請再試一次。");
}
inline std::string WrongPassword() {
  return At(21, 0, u"密碼不對喔！請檢查大小寫有無輸入錯誤。");
}
inline std::string AskedAgain() {
  return At(21, 0, u"請重新輸入");
}
inline std::string OtherLogins() {
  return At(22, 0, u"您想刪除其他重複登入的連線嗎？[Y/n] ") + FieldAt(22, 37);
}
inline std::string Welcome() {
  return kClearScreen + At(0, 0, u" 奧拉拉文藝坊 ") +
         At(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ") + At(23, 79);
}
inline std::string BottomQuestion() {
  return kClearScreen + At(23, 0, u"您有一篇文章還沒寫完，要繼續嗎？[y/N] ");
}
inline std::string TopQuestion() {
  return kClearScreen + At(1, 0, u"您要刪除登入失敗的記錄嗎？[y/N] ");
}
inline std::string Found() {
  return kClearScreen + At(23, 0, u"找到 3 篇提到您的文章 ");
}
inline std::string Menu(std::u16string_view title) {
  return kClearScreen + At(0, 0, title) + At(12, 24, u"●") + At(12, 25);
}
inline std::string MailMenu() {
  return Menu(u"【郵件選單】");
}
inline std::string MainMenu() {
  return Menu(u"【主功能表】");
}
inline std::string Reader() {
  return kClearScreen + At(23, 0, u"  瀏覽 第 1/1 頁 (100%) ") + At(23, 79);
}

inline constexpr const char* kDismiss = "\n\x1b[3~";

// Everything that can happen, other logins ended: behind the last turn the login is done.
inline std::vector<Turn> Everything() {
  const std::string dismiss = kDismiss;
  return {{"", Id()},
          {"me\r", Password()},
          {"secret\r", OtherLogins()},
          {"\r" + dismiss + dismiss, BottomQuestion()},
          {"n\r" + dismiss, TopQuestion()},
          {"q\r" + dismiss, Found()},
          {"\r" + dismiss, MailMenu()},
          {"q", Reader()},
          {"qqqqqqqqqq", MainMenu()}};
}

}  // namespace quillet::login_pages
