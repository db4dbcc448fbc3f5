#include "app/status_panel.h"

#include <gtest/gtest.h>

#include "app/tour/tour.h"

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

}  // namespace
}  // namespace quillet
