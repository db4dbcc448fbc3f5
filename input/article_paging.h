// Which key moves through an article that the client holds whole, and which belongs to the BBS. Pure.
#pragma once

#include "input/key_control.h"

namespace quillet {

// Lines of an article on one page of the view; in a window that shows fewer rows they are fewer.
inline constexpr int kLinesShown = 23;
// One line of the page before stays in sight, where there is room for two.
constexpr int PageStep(int shown) {
  return shown > 1 ? shown - 1 : 1;
}
inline constexpr int kPageStep = PageStep(kLinesShown);

// Where the last page of so many lines begins.
constexpr int LastTop(int count, int shown = kLinesShown) {
  return count > shown ? count - shown : 0;
}

struct PagingState {
  int top = 0;    // the first shown line's index, where the motion is to end, with lines yet to come
  int count = 0;  // lines shown in all
  int shown = kLinesShown;  // on one page
  bool complete = true;
  bool keepArticle = false;  // "PreventUpDownChangeArticle"
};

struct PagingAction {
  enum class Kind {
    kToBbs,     // the key is the BBS's, whatever the article shows
    kScrollTo,  // move so that line `top` comes first; it may be one that is yet to come
    kToEnd,     // the same; and on with the end while the article is still being read
    kPrevious,  // "b" to the BBS: the article before
    kNext,      // the key is the BBS's, as pressed on the article's last page
    kNothing    // taken, without effect
  } kind = Kind::kToBbs;
  int top = 0;

  bool operator==(const PagingAction&) const = default;
};

// `repeated`: the key is held down; it scrolls, but never leaves the article.
PagingAction DecidePaging(const KeyPress& press, bool repeated, const PagingState& state);

}  // namespace quillet
