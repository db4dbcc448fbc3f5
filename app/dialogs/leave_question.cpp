#include "app/dialogs/leave_question.h"

#include <utility>

#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>

namespace quillet {

LeavePlan PlanLeaving(LeaveFor purpose, const LeaveFacts& facts, LeaveMode mode) {
  const bool losesDraft = facts.hasDraft && purpose == LeaveFor::kClosing;
  if (facts.inEditor || losesDraft || mode == LeaveMode::kAsk) return LeavePlan::kAsk;
  return mode == LeaveMode::kLogOut ? LeavePlan::kLogOutFirst : LeavePlan::kGo;
}

LeaveQuestion::LeaveQuestion(const Parts& parts, std::function<LeaveFacts()> facts,
                             std::chrono::milliseconds patience)
    : parts_(parts), facts_(std::move(facts)) {
  patience_.setSingleShot(true);
  patience_.setInterval(patience);
  connect(&patience_, &QTimer::timeout, this, &LeaveQuestion::GoOn);
  connect(&parts_.automations, &Automations::LogOutEnded, this, &LeaveQuestion::OnLogOutEnded);
}

bool LeaveQuestion::KeepsLogin() const {
  if (!parts_.connection.IsConnected() || parts_.connection.CurrentSite().isRecording) return false;
  if (parts_.automations.Current() == Activity::kLogOut) return false;
  return !parts_.connection.Seen().loginId.empty() || facts_().inEditor;
}

bool LeaveQuestion::LosesDraft(LeaveFor purpose) const {
  return purpose == LeaveFor::kClosing && !givesUpDraft_ && facts_().hasDraft;
}

bool LeaveQuestion::IsFree(LeaveFor purpose) const {
  return !KeepsLogin() && !LosesDraft(purpose);
}

void LeaveQuestion::Before(LeaveFor purpose, std::function<void()> then) {
  if (IsFree(purpose)) return then();
  if (isAsking_) return;
  LeaveFacts facts = facts_();
  // The screen may be the last one of a connection that has ended.
  facts.inEditor = facts.inEditor && KeepsLogin();
  LeavePlan plan = PlanLeaving(purpose, facts, parts_.settings.Fields().leaveMode);
  if (plan == LeavePlan::kAsk) {
    const std::optional<LeavePlan> answer = Ask(purpose, facts);
    if (!answer) return;
    plan = *answer;
    // What comes next would ask the same again.
    givesUpDraft_ = facts.hasDraft && purpose == LeaveFor::kClosing;
  }
  if (plan == LeavePlan::kGo || !parts_.automations.LogOut()) return then();
  then_ = std::move(then);
  patience_.start();
}

std::optional<LeavePlan> LeaveQuestion::Ask(LeaveFor purpose, const LeaveFacts& facts) {
  const bool keepsLogin = KeepsLogin();
  const LeaveMessages words =
      DescribeLeaving(purpose, facts,
                      {.site = keepsLogin ? parts_.connection.CurrentSite().ShownName() : QString(),
                       .id = QString::fromStdU16String(parts_.connection.Seen().loginId)},
                      parts_.settings.Fields().work);
  QMessageBox box(QMessageBox::Question, words.title, {}, QMessageBox::NoButton, parts_.window.window());
  box.setTextFormat(Qt::PlainText);
  box.setText(words.question);
  box.setInformativeText(u"<p>%1</p>"_qs.arg(words.reason.toHtmlEscaped().replace(u'\n', u"<br>"_qs)));
  const auto add = [&](const char* name, const QString& text, QMessageBox::ButtonRole role) {
    QPushButton* const button = box.addButton(text, role);
    button->setObjectName(name);
    return button;
  };
  // Out of the editor the BBS lets nobody who has not decided about his text.
  const bool mayLogOut = keepsLogin && !facts.inEditor;
  QPushButton* const logOut = !mayLogOut ? nullptr : add("logOut", words.logOut, QMessageBox::AcceptRole);
  QPushButton* const leave = add("leave", words.leave, QMessageBox::DestructiveRole);
  QPushButton* const stay = add("stay", words.stay, QMessageBox::RejectRole);
  box.setDefaultButton(logOut != nullptr ? logOut : stay);
  box.setEscapeButton(stay);
  if (!facts.inEditor && !facts.hasDraft) {
    auto* const noMore = new QCheckBox(words.noMore);
    noMore->setToolTip(words.noMoreHint);
    box.setCheckBox(noMore);
  }
  isAsking_ = true;
  box.exec();
  isAsking_ = false;
  parts_.window.window()->activateWindow();
  const QAbstractButton* const clicked = box.clickedButton();
  if (clicked == nullptr || clicked == stay) return std::nullopt;
  const LeavePlan answer = clicked == leave ? LeavePlan::kGo : LeavePlan::kLogOutFirst;
  if (box.checkBox() != nullptr && box.checkBox()->isChecked())
    parts_.settings.Set(&Settings::leaveMode,
                        answer == LeavePlan::kGo ? LeaveMode::kDirectly : LeaveMode::kLogOut);
  return answer;
}

void LeaveQuestion::OnLogOutEnded(LogOutEnd end) {
  if (end == LogOutEnd::kDone) return GoOn();
  givesUpDraft_ = false;
  patience_.stop();
  then_ = nullptr;
}

void LeaveQuestion::GoOn() {
  patience_.stop();
  if (const std::function<void()> then = std::exchange(then_, nullptr)) then();
}

}  // namespace quillet
