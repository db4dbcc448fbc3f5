// The characters that the bytes of a line are, cell by cell: what a selection must not cut and what a copy is
// made of. A byte with the high bit begins a pair, from column 0 on; in the last column it stands alone.
// Pure; any thread once the character tables are loaded.
#pragma once

#include <cstdint>
#include <vector>

#include "bbs/article/article_lines.h"

namespace quillet {

// Columns first to last-1.
struct ColumnSpan {
  int first = 0;
  int last = 0;
  bool IsEmpty() const { return first >= last; }
  bool operator==(const ColumnSpan&) const = default;
};

struct LineCharacter {
  ColumnSpan cols;
  char16_t unit = u' ';   // 0: the tables have none; a blank for a control byte, as it is drawn
  std::uint8_t attr = 0;  // of its first half

  bool IsBlank() const { return unit == u' ' || unit == u'\u3000'; }
};

// Those that begin within the range, which is cut to the line.
std::vector<LineCharacter> CharactersOf(const ArticleLine& line, ColumnSpan range = {0, kCols});

// The column itself where a character begins there, else the column behind the character that it would cut.
// The nearest of 0 to kCols for a column outside.
int CharacterBoundary(const ScreenRow& text, int col);

// The boundary between characters that is nearest to a point of the line with so many halves of a cell left
// of it: of each character the middle decides, also of one that is two cells wide.
int NearestBoundary(const ScreenRow& text, int halves);

// Where the character before the column begins; 0 when there is none.
int BoundaryBefore(const ScreenRow& text, int col);

// Behind the last character that is no blank; 0 when there is none.
int EndOfText(const ArticleLine& line);

}  // namespace quillet
