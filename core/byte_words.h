// Eight bytes at a time in a plain 64-bit word: the first byte of memory is the lowest of the word on every
// machine. Used by the parser to look at text and control sequences without a loop over bytes. Pure.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quillet {

inline constexpr std::uint64_t kEachByte = 0x0101010101010101;

constexpr std::uint64_t RepeatByte(std::uint8_t byte) {
  return byte * kEachByte;
}

inline std::uint64_t InMemoryOrder(std::uint64_t word) {
  if constexpr (std::endian::native == std::endian::big) {
    std::uint64_t swapped = 0;
    for (int i = 0; i < 8; ++i)
      swapped |= ((word >> (8 * i)) & 0xFF) << (8 * (7 - i));
    return swapped;
  } else {
    return word;
  }
}

inline std::uint64_t LoadWord(const std::uint8_t* from) {
  std::uint64_t word;
  std::memcpy(&word, from, sizeof(word));
  return InMemoryOrder(word);
}

inline void StoreWord(std::uint8_t* to, std::uint64_t word) {
  word = InMemoryOrder(word);
  std::memcpy(to, &word, sizeof(word));
}

// The high bit of every byte below `limit` (1 to 128). Bytes do not disturb each other: 127 + 127 makes no
// carry.
constexpr std::uint64_t BytesBelow(std::uint64_t word, std::uint8_t limit) {
  const std::uint64_t low = (word & RepeatByte(0x7F)) + RepeatByte(static_cast<std::uint8_t>(128 - limit));
  return ~(low | word) & RepeatByte(0x80);
}

// The index of the first marked byte; 8 when there is none.
constexpr std::size_t FirstMarked(std::uint64_t marks) {
  return static_cast<unsigned>(std::countr_zero(marks)) / 8;
}

// Ones in all bytes before the first marked one; all ones when none is marked.
constexpr std::uint64_t BytesBefore(std::uint64_t marks) {
  return ((marks & (0 - marks)) >> 7) - 1;
}

// Writes the bits of `word` that `mask` has and keeps the others. All eight bytes must be writable.
inline void StoreMasked(std::uint8_t* to, std::uint64_t word, std::uint64_t mask) {
  StoreWord(to, (LoadWord(to) & ~mask) | (word & mask));
}

}  // namespace quillet
