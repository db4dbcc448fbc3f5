// The question before several lines are pasted where each would be sent like a typed one. It lies over the
// window and holds nothing up: the answer comes later. User-interface thread.
#pragma once

#include <functional>
#include <string>

#include <QMessageBox>
#include <QObject>
#include <QPointer>

namespace quillet {

class PasteQuestion : public QObject {
 public:
  // Gets what is to be pasted; not called when the user declines.
  using Answer = std::function<void(const std::u16string& text)>;

  // `window` outlives the object.
  explicit PasteQuestion(QWidget& window) : window_(window) {}
  ~PasteQuestion() override { Close(); }

  // `clean` holds line ends as CR. Takes the place of a question that is open.
  void Ask(std::u16string clean, Answer answer);
  // As if the user had declined; fine when nothing is asked.
  void Close();
  bool IsOpen() const { return !box_.isNull(); }

 private:
  void Finish(const std::u16string& text, const Answer& answer);

  QWidget& window_;
  QPointer<QMessageBox> box_;
  QAbstractButton* all_ = nullptr;  // buttons of box_
  QAbstractButton* first_ = nullptr;
};

}  // namespace quillet
