#include "input/text/id_at.h"

#include <algorithm>
#include <utility>

#include "bbs/screen_fields.h"
#include "core/ascii.h"

namespace quillet {
namespace {

bool IsId(std::u16string_view text) {
  return !text.empty() && IsAsciiLetter(text.front()) &&
         std::all_of(text.begin(), text.end(), IsAsciiLetterOrDigit<char16_t>);
}

// An id takes a column for each letter.
std::optional<PlacedId> PlacedFrom(const ScreenRow& text, CellRange range, int col) {
  if (!range.Has(col)) return std::nullopt;
  std::u16string id = FieldText(text, range);
  if (!IsId(id)) return std::nullopt;
  return PlacedId{range.first, range.last, std::move(id)};
}

std::optional<PlacedId> InPushLine(const ScreenRow& text, const std::optional<PushLine>& push, int col) {
  return push ? PlacedFrom(text, push->id, col) : std::nullopt;
}

std::u16string IdOf(std::optional<PlacedId> placed) {
  return placed ? std::move(placed->id) : std::u16string();
}

}  // namespace

std::optional<PlacedId> PlacedIdAt(const ScreenSnapshot& screen, const UnderstoodPage& page, int row,
                                   int col) {
  if (row < 0 || row >= kRows) return std::nullopt;
  const ScreenRow& text = screen.text[static_cast<std::size_t>(row)];
  const PageLine& line = page.Line(row);
  if (line.listed) return PlacedFrom(text, line.listed->author, col);
  // Under another question than a push's the article is not what is asked about.
  if (!page.Shows(PF_READING | PF_PUSH_OVER_READER)) return std::nullopt;
  std::optional<PlacedId> placed;
  if (row == kHeaderAuthorRow) placed = PlacedFrom(text, page.header.author, col);
  return placed ? placed : InPushLine(text, line.push, col);
}

std::optional<PlacedId> PlacedIdInArticle(const ArticleLine& line, int col) {
  std::optional<PlacedId> placed = PlacedFrom(line.text, line.author, col);
  return placed ? placed : InPushLine(line.text, line.push, col);
}

std::u16string IdAt(const ScreenSnapshot& screen, const UnderstoodPage& page, int row, int col) {
  return IdOf(PlacedIdAt(screen, page, row, col));
}

std::u16string IdInArticle(const ArticleLine& line, int col) {
  return IdOf(PlacedIdInArticle(line, col));
}

}  // namespace quillet
