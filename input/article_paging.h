// Which key moves through an article that the client holds whole, and which belongs to the BBS. Pure.
#pragma once

#include "input/key_control.h"

namespace quillet {

struct PagingState {
  int top = 0;    // the first shown line's index, where the motion is to end, with lines yet to come
  int count = 0;  // lines shown in all
  bool complete = true;
  bool keepArticle = false;  // "PreventUpDownChangeArticle"
};

// Lines of an article on one page of the view.
inline constexpr int kLinesShown = 23;
// One line of the page before stays in sight.
inline constexpr int kPageStep = kLinesShown - 1;

// Where the last page of so many lines begins.
constexpr int LastTop(int count) {
  return count > kLinesShown ? count - kLinesShown : 0;
}

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
