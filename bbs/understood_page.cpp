#include "bbs/understood_page.h"

#include "bbs/screen_fields.h"

namespace quillet {
namespace {

std::u16string TextIn(const ScreenSnapshot& screen, int row, CellRange range) {
  return FieldText(screen.text[static_cast<std::size_t>(row)], range);
}

const ListedArticle* ListedIn(const UnderstoodPage& page, int row) {
  return row >= 0 && row < kRows && page.Line(row).listed ? &*page.Line(row).listed : nullptr;
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
  const ListedArticle* const listed = ListedIn(page, row);
  return listed != nullptr ? TextIn(screen, row, listed->author) : std::u16string();
}

std::u16string ListedTitle(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  const ListedArticle* const listed = ListedIn(page, row);
  return listed != nullptr ? TextIn(screen, row, listed->title) : std::u16string();
}

std::u16string PushAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  if (row < 0 || row >= kRows || !page.Line(row).push) return {};
  return PushId(screen.text[static_cast<std::size_t>(row)], *page.Line(row).push);
}

std::u16string BoxCode(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return page.box ? TextIn(screen, page.box->row, page.box->code) : std::u16string();
}

std::u16string BoxBoard(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return page.box ? TextIn(screen, page.box->row, page.box->board) : std::u16string();
}

}  // namespace quillet
