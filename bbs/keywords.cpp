#include "bbs/keywords.h"

#include <algorithm>
#include <array>

#include "bbs/screen_fields.h"
#include "bbs/understood_page.h"
#include "core/charset.h"
#include "core/letter_case.h"

namespace quillet {
namespace {

bool StartsWithLowered(std::u16string_view text, std::u16string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char16_t a, char16_t b) { return a == LowerOfBig5(b); });
}

bool IsWide(char16_t c) {
  return c >= 0x80;
}

std::uint8_t BitOf(std::size_t word) {
  return static_cast<std::uint8_t>(1U << (word % 8));
}

// Both of the letter's, or the only one.
std::u16string CasesOf(char16_t lowered) {
  constexpr char16_t kStep = 0x20;  // from upper to lower case, but for one letter
  std::u16string cases;
  for (const char16_t c : {lowered, static_cast<char16_t>(lowered - kStep), u'Ё'})
    if (LowerOfBig5(c) == lowered) cases += c;
  return cases;
}

// Whether the characters from `col` on are those of a word; none goes onto the heap.
bool RowGoesOn(const ScreenRow& row, std::size_t col, std::u16string_view word) {
  const auto& table = Charset().big5ToUnicode;
  for (std::size_t at = 0; at < word.size(); ++col) {
    if (col >= kCols) return false;
    char16_t unit = row[col];
    if (unit >= 0x80) {
      ++col;
      unit = table[unit | (col < kCols ? row[col] << 8 : 0)];
    }
    if (unit != word[at] && LowerOfBig5(unit) != word[at]) return false;
    ++at;
  }
  return true;
}

// The user's words mean something there.
bool MayHoldKeyword(const UnderstoodPage& page, int row) {
  switch (page.content) {
    case PageContent::kArticle:
      return row != kBottomRow;
    case PageContent::kList:
      return row >= kListFirstRow && row <= kListLastRow &&
             (page.Line(row).flags & LF_MARK_MASK) != LF_DELETED;
    case PageContent::kOther:
      break;
  }
  return false;
}

}  // namespace

Keywords::Keywords(const std::vector<std::u16string>& words) {
  for (const std::u16string& word : words) {
    if (word.empty()) continue;
    std::u16string& lowered = words_.emplace_back(word);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), LowerOfBig5);
  }
  std::sort(words_.begin(), words_.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
  for (std::size_t at = 0; at < words_.size(); ++at)
    NoteBegin(words_[at], BitOf(at));
}

void Keywords::NoteBegin(std::u16string_view word, std::uint8_t bit) {
  for (const char16_t c : CasesOf(word.front()))
    begins_.set(c % begins_.size());
  std::size_t byte = 0;
  for (std::size_t at = 0; at < word.size() && byte < kBytesTold; ++at) {
    for (const char16_t c : CasesOf(word[at]))
      NoteCharacter(c, byte, bit);
    byte += IsWide(word[at]) ? 2 : 1;
  }
  for (; byte < kBytesTold; ++byte)
    for (std::uint8_t& any : bytes_[byte])
      any |= bit;
}

// Its bytes stand from the word's `byte` on.
void Keywords::NoteCharacter(char16_t c, std::size_t byte, std::uint8_t bit) {
  if (!IsWide(c)) {
    bytes_[byte][c] |= bit;
    return;
  }
  for (const std::uint16_t pair : PairsOf(c)) {
    bytes_[byte][pair & 0xFF] |= bit;
    if (byte + 1 < kBytesTold) bytes_[byte + 1][pair >> 8] |= bit;
  }
}

bool Keywords::Contained(std::u16string_view text) const {
  for (std::size_t at = 0; at < text.size(); ++at)
    if (LengthAtBegin(text.substr(at)) != 0) return true;
  return false;
}

// Asked for every row that changes: most places are no word's by their bytes already. The second one tells
// most, for many characters share their first.
bool Keywords::Contained(const ScreenRow& row) const {
  static_assert(kCols + kBytesTold <= kRowStride);
  for (std::size_t col = 0; col < kCols; ++col) {
    std::uint8_t words = bytes_[1][row[col + 1]];
    if (words == 0) continue;
    words &= bytes_[0][row[col]];
    words &= bytes_[2][row[col + 2]];
    if (words != 0 && IsCharacterStart(row, static_cast<int>(col)) && StandsAt(row, col, words)) return true;
  }
  return false;
}

bool Keywords::StandsAt(const ScreenRow& row, std::size_t col, std::uint8_t words) const {
  for (std::size_t at = 0; at < words_.size(); ++at)
    if ((words & BitOf(at)) != 0 && RowGoesOn(row, col, words_[at])) return true;
  return false;
}

std::size_t Keywords::LengthAtBegin(std::u16string_view text) const {
  if (text.empty() || !begins_[text.front() % begins_.size()]) return 0;
  const auto longest = std::find_if(words_.begin(), words_.end(), [&](const std::u16string& word) {
    return StartsWithLowered(text, word);
  });
  return longest == words_.end() ? 0 : longest->size();
}

void KeywordMarks::Mark(const ScreenSnapshot& screen, const Keywords& keywords, UnderstoodPage& page) {
  for (int row = 0; row < kRows; ++row) {
    const auto at = static_cast<std::size_t>(row);
    std::uint8_t& flags = page.lines[at].flags;
    flags &= static_cast<std::uint8_t>(~LF_KEYWORD);
    if (keywords.Empty() || !MayHoldKeyword(page, row)) continue;
    Row& known = rows_[at];
    if (known.found == Found::kNotLookedAt || known.text != screen.text[at])
      known = {screen.text[at], keywords.Contained(screen.text[at]) ? Found::kYes : Found::kNo};
    if (known.found == Found::kYes) flags |= LF_KEYWORD;
  }
}

}  // namespace quillet
