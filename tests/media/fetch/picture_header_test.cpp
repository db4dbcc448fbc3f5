#include "media/fetch/picture_header.h"

#include <gtest/gtest.h>

#include <QColorSpace>

#include "media/fetch/picture_decoder.h"
#include "tests/support/drawn_pictures.h"

namespace quillet {
namespace {

const std::atomic<bool> kWanted{false};

PictureHeader HeaderOf(const QByteArray& bytes) {
  return ReadPictureHeader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

// A photograph whose camera was held on its side.
QByteArray TurnedJpeg() {
  QByteArray file = PictureFileBytes(DrawnPicture(300, 50), "jpg");
  return file.insert(2, QByteArray::fromHex("ffe10022457869660000"
                                            "4d4d002a00000008"
                                            "0001"
                                            "011200030000000100060000"
                                            "00000000"));
}

TEST(PictureHeaderTest, TheFirstBytesTellFormatAndSizeAndNoneTellWrong) {
  const QImage picture = DrawnPicture(300, 50);
  for (const char* const format : {"jpeg", "png", "bmp", "webp"}) {
    const QByteArray file = PictureFileBytes(picture, format);
    if (file.isEmpty()) continue;  // no plugin
    EXPECT_EQ(NameOf(HeaderOf(file).format), format);
    EXPECT_TRUE(HeaderOf(file.left(1000)).IsSized()) << format;
    for (qsizetype size = 0; size < std::min<qsizetype>(file.size(), 1000); ++size) {
      const PictureHeader header = HeaderOf(file.left(size));
      EXPECT_TRUE(!header.IsSized() || QSize(header.width, header.height) == picture.size())
          << format << size;
    }
  }
  EXPECT_EQ(HeaderOf(AnimatedGif(1)).width, 8);
  EXPECT_EQ(HeaderOf(TurnedJpeg()).height, 300);
  EXPECT_EQ(HeaderOf(QByteArray::fromHex("ffd8ffc20011080400020003012200021101031101")).workBytes,
            1024 * 512 * 2 * 3 / 2)
      << "in several passes";
  EXPECT_FALSE(HeaderOf(TurnedJpeg().insert(2, QByteArray::fromHex("fffe0002").repeated(100'000))).IsSized());
  EXPECT_EQ(HeaderOf("<svg xmlns='http://www.w3.org/2000/svg'/>").format, PictureFormat::kUnknown);
}

TEST(PictureDecoderTest, APictureIsDecodedAsLargeAsItIsShown) {
  for (const char* const format : {"jpeg", "png", "bmp", "webp"}) {
    const QByteArray file = PictureFileBytes(DrawnPicture(300, 50), format);
    if (file.isEmpty()) continue;
    EXPECT_EQ(DecodeFile(file, QSize(100, 100), kWanted).image.size(), QSize(100, 17)) << format;
    EXPECT_EQ(DecodeFile(file, QSize(), kWanted).image.size(), QSize(300, 50)) << format;
    EXPECT_EQ(DecodeFile(file, QSize(1000, 1000), kWanted).image.size(), QSize(300, 50)) << format;
    EXPECT_EQ(DecodeFile(file, {QSize(1000, 1000), 1.5}, kWanted).image.size(), QSize(450, 75)) << format;
  }
  EXPECT_EQ(DecodeFile(TurnedJpeg(), QSize(100, 60), kWanted).image.size(), QSize(10, 60));
  EXPECT_EQ(DecodeFile(TurnedJpeg(), QSize(), kWanted).image.size(), QSize(50, 300));
  EXPECT_EQ(DecodeFile(PictureFileBytes(DrawnPicture(1, 9000), "png"), QSize(90, 90), kWanted).image.size(),
            QSize(1, 90));
}

TEST(PictureDecoderTest, BombsAreRefusedBeforeTheyTakeMemory) {
  QByteArray large = PictureFileBytes(DrawnPicture(8, 8), "png");
  qToBigEndian<quint32>(50'000, large.data() + 16);
  qToBigEndian<quint32>(50'000, large.data() + 20);
  EXPECT_EQ(DecodeFile(large, {}, kWanted).fault, PictureFault::kTooManyPixels);
  QByteArray claims = PictureFileBytes(DrawnPicture(8, 8), "bmp");
  qToLittleEndian<qint32>(10'000, claims.data() + 18);
  qToLittleEndian<qint32>(10'000, claims.data() + 22);
  EXPECT_EQ(DecodeFile(claims, {}, kWanted).fault, PictureFault::kTooManyPixels) << "the toolkit's own limit";
  EXPECT_EQ(DecodeFile("<svg xmlns='http://www.w3.org/2000/svg'/>", {}, kWanted).fault,
            PictureFault::kUnknownFormat);
}

// With one more part behind its head.
QByteArray NotedPng(const QByteArray& part) {
  constexpr qsizetype kBehindHead = 33;
  return PictureFileBytes(DrawnPicture(8, 8), "png").insert(kBehindHead, part);
}

QByteArray PngPart(const QByteArray& name, const QByteArray& content) {
  return QByteArray(4, '\0') + name + content + QByteArray(4, '\0');
}

TEST(PictureDecoderTest, WhatAPngUnpacksBesideItsPixelsIsNotLookedAt) {
  const QImage plain = DecodeFile(NotedPng({}), {}, kWanted).image;
  for (const char* const name : {"zTXt", "iTXt", "tEXt", "iCCP", "eXIf"}) {
    QByteArray part = PngPart(name, QByteArray("k\0\0", 3) + qCompress(QByteArray(100'000, 'x')).mid(4));
    qToBigEndian(static_cast<quint32>(part.size() - 12), part.data());
    const QImage image = DecodeFile(NotedPng(part.repeated(100)), {}, kWanted).image;
    EXPECT_EQ(image, plain) << name;
    EXPECT_TRUE(image.text().isEmpty() && !image.colorSpace().isValid()) << name;
  }
}

TEST(PictureDecoderTest, WorkWithoutEndIsGivenUp) {
  QByteArray part = PngPart("IDAT", qCompress(QByteArray(100'000'000, '\0')).mid(4));
  qToBigEndian(static_cast<quint32>(part.size() - 12), part.data());
  EXPECT_EQ(DecodeFile(NotedPng(part), {}, kWanted, std::chrono::milliseconds(10)).fault,
            PictureFault::kDamaged);
  const std::atomic<bool> unwanted{true};
  EXPECT_TRUE(DecodeFile(TurnedJpeg(), {}, unwanted).image.isNull());
}

TEST(PictureDecoderTest, DamagedBytesBecomeAnImageOrAFaultNeverBoth) {
  QList<QByteArray> files{AnimatedGif(3), TurnedJpeg()};
  for (const char* const format : {"png", "bmp", "webp"})
    files << PictureFileBytes(DrawnPicture(50, 30), format);
  for (const QByteArray& good : files)
    for (qsizetype at = 1; at < good.size(); at += 1 + at / 16) {
      QByteArray bytes = good;
      bytes[at] = static_cast<char>(~bytes[at]);
      for (const QByteArray& damaged : {bytes, good.left(at)}) {
        const DecodedFile decoded = DecodeFile(damaged, QSize(20, 20), kWanted);
        ASSERT_EQ(decoded.image.isNull(), decoded.fault != PictureFault::kNone);
        ASSERT_LE(std::max(decoded.image.width(), decoded.image.height()), 20);
      }
    }
}

}  // namespace
}  // namespace quillet
