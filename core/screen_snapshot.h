// The 80x24 screen as a plain record that can be copied, compared and handed to another thread. TermScreen
// is the live one that the receive thread writes; the view and the page tests read copies.
//
// The screen holds bytes, not characters: a Big5 character is a lead and a trail byte in two neighbouring
// cells, each with an attribute of its own. Pairing them is the reader's business.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/session_state.h"

namespace quillet {

class NotifyTarget;

inline constexpr int kRows = 24;
inline constexpr int kCols = 80;
inline constexpr int kBottomRow = kRows - 1;  // of status lines, prompts and messages
// 80 cells, a blank, a NUL (so that a row reads as a string of 81 characters) and six spare blanks; a
// multiple of 8, so that moving a row is eleven 64-bit moves.
inline constexpr int kRowStride = 88;
inline constexpr std::size_t kRowEnd = 81;  // the NUL's place

// Attribute byte: bits 0-2 foreground, 3 bold, 4 blink, 5-7 background.
inline constexpr std::uint8_t kAttrBlank = 0x07;       // white on black
inline constexpr std::uint8_t kAttrInputField = 0xE0;  // black on white: the BBS's input field
inline constexpr std::uint8_t kAttrForeground = 0x07;
inline constexpr std::uint8_t kAttrBold = 0x08;
inline constexpr std::uint8_t kAttrBlink = 0x10;
inline constexpr int kAttrBackgroundShift = 5;

constexpr int BackgroundOf(std::uint8_t attr) {
  return attr >> kAttrBackgroundShift;
}

using ScreenRow = std::array<std::uint8_t, kRowStride>;

// The row's cells as bytes, without what lies behind the last one.
inline std::string_view BytesOf(const ScreenRow& row) {
  return {reinterpret_cast<const char*>(row.data()), kCols};
}

struct ScreenSnapshot {
  std::array<ScreenRow, kRows> text;
  std::array<ScreenRow, kRows> attr;
  // 0-23 and 0-79 on every page of the BBS; a hostile stream can put them anywhere within -128..127.
  std::int32_t cursorRow = 0;
  std::int32_t cursorCol = 0;
  std::uint32_t curAttr = 0;  // the attribute that newly written cells receive
  std::uint32_t pageFlags = 0;
  NotifyTarget* notifyWindow = nullptr;  // null until a view attaches
  std::uint32_t msgWatch = 0;            // non-zero: instant-message pop-ups are counted
  std::int32_t msgCount = 0;             // pop-ups counted; the classifier keeps "star line pending" here
  std::int32_t classifierMode = 8;
  std::uint8_t classifierFlag = 0;
  std::uint8_t bottomJump = 0;  // within this batch the cursor jumped along the bottom line to its start
  std::uint8_t inBatch = 0;
  std::uint8_t escState = 0;  // 0 ground, 27 after ESC, 91 within a control sequence
  std::array<std::uint8_t, 16> params{};
  std::int8_t paramCount = 0;  // 1-based index of the parameter being collected
  std::uint8_t frozen = 0;     // the classifier ignores screen updates
  // Mirrors of the session's fields, so that a copy carries them.
  std::uint8_t isBbsSite = 0;
  SessionState sessionState = SessionState::kIdle;
  std::uint32_t connection = 0;  // TermSession::connectionNumber

  // Every cell blank; the cursor and everything else stay.
  void Clear();
  // Spaces and kAttrBlank from `fromCol` to column 79; what lies outside the screen is left out.
  void BlankRow(int row, int fromCol);
  // Moves the rows from `first` on down by `count`; what leaves the screen is lost, what is left behind stays
  // as it was. Nothing for a count below 1.
  void MoveRowsDown(int first, int count);
  // Every row moves up by one; the last one becomes blank.
  void ScrollUp();

  bool CursorInside() const {
    // A negative value becomes a huge one.
    return static_cast<std::uint32_t>(cursorRow) < kRows && static_cast<std::uint32_t>(cursorCol) < kCols;
  }
  // The row's 80 visible bytes.
  std::string_view RowText(int row) const {
    return {reinterpret_cast<const char*>(text[static_cast<std::size_t>(row)].data()), kCols};
  }
  std::uint8_t TextAt(int row, int col) const {
    return text[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  }
  std::uint8_t AttrAt(int row, int col) const {
    return attr[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  }
};

}  // namespace quillet
