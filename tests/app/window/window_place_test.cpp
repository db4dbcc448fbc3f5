#include "app/window/window_place.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

const QRect kLeftArea(-1920, 0, 1920, 1040), kMainArea(0, 27, 1366, 741);
constexpr QSize kLeast(480, 310);

TEST(WindowPlaceTest, AWindowIsBroughtOntoTheScreensThereAre) {
  const struct {
    const char* what;
    QRect stored;
    QList<QRect> areas;
    QRect expected;
  } rows[] = {
      {"seen as it was", {40, 60, 1280, 700}, {kMainArea}, {40, 60, 1280, 700}},
      {"across two screens", {-500, 60, 1000, 700}, {kMainArea, kLeftArea}, {-500, 60, 1000, 700}},
      {"its screen is gone", {-1900, 60, 1000, 600}, {kMainArea}, {8, 67, 1000, 600}},
      {"on the second screen, too low", {-900, 900, 800, 600}, {kMainArea, kLeftArea}, {-900, 432, 800, 600}},
      {"larger than the screen", {40, 60, 3000, 2000}, {kMainArea}, {8, 67, 1350, 693}},
      {"its title bar above the screen", {40, 10, 800, 500}, {kMainArea}, {40, 67, 800, 500}},
      {"too small", {40, 60, 1, 1}, {kMainArea}, {40, 60, 480, 310}},
      {"a screen smaller than the least", {40, 60, 480, 310}, {QRect(0, 0, 320, 200)}, {8, 40, 480, 310}},
      {"no screen", {40, 60, 800, 500}, {}, {40, 60, 800, 500}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(OnScreens(row.stored, row.areas, kLeast), row.expected) << row.what;
}

TEST(WindowPlaceTest, ComesBackFromItsTextAndFromNothingElse) {
  const WindowPlace place{.window = {-30, 60, 1280, 748},
                          .layout = LayoutMode::kNarrow,
                          .otherSize = {528, 164},
                          .maximized = true,
                          .fullScreen = true};
  const QString text = ToText(place);
  EXPECT_EQ(ReadWindowPlace(text), place);
  for (const char* bad :
       {"", "1 2 3", "0 0 800 600 0 0 3 0 0", "0 0 0 600 0 0 0 0 0", "0 0 800 600 -1 0 0 0 0",
        "0 0 800 600 0 0 0 2 0", "0 0 99999999999 600 0 0 0 0 0", "0 0 800 6e2 0 0 0 0 0"})
    EXPECT_EQ(ReadWindowPlace(QString::fromLatin1(bad)), std::nullopt) << bad;
  EXPECT_EQ(ReadWindowPlace(text + " 0"), std::nullopt);
}

}  // namespace
}  // namespace quillet
