#include "input/text/screen_text.h"

#include <algorithm>

#include "core/charset.h"

namespace quillet {

std::u16string RowAsText(const ScreenSnapshot& screen, int row) {
  std::u16string text = FromBig5(screen.RowText(row));
  std::erase(text, u'\0');
  text.erase(text.find_last_not_of(u" \u3000") + 1);
  return text;
}

std::u16string ScreenAsText(const ScreenSnapshot& screen) {
  std::u16string text;
  for (int row = 0; row < kRows; ++row)
    text += RowAsText(screen, row) + u'\n';
  const std::size_t last = text.find_last_not_of(u'\n');
  text.erase(last == std::u16string::npos ? 0 : last + 2);
  return text;
}

}  // namespace quillet
