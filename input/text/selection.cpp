#include "input/text/selection.h"

#include <algorithm>

#include "input/text/words.h"

namespace quillet {

void Selection::Begin(TextPoint at, SelectUnit unit, SelectShape shape, const SelectableText& text) {
  Clear();
  if (text.Count() == 0) return;
  unit_ = unit;
  shape_ = shape;
  at = PointIn(text, at);
  if (unit == SelectUnit::kWord) at.col = std::min(at.col, kCols - 1);
  const ColumnSpan first = UnitAt(text, at);
  anchorFirst_ = {at.line, first.first};
  anchorLast_ = {at.line, first.last};
  moving_ = anchorLast_;
  first_ = anchorFirst_;
  last_ = anchorLast_;
}

void Selection::ExtendTo(TextPoint at, const SelectableText& text) {
  if (text.Count() == 0) return;
  moving_ = GrownTo(text, PointIn(text, at));
  if (shape_ == SelectShape::kColumn) {
    first_ = {std::min(anchorFirst_.line, moving_.line), std::min(anchorFirst_.col, moving_.col)};
    last_ = {std::max(anchorLast_.line, moving_.line), std::max(anchorLast_.col, moving_.col)};
  } else {
    first_ = std::min(anchorFirst_, moving_);
    last_ = std::max(anchorLast_, moving_);
  }
}

void Selection::ContinueByCharacter() {
  anchorFirst_ = anchorLast_ = LiesBefore(moving_) ? anchorLast_ : anchorFirst_;
  unit_ = SelectUnit::kCharacter;
}

void Selection::SelectAll(const SelectableText& text) {
  Begin({0, 0}, SelectUnit::kCharacter, SelectShape::kStream, text);
  ExtendTo({text.Count() - 1, kCols}, text);
}

bool Selection::IsEmpty() const {
  return shape_ == SelectShape::kColumn ? first_.col == last_.col : first_ == last_;
}

ColumnSpan Selection::Range(int line, const SelectableText& text) const {
  if (IsEmpty() || line < first_.line || line > last_.line || line >= text.Count()) return {};
  const bool isColumn = shape_ == SelectShape::kColumn;
  const int first = isColumn || line == first_.line ? first_.col : 0;
  const int last = isColumn || line == last_.line ? last_.col : kCols;
  const ScreenRow& cells = text.Line(line).text;
  return {CharacterBoundary(cells, first), CharacterBoundary(cells, last)};
}

// The corners of a column lie where they are put: what they cut differs from line to line.
TextPoint Selection::PointIn(const SelectableText& text, TextPoint at) const {
  const int lastLine = text.Count() - 1;
  if (shape_ == SelectShape::kColumn) return {std::clamp(at.line, 0, lastLine), std::clamp(at.col, 0, kCols)};
  if (at.line < 0) return {0, 0};
  if (at.line > lastLine) return {lastLine, kCols};
  if (unit_ != SelectUnit::kCharacter) return {at.line, std::clamp(at.col, 0, kCols)};
  return {at.line, CharacterBoundary(text.Line(at.line).text, at.col)};
}

// Of the character behind the point; at the end of a line there is none.
ColumnSpan Selection::UnitAt(const SelectableText& text, TextPoint at) const {
  switch (unit_) {
    case SelectUnit::kWord:
      return WordAt(text.Line(at.line), at.col);
    case SelectUnit::kLine:
      return {0, kCols};
    case SelectUnit::kCharacter:
      break;
  }
  return {at.col, at.col};
}

bool Selection::LiesBefore(TextPoint at) const {
  return shape_ == SelectShape::kColumn ? at.col <= anchorFirst_.col : at <= anchorFirst_;
}

bool Selection::LiesBehind(TextPoint at) const {
  return shape_ == SelectShape::kColumn ? at.col > anchorLast_.col : at > anchorLast_;
}

// The far end of the last unit that lies, even in part, between the anchor and the point.
TextPoint Selection::GrownTo(const SelectableText& text, TextPoint at) const {
  if (unit_ == SelectUnit::kCharacter) return at;
  if (LiesBefore(at)) return {at.line, UnitAt(text, at).first};
  if (!LiesBehind(at)) return {shape_ == SelectShape::kColumn ? at.line : anchorLast_.line, anchorLast_.col};
  // A line belongs to whoever points at its begin; a word does not.
  if (unit_ == SelectUnit::kWord && at.col == 0) return at;
  return {at.line, UnitAt(text, {at.line, std::max(at.col - 1, 0)}).last};
}

}  // namespace quillet
