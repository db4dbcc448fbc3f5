// The characters of a text that the BBS's character set does not have, and that therefore do not come along
// when it is sent. Pure; any thread once the character tables are loaded.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// So many are named one by one.
inline constexpr std::size_t kMostLostNamed = 5;

struct LostCharacters {
  std::size_t count = 0;             // every one, as often as it stands in the text
  std::vector<std::u16string> some;  // the first that differ, at most kMostLostNamed
  bool areAll = true;                // no other ones are lost than `some`

  bool IsNone() const { return count == 0; }
};

// What nobody sees is not counted: signs that only tell how the characters beside them are written.
LostCharacters FindLostCharacters(std::u16string_view text);

}  // namespace quillet
