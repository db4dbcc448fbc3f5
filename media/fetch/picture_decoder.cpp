#include "media/fetch/picture_decoder.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include <QColorSpace>

#include "media/fetch/png_notes.h"

namespace quillet {
namespace {

constexpr qint64 kMostDecodedBytes = qint64{kMostDecodedMegabytes} << 20;

DecodedFile Failed(PictureFault fault, QSize natural = {}) {
  return {fault, natural, {}, false};
}

DecodedFile Decode(const QByteArray& file, const PictureBounds& bounds, const std::atomic<bool>& dropped,
                   std::chrono::milliseconds patience) {
  const PictureHeader header = ReadPictureHeader({file.constData(), static_cast<std::size_t>(file.size())});
  const QSize natural(header.width, header.height);
  if (header.format == PictureFormat::kUnknown) return Failed(PictureFault::kUnknownFormat);
  if (!header.IsSized()) return Failed(PictureFault::kDamaged);
  if (IsTooLarge(header)) return Failed(PictureFault::kTooManyPixels, natural);
  DroppableBytes device(header.format == PictureFormat::kPng ? WithoutNotes(file) : file, dropped, patience);
  const std::unique_ptr<QImageReader> reader = ReaderOf(device, header, bounds);
  if (!reader->canRead())
    return Failed(header.format == PictureFormat::kWebp ? PictureFault::kUnknownFormat
                                                        : PictureFault::kDamaged);
  QImage image = reader->read();
  if (image.isNull()) {
    constexpr qint64 kBytesPerPixel = 4;
    const bool isLarge = qint64{natural.width()} * natural.height() * kBytesPerPixel > kMostDecodedBytes;
    return Failed(isLarge ? PictureFault::kTooManyPixels : PictureFault::kDamaged, natural);
  }
  const bool isAnimation = reader->supportsAnimation() && reader->canRead();
  image = Drawable(std::move(image));
  return {image.isNull() ? PictureFault::kOutOfMemory : PictureFault::kNone, natural, image, isAnimation};
}

}  // namespace

DroppableBytes::DroppableBytes(QByteArray bytes, const std::atomic<bool>& dropped,
                               std::chrono::milliseconds patience)
    : bytes_(std::move(bytes)), dropped_(dropped), patience_(patience), deadline_(patience) {
  open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool DroppableBytes::seek(qint64 at) {
  if (at < 0 || at > bytes_.size()) return false;
  at_ = at;
  return QIODevice::seek(at);
}

qint64 DroppableBytes::readData(char* data, qint64 size) {
  if (dropped_ || deadline_.hasExpired()) return -1;
  const qint64 count = std::min<qint64>(size, bytes_.size() - at_);
  std::copy_n(bytes_.constData() + at_, count, data);
  at_ += count;
  return count;
}

qint64 DroppableBytes::writeData(const char* /*data*/, qint64 /*size*/) {
  return -1;
}

std::unique_ptr<QImageReader> ReaderOf(QIODevice& device, const PictureHeader& header,
                                       const PictureBounds& bounds) {
  // The toolkit's own limit, which holds for every reader of the program.
  [[maybe_unused]] static const bool limited =
      (QImageReader::setAllocationLimit(kMostDecodedMegabytes), true);
  auto reader =
      std::make_unique<QImageReader>(&device, QByteArray::fromStdString(std::string(NameOf(header.format))));
  reader->setAutoDetectImageFormat(false);
  reader->setAutoTransform(true);
  const QSize natural(header.width, header.height);
  QSize fitted = FittedSize(natural, bounds);
  if (fitted == natural) return reader;
  // It scales before it turns.
  if (header.format == PictureFormat::kJpeg && reader->size().transposed() == natural &&
      (reader->transformation() & QImageIOHandler::TransformationRotate90) != 0)
    fitted.transpose();
  reader->setScaledSize(fitted);
  return reader;
}

QImage Drawable(QImage image) {
  // Notes and tables of colours may be larger than the picture.
  for (const QString& note : image.textKeys())
    image.setText(note, QString());
  image.setColorSpace(QColorSpace());
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  return image;
}

DecodedFile DecodeFile(const QByteArray& file, const PictureBounds& bounds, const std::atomic<bool>& dropped,
                       std::chrono::milliseconds patience) {
  try {
    return Decode(file, bounds, dropped, patience);
  } catch (const std::bad_alloc&) {
    return Failed(PictureFault::kOutOfMemory);
  }
}

}  // namespace quillet
