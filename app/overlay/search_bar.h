// The field at the foot of the terminal in which a text to look for is typed: a part of the view, with how
// many hits there are and buttons for the next and the previous one. Says what the user wants; knows nothing
// of articles. While it is open it has the keyboard. User-interface thread.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "app/overlay/form_style.h"
#include "app/overlay/overlay.h"

namespace quillet {

class SearchBar : public QWidget, public Overlay {
  Q_OBJECT

 public:
  // Closed; what it is made of comes with the first opening. It gives the keyboard back to `parent`.
  explicit SearchBar(QWidget& parent);

  // With a text that goes with the first letter typed.
  void Open(const QString& proposed);
  void Close();
  bool IsOpen() const { return open_; }
  // `found`: not that there is nothing.
  void Tell(const QString& tally, bool found);
  // Over the bottom row, as high as its letters need, no lower than the parent's edge.
  void Place(const OverlayPlace& place) override;

 signals:
  void TextChanged(const QString& text);
  void StepWanted(quillet::SearchStep step);
  // Pages up (negative) or down.
  void PagesWanted(int pages);
  void Confirmed();
  void Dismissed();
  // The keyboard has gone elsewhere in the window.
  void Left();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void Build();
  void TakePlace();
  void SetLook(const QFont& font, const LoginFormColours& colours);
  bool OnFieldKey(const QKeyEvent& event);

  bool open_ = false;
  OverlayPlace place_;
  double letter_ = 0;  // the size of the letters, in widget units
  const LoginFormColours* colours_;
  // Null until it is opened.
  QLabel* label_ = nullptr;
  QLineEdit* field_ = nullptr;
  QLabel* tally_ = nullptr;
  QPushButton* previous_ = nullptr;
  QPushButton* next_ = nullptr;
};

}  // namespace quillet
