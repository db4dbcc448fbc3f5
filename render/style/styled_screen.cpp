#include "render/style/styled_screen.h"

#include <algorithm>

#include "bbs/page_flags.h"
#include "render/style/line_style.h"
#include "render/style/list_treatment.h"
#include "render/style/push_clock.h"

namespace quillet {
namespace {

bool Shows(const ScreenSnapshot& screen, std::uint32_t pages) {
  return (screen.pageFlags & pages) != 0;
}

// The first row that a prompt or message lies on, which stays in its place.
int FirstFixedRow(const PageFacts& facts, const ScreenSnapshot& screen) {
  int row = kBottomRow;
  if (facts.IsArrowInputRow(screen, kBottomRow - 1)) --row;
  if (Shows(screen, PF_INPUT_FIELD | PF_STAR_LINE) && screen.CursorInside())
    row = std::min(row, screen.cursorRow);
  return row;
}

// Styles the rows of an article from the top down; each is told of the one above it.
class ReaderRows {
 public:
  ReaderRows(const PageFacts& facts, const ScreenSnapshot& screen, const StyleRules& rules,
             std::int64_t postTime)
      : facts_(facts),
        screen_(screen),
        rules_(rules),
        clock_(postTime),
        firstFixed_(FirstFixedRow(facts, screen)) {}

  // Rows from this one on keep their places.
  int FirstFixed() const { return firstFixed_; }

  // False: the row is a push line that is to be left out.
  bool Dress(int row, std::uint8_t flags, PageRow& dressed) {
    const bool isPrompt = facts_.IsArrowInputRow(screen_, row);
    if ((flags & LF_PUSH) != 0 && !isPrompt) return StylePush(row, dressed);
    above_.clear();
    if (isPrompt) StylePushPrompt(dressed, rules_);
    if (row == 0) StyleHeaderAuthor(dressed, facts_.ParseHeaderAuthor(screen_), rules_);
    if ((flags & LF_KEYWORD) != 0) ColourKeywords(dressed, rules_.keywords);
    return true;
  }

 private:
  bool StylePush(int row, PageRow& dressed) {
    PushInPage push;
    push.line = ReadPushLine(screen_.text[static_cast<std::size_t>(row)]);
    if (push.line.stamp) push.time = clock_.TimeOf(*push.line.stamp, rules_.now);
    std::u16string id = facts_.ParsePushAuthor(screen_, row);
    const bool isRemoved = PushTreatmentOf(rules_, id) == PushTreatment::kRemove;
    if (isRemoved && row < firstFixed_) return false;
    push.id = id;
    push.followsOwnId = id == above_;
    StylePushLine(dressed, push, rules_);
    above_ = std::move(id);
    return true;
  }

  const PageFacts& facts_;
  const ScreenSnapshot& screen_;
  const StyleRules& rules_;
  PushClock clock_;
  int firstFixed_;
  std::u16string above_;  // the id of the push line shown above; empty: there is none
};

void StyleArticle(const PageFacts& facts, const ScreenSnapshot& screen, const LineFlags& flags,
                  const StyleRules& rules, std::int64_t postTime, StyledScreen& dressed) {
  ReaderRows rows(facts, screen, rules, postTime);
  std::size_t to = 0;
  for (int row = 0; row < kRows; ++row) {
    const auto from = static_cast<std::size_t>(row);
    if (row == rows.FirstFixed())
      for (; to < from; ++to) {
        dressed.page[to] = PageRow();
        dressed.rowOf[to] = -1;
      }
    if (to != from) dressed.page[to] = dressed.page[from];
    dressed.rowOf[to] = row;
    if (rows.Dress(row, flags[from], dressed.page[to])) ++to;
  }
}

void StyleList(const ScreenSnapshot& screen, const LineFlags& flags, const StyleRules& rules, Page& page) {
  const Keywords titleWords(*rules.titleWords);
  for (int row = kListFirstRow; row <= kListLastRow; ++row) {
    const auto at = static_cast<std::size_t>(row);
    const std::u16string author = PageFacts::ParseListAuthor(screen, row);
    const std::u16string title =
        titleWords.Empty() ? std::u16string() : PageFacts::ParseListTitle(screen, row);
    StyleListLine(page[at], {author, title, flags[at]}, titleWords, rules);
  }
}

}  // namespace

StyledScreen StyleScreen(const PageFacts& facts, const ScreenSnapshot& screen, const StyleRules& rules,
                         std::int64_t postTime) {
  StyledScreen dressed;
  dressed.page = PlainPage(screen);
  for (int row = 0; row < kRows; ++row)
    dressed.rowOf[static_cast<std::size_t>(row)] = row;

  const LineFlags flags = FlagLines(facts, screen, rules.keywords);
  if (Shows(screen, PF_ARTICLE_LIST) && !Shows(screen, PF_READING | PF_PUSH_OVER_READER))
    StyleList(screen, flags, rules, dressed.page);
  else
    StyleArticle(facts, screen, flags, rules, postTime, dressed);

  // Under a message that lies over the list the cursor is the message's.
  const bool hasListCursor = Shows(screen, PF_LIST_CURSOR) && !Shows(screen, PF_STAR_LINE);
  if (rules.settings->showHighlight && hasListCursor && screen.CursorInside())
    LayBar(dressed.page[static_cast<std::size_t>(screen.cursorRow)]);
  return dressed;
}

}  // namespace quillet
