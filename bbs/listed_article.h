// A line of an article list: where its number, marks, author, title and push count stand. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>

#include "bbs/cell_range.h"
#include "core/screen_snapshot.h"

namespace quillet {

// Where an article list has its lines, and where their authors begin.
inline constexpr int kListFirstRow = 3;
inline constexpr int kListLastRow = 22;
inline constexpr int kListAuthorCol = 17;
inline constexpr int kListTitleCol = 30;

// What is not there is empty; blanks at both ends are no part of any.
struct ListedArticle {
  CellRange number;        // its digits; a pinned article has none
  CellRange pushCount;     // one or two columns, in whatever way the BBS counts
  CellRange author;        // "-" where the article has been deleted
  CellRange title;         // with the sign of its kind in front
  std::uint8_t mark = 0;   // the status mark, an ASCII character; 0: something else stands there
  std::uint8_t flags = 0;  // LineFlag: LF_DELETED, LF_LIST_READ, LF_LIST_NEWS or none of them

  bool operator==(const ListedArticle&) const = default;
};

// `text` is a row of a list, kListFirstRow to kListLastRow. Nothing for a blank one.
std::optional<ListedArticle> ReadListedArticle(const ScreenRow& text);

// The article has been deleted.
bool IsDeletedLine(const ScreenRow& text);

// The number of the line in this row; 0: it has none. Saturates.
int NumberOf(const ScreenSnapshot& screen, int row, const ListedArticle& article);

}  // namespace quillet
