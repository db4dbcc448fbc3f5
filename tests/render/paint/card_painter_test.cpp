#include "render/paint/card_painter.h"

#include <gtest/gtest.h>
#include <optional>

#include <QFontMetricsF>
#include <QImage>

#include "render/contrast.h"
#include "tests/render/paint/with_application.h"

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1'700'000'000;

class CardPainterTest : public WithApplication {
 protected:
  CardLook Look(bool compact = false) const {
    CardLook look{.palette = &PaletteOf(PaletteKind::kNormal), .font = {}, .compact = compact};
    look.font.setPixelSize(20);
    return look;
  }

  static CardTexts Texts(std::u16string title, std::int32_t score,
                         CardColours colours = CardColours::kUsual) {
    ArticleItem item;
    item.postTime = kNow - 6000;
    item.score = score;
    item.title = std::move(title);
    return DescribeCard(item, colours, kNow);
  }

  static CardTexts Bare(CardTexts texts) {
    texts.score.text.clear();
    texts.age.text.clear();
    return texts;
  }

  static QImage Paper(int width) {
    QImage paper(width, 80, QImage::Format_RGB32);
    paper.fill(Qt::magenta);
    return paper;
  }
  QImage Card(const CardTexts& texts, const QString& board, const CardLook& look, int width = 500) {
    QImage paper = Paper(width);
    QPainter painter(&paper);
    PaintCard(painter, QRectF(0, 0, width, CardHeight(look.font, look.compact)), texts, board, look, images);
    return paper;
  }

  struct Span {
    int first, last;
  };
  // The columns in which two pictures differ.
  static std::optional<Span> Differing(const QImage& a, const QImage& b) {
    std::optional<Span> span;
    for (int x = 0; x < a.width(); ++x)
      for (int y = 0; y < a.height(); ++y)
        if (a.pixel(x, y) != b.pixel(x, y)) span = Span{span ? span->first : x, x};
    return span;
  }

  EmbeddedImages images;
};

TEST_F(CardPainterTest, EveryTextCanBeReadInEveryPaletteAndLayout) {
  for (const PaletteKind kind : {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise}) {
    for (const bool compact : {false, true}) {
      CardLook look = Look(compact);
      look.palette = &PaletteOf(kind);
      look.plain = kind == PaletteKind::kDisguise;
      const ListColours colours = ListColoursOf(*look.palette, compact);
      const CardColours scheme = compact ? CardColours::kAlternative : CardColours::kUsual;
      SCOPED_TRACE(static_cast<int>(kind) * 2 + compact);
      EXPECT_NE(colours.selected, colours.ground);
      EXPECT_GE(Contrast(colours.edge, colours.ground), 1.4) << "seen beside the terminal";
      for (const std::uint32_t ground : {colours.ground, colours.selected}) {
        look.selected = ground == colours.selected;
        for (const std::uint32_t text : {colours.title, colours.quiet, colours.accent})
          EXPECT_GE(Contrast(text, ground), kReadableContrast) << std::hex << text << " on " << ground;
        for (const std::int32_t score : {5, -5, 0, 2000, -2000}) {
          const CardTexts texts = Texts(u"title", score, scheme);
          const CardInk ink = ScoreInk(texts.score, look);
          const std::uint32_t wanted = look.palette->at(static_cast<std::size_t>(texts.score.colour));
          if (look.plain)
            EXPECT_EQ(ink.ground, ground) << "no ground of its own";
          else
            EXPECT_LT(Contrast(ink.text, wanted), 1.6) << "at most another shade";
          EXPECT_GE(Contrast(ink.text, ink.ground), kReadableContrast) << std::hex << ink.text;
          const CardInk age = AgeInk(texts.age, look);
          EXPECT_EQ(age.ground, ground);
          EXPECT_GE(Contrast(age.text, age.ground), kReadableContrast) << std::hex << age.text;
        }
      }
    }
  }
}

TEST_F(CardPainterTest, LongTextsEndBeforeScoreAndAge) {
  const std::u16string longTitle(400, u'國');
  const QString longBoard(200, u'W');
  for (const bool compact : {false, true}) {
    for (int width = 1; width < 700; width += 23) {
      const CardLook look = Look(compact);
      SCOPED_TRACE(width);
      const QImage full = Card(Texts(longTitle, 1500), longBoard, look, width);
      CardTexts untitled = Texts(longTitle, 1500);
      untitled.title.text.clear();
      // In a high card the title has a line of its own and the board stands beside the figures.
      const QImage noText =
          compact ? Card(untitled, {}, look, width) : Card(Texts(longTitle, 1500), {}, look, width);
      const CardTexts bare = Bare(compact ? untitled : Texts(longTitle, 1500));
      const std::optional<Span> text = Differing(full, noText);
      const std::optional<Span> figures = Differing(noText, Card(bare, {}, look, width));
      EXPECT_TRUE(width <= 300 || (text && figures)) << "there is room for both";
      if (text && figures) {
        EXPECT_LT(text->last, figures->first);
      }
    }
  }
}

TEST_F(CardPainterTest, ACompactCardNamesTheBoardWhereThereIsRoomAndForAnUnknownTitleAlways) {
  const CardLook look = Look(true);
  const CardTexts texts = Texts(u"Unknown Title", 800);
  const CardTexts noFigures = Bare(texts);
  const auto names = [&](const CardLook& how, int width) {
    return Card(texts, "Board", how, width) != Card(texts, {}, how, width);
  };
  CardLook kept = look;
  kept.keepBoard = true;
  EXPECT_TRUE(names(look, 700));
  EXPECT_FALSE(names(look, 380));
  for (int width = 120; width < 700; width += 20) {
    SCOPED_TRACE(width);
    EXPECT_TRUE(names(kept, width));
    // Wherever the figures are left, they stand behind the board.
    const auto board = Differing(Card(noFigures, "Board", kept, width), Card(noFigures, {}, kept, width));
    const auto figures = Differing(Card(texts, {}, kept, width), Card(noFigures, {}, kept, width));
    if (width >= 400 && names(look, width)) {
      ASSERT_TRUE(board && figures);
      EXPECT_LT(board->last, figures->first);
    }
  }
}

TEST_F(CardPainterTest, ADisguisedCardHasNoColour) {
  for (const bool compact : {false, true}) {
    CardLook look = Look(compact);
    look.palette = &PaletteOf(PaletteKind::kDisguise);
    look.plain = true;
    for (const std::int32_t score : {1500, -1500, 0}) {
      const QImage card = Card(Texts(u"title", score), "Board", look);
      const int height = static_cast<int>(CardHeight(look.font, compact));
      for (int y = 0; y < height; ++y)
        for (int x = 0; x < card.width(); ++x)
          ASSERT_EQ(QColor(card.pixel(x, y)).saturation(), 0) << x << ' ' << y << ' ' << score;
    }
  }
}

TEST_F(CardPainterTest, TheScoresOfAllCardsEndAtOneLine) {
  const CardLook look = Look();
  std::optional<int> edge;
  for (const std::int32_t score : {2000, 42, 0}) {
    CardTexts bare = Texts(u"t", score);
    bare.score.text.clear();
    const std::optional<Span> pill = Differing(Card(Texts(u"t", score), {}, look), Card(bare, {}, look));
    ASSERT_TRUE(pill) << score;
    if (edge) {
      EXPECT_EQ(pill->last, *edge) << score;
    }
    edge = pill->last;
  }
}

TEST_F(CardPainterTest, NothingIsDrawnOutsideOfTheCard) {
  for (const QRectF& area : {QRectF(100, 20, 1, 1), QRectF(100, 20, 40, 30), QRectF(20, 4, 300, 66)}) {
    for (const bool folder : {false, true}) {
      QImage paper = Paper(400);
      CardLook look = Look();
      look.selected = true;
      look.indent = 500;
      QPainter painter(&paper);
      if (folder)
        PaintFolder(painter, area, QString(300, u'國'), 123456, look, images);
      else
        PaintCard(painter, area, Texts(std::u16string(300, u'國'), -9999), QString(99, u'國'), look, images);
      painter.end();
      EXPECT_NE(paper.pixelColor(area.topLeft().toPoint()), QColor(Qt::magenta));
      painter.begin(&paper);
      painter.fillRect(area, Qt::magenta);
      painter.end();
      EXPECT_EQ(paper, Paper(400));
    }
  }
}

TEST_F(CardPainterTest, FiresAndTheMarkOfADeletedArticleArePictures) {
  const CardLook look = Look();
  for (const std::int32_t score : {1500, 0}) {
    images = EmbeddedImages();
    const QImage with = Card(Texts(u"t", score), {}, look);
    images = EmbeddedImages(QStringLiteral("/nowhere"));
    const QImage without = Card(Texts(u"t", score), {}, look);
    const std::optional<Span> pictures = Differing(with, without);
    ASSERT_TRUE(pictures);
    // Without the pictures their places are empty: no glyph stands in for them.
    const auto ground = ListColoursOf(*look.palette, false).ground;
    const int y = static_cast<int>(CardHeight(look.font, false) * 0.7);
    for (int x = pictures->first; x <= pictures->last; ++x)
      EXPECT_EQ(without.pixel(x, y) & 0xFFFFFF, ground);
  }
}

}  // namespace
}  // namespace quillet
