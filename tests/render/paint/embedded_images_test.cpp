#include "render/paint/embedded_images.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/render/paint/with_application.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

constexpr std::uint32_t kPurple = 0xA020F0;

constexpr EmbeddedImage kAll[] = {
    EmbeddedImage::kTextEditor,   EmbeddedImage::kHotList, EmbeddedImage::kTrackedList,
    EmbeddedImage::kBookmarkList, EmbeddedImage::kOptions, EmbeddedImage::kFire,
    EmbeddedImage::kPennant,      EmbeddedImage::kDeleted, EmbeddedImage::kHidden,
    EmbeddedImage::kPush,         EmbeddedImage::kToTop,   EmbeddedImage::kToEnd,
    EmbeddedImage::kFolder,       EmbeddedImage::kNews,    EmbeddedImage::kEdited};

// The box of what is drawn; empty when nothing is.
QRect InkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 32) ink |= QRect(x, y, 1, 1);
  return ink;
}

int PixelsOf(const QImage& image, QRgb colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      count += image.pixel(x, y) == colour;
  return count;
}

class EmbeddedImagesTest : public WithApplication {
 protected:
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder.Path() / name) << text;
  }

  ScratchFolder folder;
};

TEST_F(EmbeddedImagesTest, EveryPictureFillsItsSquareAtEverySizeAndNoTwoAreAlike) {
  EmbeddedImages images;
  for (const int side : {16, 24, 33, 96}) {
    std::vector<QImage> seen;
    for (const EmbeddedImage number : kAll) {
      const QImage& image = images.At(number, QSize(side, side), kPurple);
      ASSERT_EQ(image.size(), QSize(side, side)) << static_cast<int>(number);
      const QRect ink = InkOf(image);
      EXPECT_GE(std::max(ink.width(), ink.height()), side * 7 / 10) << static_cast<int>(number);
      EXPECT_EQ(std::count(seen.begin(), seen.end(), image), 0) << static_cast<int>(number);
      seen.push_back(image);
    }
  }
}

TEST_F(EmbeddedImagesTest, APictureComesInTheColourItIsAskedInUnlessItHasItsOwn) {
  EmbeddedImages images;
  for (const EmbeddedImage number : kAll) {
    const bool ownColours = number == EmbeddedImage::kTextEditor || number == EmbeddedImage::kFire;
    const int inColour = PixelsOf(images.At(number, QSize(96, 96), kPurple), 0xFF000000 | kPurple);
    if (ownColours)
      EXPECT_EQ(inColour, 0) << static_cast<int>(number);
    else
      EXPECT_GT(inColour, 200) << static_cast<int>(number);
  }
  EXPECT_GT(PixelsOf(images.At(EmbeddedImage::kPennant, QSize(48, 48), 0x12), 0xFF000012), 50)
      << "a colour with leading zeros";
}

TEST_F(EmbeddedImagesTest, APictureKeepsItsShapeInAnyRectangle) {
  EmbeddedImages images;
  const QRect square = InkOf(images.At(EmbeddedImage::kTrackedList, QSize(40, 40)));
  EXPECT_EQ(InkOf(images.At(EmbeddedImage::kTrackedList, QSize(100, 40))), square.translated(30, 0));
  EXPECT_EQ(InkOf(images.At(EmbeddedImage::kTrackedList, QSize(40, 80))), square.translated(0, 20));
}

TEST_F(EmbeddedImagesTest, WhatIsMissingOrDamagedOrOutOfRangeIsANullPicture) {
  Write("314.svg", "");
  Write("316.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\"><path d=\"M0 0h9");
  Write("317.svg", std::string(5000, '\x80'));
  EmbeddedImages damaged(QString::fromStdString(folder.Path().string()));
  for (const EmbeddedImage number : kAll)
    EXPECT_TRUE(damaged.At(number, QSize(16, 16)).isNull()) << static_cast<int>(number);

  EmbeddedImages images;
  for (const QSize size : {QSize(), QSize(0, 16), QSize(16, 0), QSize(-1, 16), QSize(16, 1 << 30),
                           QSize(EmbeddedImages::kLargestSide + 1, 1)})
    EXPECT_TRUE(images.At(EmbeddedImage::kFire, size).isNull());
  EXPECT_TRUE(images.At(static_cast<EmbeddedImage>(315), QSize(16, 16)).isNull());
  EXPECT_FALSE(images.At(EmbeddedImage::kFire, QSize(1, 1)).isNull());
}

TEST_F(EmbeddedImagesTest, APictureIsRenderedOnceAndTheKeptOnesStayWithinTheirBudget) {
  EmbeddedImages images;
  const void* const first = images.At(EmbeddedImage::kPush, QSize(20, 20)).constBits();
  images.At(EmbeddedImage::kPush, QSize(21, 20));
  EXPECT_EQ(images.At(EmbeddedImage::kPush, QSize(20, 20)).constBits(), first);
  for (int side = 1000; side <= EmbeddedImages::kLargestSide; ++side) {
    EXPECT_FALSE(images.At(EmbeddedImage::kFolder, QSize(side, side)).isNull());
    EXPECT_LE(images.KeptBytes(), EmbeddedImages::kBudget);
    EXPECT_GT(images.KeptBytes(), 0);
  }
}

}  // namespace
}  // namespace quillet
