#include "bbs/keywords.h"

#include <algorithm>
#include <array>

#include "bbs/understood_page.h"
#include "core/charset.h"
#include "core/letter_case.h"

namespace quillet {
namespace {

bool StartsWithLowered(std::u16string_view text, std::u16string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char16_t a, char16_t b) { return a == LowerOfBig5(b); });
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

// Without a text on the heap for each row: this is asked for every screen.
bool HasKeyword(const ScreenRow& row, const Keywords& keywords) {
  const auto& table = Charset().big5ToUnicode;
  std::array<char16_t, kCols> units;
  std::size_t count = 0;
  for (std::size_t col = 0; col < kCols; ++col) {
    const std::uint8_t byte = row[col];
    char16_t unit = byte;
    if (byte >= 0x80) {
      ++col;
      unit = table[byte | (col < kCols ? row[col] << 8 : 0)];
    }
    // What the table does not hold is no character.
    if (unit != 0) units[count++] = unit;
  }
  return keywords.Contained({units.data(), count});
}

}  // namespace

Keywords::Keywords(const std::vector<std::u16string>& words) {
  for (const std::u16string& word : words) {
    if (word.empty()) continue;
    std::u16string& lowered = words_.emplace_back(word);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), LowerOfBig5);
    NoteBegin(lowered.front());
  }
  std::sort(words_.begin(), words_.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
}

void Keywords::NoteBegin(char16_t lowered) {
  constexpr char16_t kStep = 0x20;  // from upper to lower case, but for one letter
  for (const char16_t c : {lowered, static_cast<char16_t>(lowered - kStep), u'Ё'})
    if (LowerOfBig5(c) == lowered) begins_.set(c % begins_.size());
}

bool Keywords::Contained(std::u16string_view text) const {
  for (std::size_t at = 0; at < text.size(); ++at)
    if (MayBegin(text[at]) && LengthAtBegin(text.substr(at)) != 0) return true;
  return false;
}

std::size_t Keywords::LengthAtBegin(std::u16string_view text) const {
  if (text.empty() || !MayBegin(text.front())) return 0;
  const auto longest = std::find_if(words_.begin(), words_.end(), [&](const std::u16string& word) {
    return StartsWithLowered(text, word);
  });
  return longest == words_.end() ? 0 : longest->size();
}

void MarkKeywords(const ScreenSnapshot& screen, const Keywords& keywords, UnderstoodPage& page) {
  for (int row = 0; row < kRows; ++row) {
    std::uint8_t& flags = page.lines[static_cast<std::size_t>(row)].flags;
    flags &= static_cast<std::uint8_t>(~LF_KEYWORD);
    if (keywords.Empty() || !MayHoldKeyword(page, row)) continue;
    if (HasKeyword(screen.text[static_cast<std::size_t>(row)], keywords)) flags |= LF_KEYWORD;
  }
}

}  // namespace quillet
