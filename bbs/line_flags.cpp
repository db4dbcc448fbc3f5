#include "bbs/line_flags.h"

#include <algorithm>

#include "bbs/page_flags.h"
#include "bbs/screen_fields.h"
#include "core/letter_case.h"

namespace quillet {
namespace {

constexpr int kStatusMarkCol = 8;
constexpr int kListAuthorLastCol = 28;

bool StartsWithLowered(std::u16string_view text, std::u16string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char16_t a, char16_t b) { return a == LowerOfBig5(b); });
}

// The mark of a list line, 0 for a row that holds no article or another mark.
std::uint8_t ListMark(const ScreenSnapshot& screen, int row) {
  if (PageFacts::IsDeletedListLine(screen, row)) return LF_DELETED;
  if (!IsCharacterStart(screen, row, kStatusMarkCol)) return 0;
  switch (screen.TextAt(row, kStatusMarkCol)) {
    case '~':
    case '=':
      return LF_LIST_NEWS;
    case 'm':
    case 's':
      return LF_LIST_READ;
    case ' ':
      // A row below the last article, or one that is not drawn yet, is blank there too.
      if (IsBlankBetween(screen, row, kListAuthorCol, kListAuthorLastCol)) return 0;
      return LF_LIST_READ;
    default:
      return 0;
  }
}

std::uint8_t KeywordFlag(const ScreenSnapshot& screen, int row, const Keywords& keywords) {
  if (keywords.Empty() || !keywords.Contained(FieldText(screen, row, 0, kCols - 1, Trim::kNo))) return 0;
  return LF_KEYWORD;
}

void FlagList(const ScreenSnapshot& screen, const Keywords& keywords, LineFlags& flags) {
  for (int row = kListFirstRow; row <= kListLastRow; ++row) {
    std::uint8_t& flag = flags[static_cast<std::size_t>(row)];
    flag = ListMark(screen, row);
    if (flag != LF_DELETED) flag |= KeywordFlag(screen, row, keywords);
  }
}

void FlagArticle(const PageFacts& facts, const ScreenSnapshot& screen, const Keywords& keywords,
                 LineFlags& flags) {
  for (int row = 0; row < kBottomRow; ++row) {
    const bool push = facts.IsPushCommentLine(screen, row) || facts.IsArrowInputRow(screen, row);
    flags[static_cast<std::size_t>(row)] =
        static_cast<std::uint8_t>((push ? LF_PUSH : 0) | KeywordFlag(screen, row, keywords));
  }
  if (facts.IsArrowInputRow(screen, kBottomRow)) flags[kBottomRow] = LF_PUSH;
}

}  // namespace

Keywords::Keywords(const std::vector<std::u16string>& words) {
  for (const std::u16string& word : words) {
    if (word.empty()) continue;
    std::u16string& lowered = words_.emplace_back(word);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), LowerOfBig5);
    begins_.set(lowered.front() % begins_.size());
  }
  std::sort(words_.begin(), words_.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
}

bool Keywords::Contained(std::u16string_view text) const {
  for (; !text.empty(); text.remove_prefix(1))
    if (LengthAtBegin(text) != 0) return true;
  return false;
}

std::size_t Keywords::LengthAtBegin(std::u16string_view text) const {
  if (text.empty() || !begins_.test(LowerOfBig5(text.front()) % begins_.size())) return 0;
  const auto longest = std::find_if(words_.begin(), words_.end(), [&](const std::u16string& word) {
    return StartsWithLowered(text, word);
  });
  return longest == words_.end() ? 0 : longest->size();
}

LineFlags FlagLines(const PageFacts& facts, const ScreenSnapshot& screen, const Keywords& keywords) {
  constexpr std::uint32_t kArticlePages = PF_READING | PF_PUSH_OVER_READER;
  constexpr std::uint32_t kOtherPages = PF_LIST_CURSOR | PF_MAIL_MENU | PF_EDITOR;
  LineFlags flags{};
  const auto shows = [&](std::uint32_t pages) { return (screen.pageFlags & pages) != 0; };
  // The lines of an article keep their look under a question drawn over it.
  const bool isQuestion = shows(PF_INPUT_FIELD) && !shows(kOtherPages | PF_ARTICLE_LIST);
  if (shows(kArticlePages) || isQuestion)
    FlagArticle(facts, screen, keywords, flags);
  else if (shows(PF_ARTICLE_LIST))
    FlagList(screen, keywords, flags);
  return flags;
}

}  // namespace quillet
