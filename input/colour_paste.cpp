#include "input/colour_paste.h"

#include <algorithm>
#include <utility>

#include "core/charset.h"
#include "input/key_control.h"

namespace quillet {
namespace {

constexpr char16_t kEscape = 0x1B;
constexpr char16_t kEnterEscape = 0x15;  // Ctrl+U in the BBS's editor
constexpr char16_t kEnter = u'\r';

// The sequence that a text begins with, ESC included, or ESC alone where none follows.
std::u16string_view SequenceAt(std::u16string_view text) {
  if (text.size() < 2 || text[1] != u'[') return text.substr(0, 1);
  std::size_t end = 2;
  while (end < text.size() && text[end] >= u'0' && text[end] <= u'?')
    ++end;
  const bool isWhole = end < text.size() && text[end] >= u'@' && text[end] <= u'~';
  return text.substr(0, isWhole ? end + 1 : end);
}

bool SetsColours(std::u16string_view sequence) {
  return sequence.size() > 2 && sequence.back() == u'm' &&
         sequence.substr(2, sequence.size() - 3).find_first_not_of(u"0123456789;") == sequence.npos;
}

// Calls onText and onSequence for what a text is made of, in order.
template <typename OnText, typename OnSequence>
void TakeApart(std::u16string_view text, OnText onText, OnSequence onSequence) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(kEscape), text.size());
    if (end > 0) onText(text.substr(0, end));
    text.remove_prefix(end);
    if (text.empty()) return;
    const std::u16string_view sequence = SequenceAt(text);
    onSequence(sequence);
    text.remove_prefix(sequence.size());
  }
}

std::size_t ColumnsOf(char16_t unit) {
  if (unit < 0x80) return 1;
  const std::uint16_t pair = Charset().unicodeToBig5[unit];
  return pair == kNoBig5 || pair == 0 ? 0 : 2;
}

// Writes lines of at most so many columns.
class ColumnWriter {
 public:
  explicit ColumnWriter(std::size_t columns) : columns_(columns) {}

  void Put(char16_t unit) {
    if (unit == kEnter) return Break();
    const std::size_t width = ColumnsOf(unit);
    if (columns_ > 0 && width > 0 && used_ + width > columns_) {
      if (unit == u' ') return;
      Break();
    }
    text_ += unit;
    used_ += width;
  }
  void PutSequence(std::u16string_view sequence) { text_.append(1, kEnterEscape).append(sequence.substr(1)); }
  std::u16string Take() { return std::move(text_); }

 private:
  void Break() {
    text_ += kEnter;
    used_ = 0;
  }

  std::u16string text_;
  const std::size_t columns_;
  std::size_t used_ = 0;
};

}  // namespace

bool HoldsColours(std::u16string_view text) {
  bool holds = false;
  TakeApart(
      text, [](std::u16string_view) {},
      [&holds](std::u16string_view sequence) { holds |= SetsColours(sequence); });
  return holds;
}

std::u16string WithoutSequences(std::u16string_view text) {
  std::u16string words;
  TakeApart(
      text, [&words](std::u16string_view part) { words += part; }, [](std::u16string_view) {});
  return words;
}

std::u16string ColoursForEditor(std::u16string_view text, std::size_t columns) {
  ColumnWriter writer(columns);
  TakeApart(
      text,
      [&writer](std::u16string_view part) {
        for (const char16_t unit : CleanPaste(part))
          writer.Put(unit);
      },
      [&writer](std::u16string_view sequence) {
        if (SetsColours(sequence)) writer.PutSequence(sequence);
      });
  return writer.Take();
}

}  // namespace quillet
