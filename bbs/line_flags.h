// One byte of flags for each row of a page: what the drawing and the lists want to know of a line. Pure; any
// thread.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/page_facts.h"

namespace quillet {

enum LineFlag : std::uint8_t {
  LF_PUSH = 0x01,       // a push line, or a row of the push prompt
  LF_KEYWORD = 0x08,    // holds one of the user's keywords
  LF_MARK_MASK = 0x30,  // a list line: LF_DELETED, LF_LIST_READ or LF_LIST_NEWS; 0 another mark
  LF_DELETED = 0x10,
  LF_LIST_READ = 0x20,  // status mark " ", "m" or "s"
  LF_LIST_NEWS = 0x30,  // status mark "~" or "="
};

using LineFlags = std::array<std::uint8_t, kRows>;

// What the user wants to be told of, kept ready for comparing without regard to letter case.
class Keywords {
 public:
  Keywords() = default;
  explicit Keywords(const std::vector<std::u16string>& words);  // empty ones are left out
  bool Empty() const { return words_.empty(); }
  bool Contained(std::u16string_view text) const;
  // The length of the longest one that `text` begins with, in UTF-16 units; 0 when it begins with none.
  std::size_t LengthAtBegin(std::u16string_view text) const;

 private:
  std::vector<std::u16string> words_;  // in lower case, longer ones first
  std::bitset<256> begins_;            // by the low byte of their first characters
};

// The flags of every row, by the page that `screen.pageFlags` names: push lines in the reader, under a prompt
// drawn over it and under any other question, list marks in an article list, keywords in all of them. Rows of
// a list without an article, and all rows of other pages, have none.
LineFlags FlagLines(const PageFacts& facts, const ScreenSnapshot& screen, const Keywords& keywords);

}  // namespace quillet
