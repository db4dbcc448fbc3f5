// The one road of every key: whether it belongs to something that lies over the screen, to a command of the
// client's own, or to the BBS. A pure function over the key, the page and what the window shows, so that the
// whole order of precedence can be read here and tested without a window. The view carries the answer out.
// User-interface thread.
#pragma once

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"
#include "input/article_paging.h"
#include "input/key_control.h"
#include "input/list_hot_keys.h"

namespace quillet {

// What has been looked for in the local article.
enum class SearchUse {
  kNone,    // nothing is marked
  kMarked,  // hits are marked
  kWalked   // the same, and the user goes from one to the next: the key before was about them too
};

// What of the window and the settings decides about a key.
struct WindowState {
  bool noticeShown = false;      // a panel with something to say: Enter and Esc are its
  bool pictureShown = false;     // one over the whole terminal, which goes with the next key
  bool sideListShown = false;    //
  bool questionShown = false;    // one in a line over the page, which Esc leaves unanswered
  bool selectionShown = false;   //
  bool revealShown = false;      // Tab has shown descriptions or hidden lines
  bool activityRuns = false;     // an automation works for the user: Esc stops it
  bool articleShown = false;     // the local article alone is in the picture, as `article` says
  PagingState article{};         //
  bool articleOpen = false;      // an article of the BBS's is open, local or not
  bool addressesShown = false;   // the picture shows people's addresses, or the places that they belong to
  bool commandsOffered = false;  // the captions over the article's last row are shown
  bool idUnderPointer = false;   // the pointer lies on a user id
  bool addBlackHotKey = false;   // "AddBlackHotKey"
  bool preventArticleChange = false;  // "PreventUpDownChangeArticle"
  SearchUse search = SearchUse::kNone;
};

enum class KeyRoute {
  kToolkit,    // not ours: menus and shortcuts
  kNotice,     // `action.virtualKey`: Enter or Esc for the panel
  kPicture,    // puts away the picture over the terminal
  kSideList,   // `action.virtualKey`, 0 for a key that it does not know: the open side list takes it
  kSelection,  // clears or extends the selection, as `select` says
  kReveal,     // ends what Tab has shown
  kQuestion,   // puts the question over the page away
  kActivity,   // stops the automation
  kSearch,     // about the text that is looked for in the local article, as `search` says
  kArticle,    // moves the local article, as `paging` says; on PagingAction::kNext, `action` follows for the
               // BBS
  kNames,      // changes the entry of the id under the pointer, as `name` says
  kCommand,    // `action.command`
  kBbs,        // `action` says what is sent
  kSwallowed   // taken, without effect
};

enum class SearchStep {
  kNone,
  kAsk,  // for a text
  kNext,
  kPrevious,
  kEnd  // nothing is marked any more
};

enum class SelectStep { kNone, kClear, kLeft, kRight, kUp, kDown, kLineStart, kLineEnd };

struct KeyDecision {
  KeyRoute route = KeyRoute::kToolkit;
  KeyAction action{};
  PagingAction paging{};
  NameKey name = NameKey::kNone;
  int flagColour = 0;  // of NameKey::kColour
  SelectStep select = SelectStep::kNone;
  SearchStep search = SearchStep::kNone;

  bool operator==(const KeyDecision&) const = default;
};

enum class KeyPhase { kFirst, kRepeat };

// `kRepeat`: the key is held down. It goes on scrolling and typing, and does nothing else twice.
KeyDecision DecideKeyMessage(const KeyPress& press, KeyPhase phase, const UnderstoodPage& page,
                             const WindowState& window);

}  // namespace quillet
