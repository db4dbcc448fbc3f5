// Where the parts of a push line stand: mark, user id, words, address, time. Pure.
#pragma once

#include <cstdint>
#include <optional>

#include "core/screen_snapshot.h"
#include "render/row_edit.h"

namespace quillet {

// Month and day may be any two digits; the line has no year.
struct PushStamp {
  std::uint8_t month = 0;
  std::uint8_t day = 0;
  std::uint8_t hour = 0;
  std::uint8_t minute = 0;
};

struct PushLine {
  CellRange id;
  CellRange words;      // behind the colon, up to the address or time; up to the row's end without them
  bool isNote = false;  // marked "→", which counts neither for nor against
  std::optional<PushStamp> stamp;
};

// `text` is a line that PageFacts::IsPushCommentLine recognises.
PushLine ReadPushLine(const ScreenRow& text);

}  // namespace quillet
