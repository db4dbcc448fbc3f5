// Answers modal dialogs in tests that act as the user does.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

namespace quillet {

// Runs `open`, which shows modal dialogs one after another, and lets each answer deal with the next of them:
// an answer closes its dialog. A dialog too many, or one that stays open after its answer, fails the test.
inline void AnswerDialogs(const std::function<void()>& open,
                          const std::vector<std::function<void(QDialog&)>>& answers) {
  std::size_t answered = 0;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    if (answered == answers.size()) {
      ADD_FAILURE() << "still open: " << dialog->windowTitle().toStdString();
      dialog->reject();
      return;
    }
    answers[answered++](*dialog);
  });
  poll.start(1);
  open();
  EXPECT_EQ(answered, answers.size()) << "dialogs";
}

inline void Accept(QDialog& dialog) {
  dialog.accept();
}

template <typename Control>
Control& Find(QWidget& window, const QString& name) {
  auto* const control = window.findChild<Control*>(name);
  if (control == nullptr) throw std::runtime_error("no control " + name.toStdString());
  return *control;
}

}  // namespace quillet
