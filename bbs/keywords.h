// What the user wants to be told of wherever it stands, kept ready for comparing without regard to letter
// case. Pure; any thread.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/screen_snapshot.h"

namespace quillet {

struct UnderstoodPage;

class Keywords {
 public:
  Keywords() = default;
  explicit Keywords(const std::vector<std::u16string>& words);  // empty ones are left out
  bool Empty() const { return words_.empty(); }
  bool Contained(std::u16string_view text) const;
  // The same of a row of the screen.
  bool Contained(const ScreenRow& row) const;
  // The length of the longest one that `text` begins with, in UTF-16 units; 0 when it begins with none.
  std::size_t LengthAtBegin(std::u16string_view text) const;
  bool operator==(const Keywords&) const = default;

 private:
  // By a byte of a row: which of the words may have it there, eight of them told apart.
  using Bytes = std::array<std::uint8_t, 256>;
  static constexpr std::size_t kBytesTold = 3;

  void NoteBegin(std::u16string_view word, std::uint8_t bit);
  void NoteCharacter(char16_t c, std::size_t byte, std::uint8_t bit);
  bool StandsAt(const ScreenRow& row, std::size_t col, std::uint8_t words) const;

  std::vector<std::u16string> words_;      // in lower case, longer ones first
  std::bitset<256> begins_;                // by the low byte of their first characters, in either case
  std::array<Bytes, kBytesTold> bytes_{};  // that they begin with
};

// Marks page after page, and looks for keywords only in rows that read otherwise than when they were looked
// at last, however many pages have passed meanwhile. Any one thread.
class KeywordMarks {
 public:
  // Sets or clears LF_KEYWORD in the lines of an article, the bottom row not among them, and of an article
  // list; those of deleted articles have none. `page` is what stands on `screen`.
  void Mark(const ScreenSnapshot& screen, const Keywords& keywords, UnderstoodPage& page);
  // The next page is marked with other keywords.
  void Forget() { rows_ = {}; }

 private:
  enum class Found : std::uint8_t { kNotLookedAt, kNo, kYes };
  struct Row {
    ScreenRow text;
    Found found = Found::kNotLookedAt;
  };
  std::array<Row, kRows> rows_{};
};

}  // namespace quillet
