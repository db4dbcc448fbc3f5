// What stands on a page of the BBS: made once for each screen that is handed over, and read by everybody who
// wants to know. Holds places, columns of the screen that it was made of, and no text: who wants a text asks
// one of the small functions below. A value; made on the receive thread, travels with its screen.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "bbs/article_box.h"
#include "bbs/end_lines.h"
#include "bbs/line_flags.h"
#include "bbs/link_places.h"
#include "bbs/listed_article.h"
#include "bbs/menu_items.h"
#include "bbs/page_flags.h"
#include "bbs/page_header.h"
#include "bbs/page_kind.h"
#include "bbs/page_question.h"
#include "bbs/push_line.h"
#include "bbs/reader_footer.h"
#include "core/screen_snapshot.h"

namespace quillet {

// What the lines of a page are.
enum class PageContent : std::uint8_t {
  kOther,    // nothing that is told apart
  kArticle,  // an article's, or another long text's, also under a question drawn over it
  kList      // an article list's
};

struct PageLine {
  std::uint8_t flags = 0;  // LineFlag
  bool isBlank = true;
  NoteLine note = NoteLine::kNone;      // in an article, the bottom row not among them
  std::optional<PushLine> push;         // the same
  std::optional<ListedArticle> listed;  // in an article list, where the row is not blank
  MenuItems items;                      // where there is neither an article nor a list of articles
  LinkPlaces links;                     // on every page
  CellRange address;                    // the same: a person's, where the line is no push line

  bool operator==(const PageLine&) const = default;
};

struct UnderstoodPage {
  std::uint32_t flags = 0;  // PageFlags, PF_PUSH_OVER_READER among them
  PageKind kind = PageKind::kOther;
  PageContent content = PageContent::kOther;
  PageQuestion question = PageQuestion::kNone;
  Typing typing = Typing::kText;
  PageHeader header;  // where it stands on the page
  std::array<PageLine, kRows> lines;
  int firstPromptRow = kRows;     // of the push prompt drawn over an article
  ReaderFooter footer;            // of the article reader
  std::optional<ArticleBox> box;  // while the page waits for a key

  // One of these flags is set.
  bool Shows(std::uint32_t wanted) const { return (flags & wanted) != 0; }
  const PageLine& Line(int row) const { return lines[static_cast<std::size_t>(row)]; }
  bool IsPromptRow(int row) const { return row >= firstPromptRow; }
  bool operator==(const UnderstoodPage&) const = default;
};

// ---- Texts, of a page and the screen that it was made of. Empty where there is none, and outside the
// screen.

std::u16string HeaderAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page);
std::u16string HeaderBoard(const ScreenSnapshot& screen, const UnderstoodPage& page);
std::u16string HeaderTitle(const ScreenSnapshot& screen, const UnderstoodPage& page);
// Seconds since 1970, as HeaderSeconds; 0 not known.
std::int64_t HeaderPostTime(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now);

std::u16string ListedAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page, int row);
std::u16string ListedTitle(const ScreenSnapshot& screen, const UnderstoodPage& page, int row);
std::u16string PushAuthor(const ScreenSnapshot& screen, const UnderstoodPage& page, int row);

std::u16string BoxCode(const ScreenSnapshot& screen, const UnderstoodPage& page);
std::u16string BoxBoard(const ScreenSnapshot& screen, const UnderstoodPage& page);

}  // namespace quillet
