// The size that a picture is decoded to: that in which it is drawn, so that nobody scales it on the user
// interface's thread. Pure.
#pragma once

#include <algorithm>
#include <limits>

#include <QSize>
#include <QtMath>

namespace quillet {

struct PictureBounds {
  static constexpr double kAnyGrowth = std::numeric_limits<double>::infinity();

  QSize most;         // pixels; empty: no bounds, it stays as large as it is
  double growth = 1;  // the most that a pixel of it may become in width and in height

  PictureBounds() = default;
  PictureBounds(int width, int height) : most(width, height) {}
  PictureBounds(QSize pixels, double mostGrowth = 1) : most(pixels), growth(mostGrowth) {}
  bool operator==(const PictureBounds&) const = default;
};

// As large as fits the bounds, in its own shape; 1 x 1 at least, unless it has no size itself.
inline QSize FittedSize(QSize natural, const PictureBounds& bounds) {
  if (bounds.most.isEmpty() || natural.isEmpty()) return natural;
  const double factor =
      std::min({static_cast<double>(bounds.most.width()) / natural.width(),
                static_cast<double>(bounds.most.height()) / natural.height(), bounds.growth});
  const QSize size(qRound(natural.width() * factor), qRound(natural.height() * factor));
  return size.expandedTo(QSize(1, 1)).boundedTo(bounds.most);
}

}  // namespace quillet
