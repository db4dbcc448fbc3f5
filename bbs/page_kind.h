// The kinds of page that keys and mouse are told apart by: coarser than the page flags, exactly one for each
// screen. Pure; any thread.
#pragma once

#include "core/screen_snapshot.h"

namespace quillet {

enum class PageKind {
  kOther,        // a page that nothing is known of
  kMenu,         // lines to choose from by their letters
  kList,         // boards, letters, users: lines to choose from by the cursor
  kArticleList,  // the articles of a board
  kReader,       // an article or another long text
  kEditor,       // what is typed becomes a text
  kTyping,       // something is being typed: a prompt, a field, a push line
  kPause         // any key goes on
};
inline constexpr int kPageKinds = 8;

// Of a classified screen. What is being typed comes before what it lies over, and what waits for a key before
// the page that it hides; an instant message over the bottom rows leaves the page what it was. Allocates
// nothing.
PageKind KindOf(const ScreenSnapshot& screen);

}  // namespace quillet
