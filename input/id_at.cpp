#include "input/id_at.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "bbs/page_flags.h"
#include "core/ascii.h"

namespace quillet {
namespace {

constexpr int kHeaderAuthorCol = 7;
constexpr int kPushIdCol = 3;

bool IsId(std::u16string_view text) {
  return !text.empty() && IsAsciiLetter(text.front()) &&
         std::all_of(text.begin(), text.end(), IsAsciiLetterOrDigit<char16_t>);
}

// An id takes a column for each letter.
std::optional<PlacedId> PlacedFrom(int first, std::u16string id, int col) {
  const int last = first + static_cast<int>(id.size());
  if (!IsId(id) || col < first || col >= last) return std::nullopt;
  return PlacedId{first, last, std::move(id)};
}

std::optional<PlacedId> InListLine(const ScreenSnapshot& screen, int row, int col) {
  std::u16string author = PageFacts::ParseListAuthor(screen, row);
  if (author.empty()) return std::nullopt;
  int first = kListAuthorCol;
  while (first + 1 < kCols && screen.TextAt(row, first) == ' ')
    ++first;
  return PlacedFrom(first, std::move(author), col);
}

std::optional<PlacedId> InHeader(const PageFacts& facts, const ScreenSnapshot& screen, int col) {
  return PlacedFrom(kHeaderAuthorCol, facts.ParseHeaderAuthor(screen), col);
}

std::optional<PlacedId> InPushLine(const PageFacts& facts, const ScreenSnapshot& screen, int row, int col) {
  return PlacedFrom(kPushIdCol, facts.ParsePushAuthor(screen, row), col);
}

// The bottom row is never the article's.
std::optional<PlacedId> InReader(const PageFacts& facts, const ScreenSnapshot& screen, int row, int col) {
  if (row < 0 || row >= kBottomRow) return std::nullopt;
  std::optional<PlacedId> placed;
  if (row == 0) placed = InHeader(facts, screen, col);
  return placed ? placed : InPushLine(facts, screen, row, col);
}

std::u16string IdOf(std::optional<PlacedId> placed) {
  return placed ? std::move(placed->id) : std::u16string();
}

}  // namespace

std::optional<PlacedId> PlacedIdAt(const PageFacts& facts, const ScreenSnapshot& screen, int row, int col) {
  const auto shows = [&](std::uint32_t flags) { return (screen.pageFlags & flags) != 0; };
  // The push prompt leaves the article's page above it, which may pass for another kind of page then.
  if (shows(PF_READING | PF_PUSH_OVER_READER)) return InReader(facts, screen, row, col);
  return shows(PF_ARTICLE_LIST) ? InListLine(screen, row, col) : std::nullopt;
}

std::optional<PlacedId> PlacedIdInArticle(const PageFacts& facts, const ArticleLine& line, int lineIndex,
                                          int col) {
  const auto screen = std::make_unique<ScreenSnapshot>();
  screen->Clear();
  screen->text[0] = line.text;
  screen->attr[0] = line.attr;
  std::optional<PlacedId> placed;
  if (lineIndex == 0) placed = InHeader(facts, *screen, col);
  return placed ? placed : InPushLine(facts, *screen, 0, col);
}

std::u16string IdAt(const PageFacts& facts, const ScreenSnapshot& screen, int row, int col) {
  return IdOf(PlacedIdAt(facts, screen, row, col));
}

std::u16string IdInArticle(const PageFacts& facts, const ArticleLine& line, int lineIndex, int col) {
  return IdOf(PlacedIdInArticle(facts, line, lineIndex, col));
}

}  // namespace quillet
