// The room that a dialog takes: as wide as its letters ask for, as large as its screen allows, the rest
// scrolls. User-interface thread.
#pragma once

#include <QScrollArea>

namespace quillet {

enum class Sideways {
  kNever,   // the content is always seen in its whole width
  kScrolls  // the dialog may be narrower than its content
};

// Holds the content, and scrolls only what does not fit.
class ContentScroll : public QScrollArea {
 public:
  ContentScroll(QWidget* content, Sideways sideways);

  // The content's whole, which the base class caps at a few lines of text; with room for the scroll bar, so
  // that scrolling one way does not make it scroll the other.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  Sideways sideways_;
};

// The width of so many Latin letters in the widget's font, in widget units. A face made for Chinese calls the
// width of one of its characters its average, which is twice as much.
int LettersWide(const QWidget& widget, int letters);

// Gives a window that is about to be shown the size of its content, as far as its screen has room for it.
void FitToScreen(QWidget& window);

}  // namespace quillet
