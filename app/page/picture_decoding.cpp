#include "app/page/picture_decoding.h"

#include <algorithm>

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include "media/fetch/picture_decoder.h"
#include "media/fetch/png_notes.h"
#include "settings/picture_formats.h"

namespace quillet {
namespace {

constexpr qint64 kMostFileBytes = qint64{256} << 20;
constexpr qint64 kMostPixels = 100'000'000;
constexpr qint64 kMostDecodedBytes = qint64{kMostDecodedMegabytes} << 20;
constexpr qint64 kChunk = 1 << 20;

DecodedPicture Problem(QString text) {
  return {{}, std::move(text)};
}

// An estimate: decoders that scale while they read need less.
qint64 DecodedBytes(QSize size, QImage::Format format) {
  constexpr int kUsualBits = 32;
  const int bits = format == QImage::Format_Invalid ? 0 : QImage::toPixelFormat(format).bitsPerPixel();
  return qint64{size.width()} * size.height() * (bits > 0 ? bits : kUsualBits) / 8;
}

QString TooManyPixels(QSize size) {
  return u"圖片有 %1×%2 個像素，超過一億個的上限。"_qs.arg(size.width()).arg(size.height());
}

QString TooManyBytes() {
  return u"圖片解開後會用掉超過 %1 MB 的記憶體。"_qs.arg(kMostDecodedMegabytes);
}

}  // namespace

DecodedPicture DecodePictureFile(const QString& path, const std::atomic<bool>& dropped) {
  // Looked at before it is opened: opening a device or a pipe may already wait for ever.
  const QFileInfo info(path);
  if (!info.exists()) return Problem(u"找不到這個檔案。"_qs);
  if (info.isDir()) return Problem(u"這是資料夾，不是圖片檔。"_qs);
  if (!info.isFile()) return Problem(u"這不是一般的檔案。"_qs);
  if (info.size() == 0) return Problem(u"檔案是空的。"_qs);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return Problem(u"檔案無法開啟：%1"_qs.arg(file.errorString()));
  QByteArray bytes;
  while (!dropped) {
    const QByteArray chunk = file.read(kChunk);
    if (chunk.isEmpty()) break;
    bytes += chunk;
    if (bytes.size() > kMostFileBytes) return Problem(u"檔案超過 %1 MB。"_qs.arg(kMostFileBytes >> 20));
  }
  if (file.error() != QFileDevice::NoError) return Problem(u"檔案無法讀取：%1"_qs.arg(file.errorString()));
  return DecodePictureBytes(bytes, dropped);
}

DecodedPicture DecodePictureBytes(const QByteArray& bytes, const std::atomic<bool>& dropped) {
  // The toolkit's own limit, which holds for every reader of the program.
  [[maybe_unused]] static const bool limited =
      (QImageReader::setAllocationLimit(kMostDecodedMegabytes), true);

  DroppableBytes device(WithoutNotes(bytes), dropped);
  QImageReader reader(&device);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (!IsPictureFormat(reader.format().toStdString()))
    return Problem(u"這不是圖片，或是不支援的圖片格式。"_qs);
  const QSize size = reader.size();
  if (size.isEmpty()) return Problem(u"圖片的內容已經損壞。"_qs);
  if (qint64{size.width()} * size.height() > kMostPixels) return Problem(TooManyPixels(size));
  if (std::max(size.width(), size.height()) > kLongestPictureSide)
    reader.setScaledSize(
        size.scaled(kLongestPictureSide, kLongestPictureSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
  const qint64 estimate = DecodedBytes(size, reader.imageFormat());
  QImage image = reader.read();
  if (image.isNull())
    return Problem(estimate > kMostDecodedBytes ? TooManyBytes() : u"圖片的內容已經損壞。"_qs);
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  if (image.isNull()) return Problem(TooManyBytes());
  return {image, {}};
}

}  // namespace quillet
