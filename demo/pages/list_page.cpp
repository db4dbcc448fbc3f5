#include "demo/pages/list_page.h"

#include <algorithm>

#include "demo/big5_text.h"
#include "demo/pages/line_field.h"

namespace quillet::demo {
namespace {

constexpr int kMostDigits = 6;
// Digits are drawn so that they end here; clients look for the echo of a number before this column.
constexpr int kEndOfDigits = 74;

class NumberPrompt : public Page {
 public:
  NumberPrompt(PageHost& host, std::string digits, std::function<void(int)> done)
      : host_(host), digits_(std::move(digits)), done_(std::move(done)) {}
  bool CoversScreen() const override { return false; }
  void Draw(Canvas& canvas) override {
    constexpr std::u16string_view kLabel = u"跳至第幾項: ";
    const int start = kEndOfDigits - static_cast<int>(digits_.size());
    canvas.ClearRow(kBottomRow);
    canvas.Put(kBottomRow, start - 12, kLabel);
    canvas.Put(kBottomRow, start, digits_, kAttrInputField);
    canvas.Fill(kBottomRow, kEndOfDigits, kCols - 1, kAttrInputField);
    canvas.MoveCursor(kBottomRow, kEndOfDigits);
  }
  void OnKey(const Key& key) override {
    if (key.IsDigit()) {
      if (digits_.size() < kMostDigits) digits_ += key.text;
    } else if (key.Is(KeyKind::kBackspace)) {
      digits_.pop_back();
      if (digits_.empty()) host_.CloseTop();
    } else if (key.Is(KeyKind::kEnter)) {
      host_.CloseTop();
      done_(std::stoi(digits_));
    } else if (key.Is(KeyKind::kEscape) || key.IsControl('C')) {
      host_.CloseTop();
    }
  }

 private:
  PageHost& host_;
  std::string digits_;
  std::function<void(int)> done_;
};

}  // namespace

void ListPage::Draw(Canvas& canvas) {
  Update();
  Select(selected_);
  DrawFrame(canvas);
  const int first = selected_ / kRowsShown * kRowsShown;
  for (int index = first; index < std::min(first + kRowsShown, Count()); ++index)
    DrawItem(canvas, kFirstRow + index - first, index);
  const int row = kFirstRow + selected_ - first;
  canvas.Put(row, 0, u"●");
  canvas.MoveCursor(row, 1);
}

void ListPage::Select(int index) {
  selected_ = std::clamp(index, 0, std::max(0, Count() - 1));
}

void ListPage::OnKey(const Key& key) {
  if (Move(key)) return;
  if (key.IsDigit()) {
    if (!key.Is('0')) AskNumber(key);
  } else if (key.Is(KeyKind::kLeft) || key.Is('q') || key.Is('e')) {
    host_.CloseTop();
  } else if (key.Is(KeyKind::kRight) || key.Is(KeyKind::kEnter) || key.Is('l') || key.Is('r')) {
    if (selected_ < Count()) OpenItem(selected_);
  } else {
    OnOtherKey(key);
  }
}

bool ListPage::Move(const Key& key) {
  const int page = selected_ / kRowsShown * kRowsShown;
  if (key.Is(KeyKind::kUp) || key.Is('k') || key.Is('p'))
    Select(selected_ == 0 ? Count() - 1 : selected_ - 1);
  else if (key.Is(KeyKind::kDown) || key.Is('j') || key.Is('n'))
    Select(selected_ + 1 >= Count() ? 0 : selected_ + 1);
  else if (key.Is(KeyKind::kPageUp) || key.IsControl('B') || key.Is('P'))
    Select(page == 0 ? 0 : selected_ - kRowsShown);
  else if (key.Is(KeyKind::kPageDown) || key.IsControl('F') || key.Is('N') || key.Is(' '))
    Select(page + kRowsShown >= Count() ? Count() - 1 : selected_ + kRowsShown);
  else if (key.Is(KeyKind::kHome))
    Select(0);
  else if (key.Is(KeyKind::kEnd) || key.Is('$'))
    Select(Count() - 1);
  else
    return false;
  return true;
}

void ListPage::AskNumber(const Key& firstDigit) {
  host_.Open(
      std::make_unique<NumberPrompt>(host_, firstDigit.text, [this](int number) { Select(number - 1); }));
}

}  // namespace quillet::demo
