#include "core/term_screen.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "core/byte_words.h"
#include "core/charset.h"
#include "core/notify_target.h"

namespace quillet {
namespace {

constexpr std::uint8_t kBel = 7;
constexpr std::uint8_t kBackspace = 8;
constexpr std::uint8_t kLineFeed = 10;
constexpr std::uint8_t kReturn = 13;
constexpr std::uint8_t kEscape = 27;

// Values of escState.
constexpr std::uint8_t kGround = 0;
constexpr std::uint8_t kAfterEscape = kEscape;
constexpr std::uint8_t kInSequence = '[';

constexpr int kLastCol = kCols - 1;
// The reader's status line is 70 or more columns wide; the cursor parks behind it.
constexpr int kStatusEndCol = 69;
// Bytes below are not all control bytes to the BBS, but all that are lie below.
constexpr std::uint8_t kControlLimit = kEscape + 1;
// ESC, "[" and the eight bytes that SequenceMemory looks at.
constexpr std::ptrdiff_t kLookAhead = 10;
constexpr int kWhite = 7;
// The bit of pageFlags that says that the last page handed over was the reader.
constexpr std::uint32_t kPageIsReader = 1;

// The cursor may be sent anywhere that a signed byte can name.
constexpr int kCursorMin = -128;
constexpr int kCursorMax = 127;

// How the BBS draws an instant message: bold yellow on cyan, from the lead byte of its star on.
constexpr std::string_view kMessageOnRow23 = "\x1b[23;1H\x1b[1;33;46m\xa1";
constexpr std::string_view kMessageOnRow24 = "\x1b[24;1H\x1b[1;33;46m\xa1";

constexpr std::size_t Index(int position) {
  return static_cast<std::uint32_t>(position);
}

bool HoldsInstantMessage(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return false;
  // A message whose last byte ends the batch has no text yet and does not count.
  const std::string_view batch(reinterpret_cast<const char*>(bytes.data()), bytes.size() - 1);
  return batch.find(kMessageOnRow23) != batch.npos || batch.find(kMessageOnRow24) != batch.npos;
}

int CursorFromParam(std::uint8_t param) {
  return std::max(static_cast<std::int8_t>(param) - 1, kCursorMin);
}

}  // namespace

TermScreen::TermScreen() {
  Clear();
}

void TermScreen::Feed(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return;
  if (bytes.size() == 1 && bytes[0] == kBel) return Ring();
  if (msgWatch != 0 && HoldsInstantMessage(bytes)) ++msgCount;

  inBatch = 1;
  const std::uint8_t* at = bytes.data();
  const std::uint8_t* const end = at + bytes.size();
  while (at != end) {
    if (escState == kGround && end - at >= kLookAhead) {
      at = FeedWhole(at, end - kLookAhead);
    } else {
      Step(*at++);
    }
  }
  inBatch = 0;
  if (ShowsCompletePage()) ProcessScreen(ScreenReason::kUpdated);
  bottomJump = 0;
}

void TermScreen::ProcessScreen(ScreenReason reason) {
  if (watcher_ != nullptr) watcher_->ProcessScreen(*this, reason);
}

void TermScreen::Step(std::uint8_t byte) {
  switch (escState) {
    case kAfterEscape:
      return StepAfterEscape(byte);
    case kInSequence:
      return StepInSequence(byte);
    default:
      return StepGround(byte);
  }
}

void TermScreen::StepGround(std::uint8_t byte) {
  switch (byte) {
    case kEscape:
      escState = kAfterEscape;
      break;
    case kLineFeed:
      LineFeed();
      break;
    case kReturn:
      cursorCol = 0;
      break;
    case kBackspace:
      if (cursorCol >= 1) --cursorCol;
      break;
    case kBel:
      Ring();
      break;
    default:
      Print(byte);
      break;
  }
}

void TermScreen::StepAfterEscape(std::uint8_t byte) {
  escState = kGround;
  if (byte == 'M') {
    OpenLine();
  } else if (byte == '[') {
    escState = kInSequence;
    params[0] = 0;
    paramCount = 1;
  }
}

void TermScreen::StepInSequence(std::uint8_t byte) {
  if (CollectParam(params, paramCount, byte)) return;
  escState = kGround;
  Apply(DecodeSequence(params, paramCount, byte));
}

inline void TermScreen::Apply(const ControlSequence& sequence) {
  using Kind = ControlSequence::Kind;
  if (sequence.kind == Kind::kRendition) {  // two of three sequences
    curAttr = sequence.change.Apply(static_cast<std::uint8_t>(curAttr));
    return;
  }
  switch (sequence.kind) {
    case Kind::kReset:
      curAttr = kAttrBlank;
      HandOverReader();
      break;
    case Kind::kPlace:
      PlaceCursor(sequence.row, sequence.col);
      HandOverReader();
      break;
    case Kind::kEraseLine:
      BlankRow(cursorRow, cursorCol);
      HandOverReader();
      break;
    case Kind::kEraseAll:
      Clear();
      break;
    case Kind::kInsert:
      InsertLines(static_cast<std::int8_t>(sequence.row));
      break;
    case Kind::kRendition:
    case Kind::kNothing:
      break;
  }
}

// Everything of a batch but what may be cut off at its end: stops behind `last`, or in the middle of a
// sequence that is not of the common kind.
const std::uint8_t* TermScreen::FeedWhole(const std::uint8_t* at, const std::uint8_t* last) {
  while (at <= last) {
    if (*at >= kControlLimit && CursorInside()) {
      at = FeedText(at, last);
    } else if (*at == kEscape) {
      const std::uint8_t* const behind = FeedSequence(at);
      if (behind == nullptr) {
        StepGround(*at++);
        break;
      }
      at = behind;
    } else if (at[0] == kReturn && at[1] == kLineFeed) {  // how nearly all rows end
      cursorCol = 0;
      LineFeed();
      at += 2;
    } else {
      StepGround(*at++);
    }
  }
  return at;
}

// The control sequence at `at`, of which kLookAhead bytes can be read. Null when it is none that can be
// remembered; nothing has been done then.
inline const std::uint8_t* TermScreen::FeedSequence(const std::uint8_t* at) {
  if (at[1] != '[') return nullptr;
  const SequenceMemory::Key key = SequenceMemory::KeyOf(LoadWord(at + 2));
  const ControlSequence* sequence = sequences_.Find(key);
  if (sequence == nullptr) return nullptr;
  const std::uint8_t* const behind = at + 2 + key.length;
  Apply(*sequence);
  return behind;
}

// The text at `at`, with the cursor inside the screen: a word's worth of cells at a time.
inline const std::uint8_t* TermScreen::FeedText(const std::uint8_t* at, const std::uint8_t* last) {
  const std::size_t col = Index(cursorCol);
  const std::size_t first = Index(cursorRow) * kRowStride + col;  // cheaper than two row addresses
  std::uint8_t* const cells = text[0].data() + first;
  std::uint8_t* const colours = attr[0].data() + first;
  const std::uint64_t colour = RepeatByte(static_cast<std::uint8_t>(curAttr));
  std::size_t done = 0;
  std::uint64_t word = LoadWord(at);
  std::uint64_t controls = BytesBelow(word, kControlLimit);
  if (controls == 0) {
    const std::size_t most = std::min(kCols - col, static_cast<std::size_t>(last - at)) & ~std::size_t{7};
    while (controls == 0 && done != most) {
      StoreWord(cells + done, word);
      StoreWord(colours + done, colour);
      done += 8;
      word = LoadWord(at + done);
      controls = BytesBelow(word, kControlLimit);
    }
  }

  const std::size_t count = FirstMarked(controls);
  const std::size_t endCol = col + done + count;
  if (endCol >= kCols) return FeedRowEnd(at + done, count, col + done, last);
  StoreMasked(cells + done, word, BytesBefore(controls));
  StoreMasked(colours + done, colour, BytesBefore(controls));
  cursorCol = static_cast<std::int32_t>(endCol);
  return at + done + count;
}

// Text for the cursor's row from `col` on, of which the first `count` bytes fill the row or are too many for
// it. What does not fit is written to the last cell, each byte over the one before.
const std::uint8_t* TermScreen::FeedRowEnd(const std::uint8_t* at, std::size_t count, std::size_t col,
                                           const std::uint8_t* last) {
  ScreenRow& cells = text[Index(cursorRow)];
  ScreenRow& colours = attr[Index(cursorRow)];
  std::copy_n(at, kCols - col, cells.data() + col);
  std::fill_n(colours.data() + col, kCols - col, static_cast<std::uint8_t>(curAttr));
  const std::uint8_t* end = at + count;
  while (end <= last && *end >= kControlLimit)
    ++end;
  cells[kLastCol] = end[-1];
  cursorCol = kLastCol;
  return end;
}

void TermScreen::Print(std::uint8_t byte) {
  if (CursorInside()) {
    text[Index(cursorRow)][Index(cursorCol)] = byte;
    attr[Index(cursorRow)][Index(cursorCol)] = static_cast<std::uint8_t>(curAttr);
  }
  if (cursorCol != kLastCol && cursorCol < kCursorMax) ++cursorCol;
}

void TermScreen::LineFeed() {
  if (cursorRow == kBottomRow) {
    ScrollUp();
  } else if (cursorRow < kCursorMax) {
    ++cursorRow;
  }
}

// Not the standard's reverse index: a line is opened at the cursor, and the cursor steps below it.
void TermScreen::OpenLine() {
  MoveRowsDown(cursorRow, 1);
  BlankRow(cursorRow, cursorCol);
  if (cursorRow < kBottomRow) ++cursorRow;
}

void TermScreen::Ring() {
  if (notifyWindow != nullptr) notifyWindow->Post(kMessageBell, 0, 0);
}

void TermScreen::PlaceCursor(std::uint8_t rowParam, std::uint8_t colParam) {
  if (cursorRow == kBottomRow && cursorCol >= kStatusEndCol && rowParam == kRows && colParam == 1)
    bottomJump = 1;
  cursorRow = CursorFromParam(rowParam);
  cursorCol = CursorFromParam(colParam);
}

// Only the cursor's row becomes blank, however many rows were moved; the pages rely on it.
void TermScreen::InsertLines(std::int8_t count) {
  if (count <= 0) return;
  MoveRowsDown(cursorRow, count);
  BlankRow(cursorRow, 0);
}

// The reader is handed over as soon as its status line is complete, even when more follows in the batch.
void TermScreen::HandOverReader() {
  if (cursorRow != kBottomRow || cursorCol < kStatusEndCol) return;  // nearly always
  if (watcher_ == nullptr || !CursorParked(kStatusEndCol) || !watcher_->IsReaderSettled(*this)) return;
  inBatch = 0;
  ProcessScreen(ScreenReason::kUpdated);
  inBatch = 1;
}

// A bottom line was drawn to its end: the cursor waits on a plain blank at `fromCol` or later, right behind
// the line's colour, and no colour is set.
bool TermScreen::CursorParked(int fromCol) const {
  return CursorInside() && cursorRow == kBottomRow && cursorCol >= fromCol && curAttr == kAttrBlank &&
         TextAt(cursorRow, cursorCol) == ' ' && AttrAt(cursorRow, cursorCol) == kAttrBlank &&
         BackgroundOf(AttrAt(cursorRow, cursorCol - 1)) != 0;
}

bool TermScreen::ShowsCompletePage() {
  if (watcher_ == nullptr) return false;
  if (watcher_->IsReader(*this)) return false;
  if ((pageFlags & kPageIsReader) != 0 && bottomJump != 0) return false;  // the reader is being redrawn
  if (!watcher_->IsArticleList(*this)) return true;
  return ShowsListPrompt() || watcher_->IsStarLine(*this) || watcher_->IsListCursor(*this) ||
         watcher_->IsInputField(*this) ||
         (CursorParked(kLastCol) && BackgroundOf(AttrAt(kBottomRow, kLastCol - 1)) != kWhite);
}

bool TermScreen::ShowsListPrompt() {
  if (listPrompts_.quickSwitch.empty()) {
    listPrompts_.quickSwitch = ToBig5(u" ★快速切換: ");
    listPrompts_.rating = ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]?");
  }
  const std::string_view bottomLine = RowText(kBottomRow);
  return bottomLine.starts_with(listPrompts_.quickSwitch) || bottomLine.starts_with(listPrompts_.rating);
}

}  // namespace quillet
