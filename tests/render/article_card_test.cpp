#include "render/article_card.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1'700'000'000;

CardTexts Describe(std::int32_t score) {
  ArticleItem item;
  item.score = score;
  return DescribeCard(item, CardColours::kUsual, kNow);
}

TEST(ArticleCardTest, FireMarksStandBeforeHighScoresOfEitherSign) {
  const struct {
    std::int32_t score;
    int fires;
    std::u16string_view text;
  } cases[] = {
      {299, 0, u"299"},
      {300, 1, u"🔥300"},
      {-350, 1, u"🔥350"},
      {800, 2, u"🔥🔥800"},
      {1499, 2, u"🔥🔥1499"},
      {1500, 3, u"🔥🔥🔥1500"},
      {-std::numeric_limits<std::int32_t>::max(), 3, u"🔥🔥🔥2147483647"},
  };
  for (const auto& [score, fires, text] : cases) {
    const CardTexts texts = Describe(score);
    EXPECT_EQ(texts.score.text, text) << score;
    EXPECT_EQ(texts.fires, fires) << score;
  }
}

TEST(ArticleCardTest, WhatIsMissingIsNotInventedAndADeletedArticleKeepsItsWidth) {
  EXPECT_EQ(Describe(kNoScore).score.text, u"");
  EXPECT_EQ(Describe(0).score.text, u"已被刪除    ");
  EXPECT_EQ(Describe(1).title.text, u"Unknown Title");
  EXPECT_EQ(Describe(1).age.text, u"");
  EXPECT_NE(Describe(-10).score.colour, Describe(10).score.colour);
}

}  // namespace
}  // namespace quillet
