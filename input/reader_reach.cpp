#include "input/reader_reach.h"

#include <algorithm>
#include <cstdint>

namespace quillet {

int LinesAbove(const UnderstoodPage& page) {
  if (page.Shows(PF_READ_TOP)) return 0;
  return page.footer.lines ? std::max(1, page.footer.lines->first - 1) : 1;
}

// The percentage is rounded down: the article has more than last * 100 / (percent + 1) lines.
int LinesBelow(const UnderstoodPage& page) {
  if (page.Shows(PF_READ_END)) return 0;
  const ReaderFooter& footer = page.footer;
  if (!footer.lines || !footer.percent || *footer.percent < 1 || *footer.percent > 99) return 1;
  const int last = footer.lines->last;
  const std::int64_t fewest = std::int64_t{100} * last / (*footer.percent + 1) + 1;
  return static_cast<int>(std::clamp<std::int64_t>(fewest - last, 1, last));
}

}  // namespace quillet
