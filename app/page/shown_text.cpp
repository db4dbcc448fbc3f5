#include "app/page/shown_text.h"

#include <algorithm>
#include <optional>

namespace quillet {
namespace {

ArticleLine BlankLine() {
  ArticleLine line;
  line.text.fill(' ');
  line.attr.fill(kAttrBlank);
  return line;
}

bool HidesSomething(const PageRow& look) {
  return std::any_of(look.cells.begin(), look.cells.end(),
                     [](const PageCell& cell) { return (cell.style & CS_HIDDEN) != 0; });
}

// Of an article's line or a page's.
template <typename Line>
AddressInLine AddressIn(const Line& line) {
  if (line.push) return {.cells = line.push->address, .spot = PlaceSpot::kOverAddress};
  return {.cells = line.address, .spot = PlaceSpot::kBehindLine};
}

ArticleLine AsSeen(ArticleLine line, const PageRow& look) {
  for (std::size_t col = 0; col < kCols; ++col)
    if ((look.cells[col].style & CS_HIDDEN) != 0) line.text[col] = look.cells[col].byte;
  return line;
}

}  // namespace

ShownText::ShownText(const ScreenSnapshot& screen, const UnderstoodPage& understood, const Page& page,
                     const PageComposer& composer, const ArticleView& article)
    : screen_(screen), understood_(understood), page_(page), composer_(composer), article_(article) {}

bool ShownText::IsArticle() const {
  return composer_.ShowsArticle() || composer_.IsPromptOverArticle(screen_);
}

int ShownText::Count() const {
  return IsArticle() ? article_.LineCount() : kRows;
}

const ArticleLine& ShownText::Line(int index) const {
  static const ArticleLine kBlank = BlankLine();
  if (IsArticle()) {
    const ArticleLine* const line = article_.ShownLine(index);
    if (line == nullptr) return kBlank;
    const std::optional<PageRow> look = article_.RowWithHidden(index);
    return look ? Keep(index, AsSeen(*line, *look)) : *line;
  }
  const int screenRow = index >= 0 && index < kRows ? composer_.ScreenRowAt(index) : -1;
  if (screenRow < 0) return kBlank;
  const auto from = static_cast<std::size_t>(screenRow);
  const PageRow& look = page_[static_cast<std::size_t>(index)];
  return Keep(index, AsSeen({screen_.text[from], screen_.attr[from]}, look));
}

const ArticleLine& ShownText::Keep(int index, const ArticleLine& line) const {
  return kept_[static_cast<std::size_t>(index % kRows)] = line;
}

PageRow ShownText::Look(int index) const {
  if (IsArticle()) return article_.ShownRow(index);
  return index >= 0 && index < kRows ? page_[static_cast<std::size_t>(index)] : PageRow{};
}

LinkPlaces ShownText::Links(int index) const {
  if (IsArticle()) {
    const ArticleLine* const line = article_.ShownLine(index);
    if (line != nullptr && !article_.RowWithHidden(index)) return line->links;
    return PictureLines::Links(index);
  }
  const int screenRow = index >= 0 && index < kRows ? composer_.ScreenRowAt(index) : -1;
  const bool isAsSent = screenRow >= 0 && !HidesSomething(page_[static_cast<std::size_t>(index)]);
  return isAsSent ? understood_.Line(screenRow).links : PictureLines::Links(index);
}

AddressInLine ShownText::Address(int index) const {
  if (IsArticle()) {
    const ArticleLine* const line = article_.ShownLine(index);
    return line != nullptr ? AddressIn(*line) : AddressInLine{};
  }
  const int screenRow = index >= 0 && index < kRows ? composer_.ScreenRowAt(index) : -1;
  if (screenRow < 0 || understood_.IsPromptRow(screenRow)) return {};
  return AddressIn(understood_.Line(screenRow));
}

int ShownText::LineAtRow(int row) const {
  if (row < 0 || row >= kRows) return -1;
  const int screenRow = composer_.ScreenRowAt(row);
  if (!IsArticle()) return screenRow < 0 ? -1 : row;
  const int line = article_.LineAtRow(row);
  const bool inSight = row < kLinesShown && row >= kLinesShown - article_.LinesInSight();
  return screenRow < 0 && inSight ? line : -1;
}

int ShownText::LineDrawnAtRow(int row) const {
  const bool isArticles = IsArticle() && row >= 0 && row < kLinesShown && composer_.ScreenRowAt(row) < 0;
  if (!isArticles) return LineAtRow(row);
  return article_.LineAtRow(row);
}

int ShownText::RowsBetween(int from, int to) const {
  return IsArticle() ? article_.RowOfLine(to) - article_.RowOfLine(from) : to - from;
}

int ShownText::RowOfLine(int line) const {
  if (line < 0) return -1;
  const int row = IsArticle() ? article_.RowOfLine(line) : line;
  return LineAtRow(row) == line ? row : -1;
}

}  // namespace quillet
