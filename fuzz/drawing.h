// Screens drawn by any bytes: an input is a list of edits of a blank screen, an opcode and its operands. A
// byte that is no opcode is text. For the fuzz targets that look at screens.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/screen_snapshot.h"

namespace quillet {

// A promise that is broken is what the fuzzer looks for.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

class Input {
 public:
  explicit Input(std::string_view bytes) : bytes_(bytes) {}
  bool Empty() const { return at_ == bytes_.size(); }
  std::uint8_t Byte() { return Empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(bytes_[at_++]); }
  std::uint32_t Word() {
    std::uint32_t word = 0;
    for (int i = 0; i < 3; ++i)
      word = word << 8 | Byte();
    return word;
  }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;
};

// Draws until the next "show"; false at the input's end.
class Drawing {
 public:
  ScreenSnapshot screen;
  bool classify = true;

  Drawing() {
    screen.Clear();
    screen.curAttr = kAttrBlank;
    screen.sessionState = SessionState::kConnected;
    screen.isBbsSite = 1;
  }
  bool Draw(Input& input) {
    enum : std::uint8_t {
      kShow = 1,
      kPlace,
      kColour,
      kColourRun,
      kCursor,
      kFlags,
      kClear,
      kCurrentColour,
      kRepeat
    };
    classify = true;
    while (!input.Empty()) {
      const std::uint8_t op = input.Byte();
      switch (op) {
        case kShow:
          return true;
        case kPlace:
          row_ = input.Byte() % kRows;
          col_ = input.Byte() % kCols;
          break;
        case kColour:
          colour_ = input.Byte();
          break;
        case kColourRun:
          for (int count = input.Byte() % kCols; count >= 0; --count)
            PutColour();
          break;
        case kCursor:
          screen.cursorRow = static_cast<std::int8_t>(input.Byte());
          screen.cursorCol = static_cast<std::int8_t>(input.Byte());
          break;
        case kFlags:
          screen.pageFlags = input.Word();
          classify = false;
          break;
        case kClear:
          screen.Clear();
          break;
        case kCurrentColour:
          screen.curAttr = input.Byte();
          break;
        case kRepeat: {
          const std::uint8_t byte = input.Byte();
          for (int count = input.Byte() % kCols; count >= 0; --count)
            Put(byte);
          break;
        }
        default:
          Put(op);
      }
    }
    return false;
  }

 private:
  void PutColour() {
    screen.attr[static_cast<std::size_t>(row_)][static_cast<std::size_t>(col_)] = colour_;
    col_ = (col_ + 1) % kCols;
  }
  void Put(std::uint8_t byte) {
    screen.text[static_cast<std::size_t>(row_)][static_cast<std::size_t>(col_)] = byte;
    PutColour();
  }

  int row_ = 0;
  int col_ = 0;
  std::uint8_t colour_ = kAttrBlank;
};

}  // namespace quillet
