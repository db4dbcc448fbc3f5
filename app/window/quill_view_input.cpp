// The view's ways in: keys, input method, mouse.
#include <algorithm>
#include <array>

#include "app/interaction/key_adapter.h"
#include "app/window/quill_view.h"

namespace quillet {

void CQuillView::keyPressEvent(QKeyEvent* event) {
  hands_.Pointer().OnKey();
  if (!hands_.Keyboard().PreTranslateMessage(*event)) QWidget::keyPressEvent(event);
}

bool CQuillView::StaysWindows(const QKeyEvent& event) {
  constexpr std::array kKept{Command::kWorkMode, Command::kFullScreen, Command::kQuit};
  const KeyPress press = ToKeyPress(event);
  return std::any_of(kKept.begin(), kKept.end(), [&](Command command) {
    const auto& keys = RowOf(command).keys;
    return std::any_of(keys.begin(), keys.end(),
                       [&](const KeyChord& chord) { return chord.IsPressedBy(press); });
  });
}

void CQuillView::PerformPanelAction(PanelAction action) {
  switch (action) {
    case PanelAction::kReconnect:
      doc_.GetReconnector().Reconnect(Reconnector::Told::kYes);
      break;
    case PanelAction::kStopRetrying:
      doc_.GetReconnector().Stop();
      break;
    case PanelAction::kAskAddress:
      Commands().Run(Command::kConnect);
      break;
    case PanelAction::kAcceptHostKey:
      if (doc_.GetHostKeys().AcceptChanged())
        doc_.GetReconnector().ReconnectWith(nullptr, Reconnector::Told::kYes);
      TellFileProblems();
      break;
    case PanelAction::kAskLogin:
      AskLogin();
      break;
    case PanelAction::kCancel:
      connection_.Disconnect();
      break;
    case PanelAction::kDismiss:
    case PanelAction::kNone:
      break;
  }
  overlays_.Repaint(panel_);
  RefreshPanel();
}

void CQuillView::inputMethodEvent(QInputMethodEvent* event) {
  hands_.Keyboard().OnComposed(ime_.Handle(*event));
  event->accept();
}

QVariant CQuillView::inputMethodQuery(Qt::InputMethodQuery query) const {
  const std::optional<QVariant> answer = ime_.Query(query);
  return answer ? *answer : QWidget::inputMethodQuery(query);
}

bool CQuillView::focusNextPrevChild(bool /*next*/) {
  return false;  // Tab is a key of the BBS
}

void CQuillView::mousePressEvent(QMouseEvent* event) {
  if (screenPicture_.IsOpen() && !panel_.IsActive()) return screenPicture_.Click();
  if (!overlays_.IsCovered() && hands_.Pointer().OnPress(*event)) return;
  if (!panel_.IsActive()) panel_.Recall();
  RefreshPanel();
  QWidget::mousePressEvent(event);
}

void CQuillView::mouseReleaseEvent(QMouseEvent* event) {
  if (overlays_.IsCovered() || hands_.Pointer().OnRelease(*event)) return;
  panel_.Recall();
  RefreshPanel();
}

void CQuillView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!overlays_.IsCovered()) hands_.Pointer().OnDoubleClick(*event);
}

void CQuillView::mouseMoveEvent(QMouseEvent* event) {
  if (!overlays_.IsCovered()) hands_.Pointer().OnMove(*event);
}

void CQuillView::leaveEvent(QEvent* /*event*/) {
  hands_.Pointer().OnLeave();
}

void CQuillView::wheelEvent(QWheelEvent* event) {
  if (overlays_.IsCovered() || !hands_.Pointer().OnWheel(*event)) QWidget::wheelEvent(event);
}

}  // namespace quillet
