// The view's ways in: keys, input method, mouse, and the commands that they and the menus give.
#include "app/interaction/context_menu.h"
#include "app/messages/article_messages.h"
#include "app/window/quill_view.h"
#include "bbs/page_flags.h"
#include "platform/clock.h"
#include "settings/setting_table.h"

namespace quillet {

void CQuillView::keyPressEvent(QKeyEvent* event) {
  pointer_.OnKey();
  if (!keyInput_.PreTranslateMessage(*event)) QWidget::keyPressEvent(event);
}

void CQuillView::Search(SearchStep step) {
  if (article_.IsShown())
    search_.Take(step);
  else
    toast_.Show(DescribeNoCommand(doc_.IsConnected()));
}

void CQuillView::PerformArticleCommand(ArticleCommand command) {
  const bool reading = (screen_.pageFlags & PF_READING) != 0 && doc_.OpenArticle().IsArticle();
  if (article_.IsShown() || reading)
    commands_.Perform(command);
  else
    toast_.Show(DescribeNoCommand(doc_.IsConnected()));
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
    case PanelAction::kNone:
      break;
  }
  overlays_.Repaint(panel_);
  RefreshPanel();
}

void CQuillView::OnCommand(KeyCommand command) {
  switch (command) {
    case KeyCommand::kPaste:
      return Edit(EditCommand::kPaste);
    case KeyCommand::kCopy:
      return Edit(EditCommand::kCopy);
    case KeyCommand::kReveal:
      return Reveal();
    case KeyCommand::kBookmark:
      return commands_.Perform(ArticleCommand::kBookmark);
    case KeyCommand::kPush:
      return commands_.Perform(ArticleCommand::kPush);
    case KeyCommand::kPushOn:
      return commands_.Perform(ArticleCommand::kPushOn);
    case KeyCommand::kGiveMoney:
      return commands_.Perform(ArticleCommand::kGiveMoney);
    case KeyCommand::kTogglePlaces:
      return TogglePlaces();
    case KeyCommand::kConnect:
    case KeyCommand::kFullScreen:
    case KeyCommand::kWorkMode:
    case KeyCommand::kNone:
      emit CommandRequested(command);
      break;
  }
}

void CQuillView::TogglePlaces() {
  if (!Acts(u"Basic", u"IpToName")) return toast_.Show(DescribeActsNotYet(u"推文IP轉地理位置"_qs));
  const bool on = !doc_.Fields().ipToName;
  doc_.Change(u"Basic", u"IpToName", on ? u"1" : u"0");
  toast_.Show(on ? u"推文IP轉地理位置：開"_qs : u"推文IP轉地理位置：關"_qs);
}

void CQuillView::Reveal() {
  composer_.PressReveal(SteadyMilliseconds());
  ShowOtherLines();
}

void CQuillView::inputMethodEvent(QInputMethodEvent* event) {
  keyInput_.OnComposed(ime_.Handle(*event));
  event->accept();
}

QVariant CQuillView::inputMethodQuery(Qt::InputMethodQuery query) const {
  const std::optional<QVariant> answer = ime_.Query(query);
  return answer ? *answer : QWidget::inputMethodQuery(query);
}

bool CQuillView::focusNextPrevChild(bool /*next*/) {
  return false;  // Tab is a key of the BBS
}

PointerControl::Handlers CQuillView::PointerHandlers() {
  return {.perform = [this](ArticleCommand command) { commands_.Perform(command); },
          .open = [this](const TextLink& link) { web_.Open(link); },
          .act = [this](const MouseAction& action) { keys_.Perform(action); },
          .pastePrimary = [this] { clipboard_.Paste(QClipboard::Selection); },
          .contextMenu = [this](QPoint at, std::optional<QPoint> cell) { ShowMenuOfPlace(at, cell); },
          .changed = [this] { RefreshFrame(); },
          .targetChanged = [this] { overlays_.Repaint(links_); }};
}

void CQuillView::mousePressEvent(QMouseEvent* event) {
  if (!overlays_.IsCovered() && pointer_.OnPress(*event)) return;
  if (!panel_.IsActive()) panel_.Recall();
  RefreshPanel();
  QWidget::mousePressEvent(event);
}

void CQuillView::mouseReleaseEvent(QMouseEvent* event) {
  if (overlays_.IsCovered() || pointer_.OnRelease(*event)) return;
  panel_.Recall();
  RefreshPanel();
}

void CQuillView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!overlays_.IsCovered()) pointer_.OnDoubleClick(*event);
}

void CQuillView::mouseMoveEvent(QMouseEvent* event) {
  if (!overlays_.IsCovered()) pointer_.OnMove(*event);
}

void CQuillView::leaveEvent(QEvent* /*event*/) {
  pointer_.OnLeave();
}

void CQuillView::wheelEvent(QWheelEvent* event) {
  if (overlays_.IsCovered() || !pointer_.OnWheel(*event)) QWidget::wheelEvent(event);
}

void CQuillView::ShowMenuOfPlace(const QPoint& at, const std::optional<QPoint>& cell) {
  const EditTarget target = cell ? targets_.At(*cell) : EditTarget{};
  const ContextFacts facts{.selection = QString::fromStdU16String(selection_.Text()),
                           .target = target,
                           .connected = doc_.IsConnected(),
                           .firstEngine = web_.EngineName(SearchEngine::kFirst),
                           .secondEngine = web_.EngineName(SearchEngine::kSecond)};
  // What was selected may have gone while the menu was open.
  const bool wasSelected = selection_.IsShown();
  ShowContextMenu(*this, at, facts, [this, target, wasSelected](EditCommand command) {
    if (wasSelected && !selection_.IsShown() && IsAboutSelection(command))
      toast_.Show(u"選取的文字已經不在畫面上"_qs);
    else
      edit_.Perform(command, target);
  });
}

void CQuillView::Edit(EditCommand command) {
  edit_.Perform(command, targets_.Current());
}

void CQuillView::ShowLinks(EditCommand use) {
  const QPointF at = surface_.CellRect(1, 1).topLeft();
  ShowLinkMenu(*this, mapToGlobal(at.toPoint()), links_.LinksInSight(),
               [this, use](const TextLink& link) { edit_.Perform(use, {.link = link, .id = {}}); });
}

}  // namespace quillet
