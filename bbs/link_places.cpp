#include "bbs/link_places.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "bbs/article_code.h"
#include "core/ascii.h"
#include "core/byte_words.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

// Digits in front of the suffix and the seconds of an article's file name: its kind.
constexpr unsigned kKindShift = 44;
constexpr std::uint64_t kHighestKind = 1;

bool IsWide(char byte) {
  return static_cast<unsigned char>(byte) >= 0x80;
}

std::u16string Widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

LinkPlace PlaceFrom(int first, std::size_t length, LinkKind kind) {
  return {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(first + static_cast<int>(length)),
          kind};
}

// ---- Web addresses

bool BeginsWebAddress(std::string_view text) {
  for (const std::string_view scheme : {std::string_view("http://"), std::string_view("https://")})
    if (text.size() >= scheme.size() &&
        std::equal(scheme.begin(), scheme.end(), text.begin(),
                   [](char wanted, char c) { return wanted == AsciiLower(c); }))
      return true;
  return false;
}

bool CanGoOn(char byte) {
  constexpr std::string_view kEnds = "\"<>`\\";
  return byte > ' ' && byte < 0x7F && kEnds.find(byte) == kEnds.npos;
}

// Whether the address closes more brackets of the kind at its end than it opens.
bool EndsWithStrayBracket(std::string_view address) {
  constexpr std::string_view kOpening = "([{";
  constexpr std::string_view kClosing = ")]}";
  const std::size_t kind = kClosing.find(address.back());
  return kind != kClosing.npos && std::count(address.begin(), address.end(), kClosing[kind]) >
                                      std::count(address.begin(), address.end(), kOpening[kind]);
}

std::string_view WithoutSentenceEnd(std::string_view address) {
  constexpr std::string_view kPunctuation = ".,;:!?'";
  while (!address.empty() &&
         (kPunctuation.find(address.back()) != kPunctuation.npos || EndsWithStrayBracket(address)))
    address.remove_suffix(1);
  return address;
}

std::optional<LinkPlace> WebLinkAt(std::string_view cells, int col) {
  const std::string_view rest = cells.substr(static_cast<std::size_t>(col));
  if (!BeginsWebAddress(rest)) return std::nullopt;
  const auto* const end = std::find_if_not(rest.begin(), rest.end(), CanGoOn);
  const std::string_view shown = WithoutSentenceEnd({rest.begin(), end});
  if (!IsWebAddress(Widened(shown))) return std::nullopt;
  return PlaceFrom(col, shown.size(), LinkKind::kWeb);
}

// ---- Article codes

bool IsOfCode(char byte) {
  return kAidAlphabet.find(static_cast<unsigned char>(byte)) != kAidAlphabet.npos;
}

// Of eight characters that could be a code, most words are none: they would name an article of a kind that
// there is not.
bool IsArticleCode(std::string_view code) {
  return code.size() == kAidLength && std::all_of(code.begin(), code.end(), IsOfCode) &&
         AidToValue(Widened(code)) >> kKindShift <= kHighestKind;
}

// "#code (board)"; the blank may be missing. `before` is the character in front of `col`, a blank where that
// is a double-width one, whose second byte may look like a letter.
std::optional<LinkPlace> CodeLinkAt(std::string_view cells, int col, char before) {
  const std::string_view rest = cells.substr(static_cast<std::size_t>(col));
  if (!rest.starts_with('#') || IsOfCode(before) || !IsArticleCode(rest.substr(1, kAidLength)))
    return std::nullopt;
  std::size_t open = 1 + kAidLength;
  if (rest.substr(open).starts_with(' ')) ++open;
  if (!rest.substr(open).starts_with('(')) return std::nullopt;
  const std::size_t close = rest.find(')', open);
  if (close == rest.npos || !IsBoardName(Widened(rest.substr(open + 1, close - open - 1))))
    return std::nullopt;
  return PlaceFrom(col, close + 1, LinkKind::kArticleCode);
}

// ---- Lines

// No link is without a "#" or a "://". Most lines have neither.
bool MayHoldLink(const ScreenRow& text) {
  // Marks the bytes that equal `c`, and sometimes one behind such a byte.
  const auto equal = [](std::uint64_t word, char c) {
    const std::uint64_t differences = word ^ RepeatByte(static_cast<std::uint8_t>(c));
    return (differences - kEachByte) & ~differences & RepeatByte(0x80);
  };
  for (std::size_t at = 0; at < kCols; at += 8) {
    const std::uint64_t word = LoadWord(text.data() + at);
    if (equal(word, '#') != 0) return true;
    for (std::uint64_t marks = equal(word, ':'); marks != 0; marks &= marks - 1) {
      const std::size_t colon = at + FirstMarked(marks);
      if (text[colon + 1] == '/' && text[colon + 2] == '/') return true;
    }
  }
  return false;
}

}  // namespace

bool IsBoardName(std::u16string_view name) {
  constexpr std::size_t kLongest = 20;
  return !name.empty() && name.size() <= kLongest && std::all_of(name.begin(), name.end(), [](char16_t c) {
    return IsAsciiLetterOrDigit(c) || c == u'-' || c == u'_' || c == u'.';
  });
}

LinkPlaces FindLinkPlaces(const ScreenRow& text) {
  LinkPlaces links;
  if (!MayHoldLink(text)) return links;
  const std::string_view cells = BytesOf(text);
  char before = ' ';
  for (int col = 0; col < kCols;) {
    std::optional<LinkPlace> link = WebLinkAt(cells, col);
    if (!link) link = CodeLinkAt(cells, col, before);
    const char byte = cells[static_cast<std::size_t>(col)];
    if (link) {
      links.Add(*link);
      col = link->last;
      before = cells[static_cast<std::size_t>(col) - 1];
    } else {
      col += IsWide(byte) ? 2 : 1;
      before = IsWide(byte) ? ' ' : byte;
    }
  }
  return links;
}

}  // namespace quillet
