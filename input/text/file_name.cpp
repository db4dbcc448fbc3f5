#include "input/text/file_name.h"

#include <algorithm>
#include <array>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr std::size_t kLongest = 60;

bool IsRefused(char16_t unit) {
  constexpr std::u16string_view kRefused = u"<>:\"/\\|?*";
  return kRefused.find(unit) != kRefused.npos;
}

// Also what ends a line or writes from right to left without being seen.
bool IsUnseen(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0x200B && unit <= 0x200F) ||
         (unit >= 0x2028 && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069) || unit == 0xFEFF;
}

bool IsNameBlank(char16_t unit) {
  return unit == u' ' || unit == u'\u3000';
}

// Of the Windows systems, whatever stands behind a dot.
bool IsDevice(std::u16string_view name) {
  constexpr std::array<std::u16string_view, 4> kDevices{u"con", u"prn", u"aux", u"nul"};
  std::u16string stem(name.substr(0, name.find(u'.')));
  while (!stem.empty() && IsNameBlank(stem.back()))
    stem.pop_back();
  for (char16_t& unit : stem)
    unit = AsciiLower(unit);
  if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
  const bool isPort = stem.starts_with(u"com") || stem.starts_with(u"lpt");
  return stem.size() == 4 && isPort && IsAsciiDigit(stem.back());
}

bool IsSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xE000;
}

}  // namespace

std::u16string FileNameOf(std::u16string_view text, std::u16string_view otherwise) {
  std::u16string name;
  for (const char16_t unit : text) {
    if (IsUnseen(unit)) continue;
    const bool isSecondBlank = IsNameBlank(unit) && (name.empty() || IsNameBlank(name.back()));
    if (!isSecondBlank) name += IsRefused(unit) ? u'_' : unit;
  }
  if (name.size() > kLongest) name.resize(IsSurrogate(name[kLongest]) ? kLongest - 1 : kLongest);
  const auto isEnd = [](char16_t unit) { return IsNameBlank(unit) || unit == u'.'; };
  name.erase(name.begin(), std::find_if_not(name.begin(), name.end(), isEnd));
  while (!name.empty() && isEnd(name.back()))
    name.pop_back();
  if (name.empty()) return std::u16string(otherwise);
  return IsDevice(name) ? u'_' + name : name;
}

}  // namespace quillet
