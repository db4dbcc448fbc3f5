// Control sequences that the parser has already decoded, found again by their bytes. The BBS draws with a
// few hundred different ones, over and over. One per screen, on its receive thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/byte_words.h"
#include "core/control_sequence.h"

namespace quillet {

class SequenceMemory {
 public:
  // The bytes behind ESC "[" up to the first one that looks like a letter (bit 6 set), at most eight. Where
  // that guess is wrong nothing will be found, because only well-formed sequences are kept.
  struct Key {
    std::uint64_t bytes;
    std::size_t length;
  };
  // Of the eight bytes behind ESC "[". The length comes from the bytes and not from what is found, so that
  // the processor can go on to the next sequence while this one is still being looked up.
  static Key KeyOf(std::uint64_t word) {
    const std::uint64_t letters = (word & RepeatByte(0x40)) | std::uint64_t{0x40} << 56;
    const std::uint64_t upToFirst = letters ^ (letters - 1);
    return {word & (upToFirst << 1 | 1), FirstMarked(letters) + 1};
  }

  // Decoded when it is met for the first time. Null when it is longer than the key or not well-formed.
  const ControlSequence* Find(Key key) {
    const Entry& entry = entries_[SlotOf(key)];
    if (entry.key == key.bytes) [[likely]]
      return &entry.sequence;
    return FindElsewhere(key);
  }

 private:
  // No key: it would end with its first byte.
  static constexpr std::uint64_t kFree = ~std::uint64_t{0};
  struct Entry {
    std::uint64_t key = kFree;
    ControlSequence sequence;
  };

  // A quarter of it is enough for most; the rest keeps them from displacing each other.
  static constexpr int kSlotBits = 10;

  static std::size_t SlotOf(Key key) {
    // Fibonacci hashing: the multiplier is 2^64 divided by the golden ratio.
    return static_cast<std::size_t>((key.bytes * 0x9E3779B97F4A7C15) >> (64 - kSlotBits));
  }

  const ControlSequence* FindElsewhere(Key key);

  // An entry lies in its slot or in the other one of the pair.
  std::array<Entry, std::size_t{1} << kSlotBits> entries_{};
};

}  // namespace quillet
