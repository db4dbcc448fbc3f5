#include "bbs/menu_items.h"

#include "bbs/screen_fields.h"
#include "core/ascii.h"
#include "core/byte_words.h"

namespace quillet {

MenuItems FindMenuItems(const ScreenRow& text) {
  MenuItems items;
  for (std::size_t at = 0; at < kCols; at += sizeof(std::uint64_t)) {
    // Most rows have no bracket.
    std::uint64_t marks = BytesBelow(LoadWord(text.data() + at) ^ RepeatByte('('), 1);
    for (; marks != 0; marks &= marks - 1) {
      const std::size_t col = at + FirstMarked(marks);
      const bool isItem = col + 2 < kCols && IsAsciiLetterOrDigit(text[col + 1]) && text[col + 2] == ')' &&
                          IsCharacterStart(text, static_cast<int>(col));
      items.set(col, isItem);
    }
  }
  return items;
}

}  // namespace quillet
