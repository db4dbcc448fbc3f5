// Finds a text in lines as they are shown: which lines hold it, in which columns, how often in all. Capitals
// and small letters, full and half width, and the two forms of 台 count as the same. A hit lies within one
// line. Pure; user-interface thread, once the character tables are loaded.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "input/text/line_characters.h"
#include "input/text/selectable_text.h"

namespace quillet {

struct SearchHit {
  int line = 0;
  ColumnSpan cols;

  bool operator==(const SearchHit&) const = default;
};

class ArticleSearch {
 public:
  // What is looked for; characters that no line can hold make that nothing is found. Forgets what was
  // counted.
  void SetWanted(std::u16string_view text);
  bool WantsNothing() const { return wanted_.empty(); }
  // Counts the hits in the lines from `from` on; those before it are taken to be as they were. One pass.
  void Read(const SelectableText& lines, int from = 0);

  // In all lines that were read.
  int Count() const { return ends_.empty() ? 0 : ends_.back(); }
  // Those of one line from left to right; they do not overlap.
  std::vector<ColumnSpan> HitsIn(const ArticleLine& line) const;
  // The hit of this number, 0 to Count() - 1, in the lines that were read last.
  SearchHit At(int number, const SelectableText& lines) const;
  // The number of the first hit that begins at the column of the line or behind it; Count() when there is
  // none.
  int NumberFrom(int line, int col, const SelectableText& lines) const;

 private:
  // One line, folded: its characters up to the last that is no blank.
  struct Folded {
    std::array<char16_t, kCols> units;
    std::array<std::uint8_t, kCols + 1> cols;  // where each begins; of the one behind the last too
    int count = 0;
  };
  static Folded Fold(const ScreenRow& text);
  template <typename Take>
  void ForEachHit(const ArticleLine& line, Take take) const;
  int Before(int line) const { return line > 0 ? ends_[static_cast<std::size_t>(line) - 1] : 0; }

  std::u16string wanted_;  // folded
  std::vector<int> ends_;  // hits in the lines up to and with this one
};

// The character that stands for all that count as the same.
char16_t FoldForSearch(char16_t unit);

}  // namespace quillet
