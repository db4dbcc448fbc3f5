// Text out of the grid: fields by columns, and searches that step over whole characters, so that the second
// byte of a character is never taken for a bracket or a colon. Pure; any thread; nothing outside the grid is
// read.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bbs/cell_range.h"
#include "core/screen_snapshot.h"

namespace quillet {

enum class Trim { kNo, kBothEnds };

// Columns `first` to `last` (inclusive) of a row as text. A field that ends on a lead byte takes the byte
// behind it; one that begins on the second byte of a character begins with the next character. Characters
// that the table does not hold are dropped. Empty for a place outside the grid.
std::u16string FieldText(const ScreenSnapshot& screen, int row, int first, int last,
                         Trim trim = Trim::kBothEnds);
// The same of a row alone; a range may be empty.
std::u16string FieldText(const ScreenRow& text, CellRange range, Trim trim = Trim::kBothEnds);
// What is left of a range without the blanks at both ends; empty when there is nothing but blanks.
CellRange WithoutBlanks(const ScreenRow& text, CellRange range);

// The first column from `from` to `last` where a character of its own equals the ASCII `wanted`; none when
// there is none.
std::optional<int> FindCharacter(const ScreenSnapshot& screen, int row, int from, int last, char wanted);
// The last one.
std::optional<int> FindLastCharacter(const ScreenSnapshot& screen, int row, int from, int last, char wanted);
// The first column from `from` on where the characters `big5` begin, whole within the row.
std::optional<int> FindText(const ScreenSnapshot& screen, int row, int from, std::string_view big5);

// Whether a character begins at `col`: bytes with the high bit set begin a pair, from column 0 on. False
// outside the grid.
bool IsCharacterStart(const ScreenSnapshot& screen, int row, int col);
bool IsCharacterStart(const ScreenRow& text, int col);

// The character at `col` is the ASCII `wanted`, and not the second byte of one.
bool IsCharacter(const ScreenSnapshot& screen, int row, int col, char wanted);

// Nothing but blanks in the columns `first` to `last`; true of what lies outside the grid.
bool IsBlankBetween(const ScreenSnapshot& screen, int row, int first, int last);

// The decimal number at `col`: blanks before it are skipped, digits end at the first other byte or behind
// `last`. 0 when there is no digit; saturates.
int FieldNumber(const ScreenSnapshot& screen, int row, int col, int last);

// The decimal number that the columns `first` to `last` are, apart from blanks at both ends; none when there
// is anything else, or nothing. Saturates.
std::optional<int> WholeNumber(const ScreenSnapshot& screen, int row, int first, int last);

}  // namespace quillet
