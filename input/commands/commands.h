// Every command of the client's own, as one table: its words, keys, picture and menu, when it can act and
// when it is ticked. Menus, shortcuts, the captions of an article, the menu of the right button and the
// buttons beside the page are made from it; the command runner carries the commands out. Pure; user-interface
// thread.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/page_kind.h"
#include "input/commands/flag_set.h"
#include "input/commands/key_press.h"

namespace quillet {

enum class Command : std::uint8_t {
  kNone,
  kLogin,
  kConnect,  // asks for an address
  kDemo,
  kReconnect,
  kDisconnect,
  kSessionLog,
  kQuit,
  kCopy,  // the selection, else what is in sight
  kCopyHtml,
  kCopyAnsi,
  kSelectAll,
  kPaste,
  kPasteShortLink,
  kSearchFirst,  // the selection, with the first search engine
  kSearchSecond,
  kChooseLink,      // one in sight, to open it
  kChooseLinkCopy,  // one in sight, to copy it
  kAskUserPage,     // asks for an id
  kSendControlV,
  kFullScreen,
  kWorkMode,
  kOrdinaryLayout,
  kFittedLayout,
  kNarrowLayout,
  kZoomIn,
  kZoomOut,
  kZoomUsual,
  kReveal,
  kTogglePlaces,  // shows or hides the places of addresses
  kSideButtons,   // the keyboard goes to the buttons beside the page
  kJump,          // asks for an article
  kBookmark,      // these five: of the article that is open
  kPush,
  kPushOn,
  kGiveMoney,
  kFirstPush,
  kTogglePictures,  // of the article's page: opens or closes them
  kSearch,
  kSearchNext,
  kSearchPrevious,
  kSaveArticle,
  kPrintArticle,
  kHotList,
  kTrackedList,
  kBookmarkList,
  kCompactLists,
  kOptions,
  kAskName,  // asks for an id, and what to note about it
  kKeys,     // shows which key gives which command
  kAbout,
  kOpenLink,  // these four: of what lies under the pointer
  kCopyLink,
  kNoteName,
  kUserPage,
  kOpenPicture,  // these six: of the picture there, or of the one that is looked at
  kSavePicture,
  kCopyPicture,
  kCopyPictureLink,
  kBrowsePicture,
  kClosePicture,
  kBack,  // from here on: what a key does on the BBS's page, for hands without the keyboard
  kOpenLine,
  kTop,
  kEnd,
  kPreviousInThread,
  kNextInThread,
  kFindTitle,
  kWrite,
  kFinishText
};
inline constexpr std::size_t kCommandCount = static_cast<std::size_t>(Command::kFinishText) + 1;

// What holds at a moment, as far as commands depend on it.
enum class Condition : std::uint8_t {
  kConnected,
  kConnecting,
  kHasLine,          // connected, or connecting
  kBegun,            // connected, or has been
  kArticle,          // an article is open, on the BBS's page or as the local one
  kLocalArticle,     // it is shown whole
  kHasPushes,        // the same, and has push lines
  kHasPictures,      // the same, and links in sight show pictures
  kBookmarked,       // it is among the bookmarks
  kCodeOutOfReach,   // its code is not known, and cannot be asked for while an automation works
  kSelection,        //
  kLink,             // one lies under the pointer
  kArticleLink,      // it leads to an article of the BBS's
  kAddresslessLink,  // it has no web address
  kUserId,           // one lies under the pointer
  kClosedPicture,    // a link lies there whose picture can be opened
  kOpenedPicture,    // its picture is open
  kPicture,          // a picture lies there, or what stands in its place; or one is looked at
  kPictureFile,      // the same, and its file has come
  kAutomation,       // one works
  kFirstEngine,      // a search engine is known
  kSecondEngine,     //
  kPlaces,           // places are shown in the place of addresses
  kHasSideButtons,   // they are shown
  kWorkMode,         //
  kFullScreen,       //
  kOrdinaryLayout,   //
  kFittedLayout,     //
  kNarrowLayout,     //
  kCompactLists,     //
  kLogging           // what comes from the site is written to a file
};
using Conditions = FlagSet<Condition>;
using PageSet = FlagSet<PageKind>;

struct CommandState {
  Conditions holds;
  PageKind page = PageKind::kOther;  // that hands act upon; kReader for the local article

  bool operator==(const CommandState&) const = default;
};

enum class CommandMenu {
  kNone,
  kConnection,  // those of the menu bar
  kEdit,
  kLook,
  kArticle,
  kSettings,
  kHelp,
  kEditorFile,  // those of the menu bar in work mode
  kEditorEdit,
  kEditorLook,
  kEditorHelp,
  kContext,  // the right button's
  kPicture   // the same over a picture that is looked at
};

enum class Gap { kNone, kLine };           // what stands before an entry of a menu
enum class Held { kOnce, kAgain };         // what a key does that is held down
enum class Mark { kNone, kTick, kOneOf };  // kOneOf: of its neighbours with this mark one is always set
// Who claims the keys: where the terminal has the keyboard it does not leave these to the menus.
enum class KeyHolder { kMenus, kTerminal };

// Other words where a condition holds.
struct OtherWords {
  std::u16string_view text{};  // empty: there are none
  Condition when{};
};

struct Caption {
  std::u16string_view text{};  // empty: it stands in no article's bar
  OtherWords other{};
  Conditions shown{};
};

struct CommandRow {
  Command command = Command::kNone;
  CommandMenu menu = CommandMenu::kNone;  // of the menu bar, where it stands in the order of the table
  Gap gap = Gap::kNone;
  // As a menu shows it: "&" before its letter; "{engine1}" and the like stand for CommandWords.
  std::u16string_view text{};
  OtherWords other{};
  std::array<KeyChord, 3> keys{};  // each gives it; the first one is told
  KeyHolder holder = KeyHolder::kMenus;
  Held held = Held::kOnce;
  char16_t articleKey = 0;            // gives it where an article is read
  Caption caption{};                  // in the bar of an article
  int picture = 0;                    // the number of the embedded image; 0: none
  int siteVirtualKey = 0;             // what it is on the BBS's page: a key of core/key_sequence.h,
  std::string_view siteBytes{};       // or these bytes
  std::u16string_view siteKeyName{};  // of that key
  Conditions needs{};
  Conditions notWhile{};
  PageSet pages{};  // on which it can act; empty: whatever page there is
  Conditions shown{};
  Mark mark = Mark::kNone;
  Condition markedWhile{};  // with a mark only
};

// Of any command; that of kNone is empty.
const CommandRow& RowOf(Command command);
std::span<const CommandRow> AllCommands();
// What the command sends, where it is a key on the BBS's page; else nothing.
std::string_view SiteKeyOf(Command command);

// ---- When

enum class Refusal {
  kNone,  // it can act
  kNotConnected,
  kBusy,  // an automation works
  kGone,  // what it was chosen for is no longer there
  kNotNow
};
Refusal WhyNot(Command command, const CommandState& state);
inline bool IsEnabled(Command command, const CommandState& state) {
  return WhyNot(command, state) == Refusal::kNone;
}
bool IsMarked(Command command, const CommandState& state);

// ---- By which key

// That the terminal claims for a command wherever it has the keyboard; kNone for any other key.
Command CommandForKey(const KeyPress& press);
// On an article, of a key that is pressed alone.
Command CommandForArticleKey(const KeyPress& press);

// ---- In menus

enum class EntryKeys { kTold, kUntold };

struct MenuEntry {
  Command command = Command::kNone;  // kNone: an entry that is always grey
  Gap gap = Gap::kNone;
  std::u16string_view text{};  // empty: the command's own
  Conditions shown{};          // besides the command's own; it stands in the menu only while these hold
  EntryKeys keys = EntryKeys::kTold;
};

// What stands in the texts for their parts; with "&" doubled.
struct CommandWords {
  std::u16string firstEngine{};
  std::u16string secondEngine{};
  std::u16string selection{};
  std::u16string id{};
};

std::u16string_view TitleOf(CommandMenu menu);
// In their order.
std::vector<MenuEntry> EntriesOf(CommandMenu menu);
bool IsShown(const MenuEntry& entry, const CommandState& state);
std::u16string TextOf(const MenuEntry& entry, const CommandState& state, const CommandWords& words);
// A menu's text without its letter and dots.
std::u16string WithoutLetter(std::u16string_view text);
// The command's, for where there is no menu.
std::u16string NameOf(Command command, const CommandState& state);
// "Ctrl+Shift+O", as toolkits write and read it; empty for no key.
std::u16string NameOf(const KeyChord& chord);
// Name and key, for a button that shows a picture only.
std::u16string TipOf(Command command, const CommandState& state);

// ---- On the page

// With a caption, the most important one first.
std::span<const Command> CaptionsOfArticle();
std::u16string_view CaptionOf(Command command, const CommandState& state);
// The buttons that stand beside every page, from the top down.
std::span<const Command> CommandsBesideAnyPage();
// Those that stand below them, by page; none where something is typed or waited for.
std::span<const Command> CommandsBeside(PageKind page);
inline constexpr int kMostBesidePage = 7;

}  // namespace quillet
