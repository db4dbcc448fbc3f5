#include "bbs/automation/money_page.h"

#include <algorithm>

#include "bbs/screen_fields.h"
#include "core/charset.h"

namespace quillet {
namespace {

std::u16string TextFrom(const ScreenSnapshot& screen, int row, int col) {
  return FieldText(screen, row, col, kCols - 1);
}

}  // namespace

MoneyPrompt::MoneyPrompt(int row, std::u16string_view label) : row_(row), label_(ToBig5(label)) {}

bool MoneyPrompt::Stands(const ScreenSnapshot& screen) const {
  return RowStartsWith(screen, row_, kLabelCol, std::string_view(label_));
}

bool MoneyPrompt::Holds(const ScreenSnapshot& screen, std::u16string_view text) const {
  return Stands(screen) && TextFrom(screen, row_, kLabelCol + static_cast<int>(label_.size())) == text;
}

bool MoneyPage::IsShown(const ScreenSnapshot& screen) const {
  return pages_.IsInputField(screen) && RowStartsWith(screen, 0, 0, u"【送人文藝幣】");
}

bool MoneyPage::IsFresh(const ScreenSnapshot& screen) const {
  return receiver.Asks(screen) && receiver.Holds(screen, u"");
}

std::u16string MoneyPage::MessageOn(const ScreenSnapshot& screen) const {
  if (screen.cursorRow != kBottomRow || screen.cursorCol != kCols - 1) return {};
  int row = kBottomRow;
  if (pages_.IsAnyKeyBanner(screen)) {
    do
      --row;
    while (row > 0 && TextFrom(screen, row, 0).empty());
  }
  std::u16string text = TextFrom(screen, row, 0);
  constexpr std::u16string_view kMark = u"◆ ";
  const bool marked = text.starts_with(kMark);
  if (row == kBottomRow && !marked) return {};
  if (marked) text.erase(0, kMark.size());
  text.resize(std::min(text.find(u'['), text.size()));
  return text.substr(0, text.find_last_not_of(u' ') + 1);
}

MoneyPage::Verdict MoneyPage::VerdictOf(std::u16string_view words) {
  if (words.starts_with(u"文藝幣已經送到對方手上")) return Verdict::kGiven;
  if (words.starts_with(u"您的文藝幣不夠")) return Verdict::kNotEnough;
  if (words.starts_with(u"沒有這個人，或不能送給他")) return Verdict::kNoSuchUser;
  return Verdict::kUnknown;
}

}  // namespace quillet
