#include "demo/pages/board_list_page.h"

#include <string>

#include "core/charset.h"
#include "demo/big5_text.h"
#include "demo/pages/article_list_page.h"
#include "demo/pages/board_prompt.h"
#include "demo/pages/menu_page.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kTitleColumns = 34;
constexpr int kCrowded = 2000;  // from here on a board's popularity is a word

// Colours by the first byte of the category, so that boards of one kind look alike.
std::uint8_t CategoryAttr(const std::string& category) {
  constexpr Colour kColours[] = {kRed, kGreen, kYellow, kBlue, kMagenta, kCyan};
  const std::size_t sum = category.empty() ? 0 : static_cast<unsigned char>(category.back());
  return Attr(kColours[sum % std::size(kColours)], kBlack, Weight::kBold);
}

}  // namespace

BoardListPage::BoardListPage(PageHost& host) : ListPage(host), boards_(host.TheWorld().Boards()) {}

void BoardListPage::DrawFrame(Canvas& canvas) {
  DrawTitleBar(canvas, u"【看板列表】");
  canvas.Put(1, 0, u"[←]回選單 [→]進入看板 [↑↓]選擇 [PgUp][PgDn]翻頁 [/]搜尋 [s]看板名稱");
  canvas.Fill(2, 0, kBarEnd, kHeads);
  canvas.Put(2, 0, u"   編號   看  板       類別   中   文   敘   述                  人氣 板    主", kHeads);
  canvas.Put(kBottomRow, 0, u" 選擇看板 ", Attr(kWhite, kCyan, Weight::kBold));
  canvas.Fill(kBottomRow, 10, kBarEnd, kHeads);
  int col = 12;
  for (const auto& [keys, label] :
       {std::pair{u"(s)", u"看板名稱 "}, {u"(/)", u"搜尋敘述 "}, {u"(←)", u"回選單 "}}) {
    col = canvas.Put(kBottomRow, col, keys, Attr(kRed, kWhite));
    col = canvas.Put(kBottomRow, col, label, kHeads) + 1;
  }
}

void BoardListPage::DrawItem(Canvas& canvas, int row, int index) {
  const BoardInfo& board = boards_[static_cast<std::size_t>(index)];
  canvas.Put(row, 3, PadLeft(std::to_string(index + 1), 4));
  canvas.Put(row, 10, PadRight(board.name, 12));
  canvas.Put(row, 23, PadRight(board.category, 4), CategoryAttr(board.category));
  canvas.Put(row, 28, ToBig5(u"◎") + PadRight(board.title, kTitleColumns));
  if (board.popularity >= kCrowded)
    canvas.Put(row, 65, u" 爆!", Attr(kWhite, kRed, Weight::kBold));
  else
    canvas.Put(row, 64, PadLeft(std::to_string(board.popularity), 5),
               Attr(board.popularity >= 1000 ? kRed : kCyan, kBlack, Weight::kBold));
  const std::string_view moderators = board.moderators;
  canvas.Put(row, 70, CutColumns(moderators.substr(0, moderators.find('/')), kBarEnd - 70));
}

void BoardListPage::OpenItem(int index) {
  host_.Open(std::make_unique<ArticleListPage>(host_, boards_[static_cast<std::size_t>(index)]));
}

void BoardListPage::OnOtherKey(const Key& key) {
  if (key.Is('s')) AskBoard();
  if (key.Is('/')) Search();
}

void BoardListPage::AskBoard() {
  host_.Open(std::make_unique<BoardPrompt>(host_, [this](const BoardInfo& chosen) {
    for (int i = 0; i < Count(); ++i)
      if (boards_[static_cast<std::size_t>(i)].name == chosen.name) Select(i);
  }));
}

void BoardListPage::Search() {
  host_.Open(std::make_unique<LinePrompt>(
      host_, LinePrompt::Place{kBottomRow, u"搜尋看板(名稱或敘述): ", 20, {}},
      [this](const std::string& text) {
        if (text.empty()) return;
        for (int step = 1; step <= Count(); ++step) {
          const int index = (Selected() + step) % Count();
          const BoardInfo& board = boards_[static_cast<std::size_t>(index)];
          if (!ContainsIgnoringCase(board.name, text) && !ContainsIgnoringCase(board.title, text)) continue;
          Select(index);
          return;
        }
        host_.Open(std::make_unique<MessagePage>(host_, u"沒有符合的看板"));
      }));
}

}  // namespace quillet::demo
