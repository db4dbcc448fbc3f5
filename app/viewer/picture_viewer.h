// One picture of the article over the whole window: fitted, in its actual size, zoomed and moved, with those
// before and after it by keys, and a line about it below. While it is open keyboard and mouse are its own,
// and nothing reaches the BBS. The view owns one. User-interface thread.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QElapsedTimer>
#include <QPushButton>
#include <QString>
#include <QTimer>
#include <QWidget>

#include "app/overlay/overlay.h"
#include "app/viewer/shown_picture.h"
#include "input/commands/commands.h"
#include "media/fetch/picture_store.h"
#include "render/picture_zoom.h"
#include "settings/settings.h"

namespace quillet {

class PictureViewer : public QWidget, public Overlay {
  Q_OBJECT

 public:
  struct Handlers {
    // Of the window's keys that work here too.
    std::function<bool(const QKeyEvent&)> isForWindow;
    // With the right button, at a place of the screen.
    std::function<void(const QPoint& at)> menu;
    std::function<void(Command)> perform;
  };
  // Both outlive the object. It lies over `view`, and gives the keyboard back to it.
  PictureViewer(PictureStore& store, const Settings& settings, QWidget& view, Handlers handlers);

  // `links`: those that one can go on to, `link` among them. Nothing in disguise.
  void Open(std::vector<QString> links, const QString& link);
  // Also when it is closed.
  void Close();
  bool IsOpen() const { return !links_.empty(); }
  // That is looked at; empty: none.
  QString Link() const { return IsOpen() ? links_[at_] : QString(); }
  PictureNow Now() const;
  const PictureZoom& Zoom() const { return zoom_; }
  // The line below the picture.
  QString Caption() const;
  // For a while these words stand in its place.
  void Say(const QString& words);
  // Whether anybody sees the window: else nothing moves.
  void SetSeen(bool seen);

  bool KeepsMouse() const override { return IsOpen(); }
  bool KeepsTyping() const override { return IsOpen(); }
  void Place(const OverlayPlace& place) override;

 signals:
  // It was opened or closed.
  void Changed();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  // What the left button holds.
  struct Grip {
    QPointF from;
    QPointF last;
    bool drags = false;
  };

  void GoTo(std::size_t at);
  void StepBy(int step);
  void OnPictureChanged(const QString& link);
  void FollowSize();
  void Want();
  void ShowOtherwise();
  void Leave();
  // Returns false for a key that has no meaning here.
  bool OnPlainKey(int key);
  bool OnControlKey(int key);
  void TakePlace();
  void PlaceRetry();
  void MakeRetry();
  void StyleRetry();
  void SetShape();
  double CaptionHeight() const;
  QRectF PictureArea() const;
  ZoomPoint InRoom(const QPointF& at) const;
  void PaintWords(QPainter& painter) const;
  void PaintCaption(QPainter& painter) const;

  PictureStore& store_;
  const Settings& settings_;
  QWidget& view_;
  const Handlers handlers_;
  std::vector<QString> links_;  // empty: closed
  std::size_t at_ = 0;
  PictureZoom zoom_;
  QSize known_;  // the size that the zoom goes by
  ShownPicture shown_;
  OverlayPlace place_;
  QPushButton* retry_ = nullptr;  // made with the first failure
  std::optional<Grip> grip_;
  QElapsedTimer sinceOpened_;
  QString said_;
  QTimer saidLongEnough_;
  bool isSeen_ = true;
};

}  // namespace quillet
