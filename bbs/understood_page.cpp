#include "bbs/understood_page.h"

#include "bbs/screen_fields.h"

namespace quillet {
namespace {

std::u16string TextIn(const ScreenSnapshot& screen, int row, CellRange range) {
  return FieldText(screen.text[static_cast<std::size_t>(row)], range);
}

}  // namespace

std::u16string HeaderAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return TextIn(screen, kHeaderAuthorRow, page.header.author);
}

std::u16string HeaderBoard(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return TextIn(screen, kHeaderAuthorRow, page.header.board);
}

std::u16string HeaderTitle(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return TextIn(screen, kHeaderTitleRow, page.header.title);
}

std::int64_t HeaderPostTime(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now) {
  return page.header.hasTime ? HeaderSeconds(screen, now) : 0;
}

std::u16string ListedAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  const std::optional<ListedArticle>& listed = page.Line(row).listed;
  return listed ? TextIn(screen, row, listed->author) : std::u16string();
}

std::u16string ListedTitle(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  const std::optional<ListedArticle>& listed = page.Line(row).listed;
  return listed ? TextIn(screen, row, listed->title) : std::u16string();
}

std::u16string PushAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  const std::optional<PushLine>& push = page.Line(row).push;
  return push ? PushId(screen.text[static_cast<std::size_t>(row)], *push) : std::u16string();
}

std::u16string BoxCode(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return page.box ? TextIn(screen, page.box->row, page.box->code) : std::u16string();
}

std::u16string BoxBoard(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return page.box ? TextIn(screen, page.box->row, page.box->board) : std::u16string();
}

}  // namespace quillet
