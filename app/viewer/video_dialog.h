// What is known of a video behind a link: its thumbnail, title and length, and the way to it in the browser.
// Nothing of it is played here. User-interface thread.
#pragma once

#include <functional>

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QString>

#include "media/fetch/picture_store.h"

namespace quillet {

class VideoDlg : public QDialog {
  Q_OBJECT

 public:
  // `store` outlives the dialog. `browse` opens the link in the browser, and the dialog closes with it.
  VideoDlg(PictureStore& store, const QString& link, std::function<void()> browse, QWidget* parent = nullptr);
  ~VideoDlg() override;

 private:
  // More may be known of it.
  void Refresh();
  QSize Bounds() const;

  PictureStore& store_;
  const QString link_;
  QLabel* picture_;
  QLabel* title_;
  QLabel* facts_;
};

}  // namespace quillet
