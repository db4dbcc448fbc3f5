#include "render/article_card.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1'700'000'000;

CardTexts Describe(std::int32_t score, CardColours colours = CardColours::kUsual) {
  ArticleItem item;
  item.score = score;
  return DescribeCard(item, colours, kNow);
}

TEST(ArticleCardTest, FireMarksStandBeforeHighScoresOfEitherSign) {
  const struct {
    std::int32_t score;
    int fires;
    std::u16string_view text;
  } cases[] = {
      {1, 0, u"1"},
      {-1, 0, u"1"},
      {299, 0, u"299"},
      {300, 1, u"🔥300"},
      {-350, 1, u"🔥350"},
      {799, 1, u"🔥799"},
      {800, 2, u"🔥🔥800"},
      {1499, 2, u"🔥🔥1499"},
      {1500, 3, u"🔥🔥🔥1500"},
      {std::numeric_limits<std::int32_t>::max(), 3, u"🔥🔥🔥2147483647"},
      {-std::numeric_limits<std::int32_t>::max(), 3, u"🔥🔥🔥2147483647"},
  };
  for (const auto& [score, fires, text] : cases) {
    const CardTexts texts = Describe(score);
    EXPECT_EQ(texts.score.text, text) << score;
    EXPECT_EQ(texts.fires, fires) << score;
  }
}

TEST(ArticleCardTest, UnknownScoreIsNotDrawnAndDeletedArticleKeepsItsWidth) {
  EXPECT_EQ(Describe(kNoScore).score.text, u"");
  EXPECT_EQ(Describe(0).score.text, u"已被刪除    ");
  EXPECT_EQ(Describe(0).fires, 0);
}

TEST(ArticleCardTest, ColoursFollowTheGroundAndTheSign) {
  const CardTexts usual = Describe(10);
  EXPECT_EQ(usual.title.colour, 15);
  EXPECT_EQ(usual.score.colour, 1);
  EXPECT_EQ(usual.age.colour, 14);
  EXPECT_DOUBLE_EQ(usual.age.opacity, 0.7);
  const CardTexts alternative = Describe(10, CardColours::kAlternative);
  EXPECT_EQ(alternative.title.colour, 0);
  EXPECT_EQ(alternative.score.colour, 31);
  EXPECT_EQ(alternative.age.colour, 4);
  EXPECT_EQ(Describe(-10).score.colour, 37);
  EXPECT_EQ(Describe(-10, CardColours::kAlternative).score.colour, 37);
  EXPECT_EQ(Describe(0).score.colour, 1);
}

TEST(ArticleCardTest, MissingTitleAndTimeAreNotInvented) {
  ArticleItem item;
  EXPECT_EQ(DescribeCard(item, CardColours::kUsual, kNow).title.text, u"Unknown Title");
  EXPECT_EQ(DescribeCard(item, CardColours::kUsual, kNow).age.text, u"");
  item.title = u"[閒聊] 星空";
  item.postTime = kNow - 84 * 60;
  EXPECT_EQ(DescribeCard(item, CardColours::kUsual, kNow).title.text, u"[閒聊] 星空");
  EXPECT_EQ(DescribeCard(item, CardColours::kUsual, kNow).age.text, u"1個多小時前");
}

}  // namespace
}  // namespace quillet
