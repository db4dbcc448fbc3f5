#include "bbs/screen_classifier.h"

#include <random>
#include <vector>

#include "core/notify_target.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using ClassifierTest = WithTables;

// Takes or refuses every message; what is taken is kept and freed here.
class RecordingTarget : public NotifyTarget {
 public:
  bool Post(unsigned message, std::uintptr_t first, std::uintptr_t second) override {
    ++posted;
    if (refuse) return false;
    EXPECT_EQ(message, kMessageScreen);
    reasons.push_back(static_cast<int>(first));
    snapshots.emplace_back(reinterpret_cast<ScreenSnapshot*>(second));
    return true;
  }
  bool refuse = false;
  int posted = 0;
  std::vector<int> reasons;
  std::vector<std::unique_ptr<ScreenSnapshot>> snapshots;
};

ScreenSnapshot ArticleList() {
  ScreenBuilder builder;
  builder.Put(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ");
  builder.Put(5, 0, u">").Put(23, 0, u" 文章選讀 ").Cursor(5, 0);
  builder.screen.sessionState = SessionState::kConnected;
  builder.screen.isBbsSite = 1;
  return builder.screen;
}

TEST_F(ClassifierTest, AStarLineKeepsWhatThePageWas) {
  const PageTests pages;
  ScreenSnapshot screen = ArticleList();
  ClassifyScreen(pages, screen, ScreenReason::kUpdated);
  const std::uint32_t before = screen.pageFlags;
  ScreenBuilder builder;
  builder.screen = screen;
  builder.Put(22, 0, u"★kagami", 0xCB).Put(22, 8, u" 在嗎 ", 0xAF).Fill(22, 14, 15, kAttrBlank);
  builder.Put(22, 14, u" ").Cursor(22, 14);
  ClassifyScreen(pages, builder.screen, ScreenReason::kUpdated);
  EXPECT_EQ(builder.screen.pageFlags, before | PF_STAR_LINE);
  EXPECT_NE(before & PF_BROWSABLE, 0u);
  EXPECT_EQ(builder.screen.msgCount, 1);
  screen.isBbsSite = 0;
  ClassifyScreen(pages, screen, ScreenReason::kUpdated);
  EXPECT_EQ(screen.msgCount, 0);
  EXPECT_EQ(screen.pageFlags, before & ~std::uint32_t{PF_BROWSABLE});
}

TEST_F(ClassifierTest, AFrozenScreenIsOnlyLookedAtWhenTheConnectionEnds) {
  ScreenClassifier classifier;
  RecordingTarget target;
  ScreenSnapshot screen = ArticleList();
  screen.notifyWindow = &target;
  screen.frozen = 1;
  classifier.ProcessScreen(screen, ScreenReason::kUpdated);
  EXPECT_EQ(target.posted, 0);
  EXPECT_EQ(screen.pageFlags, 0u);
  classifier.ProcessScreen(screen, ScreenReason::kDisconnected);
  ASSERT_EQ(target.reasons, std::vector<int>{2});
  EXPECT_EQ(target.snapshots[0]->pageFlags, screen.pageFlags);
  target.refuse = true;  // nobody owns the copy then; the leak checker watches
  classifier.ProcessScreen(screen, ScreenReason::kDisconnected);
  EXPECT_EQ(target.posted, 2);
}

TEST_F(ClassifierTest, RandomScreensAndCursorsNeverHurt) {
  const PageTests pages;
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    ScreenSnapshot screen;
    for (auto* grid : {&screen.text, &screen.attr})
      for (auto& row : *grid)
        for (auto& byte : row)
          byte = static_cast<std::uint8_t>(random());
    screen.cursorRow = static_cast<int>(random() % 256) - 128;
    screen.cursorCol = static_cast<int>(random() % 256) - 128;
    ClassifyScreen(pages, screen, ScreenReason::kUpdated);
    EXPECT_EQ(screen.pageFlags & PF_READING, 0u);
  }
}

}  // namespace
}  // namespace quillet
