#include "app/interaction/keeping/article_pages.h"

#include <algorithm>
#include <vector>

#include <QFont>
#include <QPainter>

#include "input/text/line_characters.h"
#include "render/paint/paper_text.h"

namespace quillet {
namespace {

// The title with a row below it, and the number with one above.
constexpr int kRowsAround = 4;

std::vector<PaperCharacter> OnPaper(const ArticleLine& line) {
  std::vector<PaperCharacter> characters;
  for (const LineCharacter& character : CharactersOf(line)) {
    if (character.unit == 0 || character.IsBlank()) continue;
    const bool wide = character.cols.last - character.cols.first == 2;
    characters.push_back(
        {character.unit, wide ? GlyphWidth::kWide : GlyphWidth::kHalf, character.cols.first});
  }
  return characters;
}

class Pages {
 public:
  Pages(QPainter& painter, QSize paper, const QStringList& families, const SelectableText& text)
      : painter_(painter), paper_(paper), paperText_(families, paper.width() / kCols), text_(text) {
    QFont words(families);
    words.setPixelSize(std::max(1, paper.width() / kCols * 2));
    painter_.setFont(words);
  }
  int Count() const { return std::max(1, (text_.Count() + Rows() - 1) / Rows()); }
  // From 0.
  void Draw(int page, const QString& title) {
    painter_.setPen(Qt::black);
    const QRect above(0, 0, paper_.width(), RowHeight());
    painter_.drawText(above, Qt::AlignLeft | Qt::AlignVCenter,
                      painter_.fontMetrics().elidedText(title, Qt::ElideRight, paper_.width()));
    const int rule = RowHeight() * 3 / 2;
    painter_.drawLine(0, rule, paper_.width(), rule);
    const QRect below(0, paper_.height() - RowHeight(), paper_.width(), RowHeight());
    painter_.drawText(below, Qt::AlignRight | Qt::AlignVCenter,
                      u"第 %1 / %2 頁"_qs.arg(page + 1).arg(Count()));
    for (int row = 0; row < Rows() && page * Rows() + row < text_.Count(); ++row)
      paperText_.Draw(painter_, {0, (row + 2) * RowHeight()}, OnPaper(text_.Line(page * Rows() + row)));
  }

 private:
  int RowHeight() const { return paperText_.RowHeight(); }
  int Rows() const { return std::max(1, paper_.height() / RowHeight() - kRowsAround); }

  QPainter& painter_;
  const QSize paper_;
  PaperText paperText_;
  const SelectableText& text_;
};

}  // namespace

bool PrintPages(QPrinter& printer, const SelectableText& text, const QString& title, const QString& font) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const QSize paper = printer.pageLayout().paintRectPixels(printer.resolution()).size();
  Pages pages(painter, paper, FaceFamilies(font), text);
  const bool isRange = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
  const int first = isRange ? std::min(printer.fromPage(), pages.Count()) - 1 : 0;
  const int last = isRange ? std::clamp(printer.toPage(), first + 1, pages.Count()) : pages.Count();
  for (int page = first; page < last; ++page) {
    if (page > first && !printer.newPage()) return false;
    pages.Draw(page, title);
  }
  return painter.end() && printer.printerState() != QPrinter::Error;
}

}  // namespace quillet
