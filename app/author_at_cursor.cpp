#include "app/author_at_cursor.h"

#include <algorithm>
#include <cctype>

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"

namespace quillet {
namespace {

constexpr std::size_t kLongestId = 12;
constexpr std::size_t kListAuthorColumn = 17;
constexpr std::size_t kHeaderAuthorColumn = 7;

std::u16string IdAt(const ScreenSnapshot& screen, int row, std::size_t column) {
  std::string_view field = screen.RowText(row).substr(column, kLongestId);
  const auto isIdCharacter = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
  const auto end = std::find_if_not(field.begin(), field.end(), isIdCharacter);
  // An id begins with a letter and ends the field, or at a blank or a nickname's bracket.
  if (end == field.begin() || std::isalpha(static_cast<unsigned char>(field.front())) == 0) return {};
  if (end != field.end() && *end != ' ' && *end != '(') return {};
  return {field.begin(), end};
}

}  // namespace

std::u16string AuthorAtCursor(const ScreenSnapshot& screen) {
  if ((screen.pageFlags & PF_ARTICLE_LIST_CURSOR) != 0 && screen.CursorInside())
    return IdAt(screen, screen.cursorRow, kListAuthorColumn);
  const bool atTop = (screen.pageFlags & PF_READING) != 0 && (screen.pageFlags & PF_READ_TOP) != 0;
  if (atTop && RowStartsWith(screen, 0, 0, std::u16string_view(u" 作者 ")))
    return IdAt(screen, 0, kHeaderAuthorColumn);
  return {};
}

}  // namespace quillet
