#include "settings/dialog/dialog_room.h"

#include <algorithm>

#include <QLayout>
#include <QScreen>
#include <QScrollBar>

namespace quillet {
namespace {

// What a window's frame and title bar take of the screen, in pixels, on the systems we know.
constexpr QSize kFrame(16, 48);

}  // namespace

ContentScroll::ContentScroll(QWidget* content, Sideways sideways) : sideways_(sideways) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(content);
  // What it lies on shows through.
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
}

QSize ContentScroll::sizeHint() const {
  return widget()->sizeHint().expandedTo(widget()->minimumSizeHint()) +
         QSize(verticalScrollBar()->sizeHint().width(), 0);
}

QSize ContentScroll::minimumSizeHint() const {
  const QSize small = QScrollArea::minimumSizeHint();
  if (sideways_ == Sideways::kScrolls) return small;
  const int bar = verticalScrollBar()->sizeHint().width();
  return small.expandedTo({widget()->minimumSizeHint().width() + bar, 0});
}

int LettersWide(const QWidget& widget, int letters) {
  return widget.fontMetrics().horizontalAdvance(u'0') * letters;
}

void FitToScreen(QWidget& window) {
  // Hidden parts too and from the inside out, so that none is laid out once more after it is first shown.
  const QList<QWidget*> widgets = window.findChildren<QWidget*>();
  for (QWidget* const widget : widgets)
    widget->ensurePolished();
  std::for_each(widgets.rbegin(), widgets.rend(), [](const QWidget* widget) {
    if (widget->layout() != nullptr) widget->layout()->activate();
  });
  window.resize(window.layout()->totalSizeHint().boundedTo(window.screen()->availableSize() - kFrame));
}

}  // namespace quillet
