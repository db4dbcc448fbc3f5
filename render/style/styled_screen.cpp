#include "render/style/styled_screen.h"

#include <algorithm>
#include <utility>

#include "render/row_edit.h"
#include "render/style/line_style.h"
#include "render/style/list_treatment.h"
#include "render/style/push_clock.h"

namespace quillet {
namespace {

// The first row that a prompt or message lies on, which stays in its place.
int FirstFixedRow(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  const int row = std::min(kBottomRow, page.firstPromptRow);
  const bool isAsked = page.Shows(PF_INPUT_FIELD | PF_STAR_LINE) && screen.CursorInside();
  return isAsked ? std::min(row, screen.cursorRow) : row;
}

// Styles the rows of an article from the top down; each is told of the one above it.
class ReaderRows {
 public:
  ReaderRows(const ScreenSnapshot& screen, const UnderstoodPage& page, const StyleRules& rules,
             std::int64_t postTime)
      : screen_(screen),
        page_(page),
        rules_(rules),
        clock_(postTime),
        firstFixed_(FirstFixedRow(screen, page)) {}

  // Rows from this one on keep their places.
  int FirstFixed() const { return firstFixed_; }

  // False: the row is a push line that is to be left out.
  bool Style(int row, PageRow& styled) {
    const PageLine& line = page_.Line(row);
    const bool isPrompt = page_.IsPromptRow(row);
    if (line.push && !isPrompt) return StylePush(row, *line.push, styled);
    above_.clear();
    if (isPrompt) StylePushPrompt(styled, rules_);
    if (row == kHeaderAuthorRow) StyleHeaderAuthor(styled, HeaderAuthor(screen_, page_), rules_);
    if ((line.flags & LF_KEYWORD) != 0) ColourKeywords(styled, rules_.keywords);
    return true;
  }

 private:
  bool StylePush(int row, const PushLine& line, PageRow& styled) {
    PushInPage push{.line = line, .id = {}};
    if (line.stamp) push.time = clock_.TimeOf(*line.stamp, rules_.now);
    std::u16string id = PushAuthor(screen_, page_, row);
    const bool isRemoved = PushTreatmentOf(rules_, id) == PushTreatment::kRemove;
    if (isRemoved && row < firstFixed_) return false;
    push.id = id;
    push.followsOwnId = id == above_;
    StylePushLine(styled, push, rules_);
    above_ = std::move(id);
    return true;
  }

  const ScreenSnapshot& screen_;
  const UnderstoodPage& page_;
  const StyleRules& rules_;
  PushClock clock_;
  int firstFixed_;
  std::u16string above_;  // the id of the push line shown above; empty: there is none
};

void StyleArticle(const ScreenSnapshot& screen, const UnderstoodPage& page, const StyleRules& rules,
                  std::int64_t postTime, StyledScreen& styled) {
  ReaderRows rows(screen, page, rules, postTime);
  std::size_t to = 0;
  for (int row = 0; row < kRows; ++row) {
    const auto from = static_cast<std::size_t>(row);
    if (row == rows.FirstFixed())
      for (; to < from; ++to) {
        styled.page[to] = PageRow();
        styled.rowOf[to] = -1;
      }
    if (to != from) styled.page[to] = styled.page[from];
    styled.rowOf[to] = row;
    if (rows.Style(row, styled.page[to])) ++to;
  }
}

void StyleList(const ScreenSnapshot& screen, const UnderstoodPage& page, const StyleRules& rules,
               Page& styled) {
  const Keywords titleWords(*rules.titleWords);
  for (int row = kListFirstRow; row <= kListLastRow; ++row) {
    const PageLine& line = page.Line(row);
    if (!line.listed) continue;
    const std::u16string author = ListedAuthor(screen, page, row);
    const std::u16string title = titleWords.Empty() ? std::u16string() : ListedTitle(screen, page, row);
    StyleListLine(styled[static_cast<std::size_t>(row)], {line.listed->author, author, title, line.flags},
                  titleWords, rules);
  }
}

}  // namespace

StyledScreen StyleScreen(const ScreenSnapshot& screen, const UnderstoodPage& page, const StyleRules& rules,
                         std::int64_t postTime) {
  StyledScreen styled;
  styled.page = PlainPage(screen);
  for (int row = 0; row < kRows; ++row)
    styled.rowOf[static_cast<std::size_t>(row)] = row;

  if (page.content == PageContent::kList)
    StyleList(screen, page, rules, styled.page);
  else
    StyleArticle(screen, page, rules, postTime, styled);

  // Under a message that lies over the list the cursor is the message's.
  const bool hasListCursor = page.Shows(PF_LIST_CURSOR) && !page.Shows(PF_STAR_LINE);
  if (rules.settings->showHighlight && hasListCursor && screen.CursorInside())
    LayBar(styled.page[static_cast<std::size_t>(screen.cursorRow)]);
  return styled;
}

}  // namespace quillet
