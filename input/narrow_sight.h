// Which rows of the BBS's screen a window shows that is too small for all of them: the bottom row, and above
// it so many that follow one another, with the cursor among them. There a page is these rows: the paging keys
// go through the screen first and to the BBS's next page then, so that no row is skipped. Pure;
// user-interface thread.
#pragma once

#include <optional>
#include <string>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"
#include "input/key_control.h"

namespace quillet {

class NarrowSight {
 public:
  // Rows above the bottom one; kRows - 1 when all are in sight.
  void SetRows(int rows);
  int Rows() const { return rows_; }
  bool IsNarrow() const { return rows_ < kRows - 1; }
  // The first of them when the cursor stands in this row; in the bottom row it has no say, unless something
  // is typed there: then what is asked stands above.
  int TopFor(int cursorRow) const;

  // Another screen. Returns what is to be sent, where a page of a list that was asked for has
  // come with the cursor at its far end.
  std::string OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page);
  // What a key does that is the BBS's elsewhere: nothing returned, it is the BBS's here too. Empty: the
  // picture has moved and nothing is sent.
  std::optional<std::string> OnKey(const KeyPress& press, const ScreenSnapshot& screen,
                                   const UnderstoodPage& page);

 private:
  enum class Way { kBack, kOn };
  struct Asked {
    Way way;
    PageKind kind;
    std::string lines;  // of the page before
  };
  std::optional<std::string> PageList(Way way, const ScreenSnapshot& screen, const UnderstoodPage& page);
  std::optional<std::string> PageText(Way way, const ScreenSnapshot& screen, const UnderstoodPage& page);
  bool HasCome(const ScreenSnapshot& screen) const;
  std::string AskFor(Way way, const ScreenSnapshot& screen, PageKind kind);
  int LastTop() const { return kRows - 1 - rows_; }

  int rows_ = kRows - 1;
  int top_ = 0;
  PageKind kind_ = PageKind::kOther;
  bool asksBelow_ = false;
  std::optional<Asked> asked_;
};

}  // namespace quillet
