// Understands screen after screen of one connection, and only what is different from the screen before. One
// for each session, on its receive thread; or any one thread.
#pragma once

#include <array>

#include "bbs/page_facts.h"
#include "bbs/understood_page.h"

namespace quillet {

class PageUnderstanding {
 public:
  // The next screen, classified and marked by MarkPushOverReader. What comes out is told by this screen
  // alone, whatever was looked at before.
  const UnderstoodPage& Look(const ScreenSnapshot& screen);
  // Of the last one; an empty page before any.
  const UnderstoodPage& Page() const { return page_; }

 private:
  using Rows = std::array<bool, kRows>;

  // The rows that read otherwise than before; kept as they are now.
  Rows KeepRows(const ScreenSnapshot& screen);
  void ReadLine(const ScreenRow& text, int row, PageContent content);
  // Of the flags of the page before and of the screen.
  void ReadFooter(const ScreenSnapshot& screen, const Rows& changed);
  void ReadHeader(const ScreenSnapshot& screen, const Rows& changed);
  int FirstPromptRow(const ScreenSnapshot& screen) const;

  PageFacts facts_;
  QuestionReader questions_;
  UnderstoodPage page_;
  bool begun_ = false;
  std::array<ScreenRow, kRows> text_{};
  ScreenRow headerAttr_{};
};

}  // namespace quillet
