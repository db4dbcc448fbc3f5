#include "app/interaction/target_finder.h"

#include "app/interaction/author_at_cursor.h"
#include "input/text/id_at.h"

namespace quillet {

CommandTarget TargetFinder::At(CellPosition cell) const {
  return {.link = parts_.links.LinkAt(cell.row, cell.col), .id = IdAtCell(cell)};
}

std::u16string TargetFinder::IdUnderPointer() const {
  const auto cell = parts_.pointer.CellUnderPointer();
  return cell ? IdAtCell(*cell) : std::u16string();
}

std::u16string TargetFinder::IdInQuestion() const {
  std::u16string id = IdUnderPointer();
  return id.empty() ? AuthorAtCursor(parts_.screen, parts_.page, parts_.seen.article) : id;
}

CommandTarget TargetFinder::Current() const {
  return {.link = parts_.links.Current(), .id = IdInQuestion()};
}

std::u16string TargetFinder::IdAtCell(CellPosition cell) const {
  const ShownText& shown = parts_.shown;
  const int line = shown.LineAtRow(cell.row);
  if (line < 0) return {};
  // As the BBS has sent it: who has masked an id must be able to take it out of his lists again.
  if (!shown.IsArticle())
    return IdAt(parts_.screen, parts_.page, parts_.composer.ScreenRowAt(cell.row), cell.col);
  const ArticleLine* const sent = parts_.article.ShownLine(line);
  return sent == nullptr ? std::u16string() : IdInArticle(*sent, cell.col);
}

}  // namespace quillet
