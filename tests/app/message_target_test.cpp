#include "app/message_target.h"

#include <gtest/gtest.h>
#include <thread>

#include <QCoreApplication>

#include "bbs/page_flags.h"

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

bool PostScreen(MessageTarget& target, int row, ScreenReason reason = ScreenReason::kUpdated,
                std::uint32_t flags = 0) {
  auto screen = std::make_unique<ScreenSnapshot>();
  screen->cursorRow = row;
  screen->pageFlags = flags;
  const bool taken = target.Post(kMessageScreen, static_cast<std::uintptr_t>(reason),
                                 reinterpret_cast<std::uintptr_t>(screen.get()));
  if (taken) screen.release();
  return taken;
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
  const MessageTarget::Messages messages = target.Take();
  ASSERT_NE(messages.screen, nullptr);
  EXPECT_EQ(messages.screen->cursorRow, 19);
  EXPECT_EQ(messages.reason, ScreenReason::kDisconnected) << "what came before the last update";
  EXPECT_TRUE(messages.bell);
  EXPECT_EQ(target.Take().screen, nullptr);

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
  EXPECT_EQ(target.Take().screen, nullptr);
}

TEST(MessageTargetTest, APushPromptLiesOverTheArticleThatNobodyTookInBetween) {
  MessageTarget target;
  Receiver receiver;
  target.Attach(&receiver);
  const auto post = [&](std::uint32_t flags) {
    ASSERT_TRUE(PostScreen(target, 0, ScreenReason::kUpdated, flags));
  };
  const auto isOver = [&] { return (target.Take().screen->pageFlags & PF_PUSH_OVER_READER) != 0; };
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
    target.Take();
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
