// The box that the BBS shows for the article under the list's cursor, or for the one that is open: the row
// with the article's code, board and title, and where in it they stand. Pure; any thread.
#pragma once

#include <optional>
#include <string>

#include "bbs/cell_range.h"
#include "core/screen_snapshot.h"

namespace quillet {

struct ArticleBox {
  int row = 0;
  CellRange code;   // empty unless it is whole: eight characters of the codes' alphabet
  CellRange board;  // empty unless its end is there
  CellRange title;  // as it was given to the article, cut by the BBS

  bool operator==(const ArticleBox&) const = default;
};

// Nothing on a screen without such a row.
std::optional<ArticleBox> FindArticleBox(const ScreenSnapshot& screen);

// How the BBS prints an article's title in a list.
std::u16string ListTitle(std::u16string_view title);

}  // namespace quillet
