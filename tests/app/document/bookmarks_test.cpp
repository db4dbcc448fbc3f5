#include "app/document/bookmarks.h"

#include "tests/app/document_fixture.h"

namespace quillet {
namespace {

class BookmarksTest : public DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    OpenScript();
    QObject::connect(&Marks(), &Bookmarks::Ended, [this](BookmarkEnd end) { ends.push_back(end); });
  }
  Bookmarks& Marks() { return doc->GetBookmarks(); }
  static ArticleInfo Article(const std::u16string& code) {
    return {.board = u"Cats", .author = u"kagami", .title = u"t", .code = code, .postTime = 1};
  }
  void Read(const ArticleInfo& article) {
    doc->OnScreen(ScreenReason::kUpdated, {.article = article, .articleOpen = true});
  }
  void TellCode(const std::u16string& code) { emit doc->GetAutomations().CodeAsked(Article(code)); }
  // Whether it is marked then; not any more afterwards.
  bool Push(const std::u16string& code, PushedBy by) {
    emit doc->GetAutomations().ArticlePushed(Article(code), by);
    const bool isMarked = Marks().Has(Article(u"1XYZabcd"));
    if (isMarked) Marks().Change(ArticleListKind::kBookmarks, [](auto& root) { root.children.clear(); });
    return isMarked;
  }

  std::vector<BookmarkEnd> ends;
};

TEST_F(BookmarksTest, APushMarksItsArticleIfTheUserWantsThatAndTheCodeIsKnown) {
  EXPECT_FALSE(Push(u"1XYZabcd", PushedBy::kHand));
  doc->GetSettings().Set(&Settings::markAfterPush, true);
  EXPECT_TRUE(Push(u"1XYZabcd", PushedBy::kOrder) && ends.empty()) << "the order tells of itself";
  EXPECT_TRUE(Push(u"1XYZabcd", PushedBy::kHand));
  EXPECT_EQ(ends, std::vector{BookmarkEnd::kAdded});
  EXPECT_FALSE(Push({}, PushedBy::kHand));
  Read(Article({}));
  EXPECT_FALSE(Push({}, PushedBy::kOrder));
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kNone) << "the BBS tells the open article's code only";
  EXPECT_FALSE(Push({}, PushedBy::kHand));
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kAskCode);
  TellCode({});
  EXPECT_EQ(ends.size(), 1U) << "nobody has asked for it";
  TellCode(u"1XYZabcd");
  EXPECT_TRUE(Marks().HasOpenArticle() && !Marks().WantsCodeOf(Article({})));
}

TEST_F(BookmarksTest, TheOpenArticleIsPutInAndTakenOut) {
  EXPECT_FALSE(Marks().ToggleOpenArticle()) << "there is none";
  Read(Article({}));
  ASSERT_TRUE(Marks().ToggleOpenArticle() && doc->GetAutomations().Stop());
  TellCode({});
  TellCode(u"1XYZabcd");
  const std::filesystem::path file = ProgramHome() / "bookmark.txt", theirs = home.Path() / "theirs";
  std::filesystem::copy_file(file, theirs);
  EXPECT_TRUE(Marks().HasOpenArticle() && Marks().ToggleOpenArticle());
  EXPECT_EQ(ends, (std::vector{BookmarkEnd::kNoCode, BookmarkEnd::kAdded, BookmarkEnd::kRemoved}));
  // Another program has added it meanwhile.
  std::filesystem::remove(file);
  std::filesystem::copy_file(theirs, file);
  TellCode(u"1XYZabcd");
  EXPECT_TRUE(Marks().HasOpenArticle());
  doc->GetConnection().Disconnect();
  Read(Article(u"1XYZabcd"));
  EXPECT_FALSE(Marks().ToggleOpenArticle()) << "nobody is connected";
}

}  // namespace
}  // namespace quillet
