// What surrounds the cards of a side list: title line, hint line and scroll mark; where these stand, what a
// click on them means, and how they are drawn. The side list view owns one. User-interface thread.
#pragma once

#include <optional>
#include <vector>

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "input/side_list.h"
#include "render/paint/card_painter.h"

namespace quillet {

enum class SideListButton { kNone, kLayout, kClose, kOpen, kRemove };

// The name that users know a list by.
QString SideListName(ArticleListKind kind);
EmbeddedImage SideListImage(ArticleListKind kind);

class SideListFrame {
 public:
  // Widget units. `unit` is the height of the terminal's rows.
  void Place(const QSizeF& size, double unit, const QFont& base, bool compact);

  const QFont& Font() const { return font_; }
  // Where the cards stand, and how high one is.
  const QRectF& List() const { return list_; }
  double RowHeight() const { return rowHeight_; }
  // Whole cards that have room; at least 1.
  int ShownRows() const;

  struct Hint {
    QString text;
    SideListButton button = SideListButton::kNone;  // what a click on it does
    bool urgent = false;                            // is to be seen before anything else
  };
  // Those that have no room are left out, the last ones first; of the first one as much is said as fits.
  void SetHints(std::vector<Hint> hints);
  SideListButton ButtonAt(const QPointF& at) const;

  struct Title {
    ArticleListKind kind = ArticleListKind::kHot;
    int articles = 0;
  };
  void PaintTitle(QPainter& painter, const Title& title, const ListColours& colours,
                  EmbeddedImages& images) const;
  void PaintHints(QPainter& painter, const ListColours& colours) const;
  // The mark at the list's right edge that shows which part is seen; empty when all is. `top` is the entry
  // drawn first.
  QRectF ScrollMark(int top, const SideListState& state) const;
  // Where a press takes hold of the mark: it is too thin to be hit.
  QRectF ScrollGrip(int top, const SideListState& state) const;
  // The entry that is drawn first when the mark's upper end is at `y`; within the list.
  int TopAt(double y, const SideListState& state) const;
  void PaintScrollMark(QPainter& painter, const QRectF& mark, bool held, const ListColours& colours) const;

 private:
  void PlaceHints();
  void PaintLayoutButton(QPainter& painter, const ListColours& colours) const;
  void PaintCloseButton(QPainter& painter, const ListColours& colours) const;

  QFont font_;
  bool compact_ = false;
  QRectF title_;
  QRectF list_;
  QRectF foot_;
  QRectF layoutButton_;
  QRectF closeButton_;
  double rowHeight_ = 1;
  struct PlacedHint {
    Hint hint;
    QRectF place;  // empty: no room
  };
  std::vector<PlacedHint> hints_;
};

}  // namespace quillet
