#include <gtest/gtest.h>

#include "media/fetch/animation_clock.h"
#include "media/fetch/animation_frames.h"
#include "tests/support/drawn_pictures.h"
#include "tests/support/event_wait.h"

namespace quillet {
namespace {

std::shared_ptr<std::atomic<bool>> Wanted() {
  return std::make_shared<std::atomic<bool>>(false);
}

TEST(AnimationTest, FramesComeInTurnAgainAndAgain) {
  const QRgb colours[] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};
  AnimationFrames frames(AnimatedGif(4), QSize(4, 4), Wanted());
  for (int i = 0; i < 12; ++i) {
    const std::optional<AnimationFrame> frame = frames.Next();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->image.pixel(0, 0), colours[i % 4]);
    EXPECT_EQ(frame->image.size(), QSize(4, 2));
    EXPECT_EQ(frame->milliseconds, 20);
    EXPECT_EQ(frame->beginsPass, i % 4 == 0);
    EXPECT_TRUE(frame->isEndless);
  }
}

TEST(AnimationTest, PassesAreThoseThatTheFileAsksForAndHasteIsSlowedDown) {
  QByteArray once = AnimatedGif(2);
  once.remove(once.indexOf(QByteArray::fromHex("21ff0b")), 19);
  once.replace(QByteArray::fromHex("21f9040002"), QByteArray::fromHex("21f9040001"));
  AnimationFrames frames(once, {}, Wanted());
  EXPECT_EQ(frames.Next()->milliseconds, kHurriedMs);
  EXPECT_TRUE(frames.Next());
  EXPECT_FALSE(frames.Next());
  for (const QByteArray& damaged : {once.left(20), QByteArray("GIF89a"), QByteArray()})
    EXPECT_FALSE(AnimationFrames(damaged, {}, Wanted()).Next());
}

TEST(AnimationTest, AFileOfAMillionFramesTakesNoMoreMemoryThanItself) {
  constexpr int kFrames = 1'000'000;
  const QByteArray frame = AnimatedGif(1).mid(44).chopped(1);
  const QByteArray gif = AnimatedGif(0, frame.repeated(kFrames));
  QThreadPool workers;
  AnimationClock clock(workers);
  int moved = 0;
  QObject::connect(&clock, &AnimationClock::Moved, [&] { ++moved; });
  clock.Play(QStringLiteral("a"), gif, {});
  ASSERT_TRUE(WaitWithEvents([&] { return moved > 20; }));
  EXPECT_LT(clock.Bytes(), gif.size() + (1 << 20));
  clock.Stop(QStringLiteral("a"));
  EXPECT_TRUE(clock.FrameOf(QStringLiteral("a")).isNull());
  EXPECT_EQ(clock.Bytes(), 0);
}

TEST(AnimationTest, OneClockMovesAllAndForgetsTheFilesOfSmallOnes) {
  QThreadPool workers;
  AnimationClock clock(workers);
  std::map<QString, QList<QRgb>> seen;
  QObject::connect(&clock, &AnimationClock::Moved,
                   [&](const QString& link) { seen[link] << clock.FrameOf(link).pixel(0, 0); });
  const QByteArray gif = AnimatedGif(3);
  for (const QString& link : {QStringLiteral("a"), QStringLiteral("b")})
    clock.Play(link, gif, {});
  ASSERT_TRUE(WaitWithEvents(
      [&] { return seen[QStringLiteral("a")].size() > 9 && seen[QStringLiteral("b")].size() > 9; }));
  for (const auto& [link, colours] : seen)
    for (qsizetype i = 3; i < colours.size(); ++i) {
      EXPECT_EQ(colours[i], colours[i - 3]);
      EXPECT_NE(colours[i], colours[i - 1]);
    }
}

}  // namespace
}  // namespace quillet
