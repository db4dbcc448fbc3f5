#include "app/page/article_scroll_bar.h"

#include <QSignalBlocker>
#include <QWheelEvent>

#include "input/article_paging.h"

namespace quillet {
namespace {

// Grey and half transparent, it is seen on black and on any backdrop without drawing the eye.
const auto kQuietLook = QStringLiteral(R"(
  QScrollBar { background: transparent; border: none; width: 9px; margin: 0; }
  QScrollBar::handle {
    background: rgba(128, 128, 128, 160); border-radius: 3px; margin: 2px 1px 2px 2px; min-height: 32px; }
  QScrollBar::handle:hover { background: rgba(160, 160, 160, 190); }
  QScrollBar::handle:pressed { background: rgba(192, 192, 192, 220); }
  QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
  QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)");

}  // namespace

ArticleScrollBar::ArticleScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::NoContextMenu);
  setCursor(Qt::ArrowCursor);
  setSingleStep(1);
  setPageStep(kPageStep);
  setStyleSheet(kQuietLook);
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  hide();
  connect(this, &QScrollBar::valueChanged, this, [this](int value) { emit Wanted(value, isSliderDown()); });
}

void ArticleScrollBar::SetPlain(bool plain) {
  if (plain == plain_) return;
  plain_ = plain;
  setStyleSheet(plain ? QString() : kQuietLook);
  setAttribute(Qt::WA_OpaquePaintEvent, plain);
}

void ArticleScrollBar::PlaceIn(const QRect& area) {
  const int width = std::min(sizeHint().width(), area.width());
  setGeometry(area.right() + 1 - width, area.top(), width, area.height());
}

void ArticleScrollBar::Follow(int value, int last, bool shown) {
  const QSignalBlocker silent(this);
  setRange(0, shown ? last : 0);
  setValue(value);
  setEnabled(shown);
  setVisible(plain_ || shown);
}

void ArticleScrollBar::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace quillet
