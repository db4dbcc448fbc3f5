#include "app/window/quill_view.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QtMath>

#include "app/messages/article_messages.h"
#include "app/messages/text_messages.h"
#include "app/overlay/panel_look.h"

namespace quillet {

namespace {

// What ages keep away from at the right edge, in widget units: the article's scroll bar.
constexpr qreal kRightInset = 10;
// The rows that the buttons in the left margin lie beside.
constexpr int kButtonRows = 5;

bool HasFlagsAtTop(const Page& page) {
  return std::any_of(page.begin(), page.begin() + kButtonRows,
                     [](const PageRow& row) { return row.pennants != 0; });
}

}  // namespace

CQuillView::CQuillView(CQuillDoc& doc, QWidget* parent)
    : QWidget(parent),
      doc_(doc),
      surface_(*this),
      toast_(images_, [this] { update(); }),
      leaving_(
          doc, *this,
          [this] { return LeaveFacts{.inEditor = page_.Shows(PF_EDITOR), .hasDraft = push_.HasDraft()}; }),
      login_(doc, *this, leaving_),
      article_(doc, *this),
      composer_(doc, article_),
      sideList_(doc, images_, this),
      sideButtons_(images_, this),
      stallSign_(this),
      ime_(*this, surface_),
      keys_(doc, {.command = [this](KeyCommand command) { OnCommand(command); },
                  .userTypes = [this] { OnUserTypes(); },
                  .mustWait = [this] { return article_.Reading().MustWait(); },
                  .lost = [this](const LostCharacters& lost) { toast_.Show(DescribeLostCharacters(lost)); },
                  .screen = [this]() -> const ScreenSnapshot& { return screen_; },
                  .page = [this]() -> const UnderstoodPage& { return page_; }}),
      commands_(doc, article_, keys_,
                {.refused = [this] { toast_.Show(DescribeNoCommand(doc_.IsConnected())); },
                 .pushOn = [this] { push_.Open(); },
                 .giveMoney = [this] { money_.Open(); }}),
      shown_(screen_, page_, frame_.page, composer_, article_),
      selection_(shown_, {.changed = [this] { RefreshFrame(); },
                          .scrollBy = [this](int lines) { ScrollSelecting(lines); },
                          .finished = [this] { edit_.OnSelected(); }}),
      search_(article_, shown_, *this),
      links_(shown_, WebHostsOf(doc.Hosts())),
      clipboard_(doc, *this,
                 {.send = [this](std::u16string_view text, Wrap wrap) { keys_.SendText(text, wrap); },
                  .pageKind = [this] { return page_.kind; }}),
      web_(doc, {.beforeJump = [this] { article_.OnUserKey(); },
                 .tell = [this](const PanelText& notice) { ShowNotice(notice); }}),
      edit_({.doc = doc, .text = shown_, .selection = selection_, .clipboard = clipboard_, .web = web_},
            {.tell = [this](const QString& words) { toast_.Show(words); },
             .askForNames = [this](const QString& id) { emit NamesRequested(id); }}),
      nameKeys_(doc),
      money_(doc, article_, *this),
      push_(doc, article_, *this),
      pointer_({.widget = *this,
                .surface = surface_,
                .composer = composer_,
                .article = article_,
                .selection = selection_,
                .links = links_,
                .doc = doc,
                .screen = screen_,
                .page = page_},
               PointerHandlers()),
      timers_({.phaseTurned = [this] { RefreshFrame(); },
               .tick = [this] { Tick(); },
               .animate = [this] { update(); }}) {
  screen_.Clear();
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_InputMethodEnabled);
  setFocusPolicy(Qt::StrongFocus);
  setContextMenuPolicy(Qt::PreventContextMenu);  // the right button is released for it
  connect(&doc_, &CQuillDoc::StatusChanged, this, &CQuillView::RefreshPanel);
  connect(&doc_, &CQuillDoc::SettingsChanged, this, &CQuillView::OnSettingsChanged);
  connect(&doc_, &CQuillDoc::ConnectionBegins, this, [this] {
    keys_.DropWaiting();
    article_.Forget();
  });
  connect(&stallSign_, &StallSign::clicked, &doc_, &CQuillDoc::Reconnect);
  ConnectLogin();
  ConnectArticle();
  ConnectSideLists();
  ConnectSearch();
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
  connect(&login_, &LoginController::Changed, this, [this] {
    update();
    RefreshPanel();
  });
  connect(&login_, &LoginController::AddressRequested, this,
          [this] { emit CommandRequested(KeyCommand::kConnect); });
  connect(&login_, &LoginController::DemoRequested, this, &CQuillView::DemoRequested);
  connect(&doc_, &CQuillDoc::JumpEnded, this, [this](const ArticleReference& article, JumpResult result) {
    ShowNotice(DescribeJump(article, result));
  });
}

void CQuillView::ConnectArticle() {
  connect(&article_, &ArticleView::Changed, this, [this] {
    keys_.Flush();
    ShowOtherLines();
  });
  connect(&article_, &ArticleView::NewsArrived, this, &CQuillView::TellNews);
  connect(&article_, &ArticleView::BytesForBbs, this, [this](const QByteArray& bytes) {
    keys_.Perform({.kind = KeyActionKind::kSendBytes, .bytes = bytes.toStdString()});
  });
  connect(&clipboard_, &ClipboardController::Working, this, [this](bool working) {
    if (working)
      toast_.Show(u"正在取得短網址…"_qs);
    else
      toast_.Hide();
  });
  connect(&clipboard_, &ClipboardController::Said, this,
          [this](const QString& words) { toast_.Show(words); });
  connect(&push_, &PushController::Said, this, [this](const QString& words) { toast_.Show(words); });
  connect(&push_, &PushController::Notice, this, &CQuillView::ShowNotice);
  connect(&money_, &MoneyController::Notice, this, &CQuillView::ShowNotice);
  connect(&doc_, &CQuillDoc::BookmarkEnded, this,
          [this](BookmarkEnd end) { toast_.Show(DescribeBookmarkEnd(end), EmbeddedImage::kBookmarkList); });
}

void CQuillView::ConnectSideLists() {
  connect(&doc_, &CQuillDoc::ArticleListsChanged, this, [this] {
    sideList_.Refresh();
    TellFileProblems();
    RefreshFrame();
  });
  connect(&sideList_, &SideListView::ArticleChosen, this, [this](const ArticleReference& article) {
    sideList_.Close();
    article_.OnUserKey();
    if (!doc_.JumpTo(article)) ShowNotice(DescribeNoJump(doc_.IsConnected()));
  });
  connect(&sideList_, &SideListView::Closed, this, [this] { setFocus(); });
  connect(&sideButtons_, &SideButtons::Clicked, this, &CQuillView::OnSideButton);
  connect(&background_, &BackgroundPicture::Loaded, this, &CQuillView::ApplyBackground);
  connect(&background_, &BackgroundPicture::Failed, this,
          [this](const QString& source, const QString& reason) {
            ShowNotice(DescribeNoBackground(source, reason));
          });
}

void CQuillView::ConnectSearch() {
  connect(&search_, &SearchController::Changed, this, &CQuillView::RefreshFrame);
  connect(&search_, &SearchController::Said, this, [this](const QString& words) { toast_.Show(words); });
  connect(&sideList_, &SideListView::Opened, &search_, &SearchController::StopAsking);
}

// What goes to the BBS may bring another page, or a question below this one.
void CQuillView::OnUserTypes() {
  search_.StopAsking();
  article_.OnUserKey();
}

void CQuillView::OnSideButton(SideButton button) {
  switch (button) {
    case SideButton::kHotList:
      return sideList_.Toggle(ArticleListKind::kHot);
    case SideButton::kTrackedList:
      return sideList_.Toggle(ArticleListKind::kTracked);
    case SideButton::kBookmarkList:
      return sideList_.Toggle(ArticleListKind::kBookmarks);
    case SideButton::kOptions:
      emit OptionsRequested();
      break;
  }
}

void CQuillView::TellNews(const ArticleNews& news) {
  toast_.Show(DescribeNews(news), news.edited ? EmbeddedImage::kEdited : EmbeddedImage::kNews);
  // Who reads here sees it without a sound.
  if (!isActiveWindow()) doc_.Driver().Signal(SignalSound::kUpdated);
}

void CQuillView::AskLogin() {
  login_.Show();
}

void CQuillView::PlaceOverlays() {
  const Layout& layout = surface_.CurrentLayout();
  const qreal scale = surface_.Scale();
  const qreal unit = layout.rowHeight / scale;
  const bool work = doc_.Fields().work;
  if (composer_.SetRowsInSight(layout.rowsInSight)) ShowOtherLines();
  login_.Place(unit);
  sideList_.Place(rect(), unit);
  PlaceSideButtons();
  stallSign_.Place(rect(), unit, panel_look::ColoursFor(work));
  article_.PlaceScrollBar(rect(), work);
  search_.Place(surface_.CellRect(kRows - 1, 0).top(), unit, LoginFormColoursFor(work));
}

void CQuillView::PlaceSideButtons() {
  const Layout& layout = surface_.CurrentLayout();
  const qreal scale = surface_.Scale();
  const int left = std::min(layout.originX, layout.pushOriginX);
  const QRect margin(0, qFloor(layout.originY / scale), qMax(0, qFloor(left / scale)), height());
  // The flags of listed ids stand in the margin too, and come first.
  flagsAtTop_ = HasFlagsAtTop(frame_.page);
  sideButtons_.Place(margin, !doc_.Fields().hideTopLeftIcons && !doc_.Fields().work && !flagsAtTop_);
}

void CQuillView::SetLayoutMode(LayoutMode mode) {
  surface_.SetLayoutMode(mode);
  RefreshFrame();
  PlaceOverlays();
  UpdateIme(ImeAdapter::Move::kForced);
}

void CQuillView::NoteVersion() {
  doc_.Change(u"Basic", u"Version", QStringLiteral(QUILLET_VERSION).toStdU16String());
}

void CQuillView::TellFileProblems() {
  ShowNotice(DescribeFileProblems(toldProblems_.New(doc_.TakeFileProblems())));
}

void CQuillView::ApplyDisplaySettings() {
  surface_.ApplySettings(doc_.Display());
  ime_.ApplySettings(doc_.Display());
  composer_.RefreshRules();
  composer_.MarkKeywords(screen_, page_);
  background_.SetSource(QString::fromStdU16String(doc_.Fields().backgroundPicture));
  ApplyBackground();
  ShowOtherLines();
  sideList_.Refresh();
  PlaceOverlays();
  UpdateIme(ImeAdapter::Move::kForced);
}

void CQuillView::ApplyBackground() {
  surface_.SetBackdrop({.picture = background_.Picture(),
                        .style = static_cast<BackdropStyle>(doc_.Fields().backgroundPictureStyle),
                        .opacityPercent = doc_.Fields().backPicOpacity});
  RefreshFrame();
}

void CQuillView::UpdateIme(ImeAdapter::Move move) {
  const int row = composer_.PageRowOf(screen_.cursorRow);
  const RowSize size = row < 0 ? RowSize::kOrdinary : frame_.page[static_cast<std::size_t>(row)].size;
  ime_.UpdatePosition(row < 0 ? screen_.cursorRow : row, screen_.cursorCol, move, size);
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
  // What the login form and the search's field do not take is a menu's.
  if (event->type() == QEvent::ShortcutOverride && !login_.IsShown() && !search_.IsAsking() &&
      Decide(*static_cast<QKeyEvent*>(event)).route != KeyRoute::kToolkit) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void CQuillView::TakeMessages() {
  MessageTarget::Messages messages = doc_.Messages().Take(doc_.Session().connectionNumber);
  if (messages.screen) {
    screen_ = *messages.screen;
    page_ = messages.page;
    composer_.MarkKeywords(screen_, page_);
    ++screenCount_;
    if (messages.reason != ScreenReason::kUpdated) keys_.DropWaiting();
    doc_.OnScreen(messages.reason, std::move(messages.seen));
    if (doc_.IsAutomationBusy()) article_.OnAutomationKey();
    article_.OnScreen(screen_, page_);
    const std::string keys = composer_.OnScreen(screen_, page_);
    if (!keys.empty() && !doc_.IsAutomationBusy()) SendBytes(keys);
    keys_.Flush();
    ShowOtherLines();
    clipboard_.OnScreen();
    UpdateIme(ImeAdapter::Move::kIfChanged);
  }
  if (messages.bell) doc_.Driver().OnBell(doc_.IsAutomationBusy());
}

void CQuillView::Tick() {
  doc_.Driver().Tick();
  doc_.ReviewAnswer();
  RefreshPanel();
  const bool busy = doc_.IsAutomationBusy() || search_.IsAsking() || panel_.IsActive() || login_.IsOpen() ||
                    ime_.IsComposing() || QApplication::activeModalWidget() != nullptr;
  article_.OnTick(!busy && isVisible());
  keys_.Flush();
}

void CQuillView::RefreshPanel() {
  const bool wasShown = panel_.IsShown();
  const PanelText before = panel_.Text();
  panel_.SetSession(DescribeSession(doc_.Facts()));
  login_.SetCovered(panel_.HasNotice());
  const Activity activity = doc_.CurrentActivity();
  article_.SetHeld(activity == Activity::kAskCode || activity == Activity::kPush);
  if (badge_.SetText(DescribeActivity(activity, doc_.CurrentProgress())) || !badge_.Text().isEmpty())
    update();
  if (panel_.IsShown() != wasShown || panel_.Text() != before) update();
  timers_.SetAnimating(panel_.IsBusy());
  if (IsCovered()) {
    pointer_.Cancel();
    search_.StopAsking();
  }
  stallSign_.Tell(IsCovered() ? AnswerWait::State::kNone : doc_.Answer());
  RefreshFrame();
}

// What is selected, and what lies under the pointer, is told by the picture's lines.
void CQuillView::ShowOtherLines() {
  RefreshFrame();
  search_.OnLines();
  selection_.OnTextChanged();
  if (!IsCovered()) pointer_.OnPictureChanged();
}

// Lines that are yet to come are selected as they come, and not after the button has been let go.
void CQuillView::ScrollSelecting(int lines) {
  const int lastTop = LastTop(article_.LineCount(), article_.LinesInSight());
  article_.ScrollTo(std::clamp(article_.TargetLine() + lines, 0, lastTop));
}

// What is being composed when the page goes is not thrown away.
bool CQuillView::AcceptsComposedText() const {
  const bool mayType = !IsCovered() && !sideList_.Shown();
  return mayType && (ime_.IsComposing() || (!article_.IsShown() && composer_.AcceptsText()));
}

void CQuillView::RefreshFrame() {
  const bool caret =
      timers_.CaretOn() && hasFocus() && !login_.IsShown() && !panel_.IsActive() && doc_.IsConnected();
  ime_.SetEnabled(AcceptsComposedText());
  frame_.blinkOff = timers_.BlinkOff();
  frame_.rightInset = qCeil(kRightInset * surface_.Scale());
  composer_.Compose(screen_, page_, caret, frame_);
  pointer_.Decorate(frame_.page);
  links_.Decorate(frame_.page);
  search_.Decorate(frame_.page);
  selection_.Decorate(frame_.page);
  surface_.Refresh(frame_);
  if (HasFlagsAtTop(frame_.page) != flagsAtTop_) PlaceSideButtons();
}

void CQuillView::paintEvent(QPaintEvent* event) {
  // The scale factor can change without any other event when the window moves to another screen.
  if (surface_.FollowWidget()) {
    surface_.Refresh(frame_);
    QMetaObject::invokeMethod(this, &CQuillView::PlaceOverlays, Qt::QueuedConnection);
  }
  const qreal unit = surface_.CurrentLayout().rowHeight / surface_.Scale();
  QPainter painter(this);
  surface_.Paint(painter, event->rect());
  ime_.Paint(painter);
  const panel_look::Colours& colours = panel_look::ColoursFor(doc_.Fields().work);
  badge_.Paint(painter, rect(), unit, colours);
  toast_.Paint(painter, rect(), unit, colours);
  links_.Paint(painter, rect(), unit, colours);
  if (login_.IsShown())
    painter.fillRect(rect(), colours.calmScrim);
  else
    panel_.Paint(painter, rect(), unit, colours);
}

void CQuillView::resizeEvent(QResizeEvent* /*event*/) {
  RefreshFrame();
  PlaceOverlays();
  UpdateIme(ImeAdapter::Move::kForced);
}

void CQuillView::focusInEvent(QFocusEvent* event) {
  timers_.SetFocused(true);
  QWidget::focusInEvent(event);
}

void CQuillView::focusOutEvent(QFocusEvent* event) {
  timers_.SetFocused(false);
  pointer_.Cancel();
  ime_.End();
  QWidget::focusOutEvent(event);
}

}  // namespace quillet
