// An automation on a thread of its own against a BBS that plays turns, and the pages that the turns are made
// of. For the tests of this folder.
#pragma once

#include <string>

#include "tests/support/automation_runner.h"
#include "tests/support/tables.h"
#include "tests/support/turns.h"

namespace quillet {

using Turns = std::vector<Turn>;
inline Turns operator+(Turns turns, const Turns& more) {
  turns.insert(turns.end(), more.begin(), more.end());
  return turns;
}
// The first ones, of which the BBS does not answer the last.
inline Turns Begun(const Turns& turns, std::size_t count) {
  Turns begun(turns.begin(), turns.begin() + static_cast<std::ptrdiff_t>(count));
  begun.back().page.clear();
  return begun;
}

class AutomationTest : public WithTables, protected AutomationRunner {
 protected:
  // ---- The BBS and the run
  void Connect(const Turns& turns, int thinking = 0) {
    script_ = PlayTurns(turns, thinking);
    session_.ConnectWith(std::make_unique<ScriptedTransport>(script_), {},
                         {.isBbs = true, .autoLogin = true});
  }
  // Runs against a BBS that plays the turns; what they wait for must have been typed, and no more.
  template <typename Run>
  auto Follow(
      const Turns& turns, Run run, int thinking = 0, const Meanwhile& meanwhile = [] {}) {
    Connect(turns, thinking);
    const auto result = Await(run, meanwhile);
    EXPECT_EQ(Typed(), TypedIn(turns));
    return result;
  }
  // And when all has been typed `then` happens; the BBS is silent behind the turns.
  template <typename Automation>
  auto FollowUntil(const Turns& turns, Automation run, const Meanwhile& then) {
    return Follow(turns, run, 0, [&, expected = TypedIn(turns)] {
      EXPECT_TRUE(WaitUntil([&] { return script_->Written().size() >= expected.size(); }));
      then();
    });
  }
  // On this connection, all that has been sent so far included.
  std::string Typed() {
    const std::string last = "\x1c";
    session_.SendBytes(last);
    const auto isWritten = [&] { return script_->Written().ends_with(last); };
    EXPECT_TRUE(WaitUntil([&] { return isWritten() || session_.state != SessionState::kConnected; }));
    std::string typed = script_->Written();
    std::erase(typed, last[0]);
    return typed;
  }
  // As the user, or the BBS, ends a run.
  enum class Ending { kCancelled, kDisconnected };
  void End(Ending ending) {
    cancelled_ = ending == Ending::kCancelled;
    if (!cancelled_) session_.RequestDisconnect(session_.connectionNumber);
  }

  // ---- Pages
  using Text = std::u16string_view;
  static std::string Bottom(Text text = {}) { return "\x1b[m" + At(23, 0) + "\x1b[K" + ToBig5(text); }
  // On the bottom row of whatever shows, waiting for a key.
  static std::string Message(Text words) {
    return Bottom(u" ◆ ") + ToBig5(words) + At(23, 63, u"[按任意鍵繼續] ") + At(23, 79);
  }
  static std::string Banner() {
    return At(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ") + At(23, 79);
  }
  // An instant message over whatever shows, and what shows again.
  static std::string StarLine(int row) {
    return At(row, 0) + "\x1b[1;33;46m" + ToBig5(u"★someone") + "\x1b[37;45m hello \x1b[m " + At(row, 16);
  }
  static std::string Uncovered(const std::string& page) { return At(22, 0) + "\x1b[K" + page; }
  static std::string Menu(Text title) {
    return kClearScreen + At(0, 0, title) + At(12, 28, u"(B)oards") + At(12, 24, u"●") + At(12, 25);
  }
  static std::string MainMenu() { return Menu(u"【主功能表】"); }
  static std::string BoardList() { return Menu(u"【看板列表】"); }
  static std::string BoardPrompt() {
    return At(0, 0, u"【 選擇看板 】") + At(1, 0, u"請輸入看板名稱(按空白鍵自動搜尋): ") + FieldAt(1, 40);
  }
  static std::string ArticleList(Text author = {}, Text board = {}) {
    return kClearScreen + At(0, 0, u"【板主:someone】") + At(0, 30, board) +
           At(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ") +
           At(23, 0, u" 文章選讀 ") + At(3, 0, u"●") + At(3, 17, author) + At(3, 1);
  }
  static std::string Editor() { return kClearScreen + At(23, 0, u" 編輯文章") + At(3, 1); }
  // Complete with the bar's last blank; `bar` is the colour of the left part: 45 the first page, 44 the last.
  static std::string Reader(const std::string& bar = "44") {
    return kClearScreen + At(0, 0, u"內文") + At(23, 0) + "\x1b[1;37;" + bar + "m" +
           ToBig5(u"  瀏覽 第 1/2 頁 ") + "\x1b[0;30;47m" + std::string(62, ' ') + "\x1b[m" + At(23, 79);
  }
  static std::string DisputedNotice() {
    return kClearScreen + At(11, 0, u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，") +
           At(12, 0, u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。") +
           At(23, 0) + "\x1b[1;37;44m" + ToBig5(u"  瀏覽 第 1/1 頁") + std::string(63, ' ') + "\x1b[m" +
           At(23, 79);
  }
  static std::string ArticleBox(Text code) {
    return At(19, 0, u"│ 文章代碼(AID): #") + ToBig5(code) + ToBig5(u" (Cats) [bbs.example] 貓") + Banner();
  }
  // On its way to a list: the old status line is replaced last.
  static std::string HalfDrawnList() { return At(0, 0, u"【板主:someone】") + At(3, 0, u"●") + At(4, 0); }
  static constexpr const char* kLeft = "\x1b[D";

  std::shared_ptr<TransportScript> script_ = std::make_shared<TransportScript>();
};

}  // namespace quillet
