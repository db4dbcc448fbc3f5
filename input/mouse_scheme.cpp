#include "input/mouse_scheme.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "bbs/page_flags.h"
#include "core/key_sequence.h"
#include "input/article_paging.h"
#include "input/line_keys.h"
#include "input/reader_reach.h"
#include "input/text/line_characters.h"

namespace quillet {
namespace {

using enum MouseScheme;

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
  MouseScheme scheme;
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

Deed DeedOf(MouseScheme scheme, Picture picture, PageKind kind) {
  const auto* const row = std::find_if(
      kSteps.begin(), kSteps.end(), [&](const SchemeRow& candidate) { return candidate.scheme == scheme; });
  if (row == kSteps.end()) return kNo;
  return picture == Picture::kArticle ? row->ownArticle : DeedOn(*row, kind);
}

// Up, down.
using Pair = std::pair<char, char>;

Pair LettersOf(MouseScheme scheme) {
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
int WithinArticle(int lines, const UnderstoodPage& page) {
  return std::clamp(lines, -LinesBelow(page), LinesAbove(page));
}

int PagesWithinArticle(int pages, const UnderstoodPage& page) {
  const auto pagesOf = [](int lines) { return (lines + kPageStep - 1) / kPageStep; };
  return std::clamp(pages, -pagesOf(LinesBelow(page)), pagesOf(LinesAbove(page)));
}

MouseAction OpenNeighbour(int direction) {
  std::string keys(KeySequence(direction > 0 ? kKeyUp : kKeyDown));
  return Send(keys.append(KeySequence(kKeyRight)), Repeat::kAfterAnswer);
}

// In an article a letter leads to another one, which must be seen before the next letter makes sense.
MouseAction SendLetters(MouseScheme scheme, int steps, PageKind kind) {
  const Pair pair = LettersOf(scheme);
  const char letter = steps > 0 ? pair.first : pair.second;
  if (kind != PageKind::kArticleList) return Send(std::string(1, letter), Repeat::kAfterAnswer);
  return Send(std::string(static_cast<std::size_t>(std::min(std::abs(steps), kMostKeys)), letter));
}

struct Situation {
  Picture picture;
  PageKind kind;
  const ScreenSnapshot& screen;
  const UnderstoodPage& page;
};

// An instant message over a page has the cursor, takes the next key, and has to be read first.
PageKind KindUnderMessage(PageKind kind) {
  return kind == PageKind::kTyping || kind == PageKind::kEditor ? PageKind::kTyping : PageKind::kPause;
}

bool HasMessage(const UnderstoodPage& page) {
  return page.Shows(PF_STAR_LINE);
}

Situation SituationOf(Picture picture, const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return {picture, PageUnderHands(picture, page), screen, page};
}

MouseAction StepLines(int lines, const Situation& at) {
  if (at.kind != PageKind::kReader) return SendKey(kKeyUp, kKeyDown, lines);
  return SendKey(kKeyUp, kKeyDown, WithinArticle(lines, at.page), Repeat::kAfterAnswer);
}

MouseAction StepPages(int pages, const Situation& at) {
  if (at.kind != PageKind::kReader) return SendKey(kKeyPageUp, kKeyPageDown, pages);
  return SendKey(kKeyPageUp, kKeyPageDown, PagesWithinArticle(pages, at.page), Repeat::kAfterAnswer);
}

MouseAction Step(MouseScheme scheme, const WheelTurn& turn, const Situation& at) {
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
std::string GoOnKey(const UnderstoodPage& page) {
  return HasMessage(page) ? "\n" : " ";
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
  if (at.kind == PageKind::kPause) return Send(GoOnKey(at.page), Repeat::kByNewGesture);
  if (!IsInText(place)) return {};
  switch (at.kind) {
    case PageKind::kList:
    case PageKind::kArticleList:
      return Send(KeysToOpenLine(at.screen, at.page, place.row), Repeat::kByNewGesture);
    case PageKind::kMenu:
      return Send(KeysToOpenItem(at.screen, at.page, place.row), Repeat::kByNewGesture);
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

PageKind PageUnderHands(Picture picture, const UnderstoodPage& page) {
  if (picture == Picture::kArticle) return PageKind::kReader;
  return HasMessage(page) ? KindUnderMessage(page.kind) : page.kind;
}

MouseAction DecideClick(const PointerPlace& place, const ScreenSnapshot& screen, const UnderstoodPage& page,
                        const Settings& settings) {
  const Situation at = SituationOf(place.picture, screen, page);
  if (settings.leftButton == kUpDown) return HalvesClick(place, at);
  return settings.leftButton == kWeb ? WebClick(place, at) : MouseAction();
}

bool OpensLine(const PointerPlace& place, const ScreenSnapshot& screen, const UnderstoodPage& page,
               const Settings& settings) {
  const Situation at = SituationOf(place.picture, screen, page);
  const bool hasLines =
      at.kind == PageKind::kMenu || at.kind == PageKind::kList || at.kind == PageKind::kArticleList;
  return hasLines && settings.leftButton == kWeb && !IsBackStrip(place, at.kind) &&
         WebClick(place, at).kind == MouseActionKind::kSend;
}

PointerShape ShapeAt(const PointerPlace& place, const ScreenSnapshot& screen, const UnderstoodPage& page,
                     const Settings& settings) {
  const PageKind kind = SituationOf(place.picture, screen, page).kind;
  const MouseAction click = DecideClick(place, screen, page, settings);
  if (click.kind == MouseActionKind::kNone || click.kind == MouseActionKind::kMoveCursor)
    return ShapeOfText(place, kind);
  if (settings.leftButton == kUpDown) return place.upperHalf ? PointerShape::kUp : PointerShape::kDown;
  if (kind == PageKind::kPause) return PointerShape::kOrdinary;  // the whole page would be a button
  return IsBackStrip(place, kind) ? PointerShape::kBack : PointerShape::kHand;
}

MouseAction DecideWheel(const WheelTurn& turn, HeldButton held, Picture picture, const ScreenSnapshot& screen,
                        const UnderstoodPage& page, const Settings& settings) {
  MouseScheme scheme = settings.wheel;
  if (held == HeldButton::kLeft) scheme = settings.leftButtonWheel;
  if (held == HeldButton::kRight) scheme = settings.rightButtonWheel;
  return Step(scheme == kWheel ? settings.wheel : scheme, turn, SituationOf(picture, screen, page));
}

MouseAction DecideSideButton(SideButtonPressed button, Picture picture, const ScreenSnapshot& screen,
                             const UnderstoodPage& page, const Settings& settings) {
  const int direction = button == SideButtonPressed::kBack ? 1 : -1;
  return Step(settings.sideButton, {.notches = direction, .lines = direction},
              SituationOf(picture, screen, page));
}

}  // namespace quillet
