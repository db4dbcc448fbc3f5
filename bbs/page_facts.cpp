#include "bbs/page_facts.h"

#include <algorithm>
#include <limits>

#include "bbs/article_box.h"
#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr int kIdLength = 12;
constexpr int kArrowNoteRow = 22;
constexpr int kArrowNoteCol = 8;

constexpr int kLineRangeCol = 36;
constexpr int kMoneyRow = 1;
constexpr int kMoneyFirstCol = 50;

constexpr bool IsListRow(int row) {
  return row >= kListFirstRow && row <= kListLastRow;
}

const ScreenRow& TextOf(const ScreenSnapshot& screen, int row) {
  return screen.text[static_cast<std::size_t>(row)];
}

// Where the digits in front of `col` begin.
int DigitsBefore(const ScreenSnapshot& screen, int row, int col) {
  while (col > 0 && IsAsciiDigit(screen.TextAt(row, col - 1)))
    --col;
  return col;
}

std::optional<int> PercentIn(const ScreenSnapshot& screen) {
  const std::optional<int> sign = FindCharacter(screen, kBottomRow, 0, kCols - 1, '%');
  if (!sign) return std::nullopt;
  return WholeNumber(screen, kBottomRow, DigitsBefore(screen, kBottomRow, *sign), *sign - 1);
}

}  // namespace

PageFacts::PageFacts()
    : arrowNote_(ToBig5(u", 使用 → 加註方式 ")), pageBegin_(ToBig5(u"第")), pageEnd_(ToBig5(u"頁")) {}

std::u16string PageFacts::ParseHeaderAuthor(const ScreenSnapshot& screen) const {
  const ScreenRow& row = TextOf(screen, kHeaderAuthorRow);
  return FieldText(row, header_.Author(row, screen.attr[kHeaderAuthorRow]));
}

std::u16string PageFacts::ParseHeaderBoard(const ScreenSnapshot& screen) const {
  const ScreenRow& row = TextOf(screen, kHeaderAuthorRow);
  return FieldText(row, header_.Board(row, screen.attr[kHeaderAuthorRow]));
}

std::u16string PageFacts::ParseHeaderTitle(const ScreenSnapshot& screen) const {
  const ScreenRow& row = TextOf(screen, kHeaderTitleRow);
  return FieldText(row, header_.Title(row));
}

std::int64_t PageFacts::ParseHeaderTime(const ScreenSnapshot& screen, std::int64_t now) const {
  return header_.IsTime(TextOf(screen, kHeaderTimeRow)) ? HeaderSeconds(screen, now) : 0;
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
  return IsListRow(row) && IsDeletedLine(TextOf(screen, row));
}

std::u16string PageFacts::ParseInfoBoxAid(const ScreenSnapshot& screen) {
  const std::optional<ArticleBox> box = FindArticleBox(screen);
  return box ? FieldText(TextOf(screen, box->row), box->code, Trim::kNo) : std::u16string();
}

std::u16string PageFacts::ParseInfoBoxBoard(const ScreenSnapshot& screen) {
  const std::optional<ArticleBox> box = FindArticleBox(screen);
  return box ? FieldText(TextOf(screen, box->row), box->board) : std::u16string();
}

std::u16string PageFacts::ParseInfoBoxTitle(const ScreenSnapshot& screen) {
  const std::optional<ArticleBox> box = FindArticleBox(screen);
  const std::u16string title = box ? FieldText(TextOf(screen, box->row), box->title) : std::u16string();
  return title.empty() ? title : ListTitle(title);
}

bool PageFacts::IsPushCommentLine(const ScreenSnapshot& screen, int row) const {
  return row >= 0 && row < kRows && push_.Colon(TextOf(screen, row)).has_value();
}

std::u16string PageFacts::ParsePushAuthor(const ScreenSnapshot& screen, int row) const {
  if (row < 0 || row >= kRows) return {};
  const std::optional<PushLine> push = push_.Read(TextOf(screen, row));
  return push ? PushId(TextOf(screen, row), *push) : std::u16string();
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
  const int begin = DigitsBefore(screen, kBottomRow, *mark);
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

ReaderFooter PageFacts::ReadFooter(const ScreenSnapshot& screen) const {
  return {.lines = ParseReaderLines(screen),
          .lastLine = ParseReaderLastLine(screen),
          .page = ParseReaderPage(screen),
          .percent = PercentIn(screen)};
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
