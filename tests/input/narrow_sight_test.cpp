#include "input/narrow_sight.h"

#include <gtest/gtest.h>
#include <set>

#include "bbs/page_flags.h"
#include "core/key_sequence.h"
#include "tests/support/pages.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr int kFirstEntry = 3;
constexpr int kEntries = 20;

// A list of the BBS's, moved through by its keys.
struct List {
  int count;
  int selected = 0;

  int Page() const { return selected / kEntries * kEntries; }
  ScreenSnapshot Screen() const {
    ScreenBuilder page;
    page.Put(0, 0, u"【看板列表】");
    for (int index = Page(); index < std::min(count, Page() + kEntries); ++index) {
      const std::string number = std::to_string(index + 1);
      page.Put(kFirstEntry + index - Page(), 0, index == selected ? u"●" : u"  ");
      page.Put(kFirstEntry + index - Page(), 6, std::u16string(number.begin(), number.end()) + u" kagami");
    }
    page.Put(23, 0, u"選擇看板").Cursor(kFirstEntry + selected - Page(), 1);
    return Classified(page.screen);
  }
  void Take(std::string_view keys) {
    if (keys == KeySequence(kKeyPageDown)) {
      selected = std::min(selected + kEntries, count - 1);
    } else if (keys == KeySequence(kKeyPageUp)) {
      selected = Page() == 0 ? 0 : selected - kEntries;
    } else {
      const int step = keys.substr(0, 3) == KeySequence(kKeyDown) ? 1 : -1;
      selected = (selected + count + step * static_cast<int>(keys.size() / 3) % count) % count;
    }
  }
};

std::string See(NarrowSight& sight, const ScreenSnapshot& screen) {
  return sight.OnScreen(screen, Understand(screen));
}

class NarrowSightTest : public WithTables {
 protected:
  // Presses the key until the entry has been in sight; returns the entries that have been, page by page.
  std::set<int> Walk(List& list, int virtualKey, int until) {
    std::set<int> seen;
    for (int press = 0; press < 3 * list.count + 10; ++press) {
      for (std::string keys = See(sight, list.Screen()); !keys.empty(); keys = See(sight, list.Screen()))
        list.Take(keys);
      const int row = kFirstEntry + list.selected - list.Page();
      const int top = sight.TopFor(row);
      EXPECT_TRUE(row >= top && row < top + sight.Rows()) << "the cursor is out of sight";
      for (int at = std::max(top, kFirstEntry); at < std::min(top + sight.Rows(), kFirstEntry + kEntries);
           ++at)
        if (const int entry = list.Page() + at - kFirstEntry; entry < list.count) seen.insert(entry);
      if (seen.count(until) != 0) break;
      const auto keys = sight.OnKey({.virtualKey = virtualKey}, list.Screen(), Understand(list.Screen()));
      if (keys) list.Take(*keys);
    }
    return seen;
  }

  NarrowSight sight;
};

TEST_F(NarrowSightTest, PagingThroughAListBringsEveryLineIntoSightBothWays) {
  for (const int rows : {1, 2, 4, 7, 13, 22}) {
    for (const int count : {1, 7, 20, 21, 47}) {
      sight = NarrowSight();
      sight.SetRows(rows);
      List list{count};
      ASSERT_EQ(KindOf(list.Screen()), PageKind::kList);
      EXPECT_EQ(Walk(list, kKeyPageDown, count - 1).size(), static_cast<std::size_t>(count)) << rows;
      list.selected = count - 1;
      EXPECT_EQ(Walk(list, kKeyPageUp, 0).size(), static_cast<std::size_t>(count)) << rows;
    }
  }
}

TEST_F(NarrowSightTest, ItFollowsAWindowThatBecomesSmallOverAPage) {
  const List list{.count = 47, .selected = 46};
  See(sight, list.Screen());
  sight.SetRows(4);
  ASSERT_EQ(sight.TopFor(9), 6);
  EXPECT_EQ(sight.OnKey({.virtualKey = kKeyPageUp}, list.Screen(), Understand(list.Screen()))->size(),
            6 * KeySequence(kKeyUp).size());
}

TEST_F(NarrowSightTest, ALongTextIsPagedThroughByTheRowsInSight) {
  ScreenSnapshot page = Classified(WithReaderFooter(ArticleHeader()));
  page.pageFlags &= ~(PF_READ_TOP | PF_READ_END);
  page.cursorRow = 23;
  const auto press = [&](int key) { return sight.OnKey({.virtualKey = key}, page, Understand(page)); };
  EXPECT_FALSE(press(kKeyPageDown)) << "all is in sight";
  sight.SetRows(8);
  See(sight, page);
  for (const int top : {7, 14, 15}) {
    EXPECT_EQ(press(kKeyPageDown), "");
    EXPECT_EQ(sight.TopFor(23), top);
  }
  EXPECT_EQ(press(kKeyPageDown), KeySequence(kKeyPageDown));
  page.text[9].fill('x');
  See(sight, page);
  EXPECT_EQ(sight.TopFor(23), 0) << "the next page is read from its top";
  EXPECT_EQ(press(kKeyPageUp), KeySequence(kKeyPageUp));
  page.text[9].fill('y');
  See(sight, page);
  EXPECT_EQ(sight.TopFor(23), 15);
  page.pageFlags |= PF_READ_TOP | PF_READ_END;
  EXPECT_FALSE(press(kKeyPageDown)) << "the BBS goes to the next article";
  EXPECT_FALSE(press(kKeyDown));
  See(sight, ScreenBuilder().screen);
  EXPECT_EQ(press(kKeyUp), "");
  EXPECT_EQ(sight.TopFor(23), 14);
}

TEST_F(NarrowSightTest, APageThatWasAskedForOnAnotherKindOfPageIsWaitedForNoMore) {
  ScreenSnapshot page = Classified(WithReaderFooter(ArticleHeader()));
  page.pageFlags &= ~(PF_READ_TOP | PF_READ_END);
  sight.SetRows(22);
  See(sight, page);
  const auto pageDown = [&] { return sight.OnKey({.virtualKey = kKeyPageDown}, page, Understand(page)); };
  pageDown();
  ASSERT_EQ(pageDown(), KeySequence(kKeyPageDown));
  EXPECT_EQ(See(sight, List{.count = 47, .selected = 10}.Screen()), "") << "its cursor stays";
}

}  // namespace
}  // namespace quillet
