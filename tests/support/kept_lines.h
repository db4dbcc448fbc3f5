// Lines of text for tests of what is done with them: written in Unicode, kept as the BBS's bytes.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "core/charset.h"
#include "input/text/selectable_text.h"

namespace quillet {

inline void PutInLine(ArticleLine& line, int col, std::u16string_view text, std::uint8_t attr = kAttrBlank) {
  auto at = static_cast<std::size_t>(col);
  for (const char byte : ToBig5(text)) {
    if (at >= kCols) break;
    line.text[at] = static_cast<std::uint8_t>(byte);
    line.attr[at] = attr;
    ++at;
  }
}

inline ArticleLine LineOf(std::u16string_view text, std::uint8_t attr = kAttrBlank) {
  ArticleLine line;
  line.text.fill(' ');
  line.attr.fill(kAttrBlank);
  PutInLine(line, 0, text, attr);
  return line;
}

class KeptLines : public SelectableText {
 public:
  KeptLines() = default;
  KeptLines(std::initializer_list<std::u16string_view> texts) {
    for (const std::u16string_view text : texts)
      lines.push_back(LineOf(text));
  }
  int Count() const override { return static_cast<int>(lines.size()); }
  const ArticleLine& Line(int index) const override { return lines[static_cast<std::size_t>(index)]; }

  std::vector<ArticleLine> lines;
};

}  // namespace quillet
