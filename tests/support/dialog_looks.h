// What every dialog has to keep at every size of text: nothing is cut.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>

namespace quillet {

inline void ExpectNothingCut(QWidget& window) {
  for (auto* const label : window.findChildren<QLabel*>()) {
    const QString text = label->text();
    if (!label->isVisible() || text.isEmpty()) continue;
    QSize room = label->sizeHint();
    if (label->wordWrap()) room = {0, label->heightForWidth(label->width())};
    EXPECT_GE(label->width(), room.width()) << text.toStdString();
    EXPECT_GE(label->height(), room.height()) << text.toStdString();
  }
  const auto fits = [](QWidget* control, const QString& name) {
    if (!control->isVisible()) return;
    EXPECT_GE(control->width(), control->sizeHint().width()) << name.toStdString();
    EXPECT_GE(control->height(), control->sizeHint().height()) << name.toStdString();
  };
  for (auto* const button : window.findChildren<QAbstractButton*>())
    fits(button, button->text());
  for (auto* const box : window.findChildren<QComboBox*>())
    fits(box, box->currentText());
}

// Text of the application larger than usual while it lives.
class LargeText {
 public:
  LargeText(double factor, const QString& family) {
    QFont large = before_;
    large.setFamilies({family});
    large.setPointSizeF(before_.pointSizeF() * factor);
    QApplication::setFont(large);
  }
  LargeText(const LargeText&) = delete;
  LargeText& operator=(const LargeText&) = delete;
  ~LargeText() { QApplication::setFont(before_); }

 private:
  QFont before_ = QApplication::font();
};

}  // namespace quillet
