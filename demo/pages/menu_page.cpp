#include "demo/pages/menu_page.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"
#include "demo/content_loader.h"
#include "demo/pages/board_prompt.h"
#include "platform/clock.h"

namespace quillet::demo {
namespace {

constexpr int kPictureRow = 1;
constexpr int kFirstItemRow = 12;
constexpr int kMarkCol = 24;
constexpr int kLabelCol = 40;
constexpr int kBarEnd = kCols - 1;  // bars leave the last column alone

}  // namespace

MenuPage::MenuPage(PageHost& host, std::u16string title, const std::string& screen,
                   std::vector<MenuItem> items, Leave leave)
    : host_(host),
      title_(std::move(title)),
      picture_(LoadScreen(host.TheHouse().contentFolder, screen)),
      items_(std::move(items)),
      leave_(leave) {}

void MenuPage::Draw(Canvas& canvas) {
  DrawTitleBar(canvas, title_);
  int row = kPictureRow;
  for (const std::string& line : picture_)
    if (row < kFirstItemRow - 1) canvas.Put(row++, 0, CellsOf(line));
  row = kFirstItemRow;
  for (const MenuItem& item : items_) {
    const int col = canvas.Put(row, kMarkCol + 4, std::string("("));
    const int after = canvas.Put(row, col, std::string(1, item.letter), Attr(kCyan, kBlack, Weight::kBold));
    canvas.Put(row, after, ")" + item.name);
    canvas.Put(row, kLabelCol, u"【 " + item.label + u" 】");
    ++row;
  }
  DrawStatusBar(canvas, host_);
  const int cursorRow = kFirstItemRow + static_cast<int>(selected_);
  canvas.Put(cursorRow, kMarkCol, u"●");
  canvas.MoveCursor(cursorRow, kMarkCol + 1);
}

void MenuPage::OnKey(const Key& key) {
  switch (key.kind) {
    case KeyKind::kUp:
      selected_ = (selected_ + items_.size() - 1) % items_.size();
      return;
    case KeyKind::kDown:
      selected_ = (selected_ + 1) % items_.size();
      return;
    case KeyKind::kHome:
    case KeyKind::kPageUp:
      selected_ = 0;
      return;
    case KeyKind::kEnd:
    case KeyKind::kPageDown:
      selected_ = items_.size() - 1;
      return;
    case KeyKind::kRight:
    case KeyKind::kEnter:
      items_[selected_].enter();
      return;
    case KeyKind::kLeft:
      LeaveMenu();
      return;
    default:
      break;
  }
  if (JumpTo(key)) return;
  if (key.Is('s')) OpenBoardPrompt(host_);
  if (key.Is('q') && leave_ == Leave::kCloses) host_.CloseTop();
}

bool MenuPage::JumpTo(const Key& key) {
  if (key.kind != KeyKind::kText) return false;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (!EqualsIgnoringCase(key.text, std::string(1, items_[i].letter))) continue;
    selected_ = i;
    return true;
  }
  return false;
}

void MenuPage::LeaveMenu() {
  if (leave_ == Leave::kCloses)
    host_.CloseTop();
  else
    selected_ = items_.size() - 1;
}

void DrawTitleBar(Canvas& canvas, std::u16string_view title, std::string_view right) {
  constexpr std::uint8_t kBar = Attr(kWhite, kBlue, Weight::kBold);
  const std::string name = ToBig5(u"奧拉拉文藝坊");
  canvas.Fill(0, 0, kBarEnd, kBar);
  canvas.Put(0, 0, title, Attr(kWhite, kBlue, Weight::kBold));
  canvas.Put(0, (kBarEnd - static_cast<int>(name.size())) / 2, name, Attr(kYellow, kBlue, Weight::kBold));
  canvas.Put(0, kBarEnd - static_cast<int>(right.size()), right, kBar);
}

void DrawStatusBar(Canvas& canvas, PageHost& host) {
  constexpr std::uint8_t kLeft = Attr(kWhite, kCyan, Weight::kBold);
  constexpr std::uint8_t kMiddle = Attr(kBlack, kWhite);
  const BbsTime now = TimeOf(SecondsNow());
  const std::string date = " [" + std::to_string(now.month) + "/" + std::to_string(now.day) + " " +
                           PushTime(SecondsNow()).substr(6) + "] ";
  int col = canvas.Put(kBottomRow, 0, date, kLeft);
  canvas.Fill(kBottomRow, col, kBarEnd, kMiddle);
  col = canvas.Put(kBottomRow, col, u" 線上 ", kMiddle);
  col = canvas.Put(kBottomRow, col, std::to_string(host.TheWorld().Online().size()), Attr(kRed, kWhite));
  col = canvas.Put(kBottomRow, col, u" 人，我是 ", kMiddle);
  col = canvas.Put(kBottomRow, col, host.CurrentUser().id, Attr(kRed, kWhite));
  canvas.Put(kBottomRow, kBarEnd - 22, u"(Ctrl-U)名單 (s)選看板 ", kMiddle);
}

}  // namespace quillet::demo
