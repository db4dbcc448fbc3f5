#include "input/side_list.h"

#include <gtest/gtest.h>

#include "core/key_sequence.h"
#include "input/key_control.h"

namespace quillet {
namespace {

using Kind = ArticleListKind;
using Action = SideListAction;

ArticleItem Article(std::u16string board, std::u16string title) {
  ArticleItem item;
  item.board = std::move(board);
  item.code = u"1Xabcdef";
  item.title = std::move(title);
  return item;
}

ArticleFolder Folder(std::u16string name, std::vector<ArticleFolder::Child> children) {
  return {.name = std::move(name), .children = std::move(children)};
}

std::vector<std::u16string> NamesOf(const std::vector<SideListEntry>& entries) {
  std::vector<std::u16string> names;
  for (const SideListEntry& entry : entries)
    names.push_back(std::u16string(static_cast<std::size_t>(entry.depth), u'>') +
                    (entry.item != nullptr ? entry.item->title : entry.folderName + u"/"));
  return names;
}
using Names = std::vector<std::u16string>;

// A list of 30 with room for 10.
struct Step {
  const char* what;
  int key;
  int selected, first;
  int selectedAfter, firstAfter;
};

TEST(SideListTest, KeysMoveTheSelectionAndJumpWhereItLeavesThePage) {
  constexpr Step kSteps[] = {
      {"down past the page jumps forward", kKeyDown, 9, 0, 10, 9},
      {"near the end the jump is cut short", kKeyDown, 24, 15, 25, 20},
      {"up past the page jumps back", kKeyUp, 20, 20, 19, 11},
      {"near the start the jump is cut short", kKeyUp, 5, 5, 4, 0},
      {"the last page down", kKeyPageDown, 17, 15, 27, 20},
      {"a page down at the end", kKeyPageDown, 25, 20, 29, 20},
      {"a page up at the start", kKeyPageUp, 7, 3, 0, 0},
      {"the first entry", kKeyHome, 22, 20, 0, 0},
      {"the last entry", kKeyEnd, 2, 0, 29, 20},
      {"the wheel had hidden the selection below", kKeyUp, 28, 3, 27, 18},
      {"the wheel had hidden the selection above", kKeyDown, 2, 12, 3, 3},
  };
  for (const Step& step : kSteps) {
    SideListState state{.selected = step.selected, .first = step.first, .shown = 10, .count = 30};
    EXPECT_EQ(OnSideListKey(step.key, Kind::kHot, state), Action::kMoved) << step.what;
    EXPECT_EQ(state.selected, step.selectedAfter) << step.what;
    EXPECT_EQ(state.first, step.firstAfter) << step.what;
  }
}

TEST(SideListTest, OtherKeysActAndAllButTabAreConsumed) {
  const auto action = [](int key, Kind kind, int count) {
    SideListState state{.selected = 0, .first = 0, .shown = 5, .count = count};
    return OnSideListKey(key, kind, state);
  };
  for (const Kind kind : {Kind::kHot, Kind::kTracked, Kind::kBookmarks}) {
    EXPECT_EQ(action(kKeyTab, kind, 3), Action::kNotConsumed);
    EXPECT_EQ(action('X', kind, 3), Action::kNone);
    for (const int count : {0, 3}) {
      EXPECT_EQ(action(kKeyEscape, kind, count), Action::kClose);
      EXPECT_EQ(action(kKeyLeft, kind, count), Action::kClose);
      for (const int key : {kKeyEnter, kKeyRight})
        EXPECT_EQ(action(key, kind, count), count == 0 ? Action::kNone : Action::kOpen);
      const bool removes = kind == Kind::kBookmarks && count > 0;
      for (const int key : {int{'D'}, kKeyDelete})
        EXPECT_EQ(action(key, kind, count), removes ? Action::kRemove : Action::kNone);
    }
  }
}

class SideListTreeTest : public testing::Test {
 protected:
  ArticleFolder root = Folder(
      u"",
      {Article(u"b", u"one"),
       Folder(u"f", {Folder(u"g", {Article(u"b", u"deep")}), Folder(u"empty", {}), Article(u"b", u"two")}),
       Article(u"b", u"three")});
};

TEST_F(SideListTreeTest, TheTreeIsShownDepthFirstAndPathsLeadBack) {
  const std::vector<SideListEntry> entries = FlattenList(root);
  EXPECT_EQ(NamesOf(entries), (Names{u"one", u"f/", u">g/", u">>deep", u">empty/", u">two", u"three"}));
  for (const SideListEntry& entry : entries) {
    const ArticleFolder::Child* const child = EntryAt(root, entry.path);
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(std::get_if<ArticleItem>(child), entry.item);
  }
  for (const std::vector<int>& path :
       {std::vector<int>{}, {3}, {-1}, {0, 0}, {1, 0, 1}, {1, 1, 0}, {1, 0, 0, 0}}) {
    EXPECT_EQ(EntryAt(root, path), nullptr);
    EXPECT_FALSE(RemoveEntry(root, path));
  }
  EXPECT_EQ(FlattenList(root).size(), entries.size());
}

TEST_F(SideListTreeTest, AnArticleOrAWholeFolderIsRemoved) {
  EXPECT_TRUE(RemoveEntry(root, {1, 0}));
  EXPECT_EQ(NamesOf(FlattenList(root)), (Names{u"one", u"f/", u">empty/", u">two", u"three"}));
  EXPECT_TRUE(RemoveEntry(root, {1, 1}));
  EXPECT_TRUE(RemoveEntry(root, {1}));
  EXPECT_TRUE(RemoveEntry(root, {1}));
  EXPECT_EQ(NamesOf(FlattenList(root)), Names{u"one"});
}

TEST_F(SideListTreeTest, WhatWasSeenIsRemovedWhereverItIsByNow) {
  const std::vector<int> path{1, 2};
  ArticleFolder::Child seen = *EntryAt(root, path);
  std::get<ArticleItem>(seen).score = 900;
  std::get<ArticleItem>(seen).flag = 1;
  const ArticleFolder::Child added = Article(u"b", u"new");
  root.children.insert(root.children.begin(), added);
  EXPECT_TRUE(RemoveEntry(root, path, seen));
  EXPECT_EQ(NamesOf(FlattenList(root)),
            (Names{u"new", u"one", u"f/", u">g/", u">>deep", u">empty/", u"three"}));
  EXPECT_FALSE(RemoveEntry(root, path, seen));

  const ArticleFolder::Child folder = root.children[2];
  std::get<ArticleFolder>(root.children[2]).children.push_back(added);
  EXPECT_FALSE(RemoveEntry(root, {2}, folder)) << "it holds something that was not seen";
}

TEST_F(SideListTreeTest, HotArticlesComeInTheChosenOrderAndFoldersFirst) {
  const auto article = [](std::u16string board, std::u16string title, std::int64_t time, std::int32_t score) {
    ArticleItem item = Article(std::move(board), std::move(title));
    item.postTime = time;
    item.score = score;
    return item;
  };
  const ArticleFolder hot =
      Folder(u"", {article(u"Zoo", u"z", 300, 20), article(u"Art", u"a", 100, kNoScore),
                   Folder(u"f", {article(u"Mid", u"m2", 5, 1), article(u"Art", u"a3", 6, 2)}),
                   article(u"Mid", u"m", 200, -700), article(u"Art", u"a2", 400, 0)});
  const BoardWeights weights{{u"Mid", 5}, {u"Art", -1}};
  const auto shown = [&](HotSortMode mode) {
    return NamesOf(FlattenList(hot, HotArticleOrder(mode, weights)));
  };
  EXPECT_EQ(shown(HotSortMode::kByBoard), (Names{u"f/", u">m2", u">a3", u"m", u"z", u"a", u"a2"}));
  EXPECT_EQ(shown(HotSortMode::kNewestFirst), (Names{u"f/", u">a3", u">m2", u"a2", u"z", u"m", u"a"}));
  EXPECT_EQ(shown(HotSortMode::kByPopularity), (Names{u"f/", u">a3", u">m2", u"m", u"z", u"a2", u"a"}));
  const std::vector<SideListEntry> entries =
      FlattenList(hot, HotArticleOrder(HotSortMode::kByPopularity, weights));
  EXPECT_EQ(entries[3].path, std::vector<int>{3}) << "paths are the tree's";
}

}  // namespace
}  // namespace quillet
