// Any bytes as a few screens, one after the other: text, colours, cursor and flags. Every page test and every
// extractor looks at each of them, and so do one understanding and one tracker at all; whatever they say has
// the form that callers rely on.
#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "bbs/article/article_info.h"
#include "bbs/article/push_over_reader.h"
#include "bbs/article_code.h"
#include "bbs/end_lines.h"
#include "bbs/keywords.h"
#include "bbs/page_facts.h"
#include "bbs/page_understanding.h"
#include "bbs/screen_classifier.h"
#include "bbs/screen_fields.h"
#include "core/charset.h"

#include "fuzz/drawing.h"

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1794000000;

bool IsTrimmed(std::u16string_view text) {
  constexpr std::u16string_view kBlanks = u" \t\r\n";
  return text.empty() ||
         (kBlanks.find(text.front()) == kBlanks.npos && kBlanks.find(text.back()) == kBlanks.npos);
}

// A text out of a field of so many columns.
void RequireField(std::u16string_view text, std::size_t columns) {
  Require(text.size() <= columns && IsTrimmed(text) && text.find(u'\0') == text.npos);
}

void RequireTime(std::int64_t seconds) {
  Require(seconds >= 0 && seconds <= 253402300799 + 86400);
}

void CheckPageTests(const PageTests& pages, ScreenSnapshot screen) {
  using Form = PageTests::ReaderForm;
  const bool reader = pages.IsReader(screen, Form::kPlain);
  Require(!pages.IsReader(screen, Form::kStrict) || reader);
  Require(!pages.IsReaderWithHelpFooter(screen) || reader);
  Require(!pages.IsArticleListStrict(screen) || (pages.IsArticleList(screen) && pages.IsListCursor(screen)));
  Require(!pages.IsListCursor(screen) || (screen.CursorInside() && !pages.IsEditor(screen)));
  Require(!pages.IsPushConfirm(screen) || pages.IsPushLine(screen));
  screen.pageFlags = 0;
  Require(ClassifyScreen(pages, screen, ScreenReason::kUpdated));
  const std::uint32_t flags = screen.pageFlags;
  Require((flags & PF_PUSH_OVER_READER) == 0 && flags < (PF_PUSH_OVER_READER << 1));
  constexpr std::uint32_t kReaderFlags =
      PF_READING | PF_READ_TOP | PF_READ_END | PF_READ_FOOTER_RED | PF_BROWSABLE;
  Require((flags & PF_READING) == 0 || (flags & ~kReaderFlags) == 0);
  Require((flags & PF_STAR_LINE) == 0 || flags == PF_STAR_LINE);
  Require(((flags & PF_STAR_LINE) != 0) == (screen.msgCount == 1));
}

void CheckFacts(const PageFacts& facts, const ScreenSnapshot& screen) {
  const std::u16string author = facts.ParseHeaderAuthor(screen);
  RequireField(author, 12);
  Require(author.find_first_of(u" (") == author.npos);
  RequireField(facts.ParseHeaderBoard(screen), kCols - 63);
  RequireField(facts.ParseHeaderTitle(screen), kCols - 7);
  RequireTime(facts.ParseHeaderTime(screen, kNow));

  const std::u16string code = PageFacts::ParseInfoBoxAid(screen);
  Require(code.empty() || code.size() == kAidLength);
  Require(code.empty() || !AidToFileName(code).empty());
  const std::u16string board = PageFacts::ParseInfoBoxBoard(screen);
  RequireField(board, 12);
  Require(board.find(u')') == board.npos);
  Require(PageFacts::ParseInfoBoxTitle(screen).size() <= kCols - 39 + 3);

  for (int row = -1; row <= kRows; ++row) {
    const bool listRow = row >= 3 && row <= 22;
    RequireField(PageFacts::ParseListAuthor(screen, row), listRow ? 12 : 0);
    RequireField(PageFacts::ParseListTitle(screen, row), listRow ? kCols - 30 : 0);
    Require(!PageFacts::IsDeletedListLine(screen, row) || listRow);
    const std::u16string pusher = facts.ParsePushAuthor(screen, row);
    RequireField(pusher, 12);
    Require(facts.IsPushCommentLine(screen, row) == !pusher.empty());
    Require(std::all_of(pusher.begin(), pusher.end(), [](char16_t c) { return c > u' ' && c < 0x7F; }));
    Require(!facts.IsArrowInputRow(screen, row) || row == 22 || row == 23);
  }

  const int line = PageFacts::ParseReaderLastLine(screen);
  Require(line == kNoLine || line >= 1);
  Require(facts.ParseReaderPage(screen).value_or(1) >= 1);
  Require(PageFacts::ParseMoney(screen) >= kNoMoney);
}

void CheckLines(UnderstoodPage page, const ScreenSnapshot& screen, const Keywords& keywords) {
  Require(page == PageUnderstanding().Look(screen));
  KeywordMarks().Mark(screen, keywords, page);
  for (int row = 0; row < kRows; ++row) {
    const std::uint8_t flag = page.Line(row).flags;
    Require((flag & ~(LF_PUSH | LF_KEYWORD | LF_MARK_MASK)) == 0);
    Require((flag & LF_MARK_MASK) == 0 || (row >= 3 && row <= 22 && (flag & LF_PUSH) == 0));
    Require((flag & LF_MARK_MASK) != LF_DELETED || flag == LF_DELETED);
    const std::u16string text = FieldText(screen, row, 0, kCols - 1, Trim::kNo);
    Require((flag & LF_KEYWORD) == 0 || keywords.Contained(text));
    const int kinds = IsLotteryLine(text) + IsForwarderLine(text) + IsOriginLine(text, u"bbs.example") +
                      IsForwardNote(text) + IsEditNote(text) + IsLastLoginLine(text);
    Require(kinds <= 1);
    const std::u16string address = OriginAddress(text, u"bbs.example");
    Require(address.empty() || IsOriginLine(text, u"bbs.example"));
    Require(address.size() <= 15 && address.find_first_not_of(u"0123456789.") == address.npos);
  }
}

void CheckFields(const ScreenSnapshot& screen, int row, int first, int last) {
  RequireField(FieldText(screen, row, first, last),
               static_cast<std::size_t>(std::clamp(last - first + 1, 0, kCols)));
  for (const char wanted : {']', '~', ')', '\0', '\xA4'}) {
    const auto found = FindCharacter(screen, row, first, last, wanted);
    const auto latest = FindLastCharacter(screen, row, first, last, wanted);
    Require(found.has_value() == latest.has_value() && found <= latest);
    Require(!found || (*found >= first && *latest <= last && IsCharacterStart(screen, row, *found)));
  }
  Require(FieldNumber(screen, row, first, last) >= 0 &&
          WholeNumber(screen, row, first, last).value_or(0) >= 0);
  IsBlankBetween(screen, row, first, last);
}

void CheckTracker(ArticleTracker& tracker, const ScreenSnapshot& screen, const UnderstoodPage& page) {
  const ArticleInfo before = tracker.Current();
  const bool wasOpen = tracker.IsOpen();
  const bool changed = tracker.Look(screen, page, kNow);
  const ArticleInfo& info = tracker.Current();
  Require(changed || (info == before && tracker.IsOpen() == wasOpen));
  Require(tracker.IsOpen() || info == ArticleInfo{});
  RequireField(info.author, 12);
  RequireField(info.board, kCols - 63);
  Require(info.code.empty() || info.code.size() == kAidLength);
  RequireTime(info.postTime);
  Require(info.page >= 0 && info.lastLine >= 0);
  // The same screen again tells nothing new.
  Require(!tracker.Look(screen, page, kNow));
}

void RunInput(std::string_view bytes) {
  static const PageTests pages;
  static const PageFacts facts;
  static const Keywords keywords({u"moon", u"月亮", u"]"});
  Input input(bytes);
  Drawing drawing;
  PageUnderstanding understanding;
  ArticleTracker tracker;
  std::uint32_t previous = 0;
  bool more = true;
  for (int screens = 0; more && screens < 16; ++screens) {
    more = drawing.Draw(input);
    ScreenSnapshot& screen = drawing.screen;
    CheckPageTests(pages, screen);
    CheckFields(screen, screen.cursorRow, screen.cursorCol, static_cast<int>(screen.curAttr) - 8);
    if (drawing.classify) {
      ClassifyScreen(pages, screen, ScreenReason::kUpdated);
      MarkPushOverReader(previous, screen);
    }
    previous = screen.pageFlags;
    CheckFacts(facts, screen);
    const UnderstoodPage& page = understanding.Look(screen);
    CheckLines(page, screen, keywords);
    CheckTracker(tracker, screen, page);
  }
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  quillet::Require(quillet::LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillet::RunInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
