// The row of captions at the bottom of an open article: where the reader is, and the commands that a click
// gives. Pure.
#pragma once

#include <optional>
#include <vector>

#include "render/page_row.h"

namespace quillet {

// The client's own commands on an open article.
enum class ArticleCommand { kNone, kBookmark, kGiveMoney, kPush, kPushOn, kFirstPush };

struct ArticleBarInput {
  int line = 0;  // shown last, from 1
  int lines = 0;
  bool stillReading = false;  // lines are not all known yet
  bool bookmarked = false;
  bool hasPushes = false;
  bool controlCodes = false;
  // Commands that this program offers, in the order of importance; the last ones go where the row is full.
  std::vector<ArticleCommand> offers;
  ArticleCommand hovered = ArticleCommand::kNone;
};

struct CaptionArea {
  int first = 0;  // columns first to last-1
  int last = 0;
  ArticleCommand command = ArticleCommand::kNone;
};

struct ArticleBar {
  PageRow row;
  std::vector<CaptionArea> areas;
};

ArticleBar MakeArticleBar(const ArticleBarInput& input);

// The same captions over the reader's own status line: its left part stays, the captions take the place of
// what stands right of the line range. `statusLine` is the screen's bottom row.
ArticleBar MakeArticleBarOver(const PageRow& statusLine, const ArticleBarInput& input);

// The command whose caption covers the column.
ArticleCommand CommandAt(const std::vector<CaptionArea>& areas, int col);

}  // namespace quillet
