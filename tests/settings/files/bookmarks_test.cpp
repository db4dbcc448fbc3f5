#include "settings/files/bookmarks.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

ArticleItem Article(std::u16string board, std::u16string code, std::int64_t time = 0,
                    std::u16string title = u"title") {
  ArticleItem item;
  item.postTime = time;
  item.board = std::move(board);
  item.code = std::move(code);
  item.title = std::move(title);
  return item;
}

ArticleFolder Folder(std::u16string name, std::vector<ArticleFolder::Child> children) {
  return {.name = std::move(name), .children = std::move(children)};
}

TEST(BookmarksTest, ANewBookmarkComesFirstAndASecondToggleTakesItOut) {
  ArticleFolder root = Folder(u"", {Article(u"Art", u"11111111"), Folder(u"f", {})});
  const ArticleFolder before = root;
  const ArticleItem article = Article(u"Art", u"22222222");
  EXPECT_FALSE(IsBookmarked(root, article));
  EXPECT_TRUE(ToggleBookmark(root, article));
  EXPECT_TRUE(IsBookmarked(root, article));
  EXPECT_EQ(root.children.front(), ArticleFolder::Child(article));
  EXPECT_FALSE(ToggleBookmark(root, article));
  EXPECT_EQ(root, before);
}

TEST(BookmarksTest, EveryBookmarkOfTheArticleGoesInFoldersToo) {
  const ArticleItem kept = Article(u"Zoo", u"11111111");
  ArticleFolder root =
      Folder(u"", {Article(u"Art", u"11111111"), kept,
                   Folder(u"f", {Folder(u"g", {Article(u"Art", u"11111111", 9, u"other words")}), kept})});
  // One of the list's own, which goes on the way.
  EXPECT_FALSE(ToggleBookmark(root, std::get<ArticleItem>(root.children.front())));
  EXPECT_EQ(root, Folder(u"", {kept, Folder(u"f", {Folder(u"g", {}), kept})}));
}

TEST(BookmarksTest, WithoutACodeAnArticleIsKnownByBoardTimeAndTitle) {
  const ArticleFolder root = Folder(u"", {Article(u"Art", u"11111111", 500, u"hello")});
  EXPECT_TRUE(IsBookmarked(root, Article(u"Art", u"", 500, u"hello")));
  EXPECT_FALSE(IsBookmarked(root, Article(u"Art", u"", 501, u"hello")));
  EXPECT_FALSE(IsBookmarked(root, Article(u"Art", u"", 500, u"Re: hello")));
  EXPECT_FALSE(IsBookmarked(root, Article(u"Zoo", u"", 500, u"hello")));
  EXPECT_FALSE(IsBookmarked(root, Article(u"Art", u"22222222", 500, u"hello"))) << "two codes, two articles";
  EXPECT_TRUE(IsBookmarked(root, Article(u"Art", u"11111111@", 501, u"edited")));

  const ArticleFolder unknown = Folder(u"", {Article(u"Art", u"", 0, u"hello")});
  EXPECT_FALSE(IsBookmarked(unknown, Article(u"Art", u"", 0, u"hello"))) << "its time is not known";
}

}  // namespace
}  // namespace quillet
