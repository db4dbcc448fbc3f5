#include "app/interaction/author_at_cursor.h"

#include <algorithm>

#include "core/ascii.h"

namespace quillet {
namespace {

bool IsId(std::u16string_view text) {
  return !text.empty() && IsAsciiLetter(text.front()) &&
         std::all_of(text.begin(), text.end(), IsAsciiLetterOrDigit<char16_t>);
}

}  // namespace

std::u16string AuthorAtCursor(const ScreenSnapshot& screen, const UnderstoodPage& page,
                              const ArticleInfo& open) {
  const bool inList = page.Shows(PF_ARTICLE_LIST_CURSOR) && screen.CursorInside();
  std::u16string author = inList ? ListedAuthor(screen, page, screen.cursorRow) : open.author;
  return IsId(author) ? author : std::u16string();
}

}  // namespace quillet
