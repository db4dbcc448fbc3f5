// The text that an input method composes, as it says it is to be shown, and the cells of the grid that it
// takes. Made by the input method adapter for the composition painter. Plain values; user-interface thread.
#pragma once

#include <vector>

#include <QInputMethodEvent>
#include <QString>

namespace quillet {

// A part of the text that the input method handles as one: what it has converted, what it is about to.
struct CompositionClause {
  qsizetype first = 0;  // code units first..last-1 of the text
  qsizetype last = 0;
  bool marked = false;  // the one that the input method works on

  bool operator==(const CompositionClause&) const = default;
};

struct Composition {
  QString text;
  std::vector<CompositionClause> clauses;  // in the order of the text; none overlap
  qsizetype caret = 0;                     // code units before the input method's cursor
  bool showCaret = false;

  bool operator==(const Composition&) const = default;
};

// Whatever the attributes say, the clauses and the cursor lie within the text.
Composition ReadComposition(const QInputMethodEvent& event);

// A character as a reader counts them: a letter with its accents, a surrogate pair, a joined sequence.
struct CompositionCharacter {
  qsizetype first = 0;  // code units first..last-1 of the text
  qsizetype last = 0;
  int cell = 0;   // from the beginning of the composition
  int cells = 1;  // 1 or 2
};

// A composition on the grid. Letters of ASCII are half as wide as all others, as on the screen.
struct CompositionCells {
  std::vector<CompositionCharacter> characters;
  int caret = 0;  // the cell that the input method's cursor stands at the left edge of
  int total = 0;  // a cursor behind the last character has a cell of its own
};

CompositionCells LayOut(const Composition& composition);

}  // namespace quillet
