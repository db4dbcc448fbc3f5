#include "input/reader_reach.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "bbs/page_facts.h"
#include "bbs/page_flags.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"

namespace quillet {
namespace {

// How much of the article lies above the page's lower edge.
std::optional<int> PercentRead(const ScreenSnapshot& screen) {
  const std::optional<int> sign = FindCharacter(screen, kBottomRow, 0, kCols - 1, '%');
  if (!sign) return std::nullopt;
  int begin = *sign;
  while (begin > 0 && IsAsciiDigit(screen.TextAt(kBottomRow, begin - 1)))
    --begin;
  return WholeNumber(screen, kBottomRow, begin, *sign - 1);
}

}  // namespace

int LinesAbove(const ScreenSnapshot& screen) {
  if ((screen.pageFlags & PF_READ_TOP) != 0) return 0;
  const std::optional<LineRange> shown = PageFacts::ParseReaderLines(screen);
  return shown ? std::max(1, shown->first - 1) : 1;
}

// The percentage is rounded down: the article has more than last * 100 / (percent + 1) lines.
int LinesBelow(const ScreenSnapshot& screen) {
  if ((screen.pageFlags & PF_READ_END) != 0) return 0;
  const std::optional<LineRange> shown = PageFacts::ParseReaderLines(screen);
  const std::optional<int> percent = PercentRead(screen);
  if (!shown || !percent || *percent < 1 || *percent > 99) return 1;
  const std::int64_t fewest = std::int64_t{100} * shown->last / (*percent + 1) + 1;
  return static_cast<int>(std::clamp<std::int64_t>(fewest - shown->last, 1, shown->last));
}

}  // namespace quillet
