#include "render/style/styled_article.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

#include "render/style/styled_screen.h"
#include "tests/render/style/styling.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using Text = std::vector<ArticleLine>;

ArticleLine RowOf(const ScreenBuilder& builder, int row) {
  const auto at = static_cast<std::size_t>(row);
  return {builder.screen.text[at], builder.screen.attr[at]};
}
ArticleLine Plain(std::u16string_view words, std::uint8_t attr = kAttrBlank) {
  return RowOf(ScreenBuilder().Put(0, 0, words, attr), 0);
}
ArticleLine Push(std::u16string_view id, std::u16string_view words = u"一",
                 std::u16string_view stamp = u"11/06 10:00", std::u16string_view mark = u"→") {
  ScreenBuilder builder;
  PutPush(builder, 0, mark, id, words, stamp);
  return RowOf(builder, 0);
}

// A header, `body`, and blank lines that make it fill a page: so that each row bears a number.
Text ArticleOf(const Text& body) {
  ScreenBuilder header;
  header.screen = ArticleHeader();
  Text text;
  for (int row = 0; row < 4; ++row)
    text.push_back(RowOf(header, row));
  text.insert(text.end(), body.begin(), body.end());
  while (text.size() < ArticleLines::kPageRows)
    text.push_back(Plain(u""));
  return text;
}

ScreenSnapshot PageOf(const Text& text, std::size_t top) {
  ScreenBuilder builder;
  for (std::size_t row = 0; row < ArticleLines::kPageRows; ++row) {
    builder.screen.text[row] = text[top + row].text;
    builder.screen.attr[row] = text[top + row].attr;
  }
  const std::size_t last = top + ArticleLines::kPageRows;
  const std::string range = std::to_string(top + 1) + "~" + std::to_string(last);
  const std::u16string footer =
      u"  瀏覽 第 1/9 頁 ( 33%)  目前顯示: 第 " + std::u16string(range.begin(), range.end()) + u" 行";
  return Classified(WithReaderFooter(builder.screen, footer, last == text.size() ? 0x8F : 0xAB));
}

class StyledArticleTest : public WithTables {
 protected:
  // Pages through the text, as the reading does.
  void Take(const Text& text) {
    const std::size_t lastTop = text.size() - ArticleLines::kPageRows;
    for (std::size_t top = 0;; top = std::min(top + ArticleLines::kPageRows - 1, lastTop)) {
      ASSERT_NE(lines_.Add(PageOf(text, top), Understand(PageOf(text, top))), ArticleLines::Added::kOther);
      if (top == lastTop) break;
    }
    ASSERT_EQ(lines_.Count(), static_cast<int>(text.size()));
  }
  void Follow() { article_.Follow(lines_, postTime_, wishes_.Rules()); }
  void Show(const Text& body) {
    lines_.Clear();
    Take(ArticleOf(body));
    Follow();
  }
  PageRow Row(int index) const { return article_.Row(lines_, index, wishes_.Rules()); }
  std::u16string Age(int index) const { return Row(index).age; }

  Wishes wishes_;
  ArticleLines lines_;
  StyledArticle article_;
  std::int64_t postTime_ = Local(2026, 11, 6, 6, 0);
};

TEST_F(StyledArticleTest, LinesLookAsTheyDoOnTheBbssOwnScreen) {
  wishes_.Note(u"kagami", ListKind::kBlack, u"鏡", 0x06, true);
  wishes_.Note(u"troll", ListKind::kSuperBlack);
  wishes_.settings.superBlackPush = PushTreatment::kRemove;
  wishes_.reveal = Reveal::kDescriptions;
  wishes_.keywords = {u"月"};
  wishes_.myId = u"miko";
  Text body = {Plain(u"看月亮"), Plain(u"彩色", 0x0C)};
  for (const auto id : {u"kagami", u"troll", u"kagami", u"miko", u"troll", u"miko"})
    body.push_back(Push(id, u"月亮"));
  const Text text = ArticleOf(body);
  Take(text);
  for (const PushTreatment level : {PushTreatment::kHideText, PushTreatment::kMaskId}) {
    wishes_.settings.blackPush = level;
    Follow();
    const StyledScreen screen = Dress(PageOf(text, 0), wishes_.Rules(), postTime_);
    ASSERT_EQ(article_.Count(), ArticleLines::kPageRows - 2);
    for (int index = 0; index < article_.Count(); ++index) {
      EXPECT_EQ(Row(index), screen.page[static_cast<std::size_t>(index)]) << index;
      EXPECT_EQ(article_.LineOf(index), screen.rowOf[static_cast<std::size_t>(index)]) << index;
    }
    // What lies between them and is not shown does not part the lines of one id.
    EXPECT_EQ(Reads(Row(7)).substr(0, 10), u"         :");
  }
}

TEST_F(StyledArticleTest, LinesThatTheListsRemoveGoAndComeBackAtOnce) {
  wishes_.settings.blackPush = PushTreatment::kRemove;
  Show({Push(u"miko"), Push(u"troll"), Push(u"troll"), Push(u"miko")});
  EXPECT_EQ(article_.Count(), 23);
  wishes_.Note(u"troll", ListKind::kBlack);
  Follow();
  EXPECT_EQ(article_.Count(), 21);
  EXPECT_EQ(article_.LineOf(5), 7);
  for (const int line : {5, 6, 7})
    EXPECT_EQ(article_.IndexOf(line), 5);
  EXPECT_EQ(article_.IndexOf(99), 21);
  wishes_.reveal = Reveal::kHidden;
  Follow();
  EXPECT_EQ(article_.Count(), 23);
  for (const int outside : {-1, 23, 100000}) {
    EXPECT_EQ(article_.LineOf(outside), -1);
    EXPECT_EQ(Row(outside), PageRow());
  }
  article_.Clear();
  EXPECT_EQ(Row(0), PageRow());
}

TEST_F(StyledArticleTest, AgesGrowAndFollowThePostTimeOnceItIsKnown) {
  postTime_ = 0;
  wishes_.now = Local(2026, 3, 1, 10, 0);
  Show({Push(u"a", u"", u"12/31 23:00"), Push(u"d", u"", u"03/01 09:00")});
  EXPECT_EQ(Age(4), u"快2個月前");
  EXPECT_EQ(Age(5), u"1小時前");
  wishes_.now += 3600;
  EXPECT_EQ(Age(5), u"2小時前");
  postTime_ = Local(2023, 12, 31, 22, 0);
  Follow();
  EXPECT_EQ(Age(4), u"2年前");
  EXPECT_EQ(Age(5), u"快2年前");
}

TEST_F(StyledArticleTest, FirstPushIsBehindTheOriginAndShown) {
  const ArticleLine origin = Plain(u"※ 發信站: 奧拉拉文藝坊(host)", 2);
  Show({Push(u"quoted"), origin});
  EXPECT_EQ(article_.FirstPush(), -1);
  Show(
      {Push(u"quoted"), origin, Push(u"forwarded"), origin, Plain(u"※ 編輯"), Push(u"troll"), Push(u"miko")});
  EXPECT_EQ(article_.FirstPush(), 9);
  wishes_.Note(u"troll", ListKind::kBlack);
  wishes_.settings.blackPush = PushTreatment::kRemove;
  Follow();
  EXPECT_EQ(article_.LineOf(article_.FirstPush()), 10);
  Show({Plain(u"沒有站名"), Push(u"miko")});
  EXPECT_EQ(article_.FirstPush(), 5);
}

TEST_F(StyledArticleTest, ControlCodesAreTheAuthorsColoursOnly) {
  Show({Plain(u"※ 引述", 2), Plain(u": 引言", 6), Plain(u"> 引言", 6), Push(u"miko"), Plain(u"本文")});
  EXPECT_FALSE(article_.HasControlCodes());
  Show({Plain(u"本文"), Plain(u"彩", 0x0C)});
  EXPECT_TRUE(article_.HasControlCodes());
  // An invisible colour is a code as well.
  Show({Plain(u"　", 0x47)});
  EXPECT_TRUE(article_.HasControlCodes());
}

// What grows and changes line by line ends as what is read at once.
TEST_F(StyledArticleTest, FollowingStepByStepEndsWhereReadingAtOnceDoes) {
  const ArticleLine origin = Plain(u"※ 發信站: 奧拉拉文藝坊(host)", 2);
  wishes_.settings.blackPush = PushTreatment::kRemove;
  postTime_ = Local(2020, 5, 5);
  Text text = ArticleOf({Plain(u"底"), origin, Push(u"miko", u"月", u"12/31 23:59"), Push(u"troll")});
  const std::function<void()> steps[] = {
      [] {},
      [&] { text.insert(text.end(), 40, Push(u"miko", u"月", u"01/02 08:00")); },
      [&] { text[30] = Plain(u"彩色的字", 0x0C); },
      [&] { text[6] = Push(u"kagami", u"月", u"02/29 01:00"); },
      [&] { wishes_.Note(u"miko", ListKind::kBlack); },
      [&] { text.push_back(Push(u"troll", u"月", u"13/13 13:13")); },
      [&] { text.resize(text.size() - 3); },
      [&] { text[40] = origin; },
      [&] { postTime_ = 0; },
      [&] { postTime_ = Local(2018, 5, 5); },
      [&] { wishes_.names.Clear(); },
      [&] {
        lines_.Clear();
        text = ArticleOf({});
        text[0] = Plain(u"沒有標頭");
      }};
  for (const auto& step : steps) {
    step();
    Take(text);
    Follow();
    StyledArticle fresh;
    fresh.Follow(lines_, postTime_, wishes_.Rules());
    ASSERT_EQ(article_.Count(), fresh.Count());
    ASSERT_EQ(article_.FirstPush(), fresh.FirstPush());
    ASSERT_EQ(article_.HasControlCodes(), fresh.HasControlCodes());
    for (int index = 0; index < fresh.Count(); ++index)
      ASSERT_EQ(Row(index), fresh.Row(lines_, index, wishes_.Rules())) << &step - steps << " " << index;
  }
}

}  // namespace
}  // namespace quillet
