#include "render/paint/composition_painter.h"

#include <gtest/gtest.h>

#include <QTextCharFormat>

#include "core/charset.h"
#include "render/contrast.h"
#include "render/paint/frame_painter.h"
#include "tests/render/paint/with_application.h"

namespace quillet {
namespace {

using Attribute = QInputMethodEvent::Attribute;

Attribute Clause(int start, int length, const QBrush& ground = {}) {
  QTextCharFormat format;
  format.setFontUnderline(true);
  if (ground != QBrush()) format.setBackground(ground);
  return {QInputMethodEvent::TextFormat, start, length, format};
}

Composition Read(const QString& text, const QList<Attribute>& attributes = {}) {
  return ReadComposition(QInputMethodEvent(text, attributes));
}

CompositionFrame FrameOf(const Composition& composition, CellSize cell) {
  const CompositionCells cells = LayOut(composition);
  return {composition, {0, 0, cells.total}, cell, PaletteKind::kNormal};
}

const Attribute kNoCaret{QInputMethodEvent::Cursor, 0, 0, {}};

class CompositionPainterTest : public WithApplication {
 protected:
  QImage Draw(const Composition& composition, CellSize cell = {24, 24}) {
    return painter.Draw(FrameOf(composition, cell)).copy();
  }

  CompositionPainter painter;
};

TEST_F(CompositionPainterTest, CharactersTakeTheCellsTheyWillTakeOnTheScreen) {
  const CompositionCells cells =
      LayOut(Read(u"ㄓa中😀e\u0301𠮷x"_qs, {{QInputMethodEvent::Cursor, 3, 1, {}}}));
  std::vector<int> at;
  for (const CompositionCharacter& character : cells.characters)
    at.push_back(character.cell);
  EXPECT_EQ(at, (std::vector<int>{0, 2, 3, 5, 7, 9, 11}));
  EXPECT_EQ(cells.total, 12);
  EXPECT_EQ(cells.caret, 5);
  EXPECT_EQ(LayOut(Read(u"中文"_qs)).total, 5) << "a cursor at the end has a cell of its own";
  EXPECT_EQ(LayOut(Read(u"中文"_qs, {kNoCaret})).total, 4);
  EXPECT_EQ(LayOut(Read(u"😀"_qs, {{QInputMethodEvent::Cursor, 1, 1, {}}})).caret, 0)
      << "inside a pair is before it";
}

// What was composed lies on the same pixels after it was committed, whatever the sizes of glyphs and rows.
TEST_F(CompositionPainterTest, WhatIsComposedLandsWhereItWas) {
  const QString text = u"ㄓㄨㄥˋ中文gj,。"_qs;
  for (const QSize window : {QSize(1280, 720), QSize(1000, 760), QSize(2560, 1440)}) {
    for (const int spacing : {0, 5}) {
      DisplaySettings settings;
      settings.lineSpacing = spacing;
      FramePainter screen;
      screen.ApplySettings(settings);
      screen.Resize(window.width(), window.height());
      ScreenSnapshot snapshot;
      snapshot.Clear();
      const std::string bytes = ToBig5(text.toStdU16String());
      std::copy(bytes.begin(), bytes.end(), snapshot.text[5].begin());
      std::fill_n(snapshot.attr[5].begin(), kCols, std::uint8_t{15});
      FrameState frame;
      frame.page = PlainPage(snapshot);
      screen.Update(frame);

      const Layout& layout = screen.CurrentLayout();
      painter.SetFaces(QString::fromStdU16String(settings.font), settings.smoothFont);
      const QImage composed = Draw(Read(text, {kNoCaret}), {layout.fontSize, layout.rowHeight});
      const QRect strip(screen.CellRect(5, 0).topLeft(), composed.size());
      const QImage landed = screen.Image().copy(strip);
      const int ground = qBlue(composed.pixel(composed.width() - 1, 0));
      int inked = 0;
      for (int y = 0; y < composed.height() - layout.rowHeight / 14; ++y)
        for (int x = 0; x < composed.width(); ++x) {
          const int wanted = ground + (255 - ground) * qBlue(landed.pixel(x, y)) / 255;
          ASSERT_NEAR(qBlue(composed.pixel(x, y)), wanted, 1) << x << ' ' << y;
          inked += qBlue(landed.pixel(x, y)) > 128;
        }
      EXPECT_GT(inked, layout.fontSize * 10);
    }
  }
}

TEST_F(CompositionPainterTest, CharactersBeyondTheScreensOwnAreDrawnInTheirCells) {
  const QRgb ground = Draw(Read(u" "_qs, {kNoCaret})).pixel(0, 0);
  for (const QString& text : {u"𠮷"_qs, u"e\u0301"_qs, u"é"_qs, u"한"_qs}) {
    const QImage picture = Draw(Read(text + text, {kNoCaret}));
    ASSERT_EQ(picture.size(), QSize(48, 24));
    for (const int left : {0, 24}) {
      int inked = 0;
      for (int y = 0; y < 22; ++y)
        for (int x = left; x < left + 24; ++x)
          inked += picture.pixel(x, y) != ground;
      EXPECT_GT(inked, 8) << text.toStdString();
    }
  }
}

TEST_F(CompositionPainterTest, ClausesAreToldApartAndReadableInEveryPalette) {
  const Composition composition =
      Read(u"中文中文"_qs, {kNoCaret, Clause(0, 1), Clause(1, 2, QColor(Qt::blue)), Clause(3, 1)});
  for (const PaletteKind palette : {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise}) {
    CompositionFrame frame = FrameOf(composition, {24, 24});
    frame.palette = palette;
    const QImage picture = painter.Draw(frame).copy();
    const auto at = [&](int x, int y) { return picture.pixel(x, y) & 0xFFFFFF; };
    EXPECT_NE(at(24, 0), at(0, 0)) << "the clause in work stands out";
    EXPECT_EQ(at(48, 0), at(24, 0));
    EXPECT_EQ(at(72, 0), at(0, 0));
    for (const int x : {2, 26, 50, 74})
      EXPECT_GE(Contrast(at(x, 23), at(x, 0)), kReadableContrast) << "underline at " << x;
    for (const int x : {23, 71})
      EXPECT_EQ(at(x, 23), at(x, 0)) << "a gap behind the clause at " << x;
    EXPECT_NE(at(47, 23), at(47, 0)) << "none within a clause";
  }
}

TEST_F(CompositionPainterTest, TheInputMethodsCursorStandsBetweenItsCharacters) {
  const auto at = [&](int unit, int length) {
    const QImage picture = Draw(Read(u"中文"_qs, {{QInputMethodEvent::Cursor, unit, length, {}}}));
    std::vector<int> lit;
    for (const int x : {0, 24, 48})
      if (x < picture.width() && picture.pixel(x, 0) != picture.pixel(12, 0)) lit.push_back(x);
    return lit;
  };
  EXPECT_EQ(at(0, 1), std::vector<int>{0});
  EXPECT_EQ(at(1, 1), std::vector<int>{24});
  EXPECT_EQ(at(2, 1), std::vector<int>{48});
  EXPECT_EQ(at(1, 0), std::vector<int>{});
}

// What an input method sends comes from another process.
TEST_F(CompositionPainterTest, WrongAttributesAndBrokenTextDoNoHarm) {
  const QString lone = QString(QChar(0xD83D)) + u"中"_qs + QChar(0xDE00) + '\n' + QChar(0x200B) + QChar(0);
  constexpr int kFar = std::numeric_limits<int>::max();
  const Composition wild = Read(lone, {Clause(-5, 3),
                                       Clause(1, kFar),
                                       Clause(2, -1),
                                       Clause(kFar, kFar),
                                       {QInputMethodEvent::Cursor, -7, 1, {}}});
  qsizetype covered = 0;
  for (const CompositionClause& clause : wild.clauses) {
    EXPECT_GE(clause.first, covered);
    EXPECT_GT(clause.last, clause.first);
    covered = clause.last;
  }
  EXPECT_LE(covered, lone.size());
  EXPECT_EQ(wild.caret, 0);
  for (const CellSize cell : {CellSize{12, 1}, CellSize{12, 30}, CellSize{40, 20}})
    EXPECT_FALSE(Draw(wild, cell).isNull());
  EXPECT_TRUE(Draw(wild, {12, 0}).isNull()) << "a window without height";
}

}  // namespace
}  // namespace quillet
