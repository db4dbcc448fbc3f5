#include "bbs/page_header.h"

#include <string_view>

#include "bbs/header_time.h"
#include "bbs/screen_fields.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::uint8_t kLabelColours = 0xE4;  // blue on white
constexpr int kHeaderWhite = 7;
constexpr int kHeaderBlue = 4;

constexpr int kAuthorColumns = 12;
constexpr int kBoardSearchCol = 55;
constexpr int kBoardLabelColumns = 8;
constexpr int kBoardEnd = 77;

bool HasBackground(const ScreenRow& attr, int col, int background) {
  return BackgroundOf(attr[static_cast<std::size_t>(col)]) == background;
}

// A label of the header, white at `col` and at `col` + 5, its word between them blue on white.
bool IsLabelBox(const ScreenRow& attr, int col) {
  if (!HasBackground(attr, col, kHeaderWhite) || !HasBackground(attr, col + 5, kHeaderWhite)) return false;
  for (int at = col + 1; at <= col + 4; ++at)
    if (attr[static_cast<std::size_t>(at)] != kLabelColours) return false;
  return true;
}

// A blank or a bracket ends the id, as a character of its own.
int EndOfAuthor(const ScreenRow& text) {
  const int last = kHeaderFieldCol + kAuthorColumns;
  int col = kHeaderFieldCol;
  while (col < last) {
    const std::uint8_t byte = text[static_cast<std::size_t>(col)];
    if (byte == ' ' || byte == '(') return col;
    col += byte < 0x80 ? 1 : 2;
  }
  return last;
}

}  // namespace

HeaderReader::HeaderReader()
    : author_(ToBig5(u" 作者 ")),
      board_(ToBig5(u"  看板  ")),
      title_(ToBig5(u" 標題 ")),
      time_(ToBig5(u" 時間 ")) {}

PageHeader HeaderReader::Read(const ScreenSnapshot& screen) const {
  const ScreenRow& first = screen.text[kHeaderAuthorRow];
  const ScreenRow& attr = screen.attr[kHeaderAuthorRow];
  return {.author = Author(first, attr),
          .board = Board(first, attr),
          .title = Title(screen.text[kHeaderTitleRow]),
          .hasTime = IsTime(screen.text[kHeaderTimeRow])};
}

CellRange HeaderReader::Author(const ScreenRow& text, const ScreenRow& attr) const {
  if (!BytesOf(text).starts_with(author_) || !IsLabelBox(attr, 0) || !IsCharacterStart(text, kHeaderFieldCol))
    return {};
  return {kHeaderFieldCol, EndOfAuthor(text)};
}

CellRange HeaderReader::Board(const ScreenRow& text, const ScreenRow& attr) const {
  // By bytes: a nickname that was cut through a character ends on a lead byte, and no character has a blank
  // for its second half.
  const std::size_t found = BytesOf(text).find(board_, kBoardSearchCol);
  if (board_.empty() || found == std::string_view::npos) return {};
  const int label = static_cast<int>(found);
  if (!HasBackground(attr, label, kHeaderBlue) || !IsLabelBox(attr, label + 1) ||
      !HasBackground(attr, label + 7, kHeaderBlue))
    return {};
  return WithoutBlanks(text, {label + kBoardLabelColumns, kBoardEnd});
}

CellRange HeaderReader::Title(const ScreenRow& text) const {
  if (!BytesOf(text).starts_with(title_) || !IsCharacterStart(text, kHeaderFieldCol)) return {};
  return WithoutBlanks(text, {kHeaderFieldCol, kCols});
}

bool HeaderReader::IsTime(const ScreenRow& text) const {
  return BytesOf(text).starts_with(time_);
}

std::int64_t HeaderSeconds(const ScreenSnapshot& screen, std::int64_t now) {
  constexpr int kRow = kHeaderTimeRow;
  return SecondsOf({.monthName = screen.RowText(kRow).substr(11, 3),
                    .year = WholeNumber(screen, kRow, 27, 30),
                    .day = WholeNumber(screen, kRow, 15, 16),
                    .hour = WholeNumber(screen, kRow, 18, 19),
                    .minute = WholeNumber(screen, kRow, 21, 22),
                    .second = WholeNumber(screen, kRow, 24, 25)},
                   now);
}

}  // namespace quillet
