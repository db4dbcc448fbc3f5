// On which pages the parser hands a screen over. Bells, instant messages and the many ways in which a page
// may be unfinished are tried against the plain reference (parser_equality_test.cpp).
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

TEST_F(HandOverTest, AnArticleListWaitsForSomethingThatSaysItIsComplete) {
  const std::string list = "\x1b[m\x1b[J" + At(1, 0) + "A";
  EXPECT_EQ(Given(list), 0u);
  for (const char mark : {'S', 'C', 'I'})
    EXPECT_EQ(Given(list + At(0, 0) + mark), 1u) << mark;
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "46") + "\x1b[m"), 1u);
  EXPECT_EQ(Given(list + BottomLine(' ', 79, "47") + "\x1b[m"), 0u) << "no prompt is white";
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u" ★快速切換: ")), 1u);
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u" ★快速切換:") + "x"), 0u);
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]?")), 1u);
  EXPECT_EQ(Given(list + At(23, 0) + ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]!")), 0u);
}

}  // namespace
}  // namespace quillet
