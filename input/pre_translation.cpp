#include "input/pre_translation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "bbs/page_flags.h"
#include "bbs/page_kind.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

// ---- What the client keeps of the keys, page by page

enum class KeyOwner { kBbs, kOurs };

struct PageKeys {
  PageKind kind;
  KeyOwner tab;        // Tab shows what is noted about the ids
  KeyOwner backQuote;  // sends the BBS's own Tab in its place, and is no character there
  KeyOwner select;     // Shift with an arrow, Home or End begins a selection; one that is shown always grows
  KeyOwner names;      // ` 0-7 u ~ are about the id under the pointer
  KeyOwner article;    // the keys of the commands, and "PreventUpDownChangeArticle"
  KeyOwner places;     // i shows addresses or their places; where the BBS waits for any key it loses this one
};

constexpr KeyOwner kBbs = KeyOwner::kBbs;
constexpr KeyOwner kOurs = KeyOwner::kOurs;

// Where something is typed every character is the BBS's, and so it is on a page that nothing is known of.
// clang-format off
constexpr std::array kPageKeys = {
    //       page                    Tab    `      select names  article places
    PageKeys{PageKind::kOther,       kBbs,  kBbs,  kOurs, kBbs,  kBbs,   kBbs},
    PageKeys{PageKind::kMenu,        kBbs,  kBbs,  kOurs, kOurs, kBbs,   kBbs},
    PageKeys{PageKind::kList,        kBbs,  kOurs, kOurs, kOurs, kBbs,   kBbs},
    PageKeys{PageKind::kArticleList, kOurs, kOurs, kOurs, kOurs, kBbs,   kBbs},
    PageKeys{PageKind::kReader,      kOurs, kOurs, kOurs, kOurs, kOurs,  kOurs},
    PageKeys{PageKind::kEditor,      kBbs,  kBbs,  kOurs, kBbs,  kBbs,   kBbs},
    PageKeys{PageKind::kTyping,      kBbs,  kBbs,  kBbs,  kBbs,  kBbs,   kBbs},
    PageKeys{PageKind::kPause,       kBbs,  kBbs,  kOurs, kOurs, kBbs,   kOurs},
};
// clang-format on

constexpr bool HasRowPerKind() {
  for (std::size_t i = 0; i < kPageKeys.size(); ++i)
    if (static_cast<std::size_t>(kPageKeys[i].kind) != i) return false;
  return kPageKeys.size() == kPageKinds;
}
static_assert(HasRowPerKind());

struct SelectKey {
  int virtualKey;
  SelectStep step;
};

// With Shift; the BBS knows none of them.
constexpr std::array kSelectKeys = {
    SelectKey{kKeyLeft, SelectStep::kLeft},      SelectKey{kKeyRight, SelectStep::kRight},
    SelectKey{kKeyUp, SelectStep::kUp},          SelectKey{kKeyDown, SelectStep::kDown},
    SelectKey{kKeyHome, SelectStep::kLineStart}, SelectKey{kKeyEnd, SelectStep::kLineEnd},
};

struct SearchKey {
  int virtualKey;      // 0: told by its character
  char16_t character;  // 0: told by its virtual key
  bool control;
  bool shift;      // of a virtual key
  SearchUse from;  // as long as no less than this holds
  SearchStep step;
};

// / and n are the keys of the BBS's reader, which would search from a page that nobody looks at.
constexpr std::array kSearchKeys = {
    SearchKey{0, u'/', false, false, SearchUse::kNone, SearchStep::kAsk},
    SearchKey{'F', 0, true, false, SearchUse::kNone, SearchStep::kAsk},
    SearchKey{0, u'n', false, false, SearchUse::kNone, SearchStep::kNext},
    SearchKey{kKeyF3, 0, false, false, SearchUse::kNone, SearchStep::kNext},
    SearchKey{kKeyF3, 0, false, true, SearchUse::kNone, SearchStep::kPrevious},
    SearchKey{0, u'N', false, false, SearchUse::kMarked, SearchStep::kPrevious},
    SearchKey{kKeyEnter, 0, false, false, SearchUse::kWalked, SearchStep::kNext},
    SearchKey{kKeyEnter, 0, false, true, SearchUse::kWalked, SearchStep::kPrevious},
};

// ---- Decisions

KeyDecision On(KeyRoute route) {
  return {.route = route};
}

KeyDecision OnKey(KeyRoute route, int virtualKey) {
  return {.route = route, .action = {.virtualKey = virtualKey}};
}

KeyDecision Give(Command command) {
  return {.route = KeyRoute::kCommand, .action = {.kind = KeyActionKind::kCommand, .command = command}};
}

KeyDecision Search(SearchStep step) {
  return {.route = KeyRoute::kSearch, .search = step};
}

KeyDecision Select(SelectStep step) {
  return {.route = KeyRoute::kSelection, .select = step};
}

// Doing it once more would undo it, or would do what nobody asked for.
KeyDecision Once(KeyPhase phase, KeyDecision decision) {
  return phase == KeyPhase::kRepeat ? On(KeyRoute::kSwallowed) : std::move(decision);
}

// ---- One key message: each step claims the key or leaves it to the next

class KeyMessage {
 public:
  KeyMessage(const KeyPress& press, KeyPhase phase, const UnderstoodPage& page, const WindowState& window)
      : press_(press),
        phase_(phase),
        page_(page),
        window_(window),
        // What people see counts, whatever an automation does under the article meanwhile.
        keys_(kPageKeys[static_cast<std::size_t>(window.articleShown ? PageKind::kReader : page.kind)]),
        meaning_(DecideKey(press, page)) {}

  KeyDecision Decide() const {
    using Step = std::optional<KeyDecision> (KeyMessage::*)() const;
    constexpr std::array<Step, 12> kSelectSteps = {
        &KeyMessage::ForNotice,     // over everything
        &KeyMessage::ForPicture,    //
        &KeyMessage::ForCommand,    //
        &KeyMessage::ForSideList,   //
        &KeyMessage::ForEscape,     // the selection, what was found, the reveal, the automation
        &KeyMessage::ForSelection,  //
        &KeyMessage::ForNames,      //
        &KeyMessage::ForTab,        //
        &KeyMessage::ForSearch,     // the local article
        &KeyMessage::ForPaging,     //
        &KeyMessage::ForArticle,    // its commands
        &KeyMessage::ForEdge        // of the BBS's own reader
    };
    // A modifier alone, or a key that the client does not know.
    if (press_.virtualKey == 0 && press_.text.empty()) return {};
    for (const Step step : kSelectSteps)
      if (auto decision = (this->*step)()) return *std::move(decision);
    return ForBbs();
  }

 private:
  std::optional<KeyDecision> ForNotice() const;
  std::optional<KeyDecision> ForPicture() const;
  std::optional<KeyDecision> ForCommand() const;
  std::optional<KeyDecision> ForSideList() const;
  std::optional<KeyDecision> ForEscape() const;
  std::optional<KeyDecision> ForSelection() const;
  std::optional<KeyDecision> ForNames() const;
  std::optional<KeyDecision> ForTab() const;
  std::optional<KeyDecision> ForSearch() const;
  std::optional<KeyDecision> ForPaging() const;
  std::optional<KeyDecision> ForArticle() const;
  std::optional<KeyDecision> ForEdge() const;
  KeyDecision ForBbs() const;

  bool IsPlain() const { return !press_.control && !press_.alt; }
  bool Types(char16_t character) const {
    return IsPlain() && press_.text.size() == 1 && press_.text.front() == character;
  }
  bool Has(std::uint32_t flags) const { return page_.Shows(flags); }

  const KeyPress& press_;
  const KeyPhase phase_;
  const UnderstoodPage& page_;
  const WindowState& window_;
  const PageKeys& keys_;
  const KeyAction meaning_;
};

std::optional<KeyDecision> KeyMessage::ForNotice() const {
  const bool its = press_.virtualKey == kKeyEnter || press_.virtualKey == kKeyEscape;
  if (!window_.noticeShown || !its || press_.alt) return std::nullopt;
  // A key that was held down before the panel came is no answer to it.
  return Once(phase_, OnKey(KeyRoute::kNotice, press_.virtualKey));
}

std::optional<KeyDecision> KeyMessage::ForPicture() const {
  if (!window_.pictureShown) return std::nullopt;
  return Once(phase_, OnKey(KeyRoute::kPicture, press_.virtualKey));
}

std::optional<KeyDecision> KeyMessage::ForCommand() const {
  if (meaning_.kind == KeyActionKind::kCommand) return Once(phase_, Give(meaning_.command));
  // What everybody's hands do when something is selected; without a selection it is the BBS's.
  const bool copies = press_.virtualKey == 'C' && press_.control && !press_.alt && !press_.shift;
  if (copies && window_.selectionShown) return Once(phase_, Give(Command::kCopy));
  return std::nullopt;
}

std::optional<KeyDecision> KeyMessage::ForSideList() const {
  if (!window_.sideListShown || !IsPlain() || press_.virtualKey == kKeyTab) return std::nullopt;
  return OnKey(KeyRoute::kSideList, press_.virtualKey);
}

std::optional<KeyDecision> KeyMessage::ForEscape() const {
  if (press_.virtualKey != kKeyEscape || !IsPlain()) return std::nullopt;
  // Held a little long, it would end one thing after the other.
  if (phase_ == KeyPhase::kRepeat) return On(KeyRoute::kSwallowed);
  if (window_.selectionShown) return Select(SelectStep::kClear);
  if (window_.articleShown && window_.search != SearchUse::kNone) return Search(SearchStep::kEnd);
  if (window_.revealShown) return On(KeyRoute::kReveal);
  if (window_.activityRuns) return On(KeyRoute::kActivity);
  if (window_.questionShown) return On(KeyRoute::kQuestion);
  return std::nullopt;
}

std::optional<KeyDecision> KeyMessage::ForSelection() const {
  if (!press_.shift || !IsPlain()) return std::nullopt;
  if (keys_.select == kBbs && !window_.selectionShown) return std::nullopt;
  const auto* const key = std::find_if(kSelectKeys.begin(), kSelectKeys.end(), [this](const SelectKey& row) {
    return row.virtualKey == press_.virtualKey;
  });
  if (key == kSelectKeys.end()) return std::nullopt;
  return Select(key->step);
}

std::optional<KeyDecision> KeyMessage::ForNames() const {
  if (!window_.addBlackHotKey || !window_.idUnderPointer || keys_.names == kBbs) return std::nullopt;
  KeyDecision decision = On(KeyRoute::kNames);
  decision.name = NameKeyOf(press_, decision.flagColour);
  if (decision.name == NameKey::kNone) return std::nullopt;
  return Once(phase_, std::move(decision));
}

// Only the known BBS has ids that are recognised, and a Tab of its own.
std::optional<KeyDecision> KeyMessage::ForTab() const {
  if (!window_.articleShown && !Has(PF_BROWSABLE)) return std::nullopt;
  if (keys_.tab == kOurs && press_.virtualKey == kKeyTab && IsPlain() && !press_.shift)
    return Once(phase_, Give(Command::kReveal));
  if (keys_.backQuote == kOurs && Types(u'`'))
    return KeyDecision{.route = KeyRoute::kBbs, .action = {.kind = KeyActionKind::kSendBytes, .bytes = "\t"}};
  return std::nullopt;
}

std::optional<KeyDecision> KeyMessage::ForSearch() const {
  if (!window_.articleShown || press_.alt) return std::nullopt;
  const auto* const key = std::find_if(kSearchKeys.begin(), kSearchKeys.end(), [this](const SearchKey& row) {
    if (window_.search < row.from) return false;
    if (row.virtualKey == 0) return Types(row.character);
    return row.virtualKey == press_.virtualKey && row.control == press_.control && row.shift == press_.shift;
  });
  if (key == kSearchKeys.end()) return std::nullopt;
  // Behind an open side list nothing is asked for.
  if (window_.sideListShown) return On(KeyRoute::kSwallowed);
  return key->step == SearchStep::kAsk ? Once(phase_, Search(key->step)) : Search(key->step);
}

std::optional<KeyDecision> KeyMessage::ForPaging() const {
  if (!window_.articleShown) return std::nullopt;
  PagingState state = window_.article;
  state.keepArticle |= window_.preventArticleChange;
  const PagingAction paging = DecidePaging(press_, phase_ == KeyPhase::kRepeat, state);
  if (paging.kind == PagingAction::Kind::kToBbs) return std::nullopt;
  KeyDecision decision{.route = KeyRoute::kArticle, .paging = paging};
  if (paging.kind == PagingAction::Kind::kNext) decision.action = meaning_;
  return decision;
}

std::optional<KeyDecision> KeyMessage::ForArticle() const {
  const Command command = CommandForArticleKey(press_);
  if (command == Command::kNone) return std::nullopt;
  const bool isOfPlaces = command == Command::kTogglePlaces;
  if ((isOfPlaces ? keys_.places : keys_.article) == kBbs) return std::nullopt;
  // The caption tells that the key is the client's; without one it is so wherever an article is open.
  const bool hasCaption = !RowOf(command).caption.text.empty();
  const bool isThere = keys_.article == kOurs ? window_.articleOpen : window_.addressesShown;
  if (hasCaption ? !window_.commandsOffered : !isThere) return std::nullopt;
  return Once(phase_, Give(command));
}

// The BBS's own reader goes to another article beyond either end; the local one has been asked before.
std::optional<KeyDecision> KeyMessage::ForEdge() const {
  if (!window_.preventArticleChange || !window_.articleOpen || keys_.article == kBbs || !IsPlain())
    return std::nullopt;
  const bool back = press_.virtualKey == kKeyUp;
  const bool on = press_.virtualKey == kKeyDown || press_.virtualKey == kKeyEnter || Types(u' ');
  if ((back && Has(PF_READ_TOP)) || (on && Has(PF_READ_END))) return On(KeyRoute::kSwallowed);
  return std::nullopt;
}

KeyDecision KeyMessage::ForBbs() const {
  if (meaning_.kind == KeyActionKind::kNone) return {};
  return {.route = KeyRoute::kBbs, .action = meaning_};
}

}  // namespace

KeyDecision DecideKeyMessage(const KeyPress& press, KeyPhase phase, const UnderstoodPage& page,
                             const WindowState& window) {
  return KeyMessage(press, phase, page, window).Decide();
}

}  // namespace quillet
