// What a zoom step does: the grid fills its window, so the window follows where it can; where it cannot
// (maximized, in full screen, in another layout, at the screen's edge) the grid takes a part of the window.
// Pure; used by the main window.
#pragma once

#include <QSize>

namespace quillet {

enum class Zoom { kLarger, kSmaller, kUsual };

struct ZoomState {
  int percent = 100;  // the setting
  int rowHeight = 0;  // of the grid, in whatever unit
  QSize view;
  // The views that the window can have; it follows within these, or not at all.
  QSize least, most;
  QSize usual;
  bool follows = true;

  bool operator==(const ZoomState&) const = default;
};

struct ZoomPlan {
  int percent = 100;
  QSize view;  // as it is where the window stays

  bool operator==(const ZoomPlan&) const = default;
};

ZoomPlan PlanZoom(Zoom wish, const ZoomState& state);

}  // namespace quillet
