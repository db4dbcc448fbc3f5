#include <gtest/gtest.h>
#include <random>

#include <QBuffer>
#include <QImageReader>

#include "tools/pictures/gif_writer.h"

namespace quillet {
namespace {

// Noise fills the table of codes again and again, and plain ground makes its longest strings.
GifPicture SomePicture(int width, int height, unsigned colours) {
  std::mt19937 random(colours);
  GifPicture picture;
  picture.width = static_cast<std::uint16_t>(width);
  picture.height = static_cast<std::uint16_t>(height);
  for (unsigned i = 0; i < colours; ++i)
    picture.palette.push_back({static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(255 - i), 9});
  for (const std::uint16_t hundredths : {std::uint16_t{7}, std::uint16_t{250}}) {
    GifFrame frame{.pixels = {}, .hundredths = hundredths};
    for (int i = 0; i < width * height; ++i)
      frame.pixels.push_back(i % 3 == 0 || i > width * 20 ? static_cast<std::uint8_t>(random() % colours)
                                                          : 0);
    picture.frames.push_back(frame);
  }
  return picture;
}

TEST(GifWriterTest, EveryPixelOfEveryFrameIsReadAgain) {
  for (const unsigned colours : {1U, 2U, 5U, 129U, 256U}) {
    const GifPicture picture = SomePicture(201, 133, colours);
    QByteArray bytes = QByteArray::fromStdString(GifFileBytes(picture));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "gif");
    for (const GifFrame& frame : picture.frames) {
      const QImage image = reader.read();
      ASSERT_EQ(image.size(), QSize(picture.width, picture.height)) << colours;
      EXPECT_EQ(reader.nextImageDelay(), frame.hundredths * 10);
      int wrong = 0;
      for (std::size_t i = 0; i < frame.pixels.size(); ++i) {
        const GifColour& colour = picture.palette[frame.pixels[i]];
        const auto at = static_cast<int>(i);
        wrong += image.pixel(at % picture.width, at / picture.width) !=
                 qRgb(colour.red, colour.green, colour.blue);
      }
      EXPECT_EQ(wrong, 0) << colours;
    }
    EXPECT_EQ(reader.loopCount(), -1);
  }
}

}  // namespace
}  // namespace quillet
