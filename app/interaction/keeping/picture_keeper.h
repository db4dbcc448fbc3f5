// Keeps a picture of the article outside the program: its file as it came, in a file that the user chooses,
// or its image on the clipboard. The view's hands own one. User-interface thread.
#pragma once

#include <functional>

#include <QImage>
#include <QObject>
#include <QString>
#include <QWidget>

#include "app/messages/panel_text.h"
#include "media/fetch/picture_store.h"

namespace quillet {

class PictureKeeper : public QObject {
  Q_OBJECT

 public:
  struct Handlers {
    std::function<void(const QString&)> tell;  // in a line that goes by itself
    std::function<void(const PanelText&)> notice;
  };
  // Both references outlive the object.
  PictureKeeper(const PictureStore& store, QWidget& window, Handlers handlers);

  // Asks where to, and saves.
  void Save(const QString& link);
  // The whole of it, decoded meanwhile on another thread; of what was wished last only.
  void Copy(const QString& link);

 private:
  void Offer(const QImage& image);

  const PictureStore& store_;
  QWidget& window_;
  const Handlers handlers_;
  QString folder_;  // of the last file; empty: none yet
  unsigned copies_ = 0;
};

}  // namespace quillet
