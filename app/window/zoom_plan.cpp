#include "app/window/zoom_plan.h"

#include <algorithm>

#include "settings/setting_choices.h"

namespace quillet {
namespace {

constexpr int kPercentStep = 10;
constexpr int kRowStep = 2;  // glyphs have even sizes

// The proportions stay, so that the grid's margins do.
QSize Scaled(const ZoomState& state, int rowStep) {
  const int row = std::max(state.rowHeight, 1);
  const auto scaled = [&](int side) { return (side * (row + rowStep) + row - 1) / row; };
  return {scaled(state.view.width()), scaled(state.view.height())};
}

}  // namespace

ZoomPlan PlanZoom(Zoom wish, const ZoomState& state) {
  ZoomPlan plan{state.percent, state.view};
  switch (wish) {
    case Zoom::kLarger: {
      if (state.percent < kMostZoom) {
        plan.percent = std::min(state.percent + kPercentStep, kMostZoom);
        break;
      }
      QSize wanted = Scaled(state, kRowStep);
      if (wanted.width() > state.most.width() || wanted.height() > state.most.height())
        wanted.scale(state.most, Qt::KeepAspectRatio);
      const bool grows = wanted.width() > state.view.width() || wanted.height() > state.view.height();
      if (state.follows && grows) plan.view = wanted;
      break;
    }
    case Zoom::kSmaller: {
      const QSize wanted = Scaled(state, -kRowStep).expandedTo(state.least);
      const bool shrinks = wanted.width() < state.view.width() && wanted.height() < state.view.height();
      if (state.follows && shrinks)
        plan.view = wanted;
      else
        plan.percent = std::max(state.percent - kPercentStep, kLeastZoom);
      break;
    }
    case Zoom::kUsual:
      plan.percent = kMostZoom;
      if (state.follows) plan.view = state.usual;
      break;
  }
  return plan;
}

}  // namespace quillet
