#include "app/pointer_control.h"

#include <cmath>
#include <utility>

#include <QApplication>

namespace quillet {
namespace {

// One notch of a wheel, as the toolkit counts.
constexpr double kNotch = 120;

}  // namespace

PointerControl::PointerControl(QWidget& widget, const FrameSurface& surface, PageComposer& composer,
                               ArticleView& article, Handlers handlers)
    : widget_(widget),
      surface_(surface),
      composer_(composer),
      article_(article),
      handlers_(std::move(handlers)) {
  widget_.setMouseTracking(true);
}

ArticleCommand PointerControl::CommandUnder(const QPointF& at) const {
  const auto cell = surface_.CellAt(at);
  return cell ? composer_.CommandAt(cell->y(), cell->x()) : ArticleCommand::kNone;
}

void PointerControl::Hover(ArticleCommand command) {
  if (!composer_.SetHovered(command)) return;
  if (command == ArticleCommand::kNone)
    widget_.unsetCursor();
  else
    widget_.setCursor(Qt::PointingHandCursor);
  handlers_.changed();
}

void PointerControl::OnMove(const QPointF& at) {
  Hover(CommandUnder(at));
}

void PointerControl::OnLeave() {
  Hover(ArticleCommand::kNone);
}

bool PointerControl::OnPress(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return false;
  const ArticleCommand command = CommandUnder(event.position());
  if (command == ArticleCommand::kNone) return false;
  handlers_.perform(command);
  OnMove(event.position());
  return true;
}

bool PointerControl::OnWheel(const QWheelEvent& event) {
  if (!composer_.ShowsArticle()) {
    wheelRest_ = 0;
    return false;
  }
  wheelRest_ -= event.angleDelta().y() / kNotch * QApplication::wheelScrollLines();
  const double lines = std::trunc(wheelRest_);
  wheelRest_ -= lines;
  if (lines != 0) article_.ScrollBy(static_cast<int>(lines));
  return true;
}

}  // namespace quillet
