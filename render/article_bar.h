// The row of captions at the bottom of an open article: where the reader is, and the commands that a click
// gives. Pure.
#pragma once

#include <string>
#include <vector>

#include "render/page_row.h"

namespace quillet {

// A command that a click gives.
struct BarCaption {
  int command = 0;  // the caller's own number; 0: none
  char16_t key = 0;
  std::u16string words{};
};

struct ArticleBarInput {
  int line = 0;  // shown last, from 1
  int lines = 0;
  bool stillReading = false;  // lines are not all known yet
  bool controlCodes = false;
  // In the order of importance; the last ones go where the row is full.
  std::vector<BarCaption> offers;
  int hovered = 0;
};

struct CaptionArea {
  int first = 0;  // columns first to last-1
  int last = 0;
  int command = 0;
};

struct ArticleBar {
  PageRow row;
  std::vector<CaptionArea> areas;
};

ArticleBar MakeArticleBar(const ArticleBarInput& input);

// The same captions over the reader's own status line: its left part stays, the captions take the place of
// what stands right of the line range. `statusLine` is the screen's bottom row.
ArticleBar MakeArticleBarOver(const PageRow& statusLine, const ArticleBarInput& input);

// The command whose caption covers the column; 0: none.
int CommandAt(const std::vector<CaptionArea>& areas, int col);

}  // namespace quillet
