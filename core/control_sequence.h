// What a control sequence does, apart from the screen it is done to. Pure values, made and used by the
// parser on the receive thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/screen_snapshot.h"

namespace quillet {

// Foreground and background exchanged; bold and blink stay.
constexpr std::uint8_t ReversedAttr(std::uint8_t attr) {
  return static_cast<std::uint8_t>((attr & (kAttrBold | kAttrBlink)) | (attr >> kAttrBackgroundShift) |
                                   (attr << kAttrBackgroundShift));
}

// A list of rendition parameters, folded into one change: whatever the list, its effect is an optional
// exchange, then bits kept, then bits set.
struct AttrChange {
  bool reverse = false;
  std::uint8_t keep = 0xFF;
  std::uint8_t set = 0;

  constexpr std::uint8_t Apply(std::uint8_t attr) const {
    const std::uint8_t turned = reverse ? ReversedAttr(attr) : attr;
    return static_cast<std::uint8_t>((turned & keep) | set);
  }
  // Appends one parameter to the list.
  void Then(std::uint8_t param);
};

// The parameters of a sequence: 8-bit values, of which the first sixteen count.
using SequenceParams = std::array<std::uint8_t, 16>;

// Takes a digit or a semicolon into the parameter list, whose `count` is the 1-based index of the one being
// collected, 17 when it is one too many. Returns false, and does nothing, for any other byte.
bool CollectParam(SequenceParams& params, std::int8_t& count, std::uint8_t byte);

struct ControlSequence {
  enum class Kind : std::uint8_t {
    kRendition,  // m: `change`
    kReset,      // m with a single 0: the BBS has finished a coloured text
    kPlace,      // H: to `row`, `col`, counted from 1
    kEraseLine,  // K
    kEraseAll,   // J
    kInsert,     // L: `row` lines, negative from 128 on
    kNothing     // everything else
  };
  Kind kind = Kind::kNothing;
  AttrChange change;
  std::uint8_t row = 0;
  std::uint8_t col = 0;
};

ControlSequence DecodeSequence(const SequenceParams& params, std::int8_t count, std::uint8_t finalByte);

// The bytes behind ESC "[", the final one included; empty when they are no well-formed sequence.
std::optional<ControlSequence> DecodeSequence(std::span<const std::uint8_t> bytes);

}  // namespace quillet
