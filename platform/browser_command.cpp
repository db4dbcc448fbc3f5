#include "platform/browser_command.h"

#include <algorithm>
#include <cstddef>

namespace quillet {
namespace {

constexpr std::u16string_view kExtension = u".exe";
constexpr std::u16string_view kPlaceOfLink = u"%1";
constexpr std::u16string_view kBlanks = u" \t";

bool IsExtension(std::u16string_view text) {
  return text.size() >= kExtension.size() &&
         std::equal(kExtension.begin(), kExtension.end(), text.begin(), [](char16_t wanted, char16_t c) {
           return (c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c) == wanted;
         });
}

// Behind the program; 0: there is none.
std::size_t EndOfProgram(std::u16string_view command) {
  for (std::size_t i = 0; i + kExtension.size() <= command.size(); ++i) {
    if (!IsExtension(command.substr(i))) continue;
    const std::size_t end = i + kExtension.size();
    if (end == command.size() || command[end] == u'"' || kBlanks.find(command[end]) != kBlanks.npos)
      return end;
  }
  return 0;
}

std::u16string_view WithoutLeading(std::u16string_view text, std::u16string_view unwanted) {
  return text.substr(std::min(text.find_first_not_of(unwanted), text.size()));
}

}  // namespace

BrowserCommand SplitBrowserCommand(std::u16string_view command, std::u16string_view link) {
  const std::size_t end = EndOfProgram(command);
  if (end == 0) return {};
  BrowserCommand split{.program = std::u16string(WithoutLeading(command.substr(0, end), u" \t\"")),
                       .arguments = {}};
  std::u16string_view rest = command.substr(end);
  if (rest.starts_with(u'"')) rest.remove_prefix(1);
  rest = WithoutLeading(rest, kBlanks);
  for (std::size_t place = 0; (place = rest.find(kPlaceOfLink)) != rest.npos;) {
    split.arguments.append(rest.substr(0, place)).append(link);
    rest.remove_prefix(place + kPlaceOfLink.size());
  }
  split.arguments.append(rest);
  return split;
}

}  // namespace quillet
