// What a card of the side lists says of one article, and in which colours: title, push score, age. Where the
// pieces stand is the card painter's. Pure.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "settings/files/article_lists.h"

namespace quillet {

enum class CardColours { kUsual, kAlternative };  // the latter on a light ground

struct CardPiece {
  std::u16string text;  // empty: not drawn
  int colour = 0;       // index of the palette
  double opacity = 1;   // 0 to 1
};

struct CardTexts {
  CardPiece title;
  int fires = 0;    // fire marks before the score, 0 to 3; also in the score's text
  CardPiece score;  // with U+1F525 per fire mark
  CardPiece age;
};

CardTexts DescribeCard(const ArticleItem& item, CardColours colours, std::int64_t now);

// U+1F525 as UTF-16.
inline constexpr std::u16string_view kFireMark = u"\U0001F525";

}  // namespace quillet
