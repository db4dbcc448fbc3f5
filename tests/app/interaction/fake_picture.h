// Lines of a test's own with a picture of some of them: a screen, or an article that moves at once.
#pragma once

#include <algorithm>

#include "app/page/picture_lines.h"
#include "tests/support/kept_lines.h"

namespace quillet {

inline constexpr int kPictureLines = kRows - 1;  // lines of an article in the picture

class FakePicture : public PictureLines {
 public:
  int Count() const override { return text.Count(); }
  const ArticleLine& Line(int index) const override { return text.Line(index); }
  int LineAtRow(int row) const override {
    const int line = top + row;
    return row >= 0 && row < (isArticle ? kPictureLines : kRows) && line < Count() ? line : -1;
  }
  int RowOfLine(int line) const override { return LineAtRow(line - top) == line ? line - top : -1; }
  bool IsArticle() const override { return isArticle; }

  void ScrollBy(int lines) { top = std::clamp(top + lines, 0, std::max(Count() - kPictureLines, 0)); }

  KeptLines text;
  int top = 0;
  bool isArticle = false;
};

}  // namespace quillet
