#include "app/interaction/pointer/selection_control.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "core/byte_words.h"
#include "render/selection_look.h"

namespace quillet {
namespace {

constexpr int kFollowMs = 50;
// At once, however far out the pointer is.
constexpr int kMostRowsAtOnce = 12;

std::uint64_t AddToPrint(std::uint64_t print, const ScreenRow& text, ColumnSpan cols) {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
  const auto add = [&](std::uint64_t word) { print = (print ^ word) * kFactor ^ print >> 29; };
  int col = cols.first;
  for (; col + 8 <= cols.last; col += 8)
    add(LoadWord(text.data() + col));
  for (; col < cols.last; ++col)
    add(text[static_cast<std::size_t>(col)]);
  return print;
}

bool IsVisible(const LineCharacter& character) {
  return character.unit != 0 && !character.IsBlank();
}

}  // namespace

SelectionControl::SelectionControl(const PictureLines& text, Handlers handlers)
    : text_(text), handlers_(std::move(handlers)) {
  follow_.setInterval(kFollowMs);
  QObject::connect(&follow_, &QTimer::timeout, [this] { FollowPointer(); });
}

// ---- The mouse

void SelectionControl::Press(int row, int slot, SelectUnit unit, SelectShape shape) {
  const bool wasShown = IsShown();
  StopDragging();
  selection_.Begin(PointAt(row, slot, shape), unit, shape, text_);
  begun_ = dragging_ = true;
  row_ = row;
  slot_ = slot;
  Remember();
  if (wasShown || IsShown()) handlers_.changed();
}

void SelectionControl::ExtendTo(int row, int slot) {
  const TextPoint point = PointAt(row, slot, selection_.Shape());
  if (!begun_) selection_.Begin(point, SelectUnit::kCharacter, SelectShape::kStream, text_);
  begun_ = dragging_ = true;
  row_ = row;
  slot_ = slot;
  Grow(point);
}

void SelectionControl::DragBeyond(int rows) {
  beyond_ = dragging_ && text_.IsArticle() ? rows : 0;
  if (beyond_ == 0)
    follow_.stop();
  else if (!follow_.isActive())
    follow_.start();
}

// The farther out, the faster. What comes into the picture is selected as it comes.
void SelectionControl::FollowPointer() {
  const int rows = std::min(1 + (std::abs(beyond_) - 1) / 2, kMostRowsAtOnce);
  handlers_.scrollBy(beyond_ < 0 ? -rows : rows);
  if (dragging_) Grow(PointAt(row_, slot_, selection_.Shape()));
}

void SelectionControl::Release() {
  const bool wasDragging = dragging_;
  StopDragging();
  if (wasDragging && HoldsText()) handlers_.finished();
}

void SelectionControl::StopDragging() {
  dragging_ = false;
  beyond_ = 0;
  follow_.stop();
}

// Without a line the cells themselves are all that there is.
int SelectionControl::BoundaryAt(int row, int halves) const {
  const int line = text_.LineAtRow(std::clamp(row, 0, kBottomRow));
  return line < 0 ? (halves + 1) / 2 : NearestBoundary(text_.Line(line).text, halves);
}

// Where a row shows no line, what lies above it counts; a column keeps to its cells.
TextPoint SelectionControl::PointAt(int row, int slot, SelectShape shape) const {
  row = std::clamp(row, 0, kBottomRow);
  for (int above = row; above >= 0; --above)
    if (const int line = text_.LineAtRow(above); line >= 0)
      return {line, above == row || shape == SelectShape::kColumn ? slot : kCols};
  for (int below = row + 1; below < kRows; ++below)
    if (const int line = text_.LineAtRow(below); line >= 0) return {line, 0};
  return {};
}

void SelectionControl::Grow(TextPoint to) {
  const TextPoint first = selection_.First();
  const TextPoint last = selection_.Last();
  selection_.ExtendTo(to, text_);
  stepCol_.reset();
  Remember();
  if (selection_.First() != first || selection_.Last() != last) handlers_.changed();
}

// ---- The keyboard

void SelectionControl::Step(SelectStep step, int cursorRow, int cursorCol) {
  if (step == SelectStep::kNone) return;
  if (step == SelectStep::kClear) return Clear();
  if (text_.Count() == 0) return;
  if (!IsShown()) {
    const bool hasCursor = cursorRow >= 0 && cursorRow < kRows && text_.LineAtRow(cursorRow) >= 0;
    const TextPoint from =
        PointAt(hasCursor ? cursorRow : 0, hasCursor ? cursorCol : 0, SelectShape::kStream);
    selection_.Begin(from, SelectUnit::kCharacter, SelectShape::kStream, text_);
    stepCol_.reset();
  }
  begun_ = true;
  selection_.ContinueByCharacter();
  const TextPoint to = Stepped(step);
  const std::optional<int> stepCol = stepCol_;
  Grow(to);
  stepCol_ = stepCol;
  BringIntoSight(selection_.Moving().line);
}

// A line ends where its text does.
TextPoint SelectionControl::Stepped(SelectStep step) {
  const bool isUpright = step == SelectStep::kUp || step == SelectStep::kDown;
  TextPoint at = selection_.Moving();
  at.line = std::clamp(at.line, 0, text_.Count() - 1);
  if (!isUpright) stepCol_.reset();
  if (isUpright && !stepCol_) stepCol_ = at.col;
  const int last = text_.Count() - 1;
  const ArticleLine& line = text_.Line(at.line);
  switch (step) {
    case SelectStep::kLeft:
      if (at.col > 0) return {at.line, BoundaryBefore(line.text, at.col)};
      return at.line > 0 ? TextPoint{at.line - 1, EndOfText(text_.Line(at.line - 1))} : at;
    case SelectStep::kRight:
      if (at.col < EndOfText(line)) return {at.line, CharacterBoundary(line.text, at.col + 1)};
      return at.line < last ? TextPoint{at.line + 1, 0} : at;
    case SelectStep::kUp:
      return at.line > 0 ? TextPoint{at.line - 1, *stepCol_} : TextPoint{0, 0};
    case SelectStep::kDown:
      return at.line < last ? TextPoint{at.line + 1, *stepCol_} : TextPoint{last, EndOfText(line)};
    case SelectStep::kLineStart:
      return {at.line, 0};
    case SelectStep::kLineEnd:
      return {at.line, EndOfText(line)};
    case SelectStep::kNone:
    case SelectStep::kClear:
      break;
  }
  return at;
}

void SelectionControl::BringIntoSight(int line) {
  if (!text_.IsArticle() || text_.RowOfLine(line) >= 0) return;
  int first = -1;
  int last = -1;
  for (int row = 0; row < kRows; ++row) {
    last = std::max(last, text_.LineAtRow(row));
    if (first < 0) first = last;
  }
  if (first < 0) return;
  handlers_.scrollBy(text_.RowsBetween(line < first ? first : last, line));
}

// ---- What is selected

void SelectionControl::SelectAll() {
  StopDragging();
  selection_.SelectAll(text_);
  begun_ = true;
  stepCol_.reset();
  Remember();
  handlers_.changed();
}

void SelectionControl::Clear() {
  const bool wasShown = IsShown();
  StopDragging();
  selection_.Clear();
  begun_ = false;
  stepCol_.reset();
  if (wasShown) handlers_.changed();
}

bool SelectionControl::IsShown() const {
  return !selection_.IsEmpty();
}

bool SelectionControl::HoldsText() const {
  if (!IsShown()) return false;
  for (int line = selection_.First().line; line <= selection_.Last().line && line < text_.Count(); ++line) {
    const auto characters = CharactersOf(text_.Line(line), selection_.Range(line, text_));
    if (std::any_of(characters.begin(), characters.end(), IsVisible)) return true;
  }
  return false;
}

bool SelectionControl::Contains(int row, int col) const {
  const int line = text_.LineAtRow(row);
  if (line < 0) return false;
  const ColumnSpan range = selection_.Range(line, text_);
  return col >= range.first && col < range.last;
}

void SelectionControl::OnTextChanged() {
  if (!begun_) return;
  const bool isSame = text_.IsArticle() == inArticle_ && selection_.Last().line < text_.Count();
  if (!isSame || Print() != print_) Clear();
}

void SelectionControl::Remember() {
  inArticle_ = text_.IsArticle();
  print_ = Print();
}

// While nothing is selected, of the line from which the selection will begin.
std::uint64_t SelectionControl::Print() const {
  std::uint64_t print = 0;
  if (selection_.Last().line >= text_.Count()) return print;
  if (selection_.IsEmpty()) return AddToPrint(print, text_.Line(selection_.First().line).text, {0, kCols});
  for (int line = selection_.First().line; line <= selection_.Last().line; ++line)
    print = AddToPrint(print, text_.Line(line).text, selection_.Range(line, text_));
  return print;
}

void SelectionControl::Decorate(Page& page) const {
  if (!IsShown()) return;
  for (int row = 0; row < kRows; ++row) {
    const int line = text_.LineAtRow(row);
    if (line < 0) continue;
    const ColumnSpan range = selection_.Range(line, text_);
    LaySelection(page[static_cast<std::size_t>(row)], range.first, range.last);
  }
}

std::u16string SelectionControl::Text() const {
  return SelectedText(selection_, text_);
}

}  // namespace quillet
