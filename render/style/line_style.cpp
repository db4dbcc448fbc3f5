#include "render/style/line_style.h"

#include <algorithm>

#include "bbs/line_flags.h"
#include "bbs/listed_article.h"
#include "bbs/page_header.h"
#include "render/age_text.h"
#include "render/row_edit.h"
#include "render/style/id_marks.h"
#include "render/style/list_treatment.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

constexpr CellRange kPushMark = {0, 2};
constexpr CellRange kListTitle = {kListTitleCol, kCols};

HiddenForm FormOf(const StyleRules& rules) {
  return rules.settings->hideCharShowStar ? HiddenForm::kStars : HiddenForm::kBlanks;
}

void LayPushGround(PageRow& row, const StyleRules& rules) {
  row.size = RowSize::kPush;
  if (!rules.settings->grayBackgroundPush) return;
  for (PageCell& cell : row.cells)
    if (cell.back == kPlainGround) cell.back = kPushGround;
}

void Recolour(PageRow& row, CellRange range, std::uint8_t from, std::uint8_t to) {
  for (int col = range.first; col < range.last; ++col) {
    PageCell& cell = row.cells[static_cast<std::size_t>(col)];
    if (cell.fore == from && IsDarkGround(cell.back)) cell.fore = to;
  }
}

// Where the ground that lies under `col` ends: before the header's next label.
int EndOfGround(const PageRow& row, int col) {
  const auto* const begin = row.cells.begin() + col;
  const auto* const end =
      std::find_if(begin, row.cells.end(), [&](const PageCell& cell) { return cell.back != begin->back; });
  return static_cast<int>(end - row.cells.begin());
}

int ColumnsOf(std::u16string_view text) {
  int columns = 0;
  for (const char16_t unit : text)
    columns += unit < 0x80 ? 1 : 2;
  return columns;
}

}  // namespace

void StylePushLine(PageRow& row, const PushInPage& push, const StyleRules& rules) {
  const Settings& settings = *rules.settings;
  const PushTreatment treatment = PushTreatmentOf(rules, push.id);
  const bool isMasked = treatment >= PushTreatment::kMaskId;
  LayPushGround(row, rules);
  if (settings.lighterPushLine) Recolour(row, {push.line.id.last, kCols}, kPushTextFore, kLighterPushText);
  if (treatment >= PushTreatment::kHideText) HideText(row, push.line.words, FormOf(rules));
  if (settings.mergePush && push.followsOwnId) {
    if (isMasked) HideText(row, push.line.id, HiddenForm::kBlanks);
    LeaveOut(row, push.line.id);
    if (push.line.kind == PushKind::kNote) LeaveOut(row, kPushMark);
  } else {
    if (isMasked) HideText(row, push.line.id, FormOf(rules));
    MarkId(row, {push.line.id, push.line.words, isMasked}, push.id, rules);
  }
  ColourKeywords(row, rules.keywords);
  // The clock here may be behind the BBS's.
  row.age = AgeText(std::min(push.time, rules.now), rules.now);
}

void StylePushPrompt(PageRow& row, const StyleRules& rules) {
  LayPushGround(row, rules);
}

void StyleListLine(PageRow& row, const ListLine& line, const Keywords& titleWords, const StyleRules& rules) {
  const int mark = line.flags & LF_MARK_MASK;
  if (mark == LF_DELETED) return;
  const TitleTreatment treatment = TitleTreatmentOf(rules, titleWords, line.author, line.title);
  const bool isMasked = treatment >= TitleTreatment::kMaskId;
  if (isMasked) HideText(row, line.authorCells, FormOf(rules));
  if (treatment >= TitleTreatment::kHideText) HideText(row, kListTitle, FormOf(rules));
  MarkId(row, {line.authorCells, kListTitle, isMasked}, line.author, rules);
  const bool hasKeyword = (line.flags & LF_KEYWORD) != 0 && ColourKeywords(row, rules.keywords);
  if (hasKeyword || treatment != TitleTreatment::kNone) return;
  // A title that the BBS has coloured, as that of the chosen article, keeps its colour.
  if ((mark == LF_LIST_READ && rules.settings->darkerReadArticle) ||
      (mark == LF_LIST_NEWS && rules.settings->darkerUpdatedArticle))
    Recolour(row, kListTitle, kPlainFore, kReadTitle);
}

void StyleHeaderAuthor(PageRow& row, std::u16string_view author, const StyleRules& rules) {
  const int end = kHeaderFieldCol + ColumnsOf(author);
  MarkId(row, {{kHeaderFieldCol, end}, {end, EndOfGround(row, kHeaderFieldCol)}}, author, rules);
}

void LayBar(PageRow& row) {
  for (PageCell& cell : row.cells)
    cell.style |= CS_BAR;
}

}  // namespace quillet
