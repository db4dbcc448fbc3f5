// The parser once more, as plainly as its rules can be written down: one byte, one cell at a time, nothing
// shared with the real one. Slow on purpose; tests and the fuzzer hold the real parser against it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "core/charset.h"
#include "core/notify_target.h"
#include "core/screen_snapshot.h"
#include "core/screen_watcher.h"

namespace quillet {

class ReferenceScreen : public ScreenSnapshot {
 public:
  explicit ReferenceScreen(ScreenWatcher* watcher) : watcher_(watcher) { Clear(); }

  void Feed(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return;
    if (bytes.size() == 1 && bytes[0] == 7) return Bell();
    if (msgWatch != 0 && (CountsMessage(bytes, "\x1b[23;1H\x1b[1;33;46m\xa1") ||
                          CountsMessage(bytes, "\x1b[24;1H\x1b[1;33;46m\xa1")))
      ++msgCount;
    inBatch = 1;
    for (const std::uint8_t byte : bytes) {
      if (escState == 27) {
        Escape(byte);
      } else if (escState == 91) {
        Sequence(byte);
      } else {
        Ground(byte);
      }
    }
    inBatch = 0;
    if (HandsOver()) watcher_->ProcessScreen(*this, ScreenReason::kUpdated);
    bottomJump = 0;
  }

 private:
  static bool CountsMessage(std::span<const std::uint8_t> bytes, const std::string& pattern) {
    for (std::size_t start = 0; start + 19 <= bytes.size(); ++start) {
      std::size_t same = 0;
      while (same < pattern.size() && bytes[start + same] == static_cast<std::uint8_t>(pattern[same]))
        ++same;
      if (same == pattern.size()) return true;
    }
    return false;
  }

  void Bell() {
    if (notifyWindow != nullptr) notifyWindow->Post(32779, 0, 0);
  }

  static bool Inside(int row, int col) { return row >= 0 && row <= 23 && col >= 0 && col <= 79; }
  void SetCell(int row, int col, std::uint8_t byte, std::uint8_t colour) {
    if (!Inside(row, col)) return;
    text[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = byte;
    attr[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = colour;
  }
  void Blank(int row, int col) {
    for (; col <= 79; ++col)
      SetCell(row, col, ' ', 7);
  }
  void CopyCells(int from, int to) {
    for (int col = 0; col <= 79; ++col)
      if (Inside(from, col)) SetCell(to, col, TextAt(from, col), AttrAt(from, col));
  }

  void Ground(std::uint8_t byte) {
    if (byte == 27) {
      escState = 27;
    } else if (byte == 10) {
      if (cursorRow != 23) {
        cursorRow = std::min(cursorRow + 1, 127);
      } else {
        for (int row = 0; row <= 22; ++row)
          CopyCells(row + 1, row);
        Blank(23, 0);
      }
    } else if (byte == 13) {
      cursorCol = 0;
    } else if (byte == 8) {
      if (cursorCol >= 1) --cursorCol;
    } else if (byte == 7) {
      Bell();
    } else {
      SetCell(cursorRow, cursorCol, byte, static_cast<std::uint8_t>(curAttr));
      cursorCol = std::min(cursorCol + 1, 127);
      if (cursorCol == 80) cursorCol = 79;
    }
  }

  void Escape(std::uint8_t byte) {
    escState = 0;
    if (byte == 'M') {
      for (int row = 22; row >= cursorRow; --row)
        CopyCells(row, row + 1);
      Blank(cursorRow, cursorCol);
      if (cursorRow < 23) ++cursorRow;
    } else if (byte == '[') {
      escState = 91;
      params.fill(0);
      paramCount = 1;
    }
  }

  void Sequence(std::uint8_t byte) {
    if (byte == ';') {
      paramCount = static_cast<std::int8_t>(std::min(paramCount + 1, 17));
      return;
    }
    if (byte >= '0' && byte <= '9') {
      if (paramCount <= 16) {
        std::uint8_t& param = params[static_cast<std::size_t>(paramCount - 1)];
        param = static_cast<std::uint8_t>((param * 10 + byte - '0') % 256);
      }
      return;
    }
    escState = 0;
    if (byte == 'L') InsertLines();
    if (byte == 'H') Place();
    if (byte == 'K') Blank(cursorRow, cursorCol);
    if (byte == 'J') Clear();
    if (byte == 'm') {
      for (int i = 0; i < std::min<int>(paramCount, 16); ++i)
        Rendition(params[static_cast<std::size_t>(i)]);
    }
    if (byte == 'H' || byte == 'K' || (byte == 'm' && paramCount == 1 && params[0] == 0)) MidBatch();
  }

  void InsertLines() {
    const int count = params[0] == 0 ? 1 : static_cast<std::int8_t>(params[0]);
    if (count < 1) return;
    for (int row = 23; row - count >= cursorRow; --row)
      CopyCells(row - count, row);
    Blank(cursorRow, 0);
  }

  void Place() {
    const int row = params[0] == 0 ? 1 : params[0];
    const int col = params[1] == 0 ? 1 : params[1];
    if (cursorRow == 23 && cursorCol >= 69 && row == 24 && col == 1) bottomJump = 1;
    cursorRow = std::max(static_cast<std::int8_t>(row) - 1, -128);
    cursorCol = std::max(static_cast<std::int8_t>(col) - 1, -128);
  }

  void Rendition(int param) {
    unsigned foreground = curAttr & 7;
    unsigned bold = (curAttr >> 3) & 1;
    unsigned blink = (curAttr >> 4) & 1;
    unsigned background = curAttr >> 5;
    const auto digit = static_cast<unsigned>(param % 10);
    if (param == 0) {
      foreground = 7;
      bold = blink = background = 0;
    }
    if (param == 1) bold = 1;
    if (param == 3 || param == 7) std::swap(foreground, background);
    if (param == 5 || param == 6) blink = 1;
    if (param == 22) bold = 0;
    if (param >= 30 && param <= 37) foreground = digit;
    if (param == 39) foreground = 7;
    if (param >= 40 && param <= 47) background = digit;
    if (param == 49) background = 0;
    curAttr = foreground | bold << 3 | blink << 4 | background << 5;
  }

  void MidBatch() {
    if (watcher_ == nullptr || !watcher_->IsReaderSettled(*this)) return;
    inBatch = 0;
    watcher_->ProcessScreen(*this, ScreenReason::kUpdated);
    inBatch = 1;
  }

  bool HandsOver() {
    if (watcher_ == nullptr || watcher_->IsReader(*this)) return false;
    if (pageFlags % 2 == 1 && bottomJump != 0) return false;
    if (!watcher_->IsArticleList(*this)) return true;
    const std::string bottom(RowText(23));
    if (bottom.rfind(ToBig5(u" ★快速切換: "), 0) == 0) return true;
    if (bottom.rfind(ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]?"), 0) == 0) return true;
    if (watcher_->IsStarLine(*this) || watcher_->IsListCursor(*this) || watcher_->IsInputField(*this))
      return true;
    const int background = AttrAt(23, 78) >> 5;
    return cursorRow == 23 && cursorCol == 79 && background >= 1 && background <= 6 && AttrAt(23, 79) == 7 &&
           TextAt(23, 79) == ' ' && curAttr == 7;
  }

  ScreenWatcher* watcher_;
};

}  // namespace quillet
