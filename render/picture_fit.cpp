#include "render/picture_fit.h"

#include <algorithm>
#include <cmath>

namespace quillet {
namespace {

constexpr int kThumbnailRows = 4;
constexpr int kMostWindows = 2;
// What divides a row's height into the gap above a picture.
constexpr int kGapShare = 10;

int HeightOfRows(int rows, int rowHeight) {
  return std::max(rows * rowHeight - 2 * PictureGap(rowHeight), 1);
}

int Rounded(double pixels) {
  return std::max(static_cast<int>(std::lround(pixels)), 1);
}

}  // namespace

int PictureGap(int rowHeight) {
  return rowHeight / kGapShare;
}

int RowsFor(int height, int rowHeight) {
  if (rowHeight <= 0) return 1;
  const int whole = height + 2 * PictureGap(rowHeight);
  return std::max((whole + rowHeight - 1) / rowHeight, 1);
}

PixelSize MostOf(PictureSize size, const PictureRoom& room) {
  const int inSight = std::max(room.rows - 1, 1);
  int rows = kMostWindows * room.rows;
  if (size == PictureSize::kThumbnail)
    rows = std::min(kThumbnailRows, inSight);
  else if (size != PictureSize::kFullWidth && room.rowHeight > 0)
    rows = std::clamp(room.windowHeight * 2 / 3 / room.rowHeight, 1, inSight);
  return {std::max(room.width, 1), HeightOfRows(rows, room.rowHeight)};
}

PixelSize FitPicture(PictureSize size, PixelSize natural, const PictureRoom& room) {
  const PixelSize most = MostOf(size, room);
  if (natural.IsEmpty()) return {1, 1};
  double factor = std::min(static_cast<double>(most.width) / natural.width,
                           static_cast<double>(most.height) / natural.height);
  if (size != PictureSize::kFullWidth) factor = std::min(factor, room.scale);
  return {std::min(Rounded(natural.width * factor), most.width),
          std::min(Rounded(natural.height * factor), most.height)};
}

}  // namespace quillet
