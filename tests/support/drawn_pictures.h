// Pictures to be fetched, and their files.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QtEndian>

namespace quillet {

inline QImage DrawnPicture(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x)
      row[x] = qRgb(x * 255 / width, y * 255 / height, (x ^ y) & 0xFF);
  }
  return image;
}

// Empty where the toolkit has no writer of the format.
inline QByteArray PictureFileBytes(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

// Of 8 x 4 pixels, each frame of one colour of four, shown for 1/50 s. `count` beyond what fits in memory is
// the test's care. Uncompressed in effect: a clear code before each pair of pixels.
inline QByteArray AnimatedGif(int count, QByteArray frames = {}) {
  QByteArray gif = QByteArray::fromHex(
      "474946383961"
      "08000400"
      "910000"
      "ff000000ff000000ffffffff"
      "21ff0b4e45545343415045322e300301000000");
  for (int frame = 0; frame < count; ++frame) {
    frames += QByteArray::fromHex("21f90400020000002c00000000080004000002");
    // Codes of three bits: clear, pixel, pixel, ... as single bytes of a stream.
    QByteArray codes;
    unsigned bits = 0, filled = 0;
    const auto put = [&](unsigned code) {
      bits |= code << filled;
      for (filled += 3; filled >= 8; filled -= 8, bits >>= 8)
        codes += static_cast<char>(bits & 0xFF);
    };
    for (int pixel = 0; pixel < 32; ++pixel) {
      if (pixel % 2 == 0) put(4);
      put(static_cast<unsigned>(frame) % 4);
    }
    put(5);
    if (filled > 0) codes += static_cast<char>(bits & 0xFF);
    frames += static_cast<char>(codes.size());
    frames += codes + '\0';
  }
  return gif + frames + ';';
}

}  // namespace quillet
