#include "demo/pages/prompts.h"

#include "core/charset.h"
#include "demo/ansi_line.h"

namespace quillet::demo {
namespace {

constexpr std::u16string_view kAnyKeyBanner = u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ";
constexpr std::u16string_view kPressAnyKey = u" [按任意鍵繼續] ";
constexpr int kPressAnyKeyCol = kCols - 1 - 16;

}  // namespace

LinePrompt::LinePrompt(PageHost& host, Place place, Done done)
    : host_(host), place_(std::move(place)), field_(place_.columns, place_.text), done_(std::move(done)) {}

void LinePrompt::Draw(Canvas& canvas) {
  canvas.ClearRow(place_.row);
  const int col = canvas.Put(place_.row, 0, place_.label);
  field_.Draw(canvas, place_.row, col);
}

void LinePrompt::OnKey(const Key& key) {
  const bool cancelled = key.Is(KeyKind::kEscape) || key.IsControl('C');
  if (!cancelled && !key.Is(KeyKind::kEnter)) {
    field_.OnKey(key);
    return;
  }
  host_.CloseTop();
  if (done_) done_(cancelled ? std::string() : field_.Text());
}

MessagePage::MessagePage(PageHost& host, std::u16string_view text, std::function<void()> done)
    : host_(host), text_(text), done_(std::move(done)) {}

void MessagePage::Draw(Canvas& canvas) {
  constexpr std::uint8_t kBar = Attr(kWhite, kBlue, Weight::kBold);
  canvas.Fill(kBottomRow, 0, kCols - 1, kBar);
  canvas.Fill(kBottomRow, kCols - 1, kCols, kAttrBlank);
  canvas.Put(kBottomRow, 0, u" ◆ " + text_, kBar);
  canvas.Put(kBottomRow, kPressAnyKeyCol, kPressAnyKey, Attr(kYellow, kBlue, Weight::kBold));
  canvas.MoveCursor(kBottomRow, kCols - 1);
}

void MessagePage::OnKey(const Key&) {
  host_.CloseTop();
  if (done_) done_();
}

void DrawAnyKeyBanner(Canvas& canvas) {
  canvas.ClearRow(kBottomRow);
  // Coloured up to its end: over an article list clients take the bottom row as finished by that.
  canvas.Put(kBottomRow, 0, kAnyKeyBanner, Attr(kCyan, kBlue));
  constexpr int kLabelCol = 1 + 15 * 2;
  canvas.Put(kBottomRow, kLabelCol, u" 請按任意鍵繼續 ", Attr(kWhite, kBlue, Weight::kBold));
  canvas.MoveCursor(kBottomRow, kCols - 1);
}

AnyKeyPage::AnyKeyPage(PageHost& host, int firstRow, std::vector<std::string> lines, Covers covers,
                       std::function<void()> done)
    : host_(host), firstRow_(firstRow), lines_(std::move(lines)), covers_(covers), done_(std::move(done)) {}

void AnyKeyPage::Draw(Canvas& canvas) {
  int row = firstRow_;
  for (const std::string& line : lines_) {
    if (row >= kBottomRow) break;
    canvas.ClearRow(row);
    canvas.Put(row++, 0, CellsOf(line));
  }
  DrawAnyKeyBanner(canvas);
}

void AnyKeyPage::OnKey(const Key&) {
  host_.CloseTop();
  if (done_) done_();
}

}  // namespace quillet::demo
