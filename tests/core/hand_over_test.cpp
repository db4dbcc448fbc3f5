// On which pages the parser hands an article list over. The reader, bells, instant messages and the many ways
// in which a page may be unfinished are tried against the plain reference (parser_equality_test.cpp).
#include <gtest/gtest.h>
#include <string>

#include "core/charset.h"
#include "core/term_screen.h"
#include "tests/support/feeding.h"
#include "tests/support/recording_watcher.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using HandOverTest = WithTables;

TEST_F(HandOverTest, AnArticleListWaitsForSomethingThatSaysItIsComplete) {
  RecordingWatcher watcher;
  TermScreen screen;
  screen.SetWatcher(&watcher);
  // Screens handed over for the list with `more` on it.
  const auto given = [&](const std::string& more) {
    const std::size_t before = watcher.Screens();
    screen.Feed(AsBytes("\x1b[m\x1b[J" + At(1, 0) + "A" + more));
    return watcher.Screens() - before;
  };
  EXPECT_EQ(given(""), 0u);
  for (const char mark : {'S', 'C', 'I'})
    EXPECT_EQ(given(At(0, 0) + mark), 1u) << mark;
  const std::string line(79, ' ');
  EXPECT_EQ(given(At(23, 0) + "\x1b[46m" + line + "\x1b[m"), 1u);
  EXPECT_EQ(given(At(23, 0) + "\x1b[47m" + line + "\x1b[m"), 0u) << "no prompt is white";
  EXPECT_EQ(given(At(23, 0) + ToBig5(u" ★快速切換: ")), 1u);
  EXPECT_EQ(given(At(23, 0) + ToBig5(u" ★快速切換:") + "x"), 0u);
  EXPECT_EQ(given(At(23, 0) + ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]?")), 1u);
  EXPECT_EQ(given(At(23, 0) + ToBig5(u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]!")), 0u);
}

}  // namespace
}  // namespace quillet
