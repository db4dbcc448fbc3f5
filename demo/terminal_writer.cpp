#include "demo/terminal_writer.h"

#include <algorithm>
#include <bitset>

#include "demo/big5_text.h"

namespace quillet::demo {
namespace {

// A cursor position costs six bytes or more, so shorter gaps between two changes are written over.
constexpr int kGapWorthMoving = 5;
// Fewer blanks than this are written out rather than erased.
constexpr int kTailWorthErasing = 4;

// The column behind the last cell that is not a plain blank.
int EndOfText(const Canvas::Row& row) {
  int end = kCols;
  while (end > 0 && row[static_cast<std::size_t>(end - 1)] == Cell{})
    --end;
  return end;
}

// Columns that differ, widened so that a two-byte character is written whole or not at all.
std::bitset<kCols> ChangedColumns(const Canvas::Row& before, const Canvas::Row& after) {
  std::bitset<kCols> changed;
  for (std::size_t col = 0; col < kCols; ++col) {
    const bool pair = IsLead(static_cast<char>(after[col].byte)) && col + 1 < kCols;
    if (before[col] != after[col] || (pair && before[col + 1] != after[col + 1])) {
      changed.set(col);
      if (pair) changed.set(col + 1);
    }
    if (pair) ++col;
  }
  return changed;
}

}  // namespace

std::string TerminalWriter::Frame(const Canvas& next) {
  out_.clear();
  if (!known_) Start();
  for (int row = 0; row < kRows; ++row)
    WriteRow(next, row);
  SetAttr(kAttrBlank);
  MoveTo(next.CursorRow(), next.CursorCol());
  shown_ = next;
  forgottenRow_ = -1;
  return std::move(out_);
}

void TerminalWriter::Start() {
  out_ = "\x1b[m\x1b[1;1H\x1b[J";
  shown_ = Canvas();
  attr_ = kAttrBlank;
  row_ = col_ = 0;
  known_ = true;
}

void TerminalWriter::WriteRow(const Canvas& next, int row) {
  const Canvas::Row& before = shown_.RowAt(row);
  const Canvas::Row& after = next.RowAt(row);
  const bool all = row == forgottenRow_;
  if (!all && before == after) return;
  if (all) {
    // Drawn as if from elsewhere: clients know an instant message by its position and its first colours.
    SetAttr(kAttrBlank);
    col_ = -1;
  }
  const int textEnd = EndOfText(after);
  const int oldEnd = all ? kCols : EndOfText(before);
  const bool erase = oldEnd - textEnd >= kTailWorthErasing;
  const int limit = erase ? textEnd : std::max(textEnd, oldEnd);
  std::bitset<kCols> changed = ChangedColumns(before, after);
  if (all) changed.set();
  int runStart = -1;
  int runEnd = -1;
  for (int col = 0; col < limit; ++col) {
    if (!changed[static_cast<std::size_t>(col)]) continue;
    if (runStart >= 0 && col - runEnd >= kGapWorthMoving) {
      WriteRun(after, row, runStart, runEnd);
      runStart = col;
    }
    if (runStart < 0) runStart = col;
    runEnd = col + 1;
  }
  if (runStart >= 0) WriteRun(after, row, runStart, runEnd);
  if (erase) {
    SetAttr(kAttrBlank);
    MoveTo(row, textEnd);
    out_ += "\x1b[K";
  }
}

void TerminalWriter::WriteRun(const Canvas::Row& cells, int row, int from, int to) {
  MoveTo(row, from);
  for (int col = from; col < to; ++col) {
    const Cell& cell = cells[static_cast<std::size_t>(col)];
    SetAttr(cell.attr);
    out_ += static_cast<char>(cell.byte);
  }
  col_ = to < kCols ? to : -1;
}

void TerminalWriter::MoveTo(int row, int col) {
  if (row == row_ && col == col_) return;
  // Not a cursor position: a jump along the bottom row means to clients that the article viewer starts to
  // redraw itself.
  if (row == row_ && col == 0 && col_ >= 0)
    out_ += '\r';
  else
    out_ += "\x1b[" + std::to_string(row + 1) + ";" + std::to_string(col + 1) + "H";
  row_ = row;
  col_ = col;
}

void TerminalWriter::SetAttr(std::uint8_t attr) {
  if (attr == attr_) return;
  const std::uint8_t lost = static_cast<std::uint8_t>(attr_ & ~attr & (kAttrBold | kAttrBlink));
  std::string parameters;
  const auto add = [&parameters](int value) {
    if (!parameters.empty()) parameters += ';';
    parameters += std::to_string(value);
  };
  std::uint8_t from = attr_;
  if (lost != 0 && attr != kAttrBlank) {
    add(0);
    from = kAttrBlank;
  }
  if (attr != kAttrBlank) {
    if ((attr & kAttrBold) > (from & kAttrBold)) add(1);
    if ((attr & kAttrBlink) > (from & kAttrBlink)) add(5);
    if ((attr & kAttrForeground) != (from & kAttrForeground)) add(30 + (attr & kAttrForeground));
    if (BackgroundOf(attr) != BackgroundOf(from)) add(40 + BackgroundOf(attr));
  }
  out_ += "\x1b[" + parameters + "m";
  attr_ = attr;
}

}  // namespace quillet::demo
