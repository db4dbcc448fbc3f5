#include "render/article_card.h"

#include <cstdlib>

#include "render/age_text.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

struct CardTints {
  int title;
  int score;
  int age;
};
constexpr CardTints kUsualTints = {15, 1, 14};
constexpr CardTints kAlternativeTints = {0, 31, 4};
constexpr int kNegativeScore = 37;
constexpr double kAgeOpacity = 0.7;

// The scores from which on there is one more fire mark.
constexpr std::int32_t kFireSteps[] = {300, 800, 1500};

int FiresOf(std::int32_t size) {
  int fires = 0;
  for (const std::int32_t step : kFireSteps)
    if (size >= step) ++fires;
  return fires;
}

std::u16string ScoreText(std::int32_t size, int fires) {
  std::u16string text;
  for (int i = 0; i < fires; ++i)
    text += kFireMark;
  return text + ToText(size);
}

}  // namespace

CardTexts DescribeCard(const ArticleItem& item, CardColours colours, std::int64_t now) {
  const CardTints& tints = colours == CardColours::kAlternative ? kAlternativeTints : kUsualTints;
  CardTexts texts;
  texts.title = {item.title.empty() ? u"Unknown Title" : item.title, tints.title, 1};
  texts.age = {AgeText(item.postTime, now), tints.age, kAgeOpacity};
  texts.score.colour = item.score < 0 ? kNegativeScore : tints.score;
  if (item.score == kNoScore) return texts;
  if (item.score == 0) {
    texts.score.text = u"已被刪除    ";  // the blanks keep the column's width
    return texts;
  }
  const std::int32_t size = std::abs(item.score);
  texts.fires = FiresOf(size);
  texts.score.text = ScoreText(size, texts.fires);
  return texts;
}

}  // namespace quillet
