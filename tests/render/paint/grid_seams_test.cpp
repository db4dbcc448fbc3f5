// Shapes that are made to join do so on the whole screen, in rows of either size, at every size of the
// window.
#include <gtest/gtest.h>
#include <set>
#include <string_view>

#include <QTransform>

#include "render/paint/frame_painter.h"
#include "tests/render/paint/with_application.h"
#include "tests/support/screen_builder.h"

namespace quillet {
namespace {

class GridSeamsTest : public WithApplication {
 protected:
  // Draws a screen full of one character, calls `check` with the grid's picture.
  template <typename Check>
  void OnEveryGrid(char16_t unit, const Check& check) {
    ScreenBuilder builder;
    for (int row = 0; row < kRows; ++row)
      builder.Put(row, 0, std::u16string(kCols / 2, unit));
    FrameState frame{.page = PlainPage(builder.screen)};
    for (const RowSize rows : {RowSize::kOrdinary, RowSize::kPush}) {
      for (PageRow& row : frame.page)
        row.size = rows;
      for (int width = 520; width < 2000; width += 211)
        for (const int spacing : {0, 1, 3}) {
          DisplaySettings settings;
          settings.lineSpacing = spacing;
          settings.pushLineSpacing = spacing == 0 ? 2 : spacing - 1;
          painter_.ApplySettings(settings);
          painter_.Resize(width, width * 9 / 16 + spacing);
          painter_.Update(frame);
          const QRect grid = (painter_.CellRect(0, 0) | painter_.CellRect(23, 79)) & painter_.Image().rect();
          SCOPED_TRACE(testing::Message()
                       << std::hex << int{unit} << std::dec << " in " << width << " pixels, spacing "
                       << spacing << ", " << (rows == RowSize::kPush ? "push" : "ordinary"));
          check(painter_.Image().copy(grid));
          if (HasFailure()) return;
        }
    }
  }

  FramePainter painter_;
};

bool AllOneColour(const QImage& image, QRect part) {
  const QRgb first = image.pixel(part.topLeft());
  for (int y = part.top(); y <= part.bottom(); ++y)
    for (int x = part.left(); x <= part.right(); ++x)
      if (image.pixel(x, y) != first) return false;
  return true;
}

TEST_F(GridSeamsTest, FullAndShadedBlocksMakeOneSurface) {
  for (const char16_t unit : {u'█', u'▓'})
    OnEveryGrid(unit, [](const QImage& grid) {
      EXPECT_TRUE(AllOneColour(grid, grid.rect()));
      EXPECT_NE(grid.pixel(0, 0), 0xFF000000u);
    });
}

TEST_F(GridSeamsTest, WhatRunsAcrossOrDownIsTheSameAllTheWay) {
  for (const char16_t unit : std::u16string_view(u"▄▁▆─═￣＿▌▏▊│║"))
    OnEveryGrid(unit, [&](const QImage& grid) {
      const bool down = std::u16string_view(u"▌▏▊│║").find(unit) != std::u16string_view::npos;
      const QImage across = down ? grid.transformed(QTransform().rotate(90)) : grid;
      std::set<QRgb> colours;
      for (int y = 0; y < across.height(); ++y) {
        ASSERT_TRUE(AllOneColour(across, {0, y, across.width(), 1})) << y;
        colours.insert(across.pixel(0, y));
      }
      EXPECT_EQ(colours.size(), 2u);
    });
}

}  // namespace
}  // namespace quillet
