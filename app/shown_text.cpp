#include "app/shown_text.h"

#include <algorithm>

namespace quillet {
namespace {

ArticleLine BlankLine() {
  ArticleLine line;
  line.text.fill(' ');
  line.attr.fill(kAttrBlank);
  return line;
}

}  // namespace

ShownText::ShownText(const ScreenSnapshot& screen, const PageComposer& composer, const ArticleView& article)
    : screen_(screen), composer_(composer), article_(article) {}

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
    return line == nullptr ? kBlank : *line;
  }
  if (index < 0 || index >= kRows) return kBlank;
  const auto row = static_cast<std::size_t>(index);
  rows_[row] = {screen_.text[row], screen_.attr[row]};
  return rows_[row];
}

int ShownText::LineAtRow(int row) const {
  if (row < 0 || row >= kRows) return -1;
  const int screenRow = composer_.ScreenRowAt(row);
  if (!IsArticle()) return screenRow;
  const int line = article_.TopLine() + row;
  return screenRow < 0 && row < kLinesShown && line < article_.LineCount() ? line : -1;
}

int ShownText::RowOfLine(int line) const {
  if (line < 0) return -1;
  if (!IsArticle()) return composer_.PageRowOf(line);
  const int row = line - article_.TopLine();
  return LineAtRow(row) == line ? row : -1;
}

}  // namespace quillet
