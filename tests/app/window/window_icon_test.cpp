#include "app/window/window_icon.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace quillet {
namespace {

TEST(WindowIconTest, IsTheDrawingThatMenusShow) {
  QSvgRenderer drawing(QStringLiteral(QUILLET_SOURCE_DIR "/packaging/quillet.svg"));
  ASSERT_TRUE(drawing.isValid());
  for (const int size : {16, 48, 256}) {
    QImage drawn(size, size, QImage::Format_ARGB32);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    drawing.render(&painter);
    painter.end();
    const QImage icon = MakeWindowIcon().pixmap(QSize(size, size), 1.0).toImage();
    ASSERT_EQ(icon.size(), drawn.size());
    int difference = 0;
    for (int at = 0; at < size * size; ++at) {
      const QColor a = drawn.pixelColor(at % size, at / size);
      const QColor b = icon.pixelColor(at % size, at / size);
      difference += std::abs(a.lightness() - b.lightness()) + std::abs(a.alpha() - b.alpha());
    }
    // Of 510 a pixel; curves are not the same to a hair. Without the caret it would be 5.
    EXPECT_LT(difference, 2 * size * size) << size << ": " << difference;
  }
}

TEST(WindowIconTest, TellsOfTheConnection) {
  const auto drawn = [](IconBadge badge) {
    return MakeWindowIcon(badge).pixmap(QSize(16, 16), 1.0).toImage();
  };
  EXPECT_GT(drawn(IconBadge::kNews).pixelColor(12, 3).red(), 200);
  EXPECT_LT(drawn(IconBadge::kNone).pixelColor(12, 3).red(), 100);
  EXPECT_LT(drawn(IconBadge::kNotConnected).pixelColor(10, 12).lightness(),
            drawn(IconBadge::kNone).pixelColor(10, 12).lightness());
}

}  // namespace
}  // namespace quillet
