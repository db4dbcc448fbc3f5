#include "bbs/listed_article.h"

#include "bbs/line_flags.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"

namespace quillet {
namespace {

constexpr int kNumberFirstCol = 1;
constexpr int kNumberEnd = 7;
constexpr int kStatusMarkCol = 8;
constexpr CellRange kPushCountCells = {9, 11};
constexpr CellRange kAuthorCells = {kListAuthorCol, 29};
constexpr CellRange kTitleCells = {kListTitleCol, kCols};

std::uint8_t ByteAt(const ScreenRow& text, int col) {
  return text[static_cast<std::size_t>(col)];
}

// Right aligned; the cursor's mark may cover its beginning.
CellRange NumberIn(const ScreenRow& text) {
  int begin = kNumberEnd;
  while (begin > kNumberFirstCol && IsAsciiDigit(ByteAt(text, begin - 1)))
    --begin;
  return {begin, kNumberEnd};
}

// A field that begins on the second half of a character begins with the next one.
CellRange Field(const ScreenRow& text, CellRange cells) {
  if (!IsCharacterStart(text, cells.first)) ++cells.first;
  return WithoutBlanks(text, cells);
}

// 0 where there is none.
std::uint8_t StatusMark(const ScreenRow& text) {
  const std::uint8_t byte = ByteAt(text, kStatusMarkCol);
  return byte < 0x80 && IsCharacterStart(text, kStatusMarkCol) ? byte : std::uint8_t{0};
}

std::uint8_t FlagOf(const ScreenRow& text) {
  if (IsDeletedLine(text)) return LF_DELETED;
  switch (StatusMark(text)) {
    case '~':
    case '=':
      return LF_LIST_NEWS;
    case 'm':
    case 's':
      return LF_LIST_READ;
    case ' ':
      // A row that is not drawn to its end is blank there too.
      return WithoutBlanks(text, kAuthorCells).IsEmpty() ? 0 : LF_LIST_READ;
    default:
      return 0;
  }
}

}  // namespace

std::optional<ListedArticle> ReadListedArticle(const ScreenRow& text) {
  if (WithoutBlanks(text, {0, kCols}).IsEmpty()) return std::nullopt;
  return ListedArticle{.number = NumberIn(text),
                       .pushCount = Field(text, kPushCountCells),
                       .author = Field(text, kAuthorCells),
                       .title = Field(text, kTitleCells),
                       .mark = StatusMark(text),
                       .flags = FlagOf(text)};
}

bool IsDeletedLine(const ScreenRow& text) {
  return ByteAt(text, kListAuthorCol) == '-' && IsCharacterStart(text, kListAuthorCol);
}

int NumberOf(const ScreenSnapshot& screen, int row, const ListedArticle& article) {
  return FieldNumber(screen, row, article.number.first, article.number.last - 1);
}

}  // namespace quillet
