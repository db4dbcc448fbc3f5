// How one line is styled, by what it is: a push line, a line of an article list, the header's author, plain
// text. The row comes in as PlainRow makes it. Called for lines of the BBS's screen and of a local article
// alike. Pure.
#pragma once

#include <cstdint>
#include <string_view>

#include "bbs/cell_range.h"
#include "bbs/push_line.h"
#include "render/page_row.h"
#include "render/style/style_rules.h"

namespace quillet {

struct PushInPage {
  PushLine line;
  std::u16string_view id;
  std::int64_t time = 0;      // seconds since 1970; 0 not known
  bool followsOwnId = false;  // the line shown above it is a push line by the same id
};

// Removing is the caller's: a line that gets here is shown, and masked where it should have been removed.
void StylePushLine(PageRow& row, const PushInPage& push, const StyleRules& rules);

// A row of the prompt where a push line is typed.
void StylePushPrompt(PageRow& row, const StyleRules& rules);

struct ListLine {
  CellRange authorCells;
  std::u16string_view author;
  std::u16string_view title;  // needed while there are title words
  std::uint8_t flags = 0;     // LineFlag
};

// `titleWords` are the rules', ready for comparing.
void StyleListLine(PageRow& row, const ListLine& line, const Keywords& titleWords, const StyleRules& rules);

// The first row of an article's header.
void StyleHeaderAuthor(PageRow& row, std::u16string_view author, const StyleRules& rules);

// The cursor bar lies over the row.
void LayBar(PageRow& row);

}  // namespace quillet
