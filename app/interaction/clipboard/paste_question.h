// The question before a text is pasted that could go in more than one way. It lies over the window and holds
// nothing up: the answer comes later. User-interface thread.
#pragma once

#include <functional>
#include <vector>

#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include "app/messages/text_messages.h"

namespace quillet {

class PasteQuestion : public QObject {
 public:
  using Choice = PasteChoice;
  using Safest = PasteChoices::Safest;
  using Question = PasteChoices;
  // Not called when the user declines.
  using Answer = std::function<void(const Choice& choice)>;

  // `window` outlives the object.
  explicit PasteQuestion(QWidget& window) : window_(window) {}
  ~PasteQuestion() override { Close(); }

  // Takes the place of a question that is open.
  void Ask(Question question, Answer answer);
  // As if the user had declined; fine when nothing is asked.
  void Close();
  bool IsOpen() const { return !box_.isNull(); }

 private:
  void Finish(const std::vector<Choice>& choices, const Answer& answer);

  QWidget& window_;
  QPointer<QMessageBox> box_;
  std::vector<QAbstractButton*> buttons_;  // of box_, one for each choice
};

}  // namespace quillet
