// Where the parts of a push line stand in its row: kind, user id, words, address, time. Read once for each
// row of a page, and for each line of a local article. Pure; any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "bbs/cell_range.h"
#include "core/screen_snapshot.h"

namespace quillet {

// In the order of the BBS's own choices, which count from 1.
enum class PushKind {
  kGood,  // "推"
  kBad,   // "噓"
  kNote   // "→", which counts neither for nor against
};
inline constexpr std::size_t kPushKinds = 3;

// Month and day may be any two digits; the line has no year.
struct PushStamp {
  std::uint8_t month = 0;
  std::uint8_t day = 0;
  std::uint8_t hour = 0;
  std::uint8_t minute = 0;

  bool operator==(const PushStamp&) const = default;
};

struct PushLine {
  PushKind kind = PushKind::kGood;
  CellRange id;
  CellRange words;    // behind the colon, up to the address or time; up to the row's end without them
  CellRange address;  // IPv4, in front of the time; empty: there is none
  CellRange time;     // empty: the line has none
  std::optional<PushStamp> stamp;

  bool operator==(const PushLine&) const = default;
};

class PushLineReader {
 public:
  // The character tables must have been loaded.
  PushLineReader();

  // Nothing for a line that is no push line.
  std::optional<PushLine> Read(const ScreenRow& text) const;
  // The column of the colon behind the id; the same.
  std::optional<int> Colon(const ScreenRow& text) const;

 private:
  std::optional<PushKind> Kind(const ScreenRow& text) const;

  std::array<std::uint16_t, kPushKinds> marks_{};  // by PushKind: the two bytes that begin the line
};

// The writer of a push line.
std::u16string PushId(const ScreenRow& text, const PushLine& push);

}  // namespace quillet
