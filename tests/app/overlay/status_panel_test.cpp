#include "app/overlay/status_panel.h"

#include <gtest/gtest.h>

#include <QImage>

#include "app/overlay/activity_badge.h"
#include "app/overlay/toast.h"
#include "app/window/tour/tour.h"

namespace quillet {
namespace {

PanelText Titled(const QString& title, PanelTone tone = PanelTone::kCalm) {
  return {.title = title, .lines = {}, .hint = {}, .tone = tone};
}

TEST(StatusPanelTest, NoticesLieBeforeTheConnectionUntilDismissed) {
  StatusPanel panel;
  panel.SetSession(Titled("session"));
  panel.AddNotice(Titled("first"));
  panel.AddNotice(Titled("second"));
  panel.AddNotice({});
  for (const char* title : {"first", "second", "session"}) {
    EXPECT_EQ(panel.Text().title, title);
    EXPECT_TRUE(panel.IsShown());
    panel.Dismiss();
  }
  EXPECT_FALSE(panel.IsActive());
  EXPECT_EQ(panel.Text().title, "session") << "its keys still work";
}

TEST(StatusPanelTest, ADismissedPanelComesBackForSomethingNewOnly) {
  StatusPanel panel;
  panel.SetSession(Titled("closed"));
  panel.Dismiss();
  PanelText counted = Titled("closed");
  counted.lines << "5 bytes";
  panel.SetSession(counted);
  EXPECT_FALSE(panel.IsActive());
  EXPECT_EQ(panel.Text().lines.size(), 1);
  panel.SetSession(Titled("closed otherwise"));
  EXPECT_TRUE(panel.IsActive());
  panel.Dismiss();
  panel.Recall();
  EXPECT_TRUE(panel.IsActive());
}

TEST(StatusPanelTest, ABusyPanelWaitsAMomentSoThatAQuickConnectionFlashesNothing) {
  StatusPanel panel;
  panel.SetSession(Titled("busy", PanelTone::kBusy));
  EXPECT_TRUE(panel.IsBusy());
  EXPECT_FALSE(panel.IsShown());
  EXPECT_TRUE(HandleEventsUntil([&] { return panel.IsShown(); }, 5000));
}

TEST(StatusPanelTest, InDisguiseNothingOverThePageHasColourAndThePageStaysWhite) {
  constexpr QSize kPage(640, 400);
  constexpr double kUnit = 16;
  EmbeddedImages images;
  Toast toast(images, [] {});
  toast.Show("bookmarked", EmbeddedImage::kBookmarkList);
  ActivityBadge badge;
  badge.SetText("busy");
  ASSERT_TRUE(HandleEventsUntil([&] { return badge.IsShown(); }, 5000));
  for (const PanelTone tone : {PanelTone::kCalm, PanelTone::kEnded, PanelTone::kProblem}) {
    StatusPanel panel;
    panel.SetSession({.title = "title", .lines = {"line"}, .hint = "hint", .tone = tone});
    const auto page = [&](bool work) {
      QImage paper(kPage, QImage::Format_RGB32);
      paper.fill(Qt::white);
      QPainter painter(&paper);
      const panel_look::Colours& colours = panel_look::ColoursFor(work);
      badge.Paint(painter, paper.rect(), kUnit, colours);
      toast.Paint(painter, paper.rect(), kUnit, colours);
      panel.Paint(painter, paper.rect(), kUnit, colours);
      return paper;
    };
    const auto isColourless = [](const QImage& picture) {
      for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
          if (QColor(picture.pixel(x, y)).saturation() > 0) return false;
      return true;
    };
    EXPECT_TRUE(isColourless(page(true)));
    EXPECT_FALSE(isColourless(page(false)));
    EXPECT_EQ(page(true).pixelColor(1, 1), QColor(Qt::white));
  }
}

}  // namespace
}  // namespace quillet
