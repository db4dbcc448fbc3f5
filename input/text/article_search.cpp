#include "input/text/article_search.h"

#include <algorithm>

#include "core/charset.h"
#include "core/letter_case.h"

namespace quillet {
namespace {

constexpr char16_t kIdeographicSpace = 0x3000;
constexpr char16_t kNoCharacter = 0xFFFF;
// Full-width forms of what is printable in ASCII.
constexpr char16_t kFirstWide = 0xFF01;
constexpr char16_t kLastWide = 0xFF5E;
constexpr char16_t kWideToAscii = kFirstWide - u'!';

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == 0;
}

}  // namespace

char16_t FoldForSearch(char16_t unit) {
  if (unit >= kFirstWide && unit <= kLastWide) unit = static_cast<char16_t>(unit - kWideToAscii);
  if (unit == kIdeographicSpace) return u' ';
  if (unit == u'臺') return u'台';
  return LowerOfBig5(unit);
}

void ArticleSearch::SetWanted(std::u16string_view text) {
  wanted_.clear();
  ends_.clear();
  for (const char16_t unit : text)
    wanted_ += unit == 0 ? kNoCharacter : FoldForSearch(unit);
}

ArticleSearch::Folded ArticleSearch::Fold(const ScreenRow& text) {
  const CharsetTables& tables = Charset();
  Folded folded;
  int end = 0;
  int col = 0;
  while (col < kCols) {
    const std::uint8_t byte = text[static_cast<std::size_t>(col)];
    const bool pairs = byte >= 0x80 && col + 1 < kCols;
    char16_t unit = byte;
    if (pairs)
      unit = tables.big5ToUnicode[byte + 256 * text[static_cast<std::size_t>(col) + 1]];
    else if (byte < ' ' || byte >= 0x7F)
      unit = 0;
    unit = FoldForSearch(unit);
    folded.units[static_cast<std::size_t>(folded.count)] = unit;
    folded.cols[static_cast<std::size_t>(folded.count)] = static_cast<std::uint8_t>(col);
    ++folded.count;
    col += pairs ? 2 : 1;
    folded.cols[static_cast<std::size_t>(folded.count)] = static_cast<std::uint8_t>(col);
    if (!IsBlank(unit)) end = folded.count;
  }
  folded.count = end;
  return folded;
}

template <typename Take>
void ArticleSearch::ForEachHit(const ArticleLine& line, Take take) const {
  if (wanted_.empty() || wanted_.size() > kCols) return;
  const Folded folded = Fold(line.text);
  const auto* const begin = folded.units.data();
  const auto* const end = begin + folded.count;
  for (const auto* at = begin;;) {
    at = std::search(at, end, wanted_.begin(), wanted_.end());
    if (at == end) return;
    const auto* const behind = at + wanted_.size();
    take(ColumnSpan{folded.cols[static_cast<std::size_t>(at - begin)],
                    folded.cols[static_cast<std::size_t>(behind - begin)]});
    at = behind;
  }
}

void ArticleSearch::Read(const SelectableText& lines, int from) {
  const auto count = static_cast<std::size_t>(std::max(lines.Count(), 0));
  const std::size_t first = std::min({static_cast<std::size_t>(std::max(from, 0)), ends_.size(), count});
  ends_.resize(count);
  int hits = Before(static_cast<int>(first));
  for (std::size_t line = first; line < count; ++line) {
    if (!wanted_.empty())
      ForEachHit(lines.Line(static_cast<int>(line)), [&](ColumnSpan /*cols*/) { ++hits; });
    ends_[line] = hits;
  }
}

std::vector<ColumnSpan> ArticleSearch::HitsIn(const ArticleLine& line) const {
  std::vector<ColumnSpan> hits;
  ForEachHit(line, [&](ColumnSpan cols) { hits.push_back(cols); });
  return hits;
}

SearchHit ArticleSearch::At(int number, const SelectableText& lines) const {
  const auto found = std::upper_bound(ends_.begin(), ends_.end(), number);
  if (number < 0 || found == ends_.end()) return {};
  const int line = static_cast<int>(found - ends_.begin());
  const auto inLine = static_cast<std::size_t>(number - Before(line));
  if (line >= lines.Count()) return {.line = line, .cols = {}};
  const std::vector<ColumnSpan> hits = HitsIn(lines.Line(line));
  return {.line = line, .cols = inLine < hits.size() ? hits[inLine] : ColumnSpan{}};
}

int ArticleSearch::NumberFrom(int line, int col, const SelectableText& lines) const {
  if (line >= static_cast<int>(ends_.size()) || line >= lines.Count()) return Count();
  if (line < 0) return 0;
  int number = Before(line);
  for (const ColumnSpan cols : HitsIn(lines.Line(line)))
    if (cols.first < col) ++number;
  return number;
}

}  // namespace quillet
