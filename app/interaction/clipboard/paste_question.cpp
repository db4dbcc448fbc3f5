#include "app/interaction/clipboard/paste_question.h"

#include <algorithm>
#include <utility>

#include <QLabel>
#include <QPushButton>

namespace quillet {
namespace {

// A pasted text that looks like markup is shown as it is.
void ShowPlainly(QMessageBox& box, const QString& question, const QString& reason) {
  box.setTextFormat(Qt::PlainText);
  box.setText(question);
  box.setInformativeText(reason);
  const auto labels = box.findChildren<QLabel*>();
  for (QLabel* const label : labels)
    if (label->text() == reason) label->setTextFormat(Qt::PlainText);
}

}  // namespace

void PasteQuestion::Ask(Question question, Answer answer) {
  Close();
  box_ = new QMessageBox(QMessageBox::Question, u"貼上"_qs, {}, QMessageBox::NoButton, &window_);
  ShowPlainly(*box_, question.words, question.reason);
  buttons_.clear();
  for (const Choice& choice : question.choices)
    buttons_.push_back(box_->addButton(choice.caption, QMessageBox::AcceptRole));
  QPushButton* const none = box_->addButton(u"取消"_qs, QMessageBox::RejectRole);
  const bool takesFirst = question.safest == Safest::kFirstChoice && !buttons_.empty();
  box_->setDefaultButton(takesFirst ? qobject_cast<QPushButton*>(buttons_.front()) : none);
  box_->setEscapeButton(none);
  connect(
      box_, &QMessageBox::finished, this,
      [this, choices = std::move(question.choices), answer = std::move(answer)] { Finish(choices, answer); });
  box_->open();
}

void PasteQuestion::Finish(const std::vector<Choice>& choices, const Answer& answer) {
  const auto clicked = std::find(buttons_.begin(), buttons_.end(), box_->clickedButton());
  const std::ptrdiff_t at = clicked - buttons_.begin();
  // What was captured goes with the box, after this has returned.
  box_->deleteLater();
  box_.clear();
  window_.window()->activateWindow();
  if (at < std::ssize(choices)) answer(choices[static_cast<std::size_t>(at)]);
}

void PasteQuestion::Close() {
  if (!IsOpen()) return;
  box_->disconnect(this);
  box_->hide();
  box_->deleteLater();
  box_.clear();
}

}  // namespace quillet
