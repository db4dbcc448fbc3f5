#include "core/live_screen.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace quillet {
namespace {

// Every cell of both grids says the same, so that a torn copy shows.
ScreenSnapshot FilledWith(std::uint8_t value) {
  ScreenSnapshot screen;
  for (ScreenRow& row : screen.text)
    row.fill(value);
  for (ScreenRow& row : screen.attr)
    row.fill(value);
  screen.cursorRow = value;
  screen.connection = value;
  return screen;
}

bool IsWhole(const ScreenSnapshot& screen) {
  const std::uint8_t value = screen.text[0][0];
  for (const ScreenRow& row : screen.text)
    for (const std::uint8_t cell : row)
      if (cell != value) return false;
  for (const ScreenRow& row : screen.attr)
    for (const std::uint8_t cell : row)
      if (cell != value) return false;
  return screen.cursorRow == value && screen.connection == value;
}

TEST(LiveScreenTest, ReadsWhatWasPublishedAndKnowsABatchInProgress) {
  LiveScreen live;
  LiveScreen::Copy copy;
  live.Publish(FilledWith(7));
  live.Read(copy);
  EXPECT_TRUE(copy.settled);
  EXPECT_TRUE(IsWhole(copy.screen));
  EXPECT_EQ(copy.screen.cursorRow, 7);

  live.BeginBatch();
  live.Read(copy);
  EXPECT_FALSE(copy.settled);
  EXPECT_EQ(copy.screen.cursorRow, 7);
  live.Publish(FilledWith(8));
  live.Read(copy);
  EXPECT_TRUE(copy.settled);
  EXPECT_EQ(copy.screen.cursorRow, 8);
}

TEST(LiveScreenTest, CopiesAreNeverTornAndNeverOlderThanTheLast) {
  LiveScreen live;
  live.Publish(FilledWith(0));
  std::atomic<bool> stop{false};
  std::atomic<int> torn{0}, backwards{0};
  std::atomic<long> reads{0};
  const auto reader = [&] {
    LiveScreen::Copy copy;
    int last = 0;
    while (!stop) {
      live.Read(copy);
      if (!IsWhole(copy.screen)) ++torn;
      if (copy.screen.cursorRow < last) ++backwards;
      last = copy.screen.cursorRow;
      ++reads;
    }
  };
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i)
    readers.emplace_back(reader);
  for (int value = 0; value < 60; ++value) {
    const long before = reads;
    for (int again = 0; again < 20 || reads == before; ++again) {  // the readers keep up
      live.BeginBatch();
      live.Publish(FilledWith(static_cast<std::uint8_t>(value)));
      std::this_thread::yield();
    }
  }
  stop = true;
  for (std::thread& thread : readers)
    thread.join();
  EXPECT_EQ(torn, 0);
  EXPECT_EQ(backwards, 0);
  EXPECT_GE(reads, 60);
}

}  // namespace
}  // namespace quillet
