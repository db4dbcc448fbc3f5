// The user id at a place of the picture: the author in a line of an article list and in an article's header,
// the writer of a push line. Whom a right click adds to the lists, and whose entry the list keys change.
// Pure; user-interface thread.
#pragma once

#include <optional>
#include <string>

#include "bbs/article/article_lines.h"
#include "bbs/understood_page.h"

namespace quillet {

struct PlacedId {
  int first = 0;  // columns first to last-1
  int last = 0;
  std::u16string id;

  bool operator==(const PlacedId&) const = default;
};

// On a screen of the BBS, where `page` stands. Nothing beside an id, on pages that show none, outside the
// screen.
std::optional<PlacedId> PlacedIdAt(const ScreenSnapshot& screen, const UnderstoodPage& page, int row,
                                   int col);
// On a line of an article.
std::optional<PlacedId> PlacedIdInArticle(const ArticleLine& line, int col);

// Only the id; empty: none.
std::u16string IdAt(const ScreenSnapshot& screen, const UnderstoodPage& page, int row, int col);
std::u16string IdInArticle(const ArticleLine& line, int col);

}  // namespace quillet
