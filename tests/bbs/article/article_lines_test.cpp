#include "bbs/article/article_lines.h"

#include <gtest/gtest.h>
#include <random>

#include "bbs/page_flags.h"
#include "tests/bbs/article/article_bbs.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

using Added = ArticleLines::Added;

std::vector<std::string> TextOf(const ArticleLines& lines) {
  std::vector<std::string> rows;
  for (int index = 0; index < lines.Count(); ++index)
    rows.emplace_back(reinterpret_cast<const char*>(lines.At(index).text.data()), kCols);
  return rows;
}

class ArticleLinesTest : public WithTables {
 protected:
  void SetUp() override {
    WithTables::SetUp();
    bbs_ = std::make_unique<ArticleBbs>();
    bbs_->reading = true;
    lines_ = std::make_unique<ArticleLines>();
  }
  void Fill(int rows) { bbs_->articles[0] = ArticleOf(rows); }
  Added AddAt(int top) {
    bbs_->top = std::min(top, bbs_->LastTop());
    return Add(bbs_->Screen());
  }
  void TakeAll() {
    for (int top = 0; !lines_->IsComplete(); top += ArticleBbs::kPage - 1)
      ASSERT_EQ(AddAt(top), Added::kMore) << top;
    ASSERT_EQ(TextOf(*lines_), bbs_->Whole());
  }
  // A text without a header in the same reader.
  ScreenSnapshot Plain(std::u16string_view footer, std::uint8_t attr, std::u16string_view word) const {
    ScreenBuilder builder;
    for (int row = 0; row < ArticleBbs::kPage; ++row)
      if (row % 22 != 0) builder.Put(row, 0, std::u16string(word) + static_cast<char16_t>(u'a' + row));
    return bbs_->Classified(WithReaderFooter(builder.screen, footer, attr));
  }

  std::unique_ptr<ArticleBbs> bbs_;
  Added Add(const ScreenSnapshot& screen) { return lines_->Add(screen, Understand(screen)); }
  std::optional<int> TopOf(const ScreenSnapshot& screen) const {
    return lines_->TopOf(screen, Understand(screen));
  }

  std::unique_ptr<ArticleLines> lines_;
};

TEST_F(ArticleLinesTest, ArticlesOfEveryLengthAreGatheredWhole) {
  for (int rows = 1; rows < 120; ++rows) {
    SCOPED_TRACE(rows);
    Fill(rows);
    lines_->Clear();
    TakeAll();
    EXPECT_EQ(Add(bbs_->Screen()), Added::kNothing);
  }
}

TEST_F(ArticleLinesTest, APageIsPlacedByItsNumbersWhereverItBegins) {
  Fill(1200);
  EXPECT_EQ(AddAt(0), Added::kMore);
  for (int top = 0; top <= bbs_->LastTop(); ++top) {
    bbs_->top = top;
    ASSERT_EQ(TopOf(bbs_->Screen()), top);
  }
  for (int top = 1; top <= bbs_->LastTop(); ++top)
    AddAt(top);
  EXPECT_EQ(TextOf(*lines_), bbs_->Whole());
  EXPECT_TRUE(lines_->IsComplete());
}

TEST_F(ArticleLinesTest, ATextWithoutAHeaderCountsEachRow) {
  const auto first = Plain(u"  瀏覽 第 1/2 頁 ( 50%)  目前顯示: 第 01~23 行", 0xAB, u"字");
  const auto last = Plain(u"  瀏覽 第 2/2 頁 (100%)  目前顯示: 第 23~45 行", 0x8F, u"字");
  EXPECT_EQ(TopOf(last), std::nullopt);
  EXPECT_EQ(Add(last), Added::kNothing);
  EXPECT_EQ(Add(first), Added::kMore);
  EXPECT_EQ(TopOf(last), 22);
  EXPECT_EQ(Add(last), Added::kMore);
  EXPECT_EQ(lines_->Count(), 45);
  EXPECT_TRUE(lines_->IsComplete());
}

TEST_F(ArticleLinesTest, AGapIsNotTakenAndDoesNoHarm) {
  AddAt(0);
  EXPECT_EQ(AddAt(1000), Added::kNothing);
  EXPECT_EQ(lines_->Count(), 23);
  EXPECT_FALSE(lines_->IsComplete());
  EXPECT_EQ(AddAt(24), Added::kNothing);  // one line is missing
  EXPECT_EQ(AddAt(23), Added::kMore);     // none
  for (int top = 45; !lines_->IsComplete(); top += 22)
    AddAt(top);
  EXPECT_EQ(TextOf(*lines_), bbs_->Whole());
}

TEST_F(ArticleLinesTest, APageBehindTheKnownEndReopensTheArticle) {
  TakeAll();
  for (int push = 0; push < 60; ++push)
    bbs_->articles[0].rows.push_back(PushText(push));
  const unsigned version = lines_->Version();
  EXPECT_EQ(AddAt(1000), Added::kNothing);
  EXPECT_FALSE(lines_->IsComplete());
  EXPECT_NE(lines_->Version(), version);
}

TEST_F(ArticleLinesTest, ChangedTextReplacesWhatWasKnownFromThereOn) {
  TakeAll();
  bbs_->articles[0].rows[30] = u"改過了";
  EXPECT_EQ(AddAt(22), Added::kChanged);
  EXPECT_EQ(lines_->Count(), 45);
  EXPECT_FALSE(lines_->IsComplete());
  for (int top = 44; !lines_->IsComplete(); top += 22)
    AddAt(top);

  bbs_->articles[0].rows.resize(90);
  EXPECT_EQ(AddAt(1000), Added::kChanged);
  EXPECT_EQ(TextOf(*lines_), bbs_->Whole());
  EXPECT_TRUE(lines_->IsComplete());
}

TEST_F(ArticleLinesTest, ColoursFollowTheScreenWithoutBeingAChange) {
  TakeAll();
  ScreenSnapshot screen = bbs_->Screen();
  screen.attr[5][3] = 0x21;
  const unsigned version = lines_->Version();
  EXPECT_EQ(Add(screen), Added::kNothing);
  EXPECT_NE(lines_->Version(), version);
  EXPECT_EQ(lines_->At(*TopOf(screen) + 5).attr[3], 0x21);
  EXPECT_TRUE(lines_->IsComplete());
}

TEST_F(ArticleLinesTest, PagesOfAnotherTextAreNotTaken) {
  AddAt(0);
  const std::vector<std::string> before = TextOf(*lines_);
  // The second page of help begins on a blank row, as the last one known here is.
  bbs_->articles[0].rows[18] = u"";
  lines_->Clear();
  AddAt(0);
  EXPECT_EQ(Add(Plain(u"  瀏覽 第 1/2 頁 ( 50%)  目前顯示: 第 01~23 行", 0xAB, u"說明")), Added::kOther);
  EXPECT_EQ(Add(Plain(u"  瀏覽 第 2/2 頁 (100%)  目前顯示: 第 22~44 行", 0x8F, u"說明")), Added::kOther);
  EXPECT_EQ(Add(Plain(u"  瀏覽 第 2/2 頁 (100%)  目前顯示: 第 23~45 行", 0x8F, u"說明")), Added::kOther);
  bbs_->selected = 1;
  bbs_->articles[1].title = u"另一篇";
  EXPECT_EQ(AddAt(0), Added::kOther);
  EXPECT_EQ(lines_->Count(), 23);

  bbs_->selected = 0;
  EXPECT_EQ(AddAt(0), Added::kNothing);
  EXPECT_EQ(AddAt(22), Added::kMore);
}

TEST_F(ArticleLinesTest, OnlyWholePagesOfAReaderAreLookedAt) {
  const auto ignored = [&](const std::function<void(ScreenBuilder&)>& spoil) {
    ScreenBuilder builder;
    builder.screen = bbs_->Screen();
    spoil(builder);
    const Added added = Add(bbs_->Classified(builder.screen));
    return added == Added::kNothing && lines_->Count() == 0;
  };
  EXPECT_TRUE(ignored([](ScreenBuilder& builder) { builder.Cursor(7, 0); }));
  EXPECT_TRUE(ignored([](ScreenBuilder& builder) { builder.screen.curAttr = 0x2F; }));
  EXPECT_TRUE(ignored([](ScreenBuilder& builder) { builder.Put(23, 2, u"看到"); }));
  EXPECT_TRUE(ignored([](ScreenBuilder& builder) {
    builder.screen.BlankRow(22, 0);
    builder.Put(22, 0, u"★someone", 0xCB).Put(22, 9, u" hello ", 0xAF).Cursor(22, 16);
  }));
  // Numbers that cannot be.
  for (const auto range : {u"00~22", u"22~01", u"01~30", u"01~21", u"~22", u"01~", u"-1~22", u"1 ~22",
                           u"99999999999~99999999999", u"2147483620~2147483642", u"01~2147483647"}) {
    SCOPED_TRACE(std::string(range, range + std::char_traits<char16_t>::length(range)));
    EXPECT_TRUE(ignored([&](ScreenBuilder& builder) {
      builder.Put(23, 39, std::u16string(40, u' '), 0xAB).Put(23, 39, range, 0xAB);
      builder.Cursor(23, 79);
    }));
  }
  EXPECT_FALSE(ignored([](ScreenBuilder&) {}));
}

TEST_F(ArticleLinesTest, AnEndlessArticleIsKeptUpToALimit) {
  Fill(ArticleLines::kMostLines + 500);
  for (int top = 0; top < bbs_->LastTop() + 22; top += 22)
    AddAt(top);
  EXPECT_EQ(lines_->Count(), ArticleLines::kMostLines);
  EXPECT_FALSE(lines_->IsComplete());
}

// Whatever comes: what is known stays consistent, and the article itself is always recovered from its top.
TEST_F(ArticleLinesTest, AnyBytesLeaveALineStoreThatTheArticleFindsItsWayBackInto) {
  std::mt19937 random(5);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (int round = 0; round < 20'000; ++round) {
    bbs_->top = below(bbs_->LastTop() + 1);
    ScreenSnapshot screen = bbs_->Screen();
    for (int spoiled = below(60); spoiled > 0; --spoiled)
      screen.text[static_cast<std::size_t>(below(kRows))][static_cast<std::size_t>(below(kRowStride))] =
          static_cast<std::uint8_t>(random());
    for (int digit = below(12); digit > 0; --digit)
      screen.text[kRows - 1][static_cast<std::size_t>(36 + below(20))] =
          static_cast<std::uint8_t>("0123456789~ "[below(12)]);
    screen.pageFlags = PF_READING | (random() & (PF_READ_TOP | PF_READ_END));
    const unsigned version = lines_->Version();
    const Added added = Add(screen);
    EXPECT_LE(lines_->Count(), ArticleLines::kMostLines);
    if (added == Added::kMore || added == Added::kChanged) {
      EXPECT_NE(lines_->Version(), version);
      const auto place = lines_->PlaceOf(screen, Understand(screen));
      ASSERT_TRUE(place && place->top >= 0 && place->rows >= 1 && place->rows <= ArticleLines::kPageRows);
      EXPECT_GE(lines_->Count(), place->End());
    }
    if (round % 1000 != 999) continue;
    if (AddAt(0) == Added::kOther) {
      lines_->Clear();
      AddAt(0);
    }
    for (int top = 22; top < bbs_->LastTop() + 22; top += 22)
      if (AddAt(top) == Added::kOther) {
        lines_->ForgetFrom(top);
        AddAt(top);
      }
    EXPECT_EQ(TextOf(*lines_), bbs_->Whole());
    EXPECT_TRUE(lines_->IsComplete());
  }
}

}  // namespace
}  // namespace quillet
