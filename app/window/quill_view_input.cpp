// The view's ways in: keys, input method, mouse, and the commands that they and the menus give.
#include "app/interaction/author_at_cursor.h"
#include "app/interaction/context_menu.h"
#include "app/interaction/key_adapter.h"
#include "app/messages/article_messages.h"
#include "app/window/quill_view.h"
#include "bbs/page_flags.h"
#include "input/id_at.h"
#include "platform/clock.h"
#include "settings/setting_table.h"

namespace quillet {

void CQuillView::keyPressEvent(QKeyEvent* event) {
  pointer_.OnKey();
  if (!PreTranslateMessage(*event)) QWidget::keyPressEvent(event);
}

WindowState CQuillView::StateForKeys() const {
  const auto cell = pointer_.CellUnderPointer();
  WindowState state{.selectionShown = selection_.IsShown(),
                    .revealShown = composer_.IsRevealing(),
                    .activityRuns = automations_.Current() != Activity::kNone,
                    .articleShown = article_.IsShown(),
                    .article = article_.Paging(),
                    .articleOpen = connection_.Seen().articleOpen,
                    .commandsOffered = composer_.Offers(ArticleCommand::kBookmark),
                    .idUnderPointer = cell && !IdAtCell(cell->row, cell->col).empty(),
                    .addBlackHotKey = settings_.Fields().addBlackHotKey,
                    .preventArticleChange = settings_.Fields().preventUpDownChangeArticle,
                    .search = search_.Use()};
  overlays_.TellKeys(state);
  return state;
}

KeyDecision CQuillView::Decide(const QKeyEvent& event) const {
  return DecideKeyMessage(ToKeyPress(event), event.isAutoRepeat() ? KeyPhase::kRepeat : KeyPhase::kFirst,
                          screen_, page_, StateForKeys());
}

bool CQuillView::PreTranslateMessage(const QKeyEvent& event) {
  const KeyDecision decision = Decide(event);
  if (decision.route != KeyRoute::kToolkit && decision.route != KeyRoute::kSearch) search_.OnOtherKey();
  switch (decision.route) {
    case KeyRoute::kToolkit:
      return false;
    case KeyRoute::kSwallowed:
      return true;
    case KeyRoute::kNotice:
    case KeyRoute::kSideList:
      return overlays_.OnKey(decision);
    case KeyRoute::kSearch:
      Search(decision.search);
      return true;
    case KeyRoute::kSelection:
      SelectByKey(decision.select);
      return true;
    case KeyRoute::kReveal:
      composer_.EndReveal();
      ShowOtherLines();
      return true;
    case KeyRoute::kActivity:
      return automations_.Stop();
    case KeyRoute::kNames:
      ChangeName(decision.name, decision.flagColour);
      return true;
    case KeyRoute::kCommand:
    case KeyRoute::kArticle:
    case KeyRoute::kBbs:
      break;
  }
  if (decision.paging.kind != PagingAction::Kind::kToBbs && article_.ApplyPaging(decision.paging))
    return true;
  timers_.RestartCaret();
  if (decision.route == KeyRoute::kBbs) {
    if (auto keys = composer_.OnKey(ToKeyPress(event), screen_, page_)) {
      if (!keys->empty()) SendBytes(*std::move(keys));
      ShowOtherLines();
      return true;
    }
  }
  const bool taken = keys_.Perform(decision.action);
  // The next Ctrl+C is the BBS's again.
  const bool copiesByBbsKey = decision.action.command == KeyCommand::kCopy && event.key() == Qt::Key_C &&
                              !event.modifiers().testFlag(Qt::ShiftModifier);
  if (decision.route != KeyRoute::kCommand || copiesByBbsKey) selection_.Clear();
  return taken;
}

void CQuillView::SelectByKey(SelectStep step) {
  if (step == SelectStep::kClear)
    selection_.Clear();
  else
    selection_.Step(step, composer_.PageRowOf(screen_.cursorRow), screen_.cursorCol);
}

void CQuillView::ChangeName(NameKey key, int colour) {
  const auto cell = pointer_.CellUnderPointer();
  if (!cell) return;
  const QString told = nameKeys_.Press(IdAtCell(cell->row, cell->col), key, colour);
  if (!told.isEmpty()) toast_.Show(told);
}

void CQuillView::Search(SearchStep step) {
  if (article_.IsShown())
    search_.Perform(step);
  else
    toast_.Show(DescribeNoCommand(connection_.IsConnected()));
}

void CQuillView::PerformArticleCommand(ArticleCommand command) {
  const bool reading = (screen_.pageFlags & PF_READING) != 0 && connection_.Seen().article.IsArticle();
  if (article_.IsShown() || reading)
    commands_.Perform(command);
  else
    toast_.Show(DescribeNoCommand(connection_.IsConnected()));
}

void CQuillView::PerformPanelAction(PanelAction action) {
  switch (action) {
    case PanelAction::kReconnect:
      connection_.Reconnect();
      break;
    case PanelAction::kAskAddress:
      emit CommandRequested(KeyCommand::kConnect);
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
  if (!RowOf(&Settings::ipToName).Acts()) return toast_.Show(DescribeActsNotYet(u"推文IP轉地理位置"_qs));
  const bool on = !settings_.Fields().ipToName;
  settings_.Set(&Settings::ipToName, on);
  toast_.Show(on ? u"推文IP轉地理位置：開"_qs : u"推文IP轉地理位置：關"_qs);
}

void CQuillView::Reveal() {
  composer_.PressReveal(SteadyMilliseconds());
  ShowOtherLines();
}

void CQuillView::inputMethodEvent(QInputMethodEvent* event) {
  const QString text = ime_.Handle(*event);
  if (!text.isEmpty() && !overlays_.KeepsTyping()) {
    timers_.RestartCaret();
    keys_.SendText(text.toStdU16String());
    selection_.Clear();
  }
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
          .act = [this](const MouseAction& action) { ActOnMouse(action); },
          .pastePrimary = [this] { clipboard_.Paste(QClipboard::Selection); },
          .contextMenu = [this](QPoint at, std::optional<CellPosition> cell) { ShowMenuOfPlace(at, cell); },
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

void CQuillView::ActOnMouse(const MouseAction& action) {
  std::string bytes = action.bytes;
  if (action.kind == MouseActionKind::kMoveCursor)
    bytes = CursorKeys({screen_.cursorRow, screen_.cursorCol}, {action.row, action.col});
  SendBytes(std::move(bytes));
}

void CQuillView::SendBytes(std::string bytes) {
  keys_.Perform({.kind = KeyActionKind::kSendBytes, .bytes = std::move(bytes)});
}

std::u16string CQuillView::IdAtCell(int row, int col) const {
  const int line = shown_.LineAtRow(row);
  if (line < 0) return {};
  // As the BBS has sent it: who has masked an id must be able to take it out of his lists again.
  if (!shown_.IsArticle()) return IdAt(screen_, page_, composer_.ScreenRowAt(row), col);
  const ArticleLine* const sent = article_.ShownLine(line);
  return sent == nullptr ? std::u16string() : IdInArticle(doc_.PageReader(), *sent, line, col);
}

QString CQuillView::IdInQuestion() const {
  const auto cell = pointer_.CellUnderPointer();
  std::u16string id = cell ? IdAtCell(cell->row, cell->col) : std::u16string();
  if (id.empty()) id = AuthorAtCursor(screen_, page_, connection_.Seen().article);
  return QString::fromStdU16String(id);
}

EditTarget CQuillView::TargetAt(CellPosition cell) const {
  return {.link = links_.LinkAt(cell.row, cell.col), .id = IdAtCell(cell.row, cell.col)};
}

void CQuillView::ShowMenuOfPlace(const QPoint& at, std::optional<CellPosition> cell) {
  const EditTarget target = cell ? TargetAt(*cell) : EditTarget{};
  const ContextFacts facts{.selection = QString::fromStdU16String(selection_.Text()),
                           .target = target,
                           .connected = connection_.IsConnected(),
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
  EditTarget target{.link = links_.Current(), .id = IdInQuestion().toStdU16String()};
  edit_.Perform(command, target);
}

void CQuillView::ShowLinks(EditCommand use) {
  const QPointF at = surface_.CellRect(1, 1).topLeft();
  ShowLinkMenu(*this, mapToGlobal(at.toPoint()), links_.LinksInSight(),
               [this, use](const TextLink& link) { edit_.Perform(use, {.link = link, .id = {}}); });
}

void CQuillView::SendControl(char code) {
  SendBytes(std::string(1, code));
}

}  // namespace quillet
