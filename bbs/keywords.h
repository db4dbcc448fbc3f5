// What the user wants to be told of wherever it stands, kept ready for comparing without regard to letter
// case. Pure; any thread.
#pragma once

#include <bitset>
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
  // The length of the longest one that `text` begins with, in UTF-16 units; 0 when it begins with none.
  std::size_t LengthAtBegin(std::u16string_view text) const;

 private:
  void NoteBegin(char16_t lowered);
  bool MayBegin(char16_t c) const { return begins_[c % begins_.size()]; }

  std::vector<std::u16string> words_;  // in lower case, longer ones first
  std::bitset<256> begins_;            // by the low byte of their first characters, in either case
};

// Sets or clears LF_KEYWORD in the lines of an article, the bottom row not among them, and of an article
// list; those of deleted articles have none. `page` is what stands on `screen`.
void MarkKeywords(const ScreenSnapshot& screen, const Keywords& keywords, UnderstoodPage& page);

}  // namespace quillet
