#include "input/text/words.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "core/ascii.h"

namespace quillet {
namespace {

// Neighbours of one class are one word.
enum class WordClass {
  kBlank,
  kAscii,      // letters, digits and what user ids, article codes and file names hold between them
  kSign,       // other ASCII
  kIdeograph,  //
  kSyllable,   // kana and bopomofo
  kWideLetter,
  kWideSign  // full-width punctuation, boxes, everything else
};

constexpr bool IsBetween(char16_t unit, char16_t first, char16_t last) {
  return unit >= first && unit <= last;
}

constexpr bool IsIdeograph(char16_t unit) {
  return IsBetween(unit, 0x4E00, 0x9FFF) || IsBetween(unit, 0x3400, 0x4DBF) ||
         IsBetween(unit, 0xF900, 0xFAFF) || unit == u'々' || unit == u'〇';
}

constexpr bool IsSyllable(char16_t unit) {
  return (IsBetween(unit, 0x3041, 0x30FF) && unit != u'・') || IsBetween(unit, 0x3105, 0x312F);
}

constexpr bool IsWideLetter(char16_t unit) {
  return IsBetween(unit, u'Ａ', u'Ｚ') || IsBetween(unit, u'ａ', u'ｚ') || IsBetween(unit, u'０', u'９') ||
         IsBetween(unit, 0x0370, 0x04FF);  // Greek and Cyrillic
}

WordClass ClassOf(const LineCharacter& character) {
  const char16_t unit = character.unit;
  if (character.IsBlank()) return WordClass::kBlank;
  if (IsAsciiLetterOrDigit(unit) || unit == u'_' || unit == u'-') return WordClass::kAscii;
  if (unit != 0 && unit < 0x80) return WordClass::kSign;
  if (IsIdeograph(unit)) return WordClass::kIdeograph;
  if (IsSyllable(unit)) return WordClass::kSyllable;
  return IsWideLetter(unit) ? WordClass::kWideLetter : WordClass::kWideSign;
}

using Characters = std::vector<LineCharacter>;

bool BeginsAddress(const Characters& characters, std::size_t at) {
  std::string head;
  for (; at < characters.size() && head.size() < 8 && characters[at].unit < 0x80; ++at)
    head += static_cast<char>(AsciiLower(characters[at].unit));
  return head.starts_with("http://") || head.starts_with("https://");
}

// An address goes on to a blank, or to where Chinese is written on without one.
std::size_t EndOfAddress(const Characters& characters, std::size_t at) {
  do {
    ++at;
  } while (at < characters.size() && characters[at].unit > u' ' && characters[at].unit < 0x80);
  return at;
}

std::size_t EndOfWord(const Characters& characters, std::size_t at) {
  if (BeginsAddress(characters, at)) return EndOfAddress(characters, at);
  const WordClass wordClass = ClassOf(characters[at]);
  do {
    ++at;
  } while (at < characters.size() && ClassOf(characters[at]) == wordClass && !BeginsAddress(characters, at));
  return at;
}

}  // namespace

ColumnSpan WordAt(const ArticleLine& line, int col) {
  const Characters characters = CharactersOf(line);
  for (std::size_t at = 0; at < characters.size() && col >= 0;) {
    const std::size_t end = EndOfWord(characters, at);
    if (col < characters[end - 1].cols.last)
      return {characters[at].cols.first, characters[end - 1].cols.last};
    at = end;
  }
  const int nearest = col < 0 ? 0 : kCols;
  return {nearest, nearest};
}

}  // namespace quillet
