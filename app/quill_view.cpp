#include "app/quill_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>

#include "app/key_adapter.h"
#include "app/panel_look.h"
#include "bbs/page_flags.h"
#include "input/screen_text.h"

namespace quillet {

CQuillView::CQuillView(CQuillDoc& doc, QWidget* parent)
    : QWidget(parent),
      doc_(doc),
      surface_(*this),
      login_(doc, *this),
      ime_(*this, surface_),
      keys_(doc, [this](KeyCommand command) { OnCommand(command); }),
      timers_({.phaseTurned = [this] { RefreshFrame(); },
               .tick =
                   [this] {
                     doc_.Driver().Tick();
                     RefreshPanel();
                   },
               .animate = [this] { update(); }}) {
  frame_.screen.Clear();
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_InputMethodEnabled);
  setFocusPolicy(Qt::StrongFocus);
  connect(&doc_, &CQuillDoc::StatusChanged, this, &CQuillView::RefreshPanel);
  connect(&doc_, &CQuillDoc::SettingsChanged, this, &CQuillView::OnSettingsChanged);
  ConnectLogin();
  doc_.Messages().Attach(this);
  ApplyDisplaySettings();
  NoteVersion();
  TellFileProblems();
  RefreshPanel();
}

CQuillView::~CQuillView() {
  doc_.Messages().Detach();
}

void CQuillView::OnSettingsChanged() {
  ApplyDisplaySettings();
  TellFileProblems();
}

void CQuillView::ConnectLogin() {
  connect(&login_, &LoginDesk::Changed, this, [this] {
    update();
    RefreshPanel();
  });
  connect(&login_, &LoginDesk::AddressRequested, this,
          [this] { emit CommandRequested(KeyCommand::kConnect); });
  connect(&login_, &LoginDesk::DemoRequested, this, &CQuillView::DemoRequested);
  connect(&doc_, &CQuillDoc::JumpEnded, this, [this](const ArticleReference& article, JumpResult result) {
    ShowNotice(DescribeJump(article, result));
  });
}

void CQuillView::AskLogin() {
  login_.Show();
}

void CQuillView::PlaceLogin() {
  login_.Place(surface_.CurrentLayout().rowHeight / surface_.Scale());
}

void CQuillView::NoteVersion() {
  doc_.Change(u"Basic", u"Version", QStringLiteral(QUILLET_VERSION).toStdU16String());
}

void CQuillView::TellFileProblems() {
  ShowNotice(DescribeFileProblems(toldProblems_.New(doc_.TakeFileProblems())));
}

void CQuillView::ApplyDisplaySettings() {
  surface_.ApplySettings(doc_.Display());
  ime_.SetFont(QString::fromStdU16String(doc_.Display().font));
  RefreshFrame();
  PlaceLogin();
  ime_.UpdatePosition(frame_.screen.cursorRow, frame_.screen.cursorCol, ImeAdapter::Move::kForced);
}

void CQuillView::Paste() {
  // The BBS's editor does not wrap.
  const bool breaks = doc_.Fields().pasteAutoChangeLine && (frame_.screen.pageFlags & PF_EDITOR) != 0;
  keys_.SendText(CleanPaste(QGuiApplication::clipboard()->text().toStdU16String()),
                 breaks ? Wrap::kAt78ColumnsLeftOpen : Wrap::kNone);
}

void CQuillView::CopyScreen() {
  QGuiApplication::clipboard()->setText(QString::fromStdU16String(ScreenAsText(frame_.screen)));
}

void CQuillView::SendControl(char code) {
  keys_.Perform({.kind = KeyActionKind::kSendBytes, .bytes = std::string(1, code)});
}

void CQuillView::ShowNotice(const PanelText& notice) {
  panel_.AddNotice(notice);
  RefreshPanel();
}

bool CQuillView::event(QEvent* event) {
  if (event->type() == MessageTarget::WakeEvent()) {
    TakeMessages();
    return true;
  }
  // What the login form does not take is a menu's.
  if (event->type() == QEvent::ShortcutOverride && !login_.IsShown() &&
      Claims(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void CQuillView::keyPressEvent(QKeyEvent* event) {
  if (!PreTranslateMessage(*event)) QWidget::keyPressEvent(event);
}

bool CQuillView::Claims(const QKeyEvent& event) const {
  return DecideKey(ToKeyPress(event), frame_.screen).kind != KeyActionKind::kNone;
}

bool CQuillView::PreTranslateMessage(const QKeyEvent& event) {
  const KeyPress press = ToKeyPress(event);
  const KeyAction action = DecideKey(press, frame_.screen);
  if (action.kind != KeyActionKind::kCommand && HandlePanelKey(press.virtualKey)) return true;
  if (press.virtualKey == kKeyEscape && doc_.StopActivity()) return true;
  timers_.RestartCaret();
  return keys_.Perform(action);
}

bool CQuillView::HandlePanelKey(int virtualKey) {
  if (panel_.Text().title.isEmpty()) return false;
  if (virtualKey == kKeyEnter)
    PerformPanelAction(panel_.Text().onEnter);
  else if (virtualKey == kKeyEscape)
    PerformPanelAction(panel_.IsActive() ? panel_.Text().onEscape : PanelAction::kNone);
  else
    return false;
  return true;
}

void CQuillView::PerformPanelAction(PanelAction action) {
  switch (action) {
    case PanelAction::kReconnect:
      doc_.Reconnect();
      break;
    case PanelAction::kAskAddress:
      emit CommandRequested(KeyCommand::kConnect);
      break;
    case PanelAction::kAskLogin:
      AskLogin();
      break;
    case PanelAction::kCancel:
      doc_.Disconnect();
      break;
    case PanelAction::kDismiss:
      panel_.Dismiss();
      break;
    case PanelAction::kNone:
      panel_.Recall();
      break;
  }
  update();
  RefreshPanel();
}

void CQuillView::OnCommand(KeyCommand command) {
  if (command == KeyCommand::kPaste)
    Paste();
  else if (command == KeyCommand::kCopyScreen)
    CopyScreen();
  else
    emit CommandRequested(command);
}

void CQuillView::TakeMessages() {
  MessageTarget::Messages messages = doc_.Messages().Take();
  if (messages.screen) {
    frame_.screen = *messages.screen;
    ++screenCount_;
    doc_.OnScreen(frame_.screen, messages.reason);
    RefreshFrame();
    ime_.UpdatePosition(frame_.screen.cursorRow, frame_.screen.cursorCol, ImeAdapter::Move::kIfChanged);
  }
  if (messages.bell) doc_.Driver().OnBell(doc_.IsAutomationBusy());
}

void CQuillView::RefreshPanel() {
  const bool wasShown = panel_.IsShown();
  const PanelText before = panel_.Text();
  panel_.SetSession(DescribeSession(doc_.Facts()));
  login_.SetCovered(panel_.HasNotice());
  if (badge_.SetText(DescribeActivity(doc_.CurrentActivity())) || !badge_.Text().isEmpty()) update();
  if (panel_.IsShown() != wasShown || panel_.Text() != before) update();
  timers_.SetAnimating(panel_.IsBusy());
  RefreshFrame();
}

void CQuillView::RefreshFrame() {
  frame_.blinkOff = timers_.BlinkOff();
  frame_.showCaret =
      timers_.CaretOn() && hasFocus() && !login_.IsShown() && !panel_.IsActive() && doc_.IsConnected();
  surface_.Refresh(frame_);
}

void CQuillView::paintEvent(QPaintEvent* event) {
  // The scale factor can change without any other event when the window moves to another screen.
  if (surface_.FollowWidget()) {
    surface_.Refresh(frame_);
    QMetaObject::invokeMethod(this, &CQuillView::PlaceLogin, Qt::QueuedConnection);
  }
  const qreal unit = surface_.CurrentLayout().rowHeight / surface_.Scale();
  QPainter painter(this);
  surface_.Paint(painter, event->rect());
  ime_.Paint(painter);
  badge_.Paint(painter, rect(), unit);
  if (login_.IsShown())
    painter.fillRect(rect(), panel_look::kCalmScrim);
  else
    panel_.Paint(painter, rect(), unit);
}

void CQuillView::resizeEvent(QResizeEvent* /*event*/) {
  RefreshFrame();
  PlaceLogin();
  ime_.UpdatePosition(frame_.screen.cursorRow, frame_.screen.cursorCol, ImeAdapter::Move::kForced);
}

void CQuillView::inputMethodEvent(QInputMethodEvent* event) {
  const QString text = ime_.Handle(*event);
  if (!text.isEmpty()) {
    timers_.RestartCaret();
    keys_.SendText(text.toStdU16String());
  }
  event->accept();
}

QVariant CQuillView::inputMethodQuery(Qt::InputMethodQuery query) const {
  const std::optional<QVariant> answer = ime_.Query(query);
  return answer ? *answer : QWidget::inputMethodQuery(query);
}

void CQuillView::focusInEvent(QFocusEvent* event) {
  timers_.SetFocused(true);
  QWidget::focusInEvent(event);
}

void CQuillView::focusOutEvent(QFocusEvent* event) {
  timers_.SetFocused(false);
  QWidget::focusOutEvent(event);
}

void CQuillView::mousePressEvent(QMouseEvent* event) {
  if (!panel_.IsActive()) panel_.Recall();
  RefreshPanel();
  QWidget::mousePressEvent(event);
}

bool CQuillView::focusNextPrevChild(bool /*next*/) {
  return false;  // Tab is a key of the BBS
}

}  // namespace quillet
