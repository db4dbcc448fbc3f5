// A selection of text: from where to where, in which unit it grows and whether it is a column. A double-width
// character is selected whole or not at all: it is in when its first half lies between the ends. Pure;
// user-interface thread.
#pragma once

#include <compare>

#include "input/text/line_characters.h"
#include "input/text/selectable_text.h"

namespace quillet {

// Between cells: column 0 lies before the first, kCols behind the last.
struct TextPoint {
  int line = 0;
  int col = 0;

  auto operator<=>(const TextPoint&) const = default;  // NOLINT(modernize-use-nullptr): it sees a 0 in it
};

enum class SelectUnit { kCharacter, kWord, kLine };
enum class SelectShape { kStream, kColumn };

class Selection {
 public:
  // Starts anew at a point; the word or line of the character behind the point is selected at once. Points
  // outside the text count as the nearest inside; where there is no text, nothing is selected.
  void Begin(TextPoint at, SelectUnit unit, SelectShape shape, const SelectableText& text);
  // Moves the end that is not anchored, over whole units; what was selected first stays selected. Points
  // outside the text count as the nearest inside.
  void ExtendTo(TextPoint at, const SelectableText& text);
  // From now on it grows by characters, also to within what was selected first.
  void ContinueByCharacter();
  void SelectAll(const SelectableText& text);
  void Clear() { *this = Selection(); }

  bool IsEmpty() const;
  // First and last point, in order; of a column the corners at its upper left and lower right.
  TextPoint First() const { return first_; }
  TextPoint Last() const { return last_; }
  SelectShape Shape() const { return shape_; }
  // The end that moves.
  TextPoint Moving() const { return moving_; }
  // What of a line is selected, by whole characters; empty for a line outside the text.
  ColumnSpan Range(int line, const SelectableText& text) const;

 private:
  TextPoint PointIn(const SelectableText& text, TextPoint at) const;
  ColumnSpan UnitAt(const SelectableText& text, TextPoint at) const;
  TextPoint GrownTo(const SelectableText& text, TextPoint at) const;
  // Of what was selected first.
  bool LiesBefore(TextPoint at) const;
  bool LiesBehind(TextPoint at) const;

  // What was selected first.
  TextPoint anchorFirst_, anchorLast_;
  TextPoint moving_, first_, last_;
  SelectUnit unit_ = SelectUnit::kCharacter;
  SelectShape shape_ = SelectShape::kStream;
};

}  // namespace quillet
