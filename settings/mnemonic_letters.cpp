#include "settings/mnemonic_letters.h"

#include <algorithm>
#include <string_view>

namespace quillet {
namespace {

constexpr std::u16string_view kAll = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

// The capitals and digits before the other letters.
std::u16string LettersOf(std::u16string_view name) {
  std::u16string capitals, others;
  for (const char16_t c : name) {
    if (kAll.find(c) != kAll.npos) capitals += c;
    if (c >= u'a' && c <= u'z') others += static_cast<char16_t>(c - u'a' + u'A');
  }
  return capitals + others;
}

}  // namespace

std::vector<char16_t> ChooseMnemonics(const std::vector<std::u16string>& names, std::set<char16_t> taken) {
  std::vector<char16_t> chosen(names.size(), 0);
  std::vector<std::u16string> wished;
  std::size_t longest = 0;
  for (const std::u16string& name : names) {
    wished.push_back(LettersOf(name));
    longest = std::max(longest, wished.back().size());
  }
  for (std::u16string& letters : wished) {
    letters.resize(longest, 0);
    letters += kAll;
  }
  for (std::size_t round = 0; round < longest + kAll.size(); ++round)
    for (std::size_t i = 0; i < names.size(); ++i) {
      const char16_t letter = wished[i][round];
      if (letter != 0 && chosen[i] == 0 && taken.insert(letter).second) chosen[i] = letter;
    }
  return chosen;
}

}  // namespace quillet
