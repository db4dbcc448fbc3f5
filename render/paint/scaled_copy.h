// An image in the size that it is drawn in, made once and kept until another one is asked for. User-interface
// thread.
#pragma once

#include <cstdlib>

#include <QImage>

namespace quillet {

// A decoder that was given bounds rounds otherwise than a layout; bringing one to the other would blur all of
// the image.
inline bool IsNearlyAsLarge(QSize one, QSize other) {
  return std::abs(one.width() - other.width()) <= 1 && std::abs(one.height() - other.height()) <= 1;
}

class ScaledCopy {
 public:
  // The image itself where it is nearly as large; else `size` large. Good until the next call.
  const QImage& Of(const QImage& image, QSize size) {
    if (IsNearlyAsLarge(copy_.size(), size) && from_ == image.cacheKey()) return copy_;
    from_ = image.cacheKey();
    copy_ = IsNearlyAsLarge(image.size(), size)
                ? image
                : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return copy_;
  }
  void Forget() { copy_ = {}; }

 private:
  QImage copy_;
  qint64 from_ = 0;
};

}  // namespace quillet
