// A store with empty files behind it, and what every dialog over it has to keep: a tab order by eye and
// nothing cut.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>

#include "settings/settings_store.h"
#include "tests/settings/user_folders.h"

namespace quillet {

struct LoadedStore : UserFolders {
  LoadedStore() { store.Load(); }

  DataFiles files{registry, Both()};
  SettingsStore store{files, "bbs.example.org"};
};

inline void Press(QWidget& widget, int key, const QString& text = {}) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &press);
}

inline QAbstractButton* ButtonOf(QWidget& window, const QString& text) {
  for (auto* const button : window.findChildren<QAbstractButton*>())
    if (button->text() == text) return button;
  ADD_FAILURE() << "no button " << text.toStdString();
  return nullptr;
}

// The controls that Tab reaches, from the first on.
inline std::vector<QWidget*> TabOrder(QWidget& window) {
  std::vector<QWidget*> order;
  for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain())
    if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisible()) order.push_back(next);
  return order;
}

inline void ExpectTabOrderByEye(QWidget& window) {
  const std::vector<QWidget*> order = TabOrder(window);
  ASSERT_FALSE(order.empty());
  const auto middle = [&](QWidget* widget) { return widget->mapTo(&window, widget->rect().center()); };
  for (std::size_t i = 1; i < order.size(); ++i) {
    const QPoint before = middle(order[i - 1]);
    const QPoint after = middle(order[i]);
    const bool isBesideOrBelow = after.y() > before.y() + 8 || after.x() > before.x();
    EXPECT_TRUE(isBesideOrBelow) << i;
    EXPECT_GE(after.y(), before.y() - 8) << i;
  }
}

inline void ExpectNothingCut(QWidget& window) {
  for (auto* const label : window.findChildren<QLabel*>()) {
    const QSize text = label->fontMetrics().size(0, label->text());
    EXPECT_GE(label->width(), text.width()) << label->text().toStdString();
    EXPECT_GE(label->height(), text.height()) << label->text().toStdString();
  }
  const auto fits = [](QWidget* control, const QString& name) {
    EXPECT_GE(control->width(), control->sizeHint().width()) << name.toStdString();
    EXPECT_GE(control->height(), control->sizeHint().height()) << name.toStdString();
  };
  for (auto* const button : window.findChildren<QAbstractButton*>())
    fits(button, button->text());
  for (auto* const box : window.findChildren<QComboBox*>())
    fits(box, box->currentText());
}

// Text of the application at 150% while it lives.
class LargeText {
 public:
  LargeText() {
    QFont large = before_;
    large.setPointSizeF(before_.pointSizeF() * 1.5);
    QApplication::setFont(large);
  }
  LargeText(const LargeText&) = delete;
  LargeText& operator=(const LargeText&) = delete;
  ~LargeText() { QApplication::setFont(before_); }

 private:
  QFont before_ = QApplication::font();
};

}  // namespace quillet
