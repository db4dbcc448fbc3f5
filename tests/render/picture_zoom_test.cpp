#include "render/picture_zoom.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

constexpr PixelSize kRoom{1000, 600};

PictureZoom Showing(PixelSize natural, double scale = 1) {
  PictureZoom zoom;
  zoom.SetRoom(kRoom, scale);
  zoom.SetPicture(natural);
  return zoom;
}

TEST(PictureZoomTest, APictureIsFittedIntoTheMiddleAndNeverBlownUp) {
  struct Row {
    PixelSize natural;
    double scale;
    ZoomPlace place;
  };
  const Row rows[] = {{{4000, 1000}, 1, {0, 175, {1000, 250}}}, {{1000, 6000}, 1, {450, 0, {100, 600}}},
                      {{200, 100}, 1, {400, 250, {200, 100}}},  {{200, 100}, 2, {300, 200, {400, 200}}},
                      {{12000, 1}, 1, {0, 300, {1000, 1}}},     {{1, 9000}, 1, {500, 0, {1, 600}}}};
  for (const Row& row : rows) {
    PictureZoom zoom = Showing(row.natural, row.scale);
    EXPECT_EQ(zoom.Place(), row.place) << row.natural.width << "x" << row.natural.height;
    EXPECT_FALSE(zoom.CanMove());
    zoom.MoveBy(50, -50);
    EXPECT_EQ(zoom.Place(), row.place) << "there is nothing to move";
  }
}

TEST(PictureZoomTest, WhatIsUnderThePointerStaysThere) {
  PictureZoom zoom = Showing({4000, 2400});
  const ZoomPoint at{250, 150};
  zoom.ToggleActualSize(at);
  EXPECT_EQ(zoom.Place(), (ZoomPlace{250 - 1000, 150 - 600, {4000, 2400}}));
  zoom.ZoomBy(1, at);
  EXPECT_EQ(zoom.Place(), (ZoomPlace{250 - 1250, 150 - 750, {5000, 3000}}));
  zoom.ToggleActualSize(at);
  EXPECT_TRUE(zoom.IsFitted());
  EXPECT_EQ(zoom.Place(), (ZoomPlace{0, 0, kRoom}));
}

TEST(PictureZoomTest, StepsHaltAtTheActualSizeAndAtBothEnds) {
  PictureZoom zoom = Showing({1500, 900});
  zoom.ZoomBy(1, {});
  EXPECT_NEAR(zoom.Factor(), 2.0 / 3 * PictureZoom::kStep, 1e-9);
  zoom.ZoomBy(1, {});
  EXPECT_EQ(zoom.Factor(), 1);
  zoom.ZoomBy(100, {});
  EXPECT_EQ(zoom.Factor(), PictureZoom::kMostFactor);
  zoom.ZoomBy(-100, {});
  EXPECT_EQ(zoom.Factor(), 1) << "not past it";
  zoom.ZoomBy(-100, {});
  EXPECT_TRUE(zoom.IsFitted());
  zoom.ZoomBy(-1, {});
  EXPECT_EQ(zoom.Place(), (ZoomPlace{0, 0, kRoom})) << "no smaller than fitted";
  PictureZoom none;
  none.ZoomBy(3, {5, 5});
  none.ToggleActualSize({5, 5});
  EXPECT_TRUE(none.IsFitted()) << "of no known size";
}

TEST(PictureZoomTest, ItIsMovedToItsEdgesAndKeepsItsMiddleInAnotherRoom) {
  PictureZoom zoom = Showing({3000, 500});
  zoom.ToggleActualSize(zoom.Middle());
  EXPECT_EQ(zoom.Place(), (ZoomPlace{-1000, 50, {3000, 500}}));
  zoom.MoveBy(5000, 5000);
  EXPECT_EQ(zoom.Place(), (ZoomPlace{0, 50, {3000, 500}}));
  zoom.MoveBy(-700, 0);
  zoom.SetRoom({500, 300}, 1);
  EXPECT_EQ(zoom.Place(), (ZoomPlace{-950, -100, {3000, 500}}));
  zoom.MoveBy(-5000, -5000);
  EXPECT_EQ(zoom.Place(), (ZoomPlace{-2500, -200, {3000, 500}}));
  zoom.SetRoom({0, -3}, 1);
  EXPECT_TRUE(zoom.CanMove()) << "of no room at all";
}

TEST(PictureZoomTest, NoMoreIsDecodedThanTheZoomNeeds) {
  PictureZoom zoom = Showing({4000, 2400});
  EXPECT_EQ(zoom.WantedBounds(), kRoom);
  zoom.ZoomBy(1, {});
  EXPECT_EQ(zoom.WantedBounds(), (PixelSize{2000, 1200}));
  zoom.ZoomBy(1, {});
  EXPECT_EQ(zoom.WantedBounds(), (PixelSize{2000, 1200}));
  zoom.ZoomBy(100, {});
  zoom.ZoomBy(100, {});
  EXPECT_EQ(zoom.WantedBounds(), (PixelSize{4000, 2400}));
  PictureZoom huge = Showing({12000, 9000});
  huge.ToggleActualSize({});
  const PixelSize most = huge.WantedBounds();
  EXPECT_NEAR(1.0 * most.width * most.height, PictureZoom::kMostPixels, 1e5);
}

}  // namespace
}  // namespace quillet
