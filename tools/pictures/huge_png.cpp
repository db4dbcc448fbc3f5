#include "tools/pictures/huge_png.h"

#include <QtEndian>

namespace quillet {
namespace {

constexpr quint32 kSide = 50'000;
constexpr int kPixelBytes = 1 << 20;
constexpr int kLengthInFront = 4;  // of what qCompress gives

QByteArray Number(quint32 value) {
  QByteArray bytes(4, '\0');
  qToBigEndian(value, bytes.data());
  return bytes;
}

// CRC-32 as PNG and zlib have it.
quint32 ChecksumOf(const QByteArray& bytes) {
  quint32 sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit)
      sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
  }
  return ~sum;
}

QByteArray Chunk(const QByteArray& name, const QByteArray& content) {
  return Number(static_cast<quint32>(content.size())) + name + content + Number(ChecksumOf(name + content));
}

}  // namespace

QByteArray HugePngBytes() {
  const QByteArray eightBitGrey("\x08\0\0\0\0", 5);
  return QByteArray("\x89PNG\r\n\x1A\n") + Chunk("IHDR", Number(kSide) + Number(kSide) + eightBitGrey) +
         Chunk("IDAT", qCompress(QByteArray(kPixelBytes, '\0'), 9).mid(kLengthInFront)) + Chunk("IEND", {});
}

}  // namespace quillet
