#include "render/paint/composition.h"

#include <algorithm>

#include <QTextBoundaryFinder>
#include <QTextFormat>

namespace quillet {
namespace {

CompositionClause ReadClause(const QInputMethodEvent::Attribute& attribute, qsizetype size) {
  const qsizetype end = static_cast<qsizetype>(attribute.start) + attribute.length;
  const QTextFormat format = attribute.value.value<QTextFormat>();
  const bool marked = format.background().style() != Qt::NoBrush && format.background().color().alpha() != 0;
  return {std::clamp<qsizetype>(attribute.start, 0, size), std::clamp<qsizetype>(end, 0, size), marked};
}

// In the order of the text; of two that overlap the second gives way.
std::vector<CompositionClause> WithoutOverlaps(std::vector<CompositionClause> clauses) {
  std::stable_sort(clauses.begin(), clauses.end(),
                   [](const auto& one, const auto& other) { return one.first < other.first; });
  qsizetype taken = 0;
  for (CompositionClause& clause : clauses) {
    clause.first = std::max(clause.first, taken);
    taken = std::max(clause.last, taken);
  }
  std::erase_if(clauses, [](const auto& clause) { return clause.first >= clause.last; });
  return clauses;
}

bool IsHalf(const QString& text, const CompositionCharacter& character) {
  return character.last - character.first == 1 && text[character.first].unicode() < 0x80;
}

}  // namespace

Composition ReadComposition(const QInputMethodEvent& event) {
  Composition composition{event.preeditString(), {}, event.preeditString().size(), true};
  const qsizetype size = composition.text.size();
  for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
    if (attribute.type == QInputMethodEvent::TextFormat) {
      composition.clauses.push_back(ReadClause(attribute, size));
    } else if (attribute.type == QInputMethodEvent::Cursor) {
      composition.caret = std::clamp<qsizetype>(attribute.start, 0, size);
      composition.showCaret = attribute.length != 0;
    }
  }
  composition.clauses = WithoutOverlaps(std::move(composition.clauses));
  return composition;
}

CompositionCells LayOut(const Composition& composition) {
  CompositionCells cells;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, composition.text);
  bool caretPlaced = false;
  for (qsizetype first = 0, last = finder.toNextBoundary(); last > first;
       first = last, last = finder.toNextBoundary()) {
    CompositionCharacter character{first, last, cells.total, 2};
    if (IsHalf(composition.text, character)) character.cells = 1;
    if (!caretPlaced && composition.caret < last) {
      cells.caret = character.cell;
      caretPlaced = true;
    }
    cells.total += character.cells;
    cells.characters.push_back(character);
  }
  if (caretPlaced) return cells;
  cells.caret = cells.total;
  if (composition.showCaret && cells.total > 0) ++cells.total;
  return cells;
}

}  // namespace quillet
