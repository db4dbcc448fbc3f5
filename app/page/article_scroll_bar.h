// The scroll bar of the local article: a thin quiet one over the right margin, a plain one in disguise. It
// never takes the keyboard; wheel and menu over it are the view's. User-interface thread.
#pragma once

#include <QScrollBar>

namespace quillet {

class ArticleScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  // Hidden until SetRange says otherwise.
  explicit ArticleScrollBar(QWidget* parent);

  // In disguise: as the system draws it, and always there.
  void SetPlain(bool plain);
  // Lies at the right edge of `area` from top to bottom.
  void PlaceIn(const QRect& area);
  // `value` comes first of values 0 to `last`; `shown`: there is something to scroll. Says nothing to those
  // who listen.
  void Follow(int value, int last, bool shown);

 signals:
  // The user wants this value first. `dragged`: he holds the handle.
  void Wanted(int value, bool dragged);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool plain_ = false;
};

}  // namespace quillet
