// A store with empty files behind it, and what every dialog over it has to keep: a tab order by eye.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include <QKeyEvent>
#include <QRegularExpression>
#include <QStyle>

#include "settings/settings_store.h"
#include "tests/settings/user_folders.h"
#include "tests/support/dialog_looks.h"

namespace quillet {

struct LoadedStore : UserFolders {
  LoadedStore() { store.Load(); }

  StartedFiles files{*this};
  SettingsStore store{files, "bbs.example.org"};
};

inline void Press(QWidget& widget, int key, const QString& text = {}) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &press);
}

// Without the key at their end.
inline QString PlainWords(QString words) {
  static const QRegularExpression key(u"\\(&.\\)$"_qs);
  return words.remove(key);
}

inline QAbstractButton* ButtonOf(QWidget& window, const QString& text) {
  for (auto* const button : window.findChildren<QAbstractButton*>())
    if (PlainWords(button->text()) == text) return button;
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

// Of the controls in `part`.
inline void ExpectTabOrderByEye(QWidget& window, const QWidget& part) {
  std::vector<QWidget*> order = TabOrder(window);
  std::erase_if(
      order, [&](QWidget* widget) { return !part.isAncestorOf(widget) || widget->focusProxy() != nullptr; });
  ASSERT_FALSE(order.empty());
  const auto middle = [&](QWidget* widget) { return widget->mapTo(&window, widget->rect().center()); };
  for (std::size_t i = 1; i < order.size(); ++i) {
    const QPoint before = middle(order[i - 1]);
    const QPoint after = middle(order[i]);
    EXPECT_TRUE(after.y() > before.y() + 8 || after.x() > before.x()) << i;
    EXPECT_GE(after.y(), before.y() - 8) << i;
  }
}

}  // namespace quillet
