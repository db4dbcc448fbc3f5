#include "settings/files/track_words.h"

#include <algorithm>
#include <string_view>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr std::u16string_view kJoin = u"&&";
constexpr std::u16string_view kTitle = u"title";

// The word of a condition "title=WORD", quotes around it taken off; empty for another condition.
std::u16string_view WordOf(std::u16string_view condition) {
  const std::size_t equals = condition.find(u'=');
  if (equals == std::u16string_view::npos || Trimmed(condition.substr(0, equals)) != kTitle) return {};
  std::u16string_view word = Trimmed(condition.substr(equals + 1));
  if (word.size() >= 2 && word.front() == u'"' && word.back() == u'"') word = word.substr(1, word.size() - 2);
  return word;
}

}  // namespace

std::vector<std::u16string> WordsOfTrackRules(const std::vector<std::u16string>& rules) {
  std::vector<std::u16string> words;
  for (std::u16string_view rest : rules) {
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(kJoin), rest.size());
      if (const std::u16string_view word = WordOf(rest.substr(0, end)); !word.empty())
        words.emplace_back(word);
      rest.remove_prefix(std::min(end + kJoin.size(), rest.size()));
    }
  }
  return words;
}

}  // namespace quillet
