// Turns the bytes of a picture's file into an image as large as it is shown. The file is anybody's: its
// format is told by its content, its pixels are limited before anything is decoded, and decoders get no other
// limit on memory than kMostDecodedMegabytes. Any thread but the user interface's; blocks as long as decoding
// takes.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QIODevice>
#include <QImage>
#include <QImageReader>

#include "media/fetch/picture_bounds.h"
#include "media/fetch/picture_fault.h"
#include "media/fetch/picture_header.h"

namespace quillet {

// For one image, whole; what is scaled while it is decoded needs less.
inline constexpr int kMostDecodedMegabytes = 256;

// For one image: a few bytes may ask for hours of work. Generous, for a large picture on a slow machine.
inline constexpr std::chrono::seconds kDecodePatience{30};

// What a decoder reads. Ends early, as if the bytes were damaged, once they are no longer wanted or the
// patience is over. No QBuffer: there is a decoder that takes the bytes of one all at once.
class DroppableBytes : public QIODevice {
 public:
  DroppableBytes(QByteArray bytes, const std::atomic<bool>& dropped,
                 std::chrono::milliseconds patience = kDecodePatience);

  // Another image begins.
  void RenewPatience() { deadline_.setRemainingTime(patience_); }
  qint64 size() const override { return bytes_.size(); }
  bool seek(qint64 at) override;

 protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char* data, qint64 size) override;

 private:
  QByteArray bytes_;
  qint64 at_ = 0;
  const std::atomic<bool>& dropped_;
  std::chrono::milliseconds patience_;
  QDeadlineTimer deadline_;
};

struct DecodedFile {
  PictureFault fault = PictureFault::kNone;
  QSize natural;
  QImage image;  // RGB32 or ARGB32_Premultiplied; null with a fault
  bool isAnimation = false;
};

// As large as the bounds say. Of an animation the first frame. Once `dropped` is true nobody wants the
// result, which comes early and means nothing.
DecodedFile DecodeFile(const QByteArray& file, const PictureBounds& bounds, const std::atomic<bool>& dropped,
                       std::chrono::milliseconds patience = kDecodePatience);

// What it takes to read a picture of a known header, and each frame of one that moves. `device` outlives it.
std::unique_ptr<QImageReader> ReaderOf(QIODevice& device, const PictureHeader& header,
                                       const PictureBounds& bounds);
// The format that images are drawn from without being converted at each time, and nothing but the pixels;
// null where memory does not do.
QImage Drawable(QImage image);

}  // namespace quillet
