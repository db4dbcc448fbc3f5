#include "render/picture_rows.h"

#include <algorithm>

namespace quillet {

void PictureRows::Set(int lines, const std::vector<PictureBand>& bands) {
  lines_ = lines;
  steps_.clear();
  int before = 0;
  for (const PictureBand& band : bands) {
    if (band.rows <= 0 || band.line < 0 || band.line >= lines) continue;
    steps_.push_back({band, before});
    before += band.rows;
  }
}

int PictureRows::Count() const {
  return RowOf(lines_);
}

std::vector<PictureRows::Step>::const_iterator PictureRows::From(int line) const {
  return std::lower_bound(steps_.begin(), steps_.end(), line,
                          [](const Step& step, int wanted) { return step.band.line < wanted; });
}

int PictureRows::RowOf(int line) const {
  const auto from = From(line);
  if (from == steps_.begin()) return line;
  const Step& above = *(from - 1);
  return line + above.before + above.band.rows;
}

LinePlace PictureRows::At(int row) const {
  const auto below = std::upper_bound(steps_.begin(), steps_.end(), row,
                                      [](int wanted, const Step& step) { return wanted < step.FirstRow(); });
  if (below == steps_.begin()) return {row, 0};
  const Step& step = *(below - 1);
  const int beyond = row - step.FirstRow();
  if (beyond <= step.band.rows) return {step.band.line, beyond};
  return {step.band.line + beyond - step.band.rows, 0};
}

int PictureRows::RowsBelow(int line) const {
  const auto from = From(line);
  return from != steps_.end() && from->band.line == line ? from->band.rows : 0;
}

int PictureRows::RowOf(const LinePlace& place) const {
  return RowOf(place.line) + std::clamp(place.below, 0, RowsBelow(place.line));
}

int PictureRows::RowOf(const RowAnchor& anchor) const {
  if (anchor.toEnd < 0) return RowOf(anchor.line);
  return RowOf(LinePlace{anchor.line, RowsBelow(anchor.line) - anchor.toEnd});
}

RowAnchor PictureRows::AnchorAt(int row) const {
  const LinePlace place = At(row);
  if (place.below == 0) return {place.line};
  return {place.line, RowsBelow(place.line) - place.below};
}

}  // namespace quillet
