#include "render/paint/card_painter.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include <QFontMetricsF>
#include <QImage>
#include <QPaintDevice>

#include "render/contrast.h"

namespace quillet {
namespace {

// In title heights.
constexpr double kPadding = 0.7;
constexpr double kGap = 0.6;
constexpr double kSmallText = 0.82;
constexpr double kTitleTop = 0.3;
constexpr double kLineHeight = 1.4;
constexpr double kCardHeight = 3.3;
constexpr double kCompactHeight = 1.95;
// A title or board that gets less than this is worth more than an age or a score.
constexpr double kLeastTitle = 6;
constexpr double kLeastBoard = 3;
constexpr double kBoardGap = 0.4;
constexpr double kScoreMargin = 0.3;
constexpr double kScoreCorner = 0.3;
// A picture stands within its square with some air of its own.
constexpr double kImageSide = 1.0;
constexpr double kImageStep = 1.05;
constexpr double kImageGap = 0.2;
constexpr double kFolderSide = 1.2;
constexpr double kFolderGap = 0.4;
constexpr double kMarkerWidth = 0.22;
constexpr double kLeastMarkerWidth = 3;  // in the painter's units
// In the heights of the small letters.
constexpr double kScoreHeight = 1.02;

// Shares of 256 that colours are mixed in.
constexpr unsigned kCompactGroundShare = 102;
constexpr unsigned kSelectedOnDark = 102;
constexpr unsigned kSelectedOnLight = 30;
constexpr unsigned kLineShare = 30;
constexpr unsigned kEdgeShare = 70;
constexpr unsigned kQuietShare = 175;
// An edge with less contrast is not seen.
constexpr double kVisibleEdge = 1.4;

// The longest age that is usual: the scores of all cards end at one line before it.
constexpr char16_t kWideAge[] = u"1個半小時前";

// From here on a shade more or less is enough, and a ground of its own would be louder.
constexpr double kNearlyReadable = 2.9;

constexpr int kText = Qt::AlignVCenter | Qt::TextSingleLine;

std::uint32_t ColourAt(const Palette& palette, int index) {
  return palette.at(static_cast<std::size_t>(index));
}

QFont SmallFont(const QFont& font) {
  QFont small = font;
  small.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * kSmallText))));
  return small;
}

std::uint32_t GroundOf(const CardLook& look) {
  const ListColours colours = ListColoursOf(*look.palette, look.compact);
  return look.selected ? colours.selected : colours.ground;
}

void PaintText(QPainter& painter, const QRectF& area, Qt::Alignment side, const QString& text,
               const QFont& font, std::uint32_t colour) {
  painter.setFont(font);
  painter.setPen(QColor::fromRgb(colour));
  painter.drawText(area, kText | static_cast<int>(side),
                   QFontMetricsF(font).elidedText(text, Qt::ElideRight, area.width()));
}

void PaintGround(QPainter& painter, const QRectF& area, const CardLook& look) {
  const ListColours colours = ListColoursOf(*look.palette, look.compact);
  painter.fillRect(area, QColor(GroundOf(look)));
  painter.fillRect(QRectF(area.left(), area.bottom() - 1, area.width(), 1), QColor(colours.line));
  const double bar = std::max(kLeastMarkerWidth, std::round(look.font.pixelSize() * kMarkerWidth));
  if (look.selected)
    painter.fillRect(QRectF(area.left(), area.top(), bar, area.height() - 1), QColor(colours.marker));
}

// Puts the score and the age of one card at the right end of a line and says what is left of the line.
class Figures {
 public:
  Figures(const CardTexts& texts, const CardLook& look)
      : texts_(texts), look_(look), font_(SmallFont(look.font)), metrics_(font_) {
    const bool isDeleted = SaysDeleted(texts.score.text);
    score_ = QString::fromStdU16String(texts.score.text);
    score_.remove(QString::fromUtf16(kFireMark.data(), static_cast<qsizetype>(kFireMark.size())));
    // Blanks that keep a column's width, which this one has anyway.
    while (score_.endsWith(u' '))
      score_.chop(1);
    if (isDeleted) image_ = EmbeddedImage::kDeleted;
    images_ = isDeleted ? 1 : texts.fires;
    age_ = QString::fromStdU16String(texts.age.text);
    ageWidth_ = std::max(WidthOf(age_), WidthOf(QString::fromUtf16(kWideAge)));
    if (!score_.isEmpty()) scoreWidth_ = ImagesWidth() + 2 * Margin() + WidthOf(score_);
  }

  // `least` is the width that the text before them needs. Returns the width that it has.
  double Fit(double width, double least) {
    const auto left = [&] {
      return width - (hasAge_ ? ageWidth_ : 0) - (hasScore_ ? scoreWidth_ : 0) -
             Gap() * (hasAge_ + hasScore_);
    };
    hasScore_ = !score_.isEmpty();
    hasAge_ = true;
    if (left() < least) hasAge_ = false;
    if (left() < least) hasScore_ = false;
    return std::max(0.0, left());
  }

  void Paint(QPainter& painter, const QRectF& line, EmbeddedImages& images) const {
    double right = line.right();
    if (hasAge_) {
      const QRectF place(right - ageWidth_, line.top(), ageWidth_, line.height());
      PaintText(painter, place, Qt::AlignRight, age_, font_, AgeInk(texts_.age, look_).text);
      right = place.left() - Gap();
    }
    if (hasScore_)
      PaintScore(painter, QRectF(right - scoreWidth_, line.top(), scoreWidth_, line.height()), images);
  }

 private:
  // Every other score has its number.
  static bool SaysDeleted(const std::u16string& text) {
    return !text.empty() && text.find_first_of(u"0123456789") == std::u16string::npos;
  }

  double Size() const { return look_.font.pixelSize(); }
  double Gap() const { return std::round(Size() * kGap); }
  double Margin() const { return std::round(Size() * kScoreMargin); }
  double ImageStep() const { return std::round(Size() * kImageStep); }
  double ImagesWidth() const {
    return images_ > 0 ? images_ * ImageStep() + std::round(Size() * kImageGap) : 0;
  }
  double WidthOf(const QString& text) const { return std::ceil(metrics_.horizontalAdvance(text)) + 1; }

  void PaintScore(QPainter& painter, QRectF place, EmbeddedImages& images) const {
    PaintImages(painter, place, images);
    place.setLeft(place.left() + ImagesWidth());
    const CardInk ink = ScoreInk(texts_.score, look_);
    if (ink.ground == GroundOf(look_))
      PaintText(painter, place.adjusted(Margin(), 0, 0, 0), Qt::AlignLeft, score_, font_, ink.text);
    else
      PaintPill(painter, place, ink);
  }

  void PaintImages(QPainter& painter, const QRectF& place, EmbeddedImages& images) const {
    const double side = std::round(Size() * kImageSide);
    const std::uint32_t colour = ListColoursOf(*look_.palette, look_.compact).quiet;
    for (int i = 0; i < images_; ++i) {
      const QRectF spot(place.left() + i * ImageStep(), std::round(place.center().y() - side / 2), side,
                        side);
      PaintEmbedded(painter, spot, image_, colour, images,
                    look_.plain ? PictureTint::kGrey : PictureTint::kOwn);
    }
  }

  // The figures are centred by what is seen of them: a font's own box leaves room for other letters' feet.
  void PaintPill(QPainter& painter, const QRectF& place, const CardInk& ink) const {
    const double height = std::round(metrics_.height() * kScoreHeight);
    const QRectF pill(place.left(), std::round(place.center().y() - height / 2), place.width(), height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(ink.ground));
    painter.drawRoundedRect(pill, Size() * kScoreCorner, Size() * kScoreCorner);
    const QRectF seen = metrics_.tightBoundingRect(score_);
    painter.setFont(font_);
    painter.setPen(QColor(ink.text));
    painter.drawText(QPointF(pill.left() + Margin(), std::round(pill.center().y() - seen.center().y())),
                     score_);
  }

  const CardTexts& texts_;
  const CardLook& look_;
  QFont font_;
  QFontMetricsF metrics_;
  QString score_;
  QString age_;
  EmbeddedImage image_ = EmbeddedImage::kFire;
  int images_ = 0;
  double ageWidth_ = 0;
  double scoreWidth_ = 0;
  bool hasAge_ = true;
  bool hasScore_ = true;
};

double BoardGap(const CardLook& look) {
  return std::round(look.font.pixelSize() * kBoardGap);
}

// How a compact card names the board behind the title.
struct CompactBoard {
  CompactBoard(const QString& board, const CardLook& look) {
    if (board.isEmpty()) return;
    text = QStringLiteral("· ") + board;
    width = BoardGap(look) + std::ceil(QFontMetricsF(SmallFont(look.font)).horizontalAdvance(text)) + 1;
  }

  QString text;
  double width = 0;  // with the gap before it
};

// The lines of a card within its paddings.
struct Lines {
  Lines(const QRectF& area, const CardLook& look) {
    const double size = look.font.pixelSize();
    const double padding = std::round(size * kPadding);
    const double room = std::max(0.0, area.width() - 2 * padding);
    const double indent = std::min(look.indent, room / 2);
    const QRectF inner(area.left() + padding + indent, area.top(), room - indent, area.height() - 1);
    const double height = std::round(size * kLineHeight);
    title = look.compact
                ? inner
                : QRectF(inner.left(), inner.top() + std::round(size * kTitleTop), inner.width(), height);
    below = QRectF(inner.left(), title.bottom(), inner.width(), height);
  }

  QRectF title;
  QRectF below;  // of no use in a compact card
};

// The title, and behind it the board where there is room for it.
void PaintTitleAndBoard(QPainter& painter, const QRectF& area, const CardTexts& texts,
                        const CompactBoard& board, const CardLook& look) {
  const QString title = QString::fromStdU16String(texts.title.text);
  const std::uint32_t ink = ColourAt(*look.palette, texts.title.colour);
  const double titleWidth = std::ceil(QFontMetricsF(look.font).horizontalAdvance(title)) + 1;
  const bool fits = titleWidth + board.width <= area.width();
  if (board.text.isEmpty() || !(fits || look.keepBoard))
    return PaintText(painter, area, Qt::AlignLeft, title, look.font, ink);
  const double room = std::clamp(area.width() - board.width, 0.0, titleWidth);
  PaintText(painter, QRectF(area.left(), area.top(), room, area.height()), Qt::AlignLeft, title, look.font,
            ink);
  PaintText(painter, area.adjusted(room + BoardGap(look), 0, 0, 0), Qt::AlignLeft, board.text,
            SmallFont(look.font), ListColoursOf(*look.palette, look.compact).quiet);
}

void PaintCompactCard(QPainter& painter, const Lines& lines, const CardTexts& texts, const QString& board,
                      const CardLook& look, EmbeddedImages& images) {
  const CompactBoard named(board, look);
  const double size = look.font.pixelSize();
  Figures figures(texts, look);
  QRectF title = lines.title;
  title.setWidth(figures.Fit(title.width(), size * kLeastTitle + (look.keepBoard ? named.width : 0)));
  PaintTitleAndBoard(painter, title, texts, named, look);
  figures.Paint(painter, lines.title, images);
}

void PaintHighCard(QPainter& painter, const Lines& lines, const CardTexts& texts, const QString& board,
                   const CardLook& look, EmbeddedImages& images) {
  Figures figures(texts, look);
  QRectF below = lines.below;
  below.setWidth(figures.Fit(below.width(), look.font.pixelSize() * kLeastBoard));
  PaintText(painter, lines.title, Qt::AlignLeft, QString::fromStdU16String(texts.title.text), look.font,
            ColourAt(*look.palette, texts.title.colour));
  PaintText(painter, below, Qt::AlignLeft, board, SmallFont(look.font),
            ListColoursOf(*look.palette, look.compact).accent);
  figures.Paint(painter, lines.below, images);
}

QImage InGrey(QImage picture) {
  picture = picture.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      const int grey = qGray(pixel);
      picture.setPixel(x, y, qRgba(grey, grey, grey, qAlpha(pixel)));
    }
  return picture;
}

}  // namespace

ListColours ListColoursOf(const Palette& palette, bool compact) {
  ListColours colours;
  colours.ground = compact ? MixColours(ColourAt(palette, 23), ColourAt(palette, 42), kCompactGroundShare)
                           : ColourAt(palette, 25);
  colours.title = ColourAt(palette, compact ? 0 : 15);
  colours.accent = ColourAt(palette, compact ? 4 : 39);
  colours.marker = ColourAt(palette, compact ? 4 : 26);
  const bool isDark = Luminance(colours.ground) < Luminance(colours.title);
  colours.selected = MixColours(colours.ground, ColourAt(palette, compact ? 4 : 38),
                                isDark ? kSelectedOnDark : kSelectedOnLight);
  colours.line = MixColours(colours.ground, colours.title, kLineShare);
  colours.edge = ColourAt(palette, 34);
  if (Contrast(colours.edge, colours.ground) < kVisibleEdge)
    colours.edge = MixColours(colours.ground, colours.title, kEdgeShare);
  colours.quiet = MixColours(colours.ground, colours.title, kQuietShare);
  return colours;
}

CardInk ScoreInk(const CardPiece& score, const CardLook& look) {
  const Palette& palette = *look.palette;
  const std::uint32_t text = ColourAt(palette, score.colour);
  const std::uint32_t card = GroundOf(look);
  if (look.plain) return {ListColoursOf(palette, look.compact).title, card};
  if (Contrast(text, card) >= kNearlyReadable) return {ReadableOn(card, text), card};
  for (const std::uint32_t ground : {ColourAt(palette, 30), ColourAt(palette, 24)})
    if (Contrast(text, ground) >= kReadableContrast) return {text, ground};
  return {ReadableOn(card, text), card};
}

CardInk AgeInk(const CardPiece& age, const CardLook& look) {
  const std::uint32_t ground = GroundOf(look);
  const auto share = static_cast<unsigned>(std::lround(age.opacity * 256));
  return {MixColours(ground, ColourAt(*look.palette, age.colour), share), ground};
}

double CardHeight(const QFont& font, bool compact) {
  return std::max(1.0, std::round(font.pixelSize() * (compact ? kCompactHeight : kCardHeight)));
}

void PaintCard(QPainter& painter, const QRectF& area, const CardTexts& texts, const QString& board,
               const CardLook& look, EmbeddedImages& images) {
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintGround(painter, area, look);
  const Lines lines(area, look);
  if (look.compact)
    PaintCompactCard(painter, lines, texts, board, look, images);
  else
    PaintHighCard(painter, lines, texts, board, look, images);
  painter.restore();
}

void PaintFolder(QPainter& painter, const QRectF& area, const QString& name, int articles,
                 const CardLook& look, EmbeddedImages& images) {
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintGround(painter, area, look);
  const ListColours colours = ListColoursOf(*look.palette, look.compact);
  const Lines lines(area, look);
  const double side = std::round(look.font.pixelSize() * kFolderSide);
  const double text = side + std::round(look.font.pixelSize() * kFolderGap);
  PaintEmbedded(painter,
                QRectF(lines.title.left(), std::round(lines.title.center().y() - side / 2), side, side),
                EmbeddedImage::kFolder, colours.accent, images);
  const QFont small = SmallFont(look.font);
  const QString count = QStringLiteral("%1 篇").arg(articles);
  QRectF title = lines.title.adjusted(text, 0, 0, 0);
  if (look.compact) {
    const double width = std::ceil(QFontMetricsF(small).horizontalAdvance(count)) + 1;
    PaintText(painter, title, Qt::AlignRight, count, small, colours.quiet);
    title.setRight(title.right() - width - std::round(look.font.pixelSize() * kGap));
  } else {
    PaintText(painter, lines.below.adjusted(text, 0, 0, 0), Qt::AlignLeft, count, small, colours.quiet);
  }
  PaintText(painter, title, Qt::AlignLeft, name, look.font, colours.title);
  painter.restore();
}

void PaintEmbedded(QPainter& painter, const QRectF& place, EmbeddedImage image, std::uint32_t colour,
                   EmbeddedImages& images, PictureTint tint) {
  const double scale = painter.device()->devicePixelRatioF();
  const QSize pixels(static_cast<int>(std::lround(place.width() * scale)),
                     static_cast<int>(std::lround(place.height() * scale)));
  const QImage& picture = images.At(image, pixels, colour);
  if (picture.isNull()) return;
  const QPointF corner(std::round(place.left() * scale) / scale, std::round(place.top() * scale) / scale);
  painter.drawImage(QRectF(corner, QSizeF(pixels) / scale),
                    tint == PictureTint::kGrey ? InGrey(picture) : picture);
}

}  // namespace quillet
