#include "bbs/article/article_lines.h"

#include <algorithm>

#include "bbs/page_tests.h"
#include "bbs/screen_fields.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr int kOpeningRows = 3;  // by which an article is known: author, title, time
constexpr int kLastRuleRow = 4;
constexpr std::size_t kRuleCharacters = 30;  // of 39: what draws fewer is no rule

bool IsAtEnd(const ScreenSnapshot& screen) {
  return (screen.pageFlags & PF_READ_END) != 0;
}

bool IsBlank(std::string_view row) {
  return row.find_first_not_of(' ') == row.npos;
}

// The visible cells of a row of the screen, and behind them what every row has there. `index` is its line's.
ArticleLine LineOf(const ScreenSnapshot& screen, const UnderstoodPage& page, int row, int index) {
  const PageLine& known = page.Line(row);
  ArticleLine line{.text = {},
                   .attr = {},
                   .push = known.push,
                   .links = known.links,
                   .note = known.note,
                   .address = known.address};
  if (index == 0) line.author = page.header.author;
  line.text.fill(' ');
  line.text[kRowEnd] = 0;
  line.attr.fill(kAttrBlank);
  const auto at = static_cast<std::size_t>(row);
  std::copy_n(screen.text[at].begin(), kCols, line.text.begin());
  std::copy_n(screen.attr[at].begin(), kCols, line.attr.begin());
  return line;
}

// Index of the row that bears this line number as the last one of a page.
int LastRowOf(int line, std::optional<int> ruleRow) {
  return ruleRow && line >= *ruleRow ? line : line - 1;
}

}  // namespace

bool IsWholeReaderPage(const ScreenSnapshot& screen) {
  return (screen.pageFlags & PF_READING) != 0 && (screen.pageFlags & PF_STAR_LINE) == 0 &&
         PageTests::IsParkedBehindReader(screen);
}

ArticleLines::ArticleLines()
    : author_(ToBig5(u" 作者 ")), rule_(ToBig5(std::u16string(kRuleCharacters, u'─'))) {}

std::optional<int> ArticleLines::RuleRow(const ScreenSnapshot& screen, const UnderstoodPage& page) const {
  if (author_.empty() || !RowStartsWith(screen, 0, 0, std::string_view(author_))) return std::nullopt;
  // Where as many lines are counted as there are rows, the rule is one of them.
  const std::optional<LineRange>& range = page.footer.lines;
  if (range && range->last >= kPageRows) return std::nullopt;
  for (int row = 1; row <= kLastRuleRow; ++row)
    if (RowStartsWith(screen, row, 0, std::string_view(rule_))) return row;
  return std::nullopt;
}

std::optional<ArticleLines::Place> ArticleLines::PlaceOf(const ScreenSnapshot& screen,
                                                         const UnderstoodPage& page) const {
  const std::optional<LineRange>& range = page.footer.lines;
  if (!range || (range->first > 1 && lines_.empty())) return std::nullopt;
  const std::optional<int> rule = range->first > 1 ? ruleRow_ : RuleRow(screen, page);

  const int last = LastRowOf(range->last, rule);
  int top = LastRowOf(range->first, rule);
  // The rule bears the number of the row above it: only the page's height tells which of the two is on top.
  if (rule && range->first == *rule) top = std::clamp(last + 1 - kPageRows, *rule - 1, *rule);
  const int rows = last + 1 - top;
  const bool possible = rows >= 1 && rows <= kPageRows && (rows == kPageRows || IsAtEnd(screen));
  return possible ? std::optional(Place{top, rows}) : std::nullopt;
}

std::optional<int> ArticleLines::TopOf(const ScreenSnapshot& screen, const UnderstoodPage& page) const {
  const std::optional<Place> place = PlaceOf(screen, page);
  return place ? std::optional(place->top) : std::nullopt;
}

void ArticleLines::ForgetFrom(int index) {
  away_ = false;
  if (index >= Count() && !complete_) return;
  lines_.resize(static_cast<std::size_t>(std::clamp(index, 0, Count())));
  complete_ = false;
  if (lines_.empty()) ruleRow_.reset();
  ++version_;
}

bool ArticleLines::IsOfThisText(const ScreenSnapshot& screen, const UnderstoodPage& page,
                                const Place& place) const {
  const int end = std::min(place.End(), Count());
  if (place.top == 0) {
    if (!lines_.empty() && RuleRow(screen, page) != ruleRow_) return false;
    const int opening = std::min(end, kOpeningRows);
    return FirstDifference(screen, {0, opening}) == opening;
  }
  int telling = 0;
  int same = 0;
  for (int index = place.top; index < end; ++index) {
    const std::string_view known = BytesOf(At(index).text);
    const std::string_view shown = screen.RowText(index - place.top);
    if (IsBlank(known) && IsBlank(shown)) continue;
    ++telling;
    if (known == shown) ++same;
  }
  return telling == 0 ? !away_ : 2 * same >= telling;
}

int ArticleLines::FirstDifference(const ScreenSnapshot& screen, const Place& place) const {
  const int end = std::min(place.End(), Count());
  int index = std::min(place.top, end);
  while (index < end && BytesOf(At(index).text) == screen.RowText(index - place.top))
    ++index;
  return index;
}

bool ArticleLines::UpdateColours(const ScreenSnapshot& screen, const UnderstoodPage& page,
                                 const Place& place) {
  bool changed = false;
  for (int index = place.top; index < std::min(place.End(), Count()); ++index) {
    const ArticleLine line = LineOf(screen, page, index - place.top, index);
    ArticleLine& known = lines_[static_cast<std::size_t>(index)];
    changed |= line.attr != known.attr;
    known = line;
  }
  return changed;
}

void ArticleLines::Append(const ScreenSnapshot& screen, const UnderstoodPage& page, const Place& place) {
  for (int index = Count(); index < std::min(place.End(), kMostLines); ++index)
    lines_.push_back(LineOf(screen, page, index - place.top, index));
}

ArticleLines::Added ArticleLines::Add(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  if (!IsWholeReaderPage(screen)) return Added::kNothing;
  const std::optional<Place> place = PlaceOf(screen, page);
  if (!place) return Added::kNothing;
  away_ = !IsOfThisText(screen, page, *place);
  if (away_) return Added::kOther;

  const bool wasComplete = complete_;
  if (place->top > Count()) {
    // It goes on behind what was its end.
    complete_ = false;
    if (wasComplete) ++version_;
    return Added::kNothing;
  }
  if (lines_.empty()) ruleRow_ = RuleRow(screen, page);

  const int known = Count();
  int keep = FirstDifference(screen, *place);
  const bool differs = keep < std::min(place->End(), known);
  const bool shorter = IsAtEnd(screen) && place->End() < known;
  if (!differs) keep = shorter ? place->End() : known;
  lines_.resize(static_cast<std::size_t>(keep));
  const bool coloured = UpdateColours(screen, page, *place);
  Append(screen, page, *place);

  if (IsAtEnd(screen))
    complete_ = Count() == place->End();
  else if (differs || place->End() >= Count())
    complete_ = false;
  const bool changed = differs || shorter;
  if (changed || coloured || Count() != known || complete_ != wasComplete) ++version_;
  if (changed) return Added::kChanged;
  return Count() != known ? Added::kMore : Added::kNothing;
}

}  // namespace quillet
