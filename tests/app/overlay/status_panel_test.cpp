#include "app/overlay/status_panel.h"

#include <gtest/gtest.h>

#include <QImage>

#include "app/overlay/activity_badge.h"
#include "app/overlay/toast.h"
#include "app/window/tour/tour.h"

namespace quillet {
namespace {

PanelText Titled(const QString& title, PanelTone tone = PanelTone::kCalm) {
  return {.title = title, .lines = {"line"}, .hint = "hint", .tone = tone};
}

class StatusPanelTest : public testing::Test {
 protected:
  StatusPanel panel{[](PanelAction) {}};
};

TEST_F(StatusPanelTest, NoticesLieBeforeTheConnectionUntilDismissed) {
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

TEST_F(StatusPanelTest, ADismissedPanelComesBackForSomethingNewOnly) {
  panel.SetSession(Titled("closed"));
  panel.Dismiss();
  PanelText counted = Titled("closed");
  counted.lines << "5 bytes";
  panel.SetSession(counted);
  EXPECT_FALSE(panel.IsActive());
  EXPECT_EQ(panel.Text().lines.size(), 2);
  panel.SetSession(Titled("closed otherwise"));
  EXPECT_TRUE(panel.IsActive());
  panel.Dismiss();
  panel.Recall();
  EXPECT_TRUE(panel.IsActive());
}

TEST_F(StatusPanelTest, ABusyPanelWaitsAMomentSoThatAQuickConnectionFlashesNothing) {
  panel.SetSession(Titled("busy", PanelTone::kBusy));
  EXPECT_TRUE(panel.IsBusy());
  EXPECT_FALSE(panel.IsShown());
  EXPECT_TRUE(HandleEventsUntil([&] { return panel.IsShown(); }, 5000));
}

TEST_F(StatusPanelTest, InDisguiseNothingOverThePageHasColourAndThePageStaysWhite) {
  EmbeddedImages images;
  Toast toast(images, [] {});
  toast.Show("bookmarked", EmbeddedImage::kBookmarkList);
  ActivityBadge badge;
  badge.SetText("busy");
  ASSERT_TRUE(HandleEventsUntil([&] { return badge.IsShown(); }, 5000));
  const auto page = [&](bool work) {
    QImage paper({640, 400}, QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    for (Overlay* const overlay : std::initializer_list<Overlay*>{&badge, &toast, &panel})
      overlay->Paint(painter, {.area = paper.rect(), .work = work});
    return paper;
  };
  const auto isColourless = [](const QImage& picture) {
    return picture == picture.convertToFormat(QImage::Format_Grayscale8).convertToFormat(picture.format());
  };
  for (const PanelTone tone : {PanelTone::kCalm, PanelTone::kEnded, PanelTone::kProblem}) {
    panel.SetSession(Titled("title", tone));
    EXPECT_TRUE(isColourless(page(true)));
    EXPECT_FALSE(isColourless(page(false)));
    EXPECT_EQ(page(true).pixelColor(1, 1), QColor(Qt::white));
  }
}

}  // namespace
}  // namespace quillet
