// When the parser hands a screen over, rings, and counts instant messages.
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "core/charset.h"
#include "core/term_screen.h"
#include "tests/support/feeding.h"
#include "tests/support/recording_watcher.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

struct HandOverTest : WithTables {
  HandOverTest() {
    screen.SetWatcher(&watcher);
    screen.notifyWindow = &watcher;
  }
  void Feed(std::string_view bytes) { screen.Feed(AsBytes(bytes)); }
  // Screens handed over by one batch.
  std::size_t Given(std::string_view bytes) {
    const std::size_t before = watcher.Screens();
    Feed(bytes);
    return watcher.Screens() - before;
  }
  RecordingWatcher watcher;
  TermScreen screen;
};

// A bottom line in `colour` that starts with `mark`, its last cell at column `end` - 1, and the cursor left
// behind it.
std::string BottomLine(char mark, int end, std::string_view colour) {
  std::string line(1, mark);
  line.resize(static_cast<std::size_t>(end), ' ');
  return At(0, 0) + "\x1b[m" + At(23, 0) + "\x1b[K\x1b[" + std::string(colour) + "m" + line;
}

TEST_F(HandOverTest, ALoneBellRingsAndTouchesNothing) {
  Feed("\x1b[3");
  const std::size_t screens = watcher.Screens();
  Feed("\a");
  EXPECT_EQ(watcher.Bells(), 1u);
  EXPECT_EQ(watcher.Screens(), screens);
  Feed("1mx");
  EXPECT_EQ(screen.AttrAt(0, 0), 0x01);
}

TEST_F(HandOverTest, ABellAmongOthersRingsOnceAndTheBatchGoesOn) {
  EXPECT_EQ(Given("a\ab"), 1u);
  EXPECT_EQ(watcher.Bells(), 1u);
  EXPECT_EQ(Row(screen, 0), "ab");
  EXPECT_TRUE(watcher.events.front().isBell);
  Feed("\x1b[4\a\x1b\a");  // ends the sequence, rings nothing
  EXPECT_EQ(watcher.Bells(), 1u);
}

TEST_F(HandOverTest, AnEmptyBatchDoesNothing) {
  EXPECT_EQ(Given(""), 0u);
}

TEST_F(HandOverTest, OrdinaryPagesAreHandedOverOncePerBatch) {
  EXPECT_EQ(Given("hello\x1b[K\x1b[m\x1b[24;80H\x1b[m"), 1u);
  EXPECT_EQ(watcher.events.back().screen.inBatch, 0);
  EXPECT_EQ(screen.inBatch, 0);
}

TEST_F(HandOverTest, TheReaderIsHandedOverAsSoonAsItsStatusLineIsComplete) {
  // After the closing m, though more follows; not again at the end of the batch.
  EXPECT_EQ(Given(BottomLine('R', 75, "34;46") + "\x1b[m" + At(3, 4) + "later"), 1u);
  const ScreenSnapshot& given = watcher.events.back().screen;
  EXPECT_EQ(given.inBatch, 0);
  EXPECT_EQ(given.cursorCol, 75);
  EXPECT_EQ(Row(given, 3), "");
  EXPECT_EQ(Row(screen, 3), "    later");

  // Each of H, K and a single zero m looks; a longer list, J and L do not.
  const std::string drawn = BottomLine('R', 75, "34;46") + "\x1b[0;0m";
  EXPECT_EQ(Given(drawn), 0u);
  EXPECT_EQ(Given(drawn + "\x1b[256m"), 1u);
  EXPECT_EQ(Given(drawn + "\x1b[0m\x1b[m"), 2u);
  EXPECT_EQ(Given(drawn + "\x1b[K\x1b[2K"), 2u);
  EXPECT_EQ(Given(drawn + At(23, 75)), 1u);
  EXPECT_EQ(Given(drawn + "\x1b[39m\x1b[Lx"), 1u);  // no reader any more: handed over at the end
}

TEST_F(HandOverTest, AnUnfinishedStatusLineWaits) {
  EXPECT_EQ(Given(BottomLine('R', 68, "34;46") + "\x1b[m"), 0u);             // too far left
  EXPECT_EQ(Given(BottomLine('R', 75, "34;46") + "\x1b[K"), 0u);             // still coloured
  EXPECT_EQ(Given(BottomLine('R', 75, "34;40") + "\x1b[m"), 0u);             // black background
  EXPECT_EQ(Given(BottomLine('R', 75, "34;46") + "x\x1b[m"), 0u);            // no blank before the cursor
  EXPECT_EQ(Given(BottomLine('R', 75, "34;46") + "  \b\x1b[m"), 0u);         // coloured cell under it
  EXPECT_EQ(Given(BottomLine('R', 75, "34;46") + "\x1b[24;81H\x1b[m"), 0u);  // outside
  EXPECT_EQ(Given(BottomLine('R', 75, "34;46") + "\x1b[m\x1b[24;76H\x1b[m"), 3u);  // finished
}

TEST_F(HandOverTest, ARedrawOfTheReaderThatJumpsAlongTheBottomLineWaits) {
  Feed(BottomLine('R', 75, "34;46") + "\x1b[m");
  ASSERT_EQ(screen.pageFlags & 1, 1u);
  EXPECT_EQ(Given("\x1b[24;1H\x1b[K"), 0u);
  EXPECT_EQ(Given("x"), 1u);  // the jump counts within its batch only

  Feed(BottomLine('R', 75, "34;46") + "\x1b[m");
  EXPECT_EQ(Given("\x1b[23;1H\x1b[24;1H\x1b[K"), 1u);  // a jump from elsewhere does not count
  Feed(BottomLine('R', 75, "34;46") + "\x1b[m");
  EXPECT_EQ(Given("\x1b[280;0H\x1b[K"), 0u);  // 24 in eight bits, and a zero that means 1
}

TEST_F(HandOverTest, AnArticleListWaitsForSomethingThatSaysItIsComplete) {
  const std::string list = "\x1b[m\x1b[J" + At(1, 0) + "A";
  EXPECT_EQ(Given(list), 0u);
  for (const char mark : {'S', 'C', 'I'})
    EXPECT_EQ(Given(list + At(0, 0) + mark), 1u) << mark;
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u" ★快速切換: ")), 1u);
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u" ★快速切換:") + "x"), 0u);
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]?")), 1u);
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]!")), 0u);
}

TEST_F(HandOverTest, AnArticleListIsCompleteWithItsBottomPrompt) {
  const std::string list = "\x1b[m\x1b[J" + At(1, 0) + "A";
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "46") + "\x1b[m"), 1u);
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "41") + "\x1b[m"), 1u);
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "47") + "\x1b[m"), 0u);
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "40") + "\x1b[m"), 0u);
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "46")), 0u);
  EXPECT_EQ(Given(list + BottomLine(' ', 78, "46") + "\x1b[m"), 0u);
  EXPECT_EQ(Given(list + BottomLine('x', 79, "46") + "\bx\x1b[m"),
            1u);  // a letter before the cursor is no matter
  EXPECT_EQ(Given(list + BottomLine('x', 79, "46") + "\x1b[my"), 0u);  // one under it is
}

TEST_F(HandOverTest, InstantMessagesAreCountedOncePerBatch) {
  const std::string high = "\x1b[23;1H\x1b[1;33;46m\xa1";
  const std::string low = "\x1b[24;1H\x1b[1;33;46m\xa1";
  const auto counted = [this](std::string_view bytes) {
    screen.msgCount = 0;  // the watcher, as the real one, does not touch it
    Feed(bytes);
    return screen.msgCount;
  };
  EXPECT_EQ(counted(high + "\xb9"), 0);  // nobody watches
  screen.msgWatch = 1;
  EXPECT_EQ(counted(high + "\xb9"), 1);
  EXPECT_EQ(counted("abc" + low + "\xb9"), 1);
  EXPECT_EQ(counted(high + "x" + low + "x" + high + "x"), 1);
  EXPECT_EQ(counted(high), 0);        // nothing follows yet
  EXPECT_EQ(counted("a" + high), 0);  // the same, further in
  EXPECT_EQ(counted("\x1b[22;1H\x1b[1;33;46m\xa1\xb9"), 0);
  EXPECT_EQ(counted(high.substr(0, 9)) + counted(high.substr(9) + "\xb9"), 0);  // split
}

}  // namespace
}  // namespace quillet
