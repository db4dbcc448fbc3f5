// Pages of the BBS as byte streams, for tests that play the BBS to an automation.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/turns.h"

namespace quillet {

inline constexpr const char* kLeft = "\x1b[D";

inline std::string Bottom(std::u16string_view text = {}) {
  return "\x1b[m" + At(23, 0) + "\x1b[K" + ToBig5(text);
}
// On the bottom row of whatever shows, waiting for a key.
inline std::string Message(std::u16string_view words) {
  return Bottom(u" ◆ ") + ToBig5(words) + At(23, 63, u"[按任意鍵繼續] ") + At(23, 79);
}
inline std::string Banner() {
  return At(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ") + At(23, 79);
}
// An instant message over whatever shows.
inline std::string StarLine(int row) {
  return At(row, 0) + "\x1b[1;33;46m" + ToBig5(u"★someone") + "\x1b[37;45m hello \x1b[m " + At(row, 16);
}
inline std::string Menu(std::u16string_view title) {
  return kClearScreen + At(0, 0, title) + At(12, 24, u"●") + At(12, 25);
}
inline std::string MainMenu() {
  return Menu(u"【主功能表】") + At(12, 28, u"(B)oards") + At(12, 25);
}
inline std::string BoardList() {
  return Menu(u"【看板列表】");
}
inline std::string BoardPrompt() {
  return At(0, 0, u"【 選擇看板 】") + At(1, 0, u"請輸入看板名稱(按空白鍵自動搜尋): ") + FieldAt(1, 40);
}
inline std::string ArticleList(std::u16string_view author = {}, std::u16string_view board = {}) {
  return kClearScreen + At(0, 0, u"【板主:someone】") + At(0, 30, board) +
         At(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ") +
         At(23, 0, u" 文章選讀 ") + At(3, 0, u"●") + At(3, 17, author) + At(3, 1);
}
// Complete with the bar's last blank; `bar` is the colour of the left part: 45 the first page, 44 the last.
inline std::string Reader(const std::string& bar = "44") {
  return kClearScreen + At(0, 0, u"內文") + At(23, 0) + "\x1b[1;37;" + bar + "m" +
         ToBig5(u"  瀏覽 第 1/2 頁 ") + "\x1b[0;30;47m" + std::string(62, ' ') + "\x1b[m" + At(23, 79);
}
inline std::string DisputedNotice() {
  return kClearScreen + At(11, 0, u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，") +
         At(12, 0, u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。") +
         At(23, 0) + "\x1b[1;37;44m" + ToBig5(u"  瀏覽 第 1/1 頁") + std::string(63, ' ') + "\x1b[m" +
         At(23, 79);
}
inline std::string ArticleBox(std::u16string_view code) {
  return At(19, 0, u"│ 文章代碼(AID): #") + ToBig5(code) + ToBig5(u" (Cats) [bbs.example] 貓") + Banner();
}

}  // namespace quillet
