// Words in a label that takes no room without them. User-interface thread.
#pragma once

#include <QLabel>
#include <QString>

namespace quillet {

inline void ShowWords(QLabel& label, const QString& words) {
  label.setText(words);
  label.setVisible(!words.isEmpty());
}

}  // namespace quillet
