#include "bbs/page_understanding.h"

#include <algorithm>
#include <utility>

#include "bbs/line_address.h"
#include "core/byte_words.h"

namespace quillet {
namespace {

PageContent ContentOf(std::uint32_t flags) {
  constexpr std::uint32_t kArticlePages = PF_READING | PF_PUSH_OVER_READER;
  constexpr std::uint32_t kOwnPages = PF_LIST_CURSOR | PF_MAIL_MENU | PF_EDITOR;
  if ((flags & kArticlePages) != 0) return PageContent::kArticle;
  if ((flags & PF_ARTICLE_LIST) != 0) return PageContent::kList;
  // The lines of an article keep their look under a question drawn over it.
  const bool isQuestion = (flags & PF_INPUT_FIELD) != 0 && (flags & kOwnPages) == 0;
  return isQuestion ? PageContent::kArticle : PageContent::kOther;
}

bool IsBlank(const ScreenRow& text) {
  constexpr std::uint64_t kBlanks = RepeatByte(' ');
  std::uint64_t others = 0;
  for (std::size_t at = 0; at < kCols; at += sizeof(kBlanks))
    others |= LoadWord(text.data() + at) ^ kBlanks;
  return others == 0;
}

std::uint8_t FlagsOf(const PageLine& line, bool isPrompt) {
  if (line.push || isPrompt) return LF_PUSH;
  return line.listed ? line.listed->flags : std::uint8_t{0};
}

}  // namespace

const UnderstoodPage& PageUnderstanding::Look(const ScreenSnapshot& screen) {
  const Rows changed = KeepRows(screen);
  const PageContent content = ContentOf(screen.pageFlags);
  const bool sameContent = content == std::exchange(page_.content, content);
  ReadHeader(screen, changed);
  ReadFooter(screen, changed);
  page_.flags = screen.pageFlags;
  page_.kind = KindOf(screen);
  page_.question = questions_.Read(screen);
  page_.typing = TypingOn(screen, page_.kind, page_.question);
  page_.firstPromptRow = FirstPromptRow(screen);
  for (int row = 0; row < kRows; ++row) {
    const auto at = static_cast<std::size_t>(row);
    if (changed[at]) {
      page_.lines[at].links = FindLinkPlaces(screen.text[at]);
      page_.lines[at].isBlank = IsBlank(screen.text[at]);
    }
    if (changed[at] || !sameContent) ReadLine(screen.text[at], row, content);
    page_.lines[at].flags = FlagsOf(page_.lines[at], page_.IsPromptRow(row));
  }
  page_.box = page_.Shows(PF_ANYKEY_BANNER) ? FindArticleBox(screen) : std::nullopt;
  return page_;
}

PageUnderstanding::Rows PageUnderstanding::KeepRows(const ScreenSnapshot& screen) {
  Rows changed;
  for (std::size_t row = 0; row < kRows; ++row) {
    changed[row] = !begun_ || text_[row] != screen.text[row];
    if (changed[row]) text_[row] = screen.text[row];
  }
  begun_ = true;
  return changed;
}

void PageUnderstanding::ReadLine(const ScreenRow& text, int row, PageContent content) {
  PageLine& line = page_.lines[static_cast<std::size_t>(row)];
  const bool isOfArticle = content == PageContent::kArticle && row != kBottomRow;
  const bool mayBeListed = content == PageContent::kList && row >= kListFirstRow && row <= kListLastRow;
  line.push = isOfArticle ? facts_.ReadPush(text) : std::nullopt;
  line.note = isOfArticle ? ReadNoteLine(text) : NoteLine::kNone;
  line.address = LineAddress(text, line.note);
  line.listed = mayBeListed ? ReadListedArticle(text) : std::nullopt;
  line.items = content == PageContent::kOther ? FindMenuItems(text) : MenuItems();
}

void PageUnderstanding::ReadHeader(const ScreenSnapshot& screen, const Rows& changed) {
  const ScreenRow& attr = screen.attr[kHeaderAuthorRow];
  const bool isChanged = changed[kHeaderAuthorRow] || changed[kHeaderTitleRow] || changed[kHeaderTimeRow];
  if (!isChanged && attr == headerAttr_) return;
  headerAttr_ = attr;
  page_.header = facts_.Header().Read(screen);
}

void PageUnderstanding::ReadFooter(const ScreenSnapshot& screen, const Rows& changed) {
  const bool isReader = (screen.pageFlags & PF_READING) != 0;
  if (!changed[kBottomRow] && isReader == page_.Shows(PF_READING)) return;
  page_.footer = isReader ? facts_.ReadFooter(screen) : ReaderFooter{};
}

int PageUnderstanding::FirstPromptRow(const ScreenSnapshot& screen) const {
  if (!facts_.IsArrowInputRow(screen, kBottomRow)) return kRows;
  return facts_.IsArrowInputRow(screen, kBottomRow - 1) ? kBottomRow - 1 : kBottomRow;
}

}  // namespace quillet
