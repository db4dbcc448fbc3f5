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
  struct Known {
    ControlSequence sequence;
    std::uint8_t length;  // of the bytes behind ESC "["
  };

  // The sequence whose bytes behind ESC "[" `word` begins with; decoded when it is met for the first time.
  // Null when it is longer than the word or not well-formed.
  const Known* Find(std::uint64_t word) {
    const std::uint64_t key = KeyOf(word);
    const std::size_t slot = SlotOf(key);
    if (entries_[slot].key == key) return &entries_[slot].known;
    if (entries_[slot ^ 1].key == key) return &entries_[slot ^ 1].known;
    return Learn(key);
  }

 private:
  // No key: it would end with its first byte.
  static constexpr std::uint64_t kFree = ~std::uint64_t{0};
  struct Entry {
    std::uint64_t key = kFree;
    Known known{};
  };

  // A quarter of it is enough for most; the rest keeps them from displacing each other.
  static constexpr int kSlotBits = 10;

  // The bytes up to the first one that looks like a letter (bit 6 set), at most eight. Where that guess is
  // wrong nothing will be found, because only well-formed sequences are kept.
  static std::uint64_t KeyOf(std::uint64_t word) {
    const std::uint64_t letters = (word & RepeatByte(0x40)) | std::uint64_t{0x40} << 56;
    const std::uint64_t first = letters & (0 - letters);
    return word & ((first << 2) - 1);
  }

  static std::size_t SlotOf(std::uint64_t key) {
    // Fibonacci hashing: the multiplier is 2^64 divided by the golden ratio.
    return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15) >> (64 - kSlotBits));
  }

  const Known* Learn(std::uint64_t key);

  // An entry lies in its slot or in the other one of the pair.
  std::array<Entry, std::size_t{1} << kSlotBits> entries_{};
};

}  // namespace quillet
