// An article laid out as the rows that the reader shows. Pure; any thread.
#pragma once

#include <string>
#include <vector>

#include "demo/article.h"
#include "demo/canvas.h"
#include "demo/page.h"

namespace quillet::demo {

struct ReaderText {
  std::vector<std::vector<Cell>> rows;
  // The row of the rule below the header, which counts as no line; -1: there is none.
  int ruleRow = -1;

  // The number of the line in a row, from 1.
  int LineOf(int row) const { return ruleRow >= 0 && row >= ruleRow ? row : row + 1; }
};

ReaderText LayOutArticle(const Article& article, const std::string& board, const House& house);
ReaderText LayOutText(const std::vector<std::string>& lines);

// How many columns the text of a push by this user may have, so that the line ends within 78 columns.
int PushColumns(const std::string& userId);
// "推", "噓" or "→" in Big5.
std::string PushMark(PushKind kind);

}  // namespace quillet::demo
