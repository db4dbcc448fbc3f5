#include "app/session/message_target.h"

#include <gtest/gtest.h>
#include <thread>

#include <QCoreApplication>

#include "bbs/page_flags.h"
#include "core/session_state.h"
#include "tests/support/article_pages.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

class Receiver : public QObject {
 public:
  bool event(QEvent* event) override {
    if (event->type() != MessageTarget::WakeEvent()) return QObject::event(event);
    ++wakes;
    return true;
  }
  int wakes = 0;
};

bool PostScreen(MessageTarget& target, const ScreenSnapshot& posted, ScreenReason reason) {
  auto screen = std::make_unique<ScreenSnapshot>(posted);
  const bool taken = target.Post(kMessageScreen, static_cast<std::uintptr_t>(reason),
                                 reinterpret_cast<std::uintptr_t>(screen.get()));
  if (taken) screen.release();
  return taken;
}

bool PostScreen(MessageTarget& target, int row, ScreenReason reason = ScreenReason::kUpdated,
                std::uint32_t flags = 0, std::uint32_t connection = 0) {
  ScreenSnapshot screen{};
  screen.cursorRow = row;
  screen.pageFlags = flags;
  screen.connection = connection;
  return PostScreen(target, screen, reason);
}

// Under AddressSanitizer every screen that nobody frees, or frees twice, fails these tests.

TEST(MessageTargetTest, ABurstIsOneWakeAndTheNewestScreen) {
  MessageTarget target;
  Receiver receiver;
  target.Attach(&receiver);
  for (int row = 0; row < 20; ++row)
    ASSERT_TRUE(PostScreen(target, row, row == 3 ? ScreenReason::kDisconnected : ScreenReason::kUpdated));
  ASSERT_TRUE(target.Post(kMessageBell, 0, 0));
  QCoreApplication::sendPostedEvents(&receiver);
  EXPECT_EQ(receiver.wakes, 1);
  const MessageTarget::Messages messages = target.Take(0);
  ASSERT_NE(messages.screen, nullptr);
  EXPECT_EQ(messages.screen->cursorRow, 19);
  EXPECT_EQ(messages.reason, ScreenReason::kDisconnected) << "what came before the last update";
  EXPECT_TRUE(messages.bell);
  EXPECT_EQ(target.Take(0).screen, nullptr);

  ASSERT_TRUE(PostScreen(target, 5));
  QCoreApplication::sendPostedEvents(&receiver);
  EXPECT_EQ(receiver.wakes, 2) << "the next one wakes again";
  target.Detach();
}

TEST(MessageTargetTest, WithoutAReceiverMessagesAreRefusedAndLeftoversFreed) {
  MessageTarget target;
  EXPECT_FALSE(PostScreen(target, 0));
  EXPECT_FALSE(target.Post(kMessageBell, 0, 0));
  {
    Receiver receiver;
    target.Attach(&receiver);
    EXPECT_TRUE(PostScreen(target, 1));
    EXPECT_FALSE(target.Post(kMessageBell + 1, 0, 0)) << "a number that nobody handles";
    target.Detach();
  }
  EXPECT_FALSE(PostScreen(target, 2));
  EXPECT_EQ(target.Take(0).screen, nullptr);
}

TEST(MessageTargetTest, APushPromptLiesOverTheArticleThatNobodyTookInBetween) {
  MessageTarget target;
  Receiver receiver;
  target.Attach(&receiver);
  const auto post = [&](std::uint32_t flags) {
    ASSERT_TRUE(PostScreen(target, 0, ScreenReason::kUpdated, flags));
  };
  const auto isOver = [&] { return (target.Take(0).screen->pageFlags & PF_PUSH_OVER_READER) != 0; };
  post(PF_PUSH_LINE);
  EXPECT_FALSE(isOver()) << "over a list";
  post(PF_READING);
  post(PF_PUSH_LINE);
  EXPECT_TRUE(isOver());
  post(PF_PUSH_LINE | PF_PUSH_CONFIRM);
  post(PF_PUSH_LINE);
  EXPECT_TRUE(isOver()) << "as long as it lasts";
  post(0);
  post(PF_PUSH_LINE);
  EXPECT_FALSE(isOver());
  target.Detach();
}

TEST(MessageTargetTest, WhatIsLeftOfAnOlderConnectionIsDropped) {
  MessageTarget target;
  Receiver receiver;
  target.Attach(&receiver);
  ASSERT_TRUE(PostScreen(target, 1, ScreenReason::kDisconnected, 0, 1));
  EXPECT_EQ(target.Take(2).screen, nullptr);
  ASSERT_TRUE(PostScreen(target, 1, ScreenReason::kDisconnected, 0, 1));
  ASSERT_TRUE(PostScreen(target, 2, ScreenReason::kUpdated, 0, 2));
  EXPECT_EQ(target.Take(2).reason, ScreenReason::kUpdated);
  target.Detach();
}

using WitnessTest = WithTables;

TEST_F(WitnessTest, WhatScreensTellThatNobodyTookIsTakenWithTheLastOne) {
  MessageTarget target;
  Receiver receiver;
  target.Attach(&receiver);
  const ScreenSnapshot article = WithReaderFooter(ArticleHeader());
  const auto post = [&](ScreenSnapshot screen, std::uint32_t flags) {
    screen.pageFlags = flags;
    screen.sessionState = SessionState::kConnected;
    ASSERT_TRUE(PostScreen(target, screen, ScreenReason::kUpdated));
  };
  const auto pushTo = [&](const ScreenSnapshot& page, std::uint32_t then) {
    post(page, PF_READING | PF_READ_TOP);
    post(page, PF_PUSH_LINE | PF_PUSH_CONFIRM);
    post(page, then);
  };
  const auto push = [&](std::uint32_t then) {
    pushTo(article, then);
    return target.Take(0).seen;
  };
  post(ScreenBuilder().Put(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊: alice").screen, 0);
  const Sightings back = push(PF_READING);
  EXPECT_EQ(back.loginId, u"alice");
  EXPECT_EQ(back.article.board, u"Astronomy");
  ASSERT_EQ(back.pushed.size(), 1u);
  EXPECT_EQ(back.pushed[0].board, u"Astronomy");
  const Sightings inList = push(PF_LIST_CURSOR);
  EXPECT_FALSE(inList.articleOpen);
  ASSERT_EQ(inList.pushed.size(), 1u);
  EXPECT_EQ(inList.pushed[0].board, u"Astronomy") << "the one that was open";
  EXPECT_TRUE(push(PF_PUSH_LINE).pushed.empty()) << "refused, and each is told once";

  // As long as the view does not come to take anything.
  pushTo(article, PF_LIST_CURSOR);
  pushTo(WithReaderFooter(ArticleHeader(u"kagami", u"Joke")), PF_READING);
  post(ScreenBuilder().Put(5, 0, u"推 kagami: x").screen, PF_READING);
  const MessageTarget::Messages late = target.Take(0);
  ASSERT_EQ(late.seen.pushed.size(), 2u);
  EXPECT_EQ(late.seen.pushed[0].board + late.seen.pushed[1].board, u"AstronomyJoke");
  EXPECT_EQ(late.page, Understand(*late.screen)) << "of the newest screen";
  EXPECT_TRUE(late.page.Line(5).push);
  target.Detach();
}

TEST(MessageTargetTest, AReceiverMayGoWhileAnotherThreadPosts) {
  MessageTarget target;
  auto receiver = std::make_unique<Receiver>();
  target.Attach(receiver.get());
  std::atomic<bool> stop{false};
  std::atomic<int> refused{0};
  std::thread poster([&] {
    for (int i = 0; !stop; ++i)
      if (!PostScreen(target, i % kRows)) ++refused;
  });
  for (int i = 0; i < 100; ++i) {
    QCoreApplication::sendPostedEvents(receiver.get());
    target.Take(0);
  }
  target.Detach();
  receiver.reset();
  while (refused == 0)
    std::this_thread::yield();
  stop = true;
  poster.join();
}

}  // namespace
}  // namespace quillet
