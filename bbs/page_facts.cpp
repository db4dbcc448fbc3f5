#include "bbs/page_facts.h"

#include <algorithm>
#include <limits>

#include "bbs/article_code.h"
#include "bbs/header_time.h"
#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::uint8_t kHeaderLabel = 0xE4;  // blue on white
constexpr int kHeaderWhite = 7;
constexpr int kHeaderBlue = 4;

constexpr int kAuthorCol = 7;
constexpr int kHeaderTitleCol = 7;
constexpr int kIdLength = 12;
constexpr int kBoardSearchCol = 55;
constexpr int kBoardLabelColumns = 8;
constexpr int kBoardLastCol = 76;

constexpr int kListTitleCol = 30;

constexpr int kPushIdCol = 3;
constexpr int kPushColonLastCol = 15;
constexpr int kArrowNoteRow = 22;
constexpr int kArrowNoteCol = 8;

constexpr int kLineRangeCol = 36;
constexpr int kMoneyRow = 1;
constexpr int kMoneyFirstCol = 50;

constexpr bool IsListRow(int row) {
  return row >= kListFirstRow && row <= kListLastRow;
}

bool HasBackground(const ScreenSnapshot& screen, int row, int col, int background) {
  return BackgroundOf(screen.AttrAt(row, col)) == background;
}

// A label of the header, white at `col` and at `col` + 5, its word between them blue on white.
bool IsLabelBox(const ScreenSnapshot& screen, int row, int col) {
  if (!HasBackground(screen, row, col, kHeaderWhite) || !HasBackground(screen, row, col + 5, kHeaderWhite))
    return false;
  for (int at = col + 1; at <= col + 4; ++at)
    if (screen.AttrAt(row, at) != kHeaderLabel) return false;
  return true;
}

// The row of the information box with the article's code.
std::optional<int> InfoBoxRow(const ScreenSnapshot& screen) {
  constexpr int kCodeMarkCol = 18;
  for (const int row : {19, 20})
    if (IsCharacter(screen, row, kCodeMarkCol, '#')) return row;
  return std::nullopt;
}

// Whether `text` begins with the ASCII `prefix`, which is in lower case.
bool StartsWithAnyCase(std::u16string_view text, std::u16string_view prefix) {
  const auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
  return text.size() >= prefix.size() &&
         std::equal(prefix.begin(), prefix.end(), text.begin(),
                    [&](char16_t wanted, char16_t c) { return lower(c) == wanted; });
}

// How the BBS prints an article's title in a list.
std::u16string ListTitle(std::u16string_view title) {
  struct Mark {
    std::u16string_view typed;
    std::u16string_view listed;
  };
  for (const Mark& mark : {Mark{u"re:", u"R: "}, Mark{u"fw:", u"轉 "}}) {
    if (!StartsWithAnyCase(title, mark.typed)) continue;
    title.remove_prefix(mark.typed.size());
    if (title.starts_with(u' ')) title.remove_prefix(1);
    return std::u16string(mark.listed).append(title);
  }
  return std::u16string(u"□ ").append(title);
}

}  // namespace

PageFacts::PageFacts()
    : author_(ToBig5(u" 作者 ")),
      board_(ToBig5(u"  看板  ")),
      title_(ToBig5(u" 標題 ")),
      time_(ToBig5(u" 時間 ")),
      push_(ToBig5(u"推")),
      boo_(ToBig5(u"噓")),
      arrow_(ToBig5(u"→")),
      arrowNote_(ToBig5(u", 使用 → 加註方式 ")),
      pageBegin_(ToBig5(u"第")),
      pageEnd_(ToBig5(u"頁")) {}

std::u16string PageFacts::ParseHeaderAuthor(const ScreenSnapshot& screen) const {
  if (!RowStartsWith(screen, 0, 0, author_) || !IsLabelBox(screen, 0, 0) ||
      !IsCharacterStart(screen, 0, kAuthorCol))
    return {};
  int last = kAuthorCol + kIdLength - 1;
  for (const char end : {' ', '('})
    if (const auto col = FindCharacter(screen, 0, kAuthorCol, last, end)) last = *col - 1;
  return FieldText(screen, 0, kAuthorCol, last);
}

std::u16string PageFacts::ParseHeaderBoard(const ScreenSnapshot& screen) const {
  // By bytes: a nickname that was cut through a character ends on a lead byte, and no character has a blank
  // for its second half.
  const std::size_t found = screen.RowText(0).find(board_, kBoardSearchCol);
  if (board_.empty() || found == std::string_view::npos) return {};
  const int label = static_cast<int>(found);
  if (!HasBackground(screen, 0, label, kHeaderBlue) || !IsLabelBox(screen, 0, label + 1) ||
      !HasBackground(screen, 0, label + 7, kHeaderBlue))
    return {};
  return FieldText(screen, 0, label + kBoardLabelColumns, kBoardLastCol);
}

std::u16string PageFacts::ParseHeaderTitle(const ScreenSnapshot& screen) const {
  if (!RowStartsWith(screen, 1, 0, title_) || !IsCharacterStart(screen, 1, kHeaderTitleCol)) return {};
  return FieldText(screen, 1, kHeaderTitleCol, kCols - 1);
}

std::int64_t PageFacts::ParseHeaderTime(const ScreenSnapshot& screen, std::int64_t now) const {
  constexpr int kRow = 2;
  if (!RowStartsWith(screen, kRow, 0, time_)) return 0;
  return SecondsOf({.monthName = screen.RowText(kRow).substr(11, 3),
                    .year = WholeNumber(screen, kRow, 27, 30),
                    .day = WholeNumber(screen, kRow, 15, 16),
                    .hour = WholeNumber(screen, kRow, 18, 19),
                    .minute = WholeNumber(screen, kRow, 21, 22),
                    .second = WholeNumber(screen, kRow, 24, 25)},
                   now);
}

std::u16string PageFacts::ParseListAuthor(const ScreenSnapshot& screen, int row) {
  if (!IsListRow(row)) return {};
  return FieldText(screen, row, kListAuthorCol, kListAuthorCol + kIdLength - 1);
}

std::u16string PageFacts::ParseListTitle(const ScreenSnapshot& screen, int row) {
  if (!IsListRow(row)) return {};
  return FieldText(screen, row, kListTitleCol, kCols - 1);
}

bool PageFacts::IsDeletedListLine(const ScreenSnapshot& screen, int row) {
  return IsListRow(row) && IsCharacter(screen, row, kListAuthorCol, '-');
}

std::u16string PageFacts::ParseInfoBoxAid(const ScreenSnapshot& screen) {
  constexpr int kCol = 19;
  const std::optional<int> row = InfoBoxRow(screen);
  if (!row) return {};
  std::u16string code = FieldText(screen, *row, kCol, kCol + static_cast<int>(kAidLength) - 1, Trim::kNo);
  const bool whole = code.size() == kAidLength && code.find_first_not_of(kAidAlphabet) == code.npos;
  return whole ? code : std::u16string();
}

std::u16string PageFacts::ParseInfoBoxBoard(const ScreenSnapshot& screen) {
  constexpr int kCol = 29;
  const std::optional<int> row = InfoBoxRow(screen);
  if (!row) return {};
  const std::optional<int> end = FindCharacter(screen, *row, kCol, kCol + kIdLength, ')');
  return end ? FieldText(screen, *row, kCol, *end - 1) : std::u16string();
}

std::u16string PageFacts::ParseInfoBoxTitle(const ScreenSnapshot& screen) {
  constexpr int kSearchCol = 37;
  constexpr int kLastCol = 74;
  const std::optional<int> row = InfoBoxRow(screen);
  if (!row) return {};
  const std::optional<int> bracket = FindCharacter(screen, *row, kSearchCol, kCols - 1, ']');
  if (!bracket) return {};
  // The BBS writes a question mark there for half a character that it had to cut.
  const int last = IsCharacter(screen, *row, kLastCol, '?') ? kLastCol - 1 : kLastCol;
  const std::u16string title = FieldText(screen, *row, *bracket + 2, last);
  return title.empty() ? title : ListTitle(title);
}

bool PageFacts::IsPushCommentLine(const ScreenSnapshot& screen, int row) const {
  return PushColon(screen, row).has_value();
}

std::u16string PageFacts::ParsePushAuthor(const ScreenSnapshot& screen, int row) const {
  const std::optional<int> colon = PushColon(screen, row);
  return colon ? FieldText(screen, row, kPushIdCol, *colon - 1) : std::u16string();
}

std::optional<int> PageFacts::PushColon(const ScreenSnapshot& screen, int row) const {
  const auto starts = [&](std::string_view mark) { return RowStartsWith(screen, row, 0, mark); };
  if (!starts(push_) && !starts(boo_) && !starts(arrow_)) return std::nullopt;
  if (screen.TextAt(row, kPushIdCol - 1) != ' ' || !IsAsciiLetter(screen.TextAt(row, kPushIdCol)))
    return std::nullopt;
  bool idEnded = false;
  for (int col = kPushIdCol + 1; col <= kPushColonLastCol; ++col) {
    const std::uint8_t byte = screen.TextAt(row, col);
    if (byte == ':') return col;
    if (byte == ' ')
      idEnded = true;
    else if (idEnded || !IsAsciiLetterOrDigit(byte))
      return std::nullopt;
  }
  return std::nullopt;
}

bool PageFacts::IsArrowInputRow(const ScreenSnapshot& screen, int row) const {
  if ((screen.pageFlags & PF_PUSH_OVER_READER) == 0) return false;
  return row == kBottomRow || (row == kArrowNoteRow && RowStartsWith(screen, row, kArrowNoteCol, arrowNote_));
}

int PageFacts::ParseReaderLastLine(const ScreenSnapshot& screen) {
  const std::optional<int> mark = FindCharacter(screen, kBottomRow, kLineRangeCol, kCols - 1, '~');
  if (!mark) return kNoLine;
  return std::max(1, FieldNumber(screen, kBottomRow, *mark + 1, kCols - 1));
}

std::optional<LineRange> PageFacts::ParseReaderLines(const ScreenSnapshot& screen) {
  constexpr int kTooLarge = std::numeric_limits<int>::max();
  const std::optional<int> mark = FindCharacter(screen, kBottomRow, kLineRangeCol, kCols - 1, '~');
  if (!mark) return std::nullopt;
  int begin = *mark;
  while (begin > 0 && IsAsciiDigit(screen.TextAt(kBottomRow, begin - 1)))
    --begin;
  const LineRange range{FieldNumber(screen, kBottomRow, begin, *mark - 1),
                        FieldNumber(screen, kBottomRow, *mark + 1, kCols - 1)};
  const bool alone = begin > 0 && screen.TextAt(kBottomRow, begin - 1) == ' ';
  if (!alone || range.first < 1 || range.first > range.last || range.last == kTooLarge) return std::nullopt;
  return range;
}

std::optional<int> PageFacts::ParseReaderPage(const ScreenSnapshot& screen) const {
  const std::optional<int> begin = FindText(screen, kBottomRow, 0, pageBegin_);
  if (!begin) return std::nullopt;
  const std::optional<int> end = FindText(screen, kBottomRow, *begin, pageEnd_);
  if (!end) return std::nullopt;
  const int page = FieldNumber(screen, kBottomRow, *begin + 3, *end - 1);
  return page > 0 ? std::optional(page) : std::nullopt;
}

std::int32_t PageFacts::ParseMoney(const ScreenSnapshot& screen) {
  const std::optional<int> first = FindCharacter(screen, kMoneyRow, 0, kCols - 1, '$');
  if (!first || *first < kMoneyFirstCol) return kNoMoney;
  const std::optional<int> end = FindLastCharacter(screen, kMoneyRow, *first, kCols - 1, ')');
  if (!end) return kNoMoney;
  const std::optional<int> begin = FindLastCharacter(screen, kMoneyRow, *first, *end, '$');
  if (!begin) return kNoMoney;
  return WholeNumber(screen, kMoneyRow, *begin + 1, *end - 1).value_or(kNoMoney);
}

}  // namespace quillet
