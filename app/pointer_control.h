// What the mouse does on the terminal: captions light up under the pointer and give their command on a click,
// the wheel moves the open article. User-interface thread.
#pragma once

#include <functional>

#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include "app/article_view.h"
#include "app/frame_surface.h"
#include "app/page_composer.h"

namespace quillet {

class PointerControl {
 public:
  struct Handlers {
    std::function<void(ArticleCommand)> perform;
    std::function<void()> changed;  // the picture is different
  };
  // All outlive the object.
  PointerControl(QWidget& widget, const FrameSurface& surface, PageComposer& composer, ArticleView& article,
                 Handlers handlers);

  void OnMove(const QPointF& at);
  void OnLeave();
  // True when the press was a command's.
  bool OnPress(const QMouseEvent& event);
  // True when the wheel moved something.
  bool OnWheel(const QWheelEvent& event);

 private:
  void Hover(ArticleCommand command);
  ArticleCommand CommandUnder(const QPointF& at) const;

  QWidget& widget_;
  const FrameSurface& surface_;
  PageComposer& composer_;
  ArticleView& article_;
  Handlers handlers_;
  double wheelRest_ = 0;  // of a line, from high-resolution wheels
};

}  // namespace quillet
