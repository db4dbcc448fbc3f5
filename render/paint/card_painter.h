// Draws one row of a side list: an article's card or a folder; and says which colours a list has. Used by the
// side list view. User-interface thread.
#pragma once

#include <cstdint>

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "render/article_card.h"
#include "render/paint/embedded_images.h"
#include "render/palette.h"

namespace quillet {

struct CardLook {
  const Palette* palette = nullptr;
  QFont font;            // of the title, with a pixel size; the others are made from it
  bool compact = false;  // one line instead of two, on a light ground
  bool selected = false;
  // In disguise: scores in the titles' ink, no ground of their own, no colour in the pictures.
  bool plain = false;
  // A compact card names its board even where age and score have to go for it.
  bool keepBoard = false;
  double indent = 0;  // left room for the folders around it, in the painter's units
};

// All of one list, 0xRRGGBB. Texts are readable (4.5:1) on `ground` and on `selected`.
struct ListColours {
  std::uint32_t ground = 0;
  std::uint32_t selected = 0;  // ground of the selected row
  std::uint32_t marker = 0;    // the bar at its edge
  std::uint32_t line = 0;      // between rows
  std::uint32_t edge = 0;      // between the list and the terminal
  std::uint32_t title = 0;
  std::uint32_t quiet = 0;   // what is said beside the articles
  std::uint32_t accent = 0;  // board names, pictures in one colour
};
ListColours ListColoursOf(const Palette& palette, bool compact);

// A text's colour as it is seen, its opacity counted in, and what is under it; 0xRRGGBB.
struct CardInk {
  std::uint32_t text = 0;
  std::uint32_t ground = 0;
};
// The score has a ground of its own where its colour is far from readable on the card's, and another shade
// where that is enough.
CardInk ScoreInk(const CardPiece& score, const CardLook& look);
CardInk AgeInk(const CardPiece& age, const CardLook& look);

// Cards and folders of one list are equally high.
double CardHeight(const QFont& font, bool compact);

// Cuts the title and the board with "…" before score and age, and leaves out the age, then the score, where
// there is no room for them. Nothing is drawn outside of `area`. The compact card names the board after
// the title where both have room.
void PaintCard(QPainter& painter, const QRectF& area, const CardTexts& texts, const QString& board,
               const CardLook& look, EmbeddedImages& images);

// `articles` is how many lie in the folder, in the folders within it too.
void PaintFolder(QPainter& painter, const QRectF& area, const QString& name, int articles,
                 const CardLook& look, EmbeddedImages& images);

enum class PictureTint { kOwn, kGrey };

// Draws a picture of the program's own as large as `place`, sharp at every scale factor; nothing when it is
// missing.
void PaintEmbedded(QPainter& painter, const QRectF& place, EmbeddedImage image, std::uint32_t colour,
                   EmbeddedImages& images, PictureTint tint = PictureTint::kOwn);

}  // namespace quillet
