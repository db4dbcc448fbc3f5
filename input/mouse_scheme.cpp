#include "input/mouse_scheme.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "bbs/page_flags.h"
#include "core/key_sequence.h"
#include "input/article_paging.h"
#include "input/line_characters.h"
#include "input/line_keys.h"
#include "input/reader_reach.h"

namespace quillet {
namespace {

// ---- The user's choices, in the order in which the settings number them.

enum class Scheme {
  kNothing,
  kWeb,
  kWheel,      // what the wheel does by itself
  kNeighbour,  // the article before, the article after
  kUpDown,
  kPages,
  kEnds,
  kBF,
  kThread,
  kAuthor,
  kRead
};
using enum Scheme;

constexpr std::array kClickSchemes{kNothing, kUpDown, kWeb};
constexpr std::array kWheelSchemes{kNothing, kWeb, kUpDown, kPages};
constexpr std::array kButtonWheelSchemes{kNothing, kWheel,  kUpDown, kPages, kEnds,
                                         kBF,      kThread, kAuthor, kRead};
constexpr std::array kSideSchemes{kNothing, kNeighbour, kUpDown, kPages, kEnds, kBF, kThread, kAuthor, kRead};

template <std::size_t count>
Scheme Chosen(const std::array<Scheme, count>& schemes, int choice) {
  return choice >= 0 && choice < static_cast<int>(count) ? schemes[static_cast<std::size_t>(choice)]
                                                         : kNothing;
}

// ---- What a step, up or down, does by scheme and page.

enum class Deed {
  kNo,
  kOne,     // Up, Down: one for each notch
  kMany,    // as many as the system scrolls by for a notch
  kPage,    // PageUp, PageDown
  kEnd,     // Home, End
  kLetter,  // the scheme's own pair
  kOpen,    // the list's neighbouring line is opened
  kOwnOne,  // the same for the local article
  kOwnMany,
  kOwnPage,
  kOwnEnd
};
using enum Deed;

struct SchemeRow {
  Scheme scheme;
  // By PageKind.
  Deed other, menu, list, articleList, reader, editor, typing, pause;
  Deed ownArticle;
};

// A wheel turned while something is typed, or where any key goes on, does nothing. Letters are keys of the
// articles' pages only. "b" opens the board's notes on a list; there it is the line above that comes before.
// clang-format off
constexpr std::array kSteps{
    //        scheme      other menu   list   articles reader   editor typing pause own article
    SchemeRow{kWeb,       kNo,  kOne,  kPage, kPage,   kMany,   kMany, kNo,   kNo,  kOwnMany},
    SchemeRow{kUpDown,    kNo,  kOne,  kOne,  kOne,    kOne,    kOne,  kNo,   kNo,  kOwnOne},
    SchemeRow{kPages,     kNo,  kPage, kPage, kPage,   kPage,   kPage, kNo,   kNo,  kOwnPage},
    SchemeRow{kEnds,      kNo,  kEnd,  kEnd,  kEnd,    kEnd,    kEnd,  kNo,   kNo,  kOwnEnd},
    SchemeRow{kNeighbour, kNo,  kNo,   kNo,   kOpen,   kLetter, kNo,   kNo,   kNo,  kLetter},
    SchemeRow{kBF,        kNo,  kNo,   kNo,   kOne,    kLetter, kNo,   kNo,   kNo,  kLetter},
    SchemeRow{kThread,    kNo,  kNo,   kNo,   kLetter, kLetter, kNo,   kNo,   kNo,  kLetter},
    SchemeRow{kAuthor,    kNo,  kNo,   kNo,   kLetter, kLetter, kNo,   kNo,   kNo,  kLetter},
    SchemeRow{kRead,      kNo,  kNo,   kNo,   kLetter, kLetter, kNo,   kNo,   kNo,  kLetter},
};
// clang-format on

Deed DeedOn(const SchemeRow& row, PageKind kind) {
  switch (kind) {
    case PageKind::kMenu:
      return row.menu;
    case PageKind::kList:
      return row.list;
    case PageKind::kArticleList:
      return row.articleList;
    case PageKind::kReader:
      return row.reader;
    case PageKind::kEditor:
      return row.editor;
    case PageKind::kTyping:
      return row.typing;
    case PageKind::kPause:
      return row.pause;
    case PageKind::kOther:
      break;
  }
  return row.other;
}

Deed DeedOf(Scheme scheme, Picture picture, PageKind kind) {
  const auto* const row = std::find_if(
      kSteps.begin(), kSteps.end(), [&](const SchemeRow& candidate) { return candidate.scheme == scheme; });
  if (row == kSteps.end()) return kNo;
  return picture == Picture::kArticle ? row->ownArticle : DeedOn(*row, kind);
}

// Up, down.
using Pair = std::pair<char, char>;

Pair LettersOf(Scheme scheme) {
  switch (scheme) {
    case kThread:
      return {'[', ']'};
    case kAuthor:
      return {'A', 'a'};
    case kRead:
      return {'{', '}'};
    default:
      return {'b', 'f'};
  }
}

// ---- From deeds to actions. Steps are positive upwards, as wheels are turned.

// More keys at once than a hand can mean.
constexpr int kMostKeys = 3 * kPageStep;

MouseAction Send(std::string bytes, Repeat repeat = Repeat::kFreely) {
  if (bytes.empty()) return {};
  return {.kind = MouseActionKind::kSend, .bytes = std::move(bytes), .repeat = repeat};
}

MouseAction SendKey(int upKey, int downKey, int steps, Repeat repeat = Repeat::kFreely) {
  std::string bytes;
  for (int step = 0; step < std::min(std::abs(steps), kMostKeys); ++step)
    bytes += KeySequence(steps > 0 ? upKey : downKey);
  return Send(std::move(bytes), repeat);
}

MouseAction Scroll(MouseActionKind kind, int steps) {
  if (steps == 0) return {};
  return {.kind = kind, .lines = -steps};
}

int SignOf(int value) {
  return (value > 0) - (value < 0);
}

// Beyond the article's top and end the BBS would go on to another article.
int WithinArticle(int lines, const ScreenSnapshot& screen) {
  return std::clamp(lines, -LinesBelow(screen), LinesAbove(screen));
}

int PagesWithinArticle(int pages, const ScreenSnapshot& screen) {
  const auto pagesOf = [](int lines) { return (lines + kPageStep - 1) / kPageStep; };
  return std::clamp(pages, -pagesOf(LinesBelow(screen)), pagesOf(LinesAbove(screen)));
}

MouseAction OpenNeighbour(int direction) {
  std::string keys(KeySequence(direction > 0 ? kKeyUp : kKeyDown));
  return Send(keys.append(KeySequence(kKeyRight)), Repeat::kAfterAnswer);
}

// In an article a letter leads to another one, which must be seen before the next letter makes sense.
MouseAction SendLetters(Scheme scheme, int steps, PageKind kind) {
  const Pair pair = LettersOf(scheme);
  const char letter = steps > 0 ? pair.first : pair.second;
  if (kind != PageKind::kArticleList) return Send(std::string(1, letter), Repeat::kAfterAnswer);
  return Send(std::string(static_cast<std::size_t>(std::min(std::abs(steps), kMostKeys)), letter));
}

struct Situation {
  Picture picture;
  PageKind kind;
  const ScreenSnapshot& screen;
};

// An instant message over a page has the cursor, takes the next key, and has to be read first.
PageKind KindUnderMessage(PageKind kind) {
  return kind == PageKind::kTyping || kind == PageKind::kEditor ? PageKind::kTyping : PageKind::kPause;
}

bool HasMessage(const ScreenSnapshot& screen) {
  return (screen.pageFlags & PF_STAR_LINE) != 0;
}

Situation SituationOf(Picture picture, const ScreenSnapshot& screen) {
  return {picture, PageUnderHands(picture, screen), screen};
}

MouseAction StepLines(int lines, const Situation& at) {
  if (at.kind != PageKind::kReader) return SendKey(kKeyUp, kKeyDown, lines);
  return SendKey(kKeyUp, kKeyDown, WithinArticle(lines, at.screen), Repeat::kAfterAnswer);
}

MouseAction StepPages(int pages, const Situation& at) {
  if (at.kind != PageKind::kReader) return SendKey(kKeyPageUp, kKeyPageDown, pages);
  return SendKey(kKeyPageUp, kKeyPageDown, PagesWithinArticle(pages, at.screen), Repeat::kAfterAnswer);
}

MouseAction Step(Scheme scheme, const WheelTurn& turn, const Situation& at) {
  const Deed deed = DeedOf(scheme, at.picture, at.kind);
  if (deed == kMany) return StepLines(turn.lines, at);
  if (deed == kOwnMany) return Scroll(MouseActionKind::kScrollLines, turn.lines);
  if (turn.notches == 0) return {};
  switch (deed) {
    case kOne:
      return StepLines(turn.notches, at);
    case kPage:
      return StepPages(turn.notches, at);
    case kEnd:
      return SendKey(kKeyHome, kKeyEnd, SignOf(turn.notches));
    case kLetter:
      return SendLetters(scheme, turn.notches, at.kind);
    case kOpen:
      return OpenNeighbour(turn.notches);
    case kOwnOne:
      return Scroll(MouseActionKind::kScrollLines, turn.notches);
    case kOwnPage:
      return Scroll(MouseActionKind::kScrollPages, turn.notches);
    case kOwnEnd:
      return Scroll(MouseActionKind::kScrollToEnd, SignOf(turn.notches));
    default:
      return {};
  }
}

// ---- Clicks.

bool IsInPage(const PointerPlace& place) {
  return place.row >= 0 && place.row < kRows && place.col >= 0 && place.col < kCols;
}

// Above the bottom row, which is never part of a text.
bool IsInText(const PointerPlace& place) {
  return IsInPage(place) && place.row < kBottomRow;
}

bool CanGoBack(PageKind kind) {
  return kind == PageKind::kMenu || kind == PageKind::kList || kind == PageKind::kArticleList ||
         kind == PageKind::kReader;
}

bool IsBackStrip(const PointerPlace& place, PageKind kind) {
  return place.leftMargin && CanGoBack(kind);
}

// A line feed puts a message away and does nothing else.
std::string GoOnKey(const ScreenSnapshot& screen) {
  return HasMessage(screen) ? "\n" : " ";
}

// Where a character begins, and no farther than behind the text: from there the cursor would go on to the
// next line.
int CursorColumn(const ScreenSnapshot& screen, int row, int col) {
  const auto at = static_cast<std::size_t>(row);
  const ArticleLine line{screen.text[at], screen.attr[at]};
  return std::min(BoundaryBefore(line.text, col + 1), EndOfText(line));
}

MouseAction WebClick(const PointerPlace& place, const Situation& at) {
  if (IsBackStrip(place, at.kind)) return Send(std::string(KeySequence(kKeyLeft)), Repeat::kByNewGesture);
  if (at.kind == PageKind::kPause) return Send(GoOnKey(at.screen), Repeat::kByNewGesture);
  if (!IsInText(place)) return {};
  switch (at.kind) {
    case PageKind::kList:
    case PageKind::kArticleList:
      return Send(KeysToOpenLine(at.screen, place.row), Repeat::kByNewGesture);
    case PageKind::kMenu:
      return Send(KeysToOpenItem(at.screen, place.row), Repeat::kByNewGesture);
    case PageKind::kEditor:
      return {.kind = MouseActionKind::kMoveCursor,
              .row = place.row,
              .col = CursorColumn(at.screen, place.row, place.col)};
    default:
      return {};
  }
}

// A text is moved through with the keyboard while it is written.
MouseAction HalvesClick(const PointerPlace& place, const Situation& at) {
  if (at.kind == PageKind::kEditor) return {};
  const int direction = place.upperHalf ? 1 : -1;
  return Step(kUpDown, {.notches = direction, .lines = direction}, at);
}

PointerShape ShapeOfText(const PointerPlace& place, PageKind kind) {
  const bool text = kind == PageKind::kReader || kind == PageKind::kEditor;
  return text && IsInText(place) ? PointerShape::kText : PointerShape::kOrdinary;
}

}  // namespace

PageKind PageUnderHands(Picture picture, const ScreenSnapshot& screen) {
  if (picture == Picture::kArticle) return PageKind::kReader;
  const PageKind kind = KindOf(screen);
  return HasMessage(screen) ? KindUnderMessage(kind) : kind;
}

MouseAction DecideClick(const PointerPlace& place, const ScreenSnapshot& screen, const Settings& settings) {
  const Situation at = SituationOf(place.picture, screen);
  switch (Chosen(kClickSchemes, settings.leftButton)) {
    case kUpDown:
      return HalvesClick(place, at);
    case kWeb:
      return WebClick(place, at);
    default:
      return {};
  }
}

bool OpensLine(const PointerPlace& place, const ScreenSnapshot& screen, const Settings& settings) {
  const Situation at = SituationOf(place.picture, screen);
  const bool hasLines =
      at.kind == PageKind::kMenu || at.kind == PageKind::kList || at.kind == PageKind::kArticleList;
  return hasLines && Chosen(kClickSchemes, settings.leftButton) == kWeb && !IsBackStrip(place, at.kind) &&
         WebClick(place, at).kind == MouseActionKind::kSend;
}

PointerShape ShapeAt(const PointerPlace& place, const ScreenSnapshot& screen, const Settings& settings) {
  const PageKind kind = SituationOf(place.picture, screen).kind;
  const MouseAction click = DecideClick(place, screen, settings);
  if (click.kind == MouseActionKind::kNone || click.kind == MouseActionKind::kMoveCursor)
    return ShapeOfText(place, kind);
  if (Chosen(kClickSchemes, settings.leftButton) == kUpDown)
    return place.upperHalf ? PointerShape::kUp : PointerShape::kDown;
  if (kind == PageKind::kPause) return PointerShape::kOrdinary;  // the whole page would be a button
  return IsBackStrip(place, kind) ? PointerShape::kBack : PointerShape::kHand;
}

MouseAction DecideWheel(const WheelTurn& turn, HeldButton held, Picture picture, const ScreenSnapshot& screen,
                        const Settings& settings) {
  const Scheme plain = Chosen(kWheelSchemes, settings.wheel);
  Scheme scheme = plain;
  if (held == HeldButton::kLeft) scheme = Chosen(kButtonWheelSchemes, settings.leftButtonWheel);
  if (held == HeldButton::kRight) scheme = Chosen(kButtonWheelSchemes, settings.rightButtonWheel);
  return Step(scheme == kWheel ? plain : scheme, turn, SituationOf(picture, screen));
}

MouseAction DecideSideButton(SideButtonPressed button, Picture picture, const ScreenSnapshot& screen,
                             const Settings& settings) {
  const int direction = button == SideButtonPressed::kBack ? 1 : -1;
  return Step(Chosen(kSideSchemes, settings.sideButton), {.notches = direction, .lines = direction},
              SituationOf(picture, screen));
}

}  // namespace quillet
