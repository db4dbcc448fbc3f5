#include "app/paste_question.h"

#include <utility>

#include <QLabel>
#include <QPushButton>

#include "input/key_control.h"
#include "input/paste_plan.h"

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

void PasteQuestion::Ask(std::u16string clean, Answer answer) {
  Close();
  box_ = new QMessageBox(QMessageBox::Question, u"貼上"_qs, {}, QMessageBox::NoButton, &window_);
  ShowPlainly(*box_, u"要貼上 %1 行文字嗎？"_qs.arg(PastedLines(clean)),
              u"現在不在編輯文章，每一行都會像按下 Enter 一樣送出。\n\n"_qs +
                  QString::fromStdU16String(PastePreview(clean)).trimmed());
  all_ = box_->addButton(u"貼上"_qs, QMessageBox::AcceptRole);
  first_ = box_->addButton(u"只貼第一行"_qs, QMessageBox::AcceptRole);
  QPushButton* const none = box_->addButton(u"取消"_qs, QMessageBox::RejectRole);
  box_->setDefaultButton(none);
  box_->setEscapeButton(none);
  connect(box_, &QMessageBox::finished, this,
          [this, text = std::move(clean), answer = std::move(answer)] { Finish(text, answer); });
  box_->open();
}

void PasteQuestion::Finish(const std::u16string& text, const Answer& answer) {
  const QAbstractButton* const clicked = box_->clickedButton();
  const bool pastesAll = clicked == all_;
  const bool pastesFirst = clicked == first_;
  // What was captured goes with the box, after this has returned.
  box_->deleteLater();
  box_.clear();
  window_.window()->activateWindow();
  if (pastesAll)
    answer(text);
  else if (pastesFirst)
    answer(FirstLine(text));
}

void PasteQuestion::Close() {
  if (!IsOpen()) return;
  box_->disconnect(this);
  box_->hide();
  box_->deleteLater();
  box_.clear();
}

}  // namespace quillet
