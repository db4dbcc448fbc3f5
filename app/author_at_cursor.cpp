#include "app/author_at_cursor.h"

#include <algorithm>

#include "bbs/page_flags.h"

namespace quillet {
namespace {

bool IsLetter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool IsId(std::u16string_view text) {
  return !text.empty() && IsLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char16_t c) {
    return IsLetter(c) || (c >= u'0' && c <= u'9');
  });
}

}  // namespace

std::u16string AuthorAtCursor(const ScreenSnapshot& screen, const ArticleInfo& open) {
  const bool inList = (screen.pageFlags & PF_ARTICLE_LIST_CURSOR) != 0 && screen.CursorInside();
  std::u16string author = inList ? PageFacts::ParseListAuthor(screen, screen.cursorRow) : open.author;
  return IsId(author) ? author : std::u16string();
}

}  // namespace quillet
