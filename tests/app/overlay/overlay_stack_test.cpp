#include "app/overlay/overlay_stack.h"

#include <gtest/gtest.h>

#include <QPaintEvent>

#include "app/window/tour/tour.h"

namespace quillet {
namespace {

constexpr QRect kArea(0, 0, 400, 300);

class Sheet : public Overlay {
 public:
  Sheet(char name, std::string& painted) : name_(name), painted_(painted) {}

  bool KeepsMouse() const override { return covers; }
  QRectF Bounds(const OverlayPlace& /*place*/) const override { return bounds; }
  void Paint(QPainter& /*painter*/, const OverlayPlace& /*place*/) override { painted_ += name_; }

  QRect bounds;
  bool covers = false;

 private:
  char name_;
  std::string& painted_;
};

class OverlayStackTest : public testing::Test, public QWidget {
 protected:
  OverlayStackTest() {
    for (Sheet* const sheet : {&low, &middle, &high})
      stack.Add(*sheet);
    resize(kArea.size());
    show();
    HandleEventsUntil([&] { return !region.isEmpty(); }, 5000);
    stack.PlaceAll({.area = kArea});
  }

  void paintEvent(QPaintEvent* event) override {
    region |= event->region();
    QPainter painter(this);
    stack.Paint(painter, event->region());
  }
  // What was painted anew, until then.
  bool Repaints(const QRegion& expected) {
    region = {};
    painted.clear();
    stack.Review();
    return HandleEventsUntil([&] { return region == expected; }, 5000);
  }

  std::string painted;
  QRegion region;
  Sheet low{'l', painted}, middle{'m', painted}, high{'h', painted};
  OverlayStack stack{*this};
};

TEST_F(OverlayStackTest, OneIsPaintedWhereItComesAndWhereItWasFromTheBottomUp) {
  low.bounds = QRect(10, 10, 50, 50);
  high.bounds = QRect(40, 40, 50, 50);
  EXPECT_TRUE(Repaints(QRegion(low.bounds) | high.bounds));
  EXPECT_EQ(painted, "lh");
  high.bounds.translate(200, 0);
  EXPECT_TRUE(Repaints(QRegion(high.bounds) | high.bounds.translated(-200, 0)));
  EXPECT_EQ(painted, "lh") << "the one below it, too";
  high.bounds = {};
  EXPECT_TRUE(Repaints(QRect(240, 40, 50, 50)));
  EXPECT_EQ(painted, "");
}

TEST_F(OverlayStackTest, OfThoseThatKeepTheMouseTheTopmostAloneIsSeen) {
  EXPECT_FALSE(stack.IsCovered());
  low.bounds = middle.bounds = high.bounds = kArea;
  low.covers = middle.covers = true;
  EXPECT_TRUE(stack.IsCovered());
  EXPECT_TRUE(Repaints(kArea));
  EXPECT_EQ(painted, "mh");
  middle.covers = false;
  EXPECT_TRUE(Repaints(kArea));
  EXPECT_EQ(painted, "lmh");
}

}  // namespace
}  // namespace quillet
