#include "app/window/quill_view.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QtMath>

#include "app/messages/article_messages.h"
#include "app/messages/text_messages.h"
#include "bbs/page_flags.h"

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
      connection_(doc.GetConnection()),
      automations_(doc.GetAutomations()),
      settings_(doc.GetSettings()),
      overlays_(*this),
      surface_(*this),
      panel_([this](PanelAction action) { PerformPanelAction(action); }),
      toast_(images_, [this] { overlays_.Repaint(toast_); }),
      leaving_(
          {.connection = connection_, .automations = automations_, .settings = settings_, .window = *this},
          [this] {
            return LeaveFacts{.inEditor = (screen_.pageFlags & PF_EDITOR) != 0, .hasDraft = push_.HasDraft()};
          }),
      login_({.connection = connection_,
              .automations = automations_,
              .settings = settings_,
              .account = doc.Account(),
              .hosts = doc.Hosts(),
              .leaving = leaving_,
              .view = *this}),
      article_({.connection = connection_,
                .automations = automations_,
                .bookmarks = doc.GetBookmarks(),
                .settings = settings_.Store(),
                .pageFacts = doc.PageReader()},
               *this),
      composer_({.article = article_,
                 .bookmarks = doc.GetBookmarks(),
                 .settings = settings_.Store(),
                 .seen = connection_.Seen(),
                 .pageFacts = doc.PageReader()}),
      sideList_(doc.GetBookmarks(), settings_, images_, this),
      sideButtons_(images_, this),
      buttonsPart_([this](const OverlayPlace& place) {
        sideButtons_.Place(place.leftMargin, !place.leftMargin.isEmpty());
      }),
      scrollBarPart_([this](const OverlayPlace& place) { article_.PlaceScrollBar(place.area, place.work); }),
      stallSign_(this),
      ime_(*this, surface_),
      keys_(connection_, automations_, doc.Driver(),
            {.command = [this](KeyCommand command) { OnCommand(command); },
             .userTypes = [this] { OnUserTypes(); },
             .mustWait = [this] { return article_.Reading().MustWait(); },
             .lost = [this](const LostCharacters& lost) { toast_.Show(DescribeLostCharacters(lost)); },
             .screen = [this]() -> const ScreenSnapshot& { return screen_; },
             .page = [this]() -> const UnderstoodPage& { return page_; }}),
      commands_(doc.GetBookmarks(), article_, keys_,
                {.refused = [this] { toast_.Show(DescribeNoCommand(connection_.IsConnected())); },
                 .pushOn = [this] { push_.Open(); },
                 .giveMoney = [this] { money_.Open(); }}),
      shown_(screen_, page_, frame_.page, composer_, article_),
      selection_(shown_, {.changed = [this] { RefreshFrame(); },
                          .scrollBy = [this](int lines) { ScrollSelecting(lines); },
                          .finished = [this] { edit_.OnSelected(); }}),
      search_(article_, shown_, *this),
      links_(shown_, WebHostsOf(doc.Hosts())),
      clipboard_({.connection = connection_,
                  .automations = automations_,
                  .settings = settings_.Fields(),
                  .hosts = doc.Hosts(),
                  .window = *this},
                 {.send = [this](std::u16string_view text, Wrap wrap) { keys_.SendText(text, wrap); },
                  .pageKind = [this] { return page_.kind; }}),
      web_({.connection = connection_,
            .automations = automations_,
            .hosts = doc.Hosts(),
            .opener = doc.WebOpener()},
           {.beforeJump = [this] { article_.OnUserKey(); },
            .tell = [this](const PanelText& notice) { ShowNotice(notice); }}),
      edit_({.settings = settings_,
             .text = shown_,
             .selection = selection_,
             .clipboard = clipboard_,
             .web = web_},
            {.tell = [this](const QString& words) { toast_.Show(words); },
             .askForNames = [this](const QString& id) { emit NamesRequested(id); }}),
      nameKeys_(settings_),
      money_({.connection = connection_,
              .automations = automations_,
              .settings = settings_,
              .pageFacts = doc.PageReader(),
              .article = article_,
              .view = *this}),
      push_({.connection = connection_,
             .automations = automations_,
             .bookmarks = doc.GetBookmarks(),
             .article = article_,
             .view = *this}),
      pointer_({.widget = *this,
                .surface = surface_,
                .composer = composer_,
                .article = article_,
                .selection = selection_,
                .links = links_,
                .connection = connection_,
                .settings = settings_.Fields(),
                .screen = screen_,
                .page = page_},
               PointerHandlers()),
      timers_({.phaseTurned = [this] { RefreshFrame(); },
               .tick = [this] { Tick(); },
               .animate = [this] { overlays_.Repaint(panel_); }}) {
  screen_.Clear();
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_InputMethodEnabled);
  setFocusPolicy(Qt::StrongFocus);
  setContextMenuPolicy(Qt::PreventContextMenu);  // the right button is released for it
  connect(&doc_, &CQuillDoc::StatusChanged, this, &CQuillView::RefreshPanel);
  connect(&settings_, &UserSettings::Changed, this, &CQuillView::OnSettingsChanged);
  connect(&connection_, &Connection::ConnectionBegins, this, [this] {
    keys_.DropWaiting();
    article_.Forget();
  });
  connect(&stallSign_, &StallSign::clicked, &connection_, &Connection::Reconnect);
  ListOverlays();
  ConnectLogin();
  ConnectArticle();
  ConnectSideLists();
  ConnectSearch();
  doc_.Messages().Attach(this);
  ApplyDisplaySettings();
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
  connect(&login_, &LoginController::Changed, this, &CQuillView::RefreshPanel);
  connect(&login_, &LoginController::AddressRequested, this,
          [this] { emit CommandRequested(KeyCommand::kConnect); });
  connect(&login_, &LoginController::DemoRequested, this, &CQuillView::DemoRequested);
  connect(&automations_, &Automations::JumpEnded, this,
          [this](const ArticleReference& article, JumpResult result) {
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
  // Both take minutes, which nobody waits out in front of them.
  connect(&automations_, &Automations::MoneyEnded, this, [this] { CallUser(SignalSound::kBeep); });
  connect(&automations_, &Automations::PushesEnded, this, [this] { CallUser(SignalSound::kBeep); });
  connect(&doc_.GetBookmarks(), &Bookmarks::Ended, this,
          [this](BookmarkEnd end) { toast_.Show(DescribeBookmarkEnd(end), EmbeddedImage::kBookmarkList); });
}

void CQuillView::ConnectSideLists() {
  connect(&doc_.GetBookmarks(), &Bookmarks::Changed, this, [this] {
    sideList_.Refresh();
    TellFileProblems();
    RefreshFrame();
  });
  connect(&sideList_, &SideListView::ArticleChosen, this, [this](const ArticleReference& article) {
    sideList_.Close();
    article_.OnUserKey();
    if (!automations_.JumpTo(article)) ShowNotice(DescribeNoJump(connection_.IsConnected()));
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
  CallUser(SignalSound::kUpdated);
}

// Who reads here sees it without a sound.
void CQuillView::CallUser(SignalSound sound) {
  if (!isActiveWindow()) connection_.CallUser(sound);
}

void CQuillView::AskLogin() {
  login_.Show();
}

// From the bottom up.
void CQuillView::ListOverlays() {
  for (Overlay* const overlay :
       std::initializer_list<Overlay*>{&ime_, &badge_, &toast_, &links_, &panel_, &scrollBarPart_,
                                       &buttonsPart_, &stallSign_, &sideList_, &search_.Bar(), &login_})
    overlays_.Add(*overlay);
}

void CQuillView::PlaceOverlays() {
  if (composer_.SetRowsInSight(surface_.CurrentLayout().rowsInSight)) ShowOtherLines();
  flagsAtTop_ = HasFlagsAtTop(frame_.page);
  overlays_.PlaceAll(PlaceOfOverlays());
}

OverlayPlace CQuillView::PlaceOfOverlays() const {
  const Layout& layout = surface_.CurrentLayout();
  const qreal scale = surface_.Scale();
  OverlayPlace place{.area = rect(),
                     .unit = layout.rowHeight / scale,
                     .footTop = surface_.CellRect(kBottomRow, 0).top(),
                     .font = font(),
                     .work = settings_.Fields().work};
  // The flags of listed ids stand in the margin too, and come first.
  if (!settings_.Fields().hideTopLeftIcons && !place.work && !flagsAtTop_) {
    const int left = std::min(layout.originX, layout.pushOriginX);
    place.leftMargin = QRect(0, qFloor(layout.originY / scale), qMax(0, qFloor(left / scale)), height());
  }
  return place;
}

void CQuillView::SetLayoutMode(LayoutMode mode) {
  surface_.SetLayoutMode(mode);
  RefreshFrame();
  PlaceOverlays();
  UpdateIme(ImeAdapter::Move::kForced);
}

void CQuillView::TellFileProblems() {
  ShowNotice(DescribeFileProblems(toldProblems_.New(doc_.TakeFileProblems())));
}

void CQuillView::ApplyDisplaySettings() {
  surface_.ApplySettings(settings_.Display());
  ime_.ApplySettings(settings_.Display());
  composer_.RefreshRules();
  composer_.MarkKeywords(screen_, page_);
  background_.SetSource(QString::fromStdU16String(settings_.Fields().backgroundPicture));
  ApplyBackground();
  ShowOtherLines();
  sideList_.Refresh();
  PlaceOverlays();
  UpdateIme(ImeAdapter::Move::kForced);
}

void CQuillView::ApplyBackground() {
  surface_.SetBackdrop({.picture = background_.Picture(),
                        .style = settings_.Fields().backgroundPictureStyle,
                        .opacityPercent = settings_.Fields().backPicOpacity});
  RefreshFrame();
}

void CQuillView::UpdateIme(ImeAdapter::Move move) {
  const int row = composer_.PageRowOf(screen_.cursorRow);
  const RowSize size = row < 0 ? RowSize::kOrdinary : frame_.page[static_cast<std::size_t>(row)].size;
  ime_.UpdatePosition(row < 0 ? screen_.cursorRow : row, screen_.cursorCol, move, size);
}

void CQuillView::ShowNotice(const PanelText& notice) {
  panel_.AddNotice(notice);
  overlays_.Repaint(panel_);
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
  MessageTarget::Messages messages = doc_.Messages().Take(connection_.Session().connectionNumber);
  if (messages.screen) {
    screen_ = *messages.screen;
    page_ = messages.page;
    composer_.MarkKeywords(screen_, page_);
    ++screenCount_;
    if (messages.reason != ScreenReason::kUpdated) keys_.DropWaiting();
    doc_.OnScreen(messages.reason, std::move(messages.seen));
    if (automations_.IsBusy()) article_.OnAutomationKey();
    article_.OnScreen(screen_);
    const std::string keys = composer_.OnScreen(screen_, page_);
    if (!keys.empty() && !automations_.IsBusy()) SendBytes(keys);
    keys_.Flush();
    ShowOtherLines();
    clipboard_.OnScreen();
    UpdateIme(ImeAdapter::Move::kIfChanged);
  }
  if (messages.bell) doc_.Driver().OnBell(automations_.IsBusy());
}

void CQuillView::Tick() {
  doc_.Driver().Tick();
  doc_.ReviewAnswer();
  RefreshPanel();
  const bool busy = automations_.IsBusy() || search_.IsAsking() || panel_.IsActive() || login_.IsOpen() ||
                    ime_.IsComposing() || QApplication::activeModalWidget() != nullptr;
  article_.OnTick(!busy && isVisible());
  keys_.Flush();
}

void CQuillView::RefreshPanel() {
  const PanelText before = panel_.Text();
  panel_.SetSession(DescribeSession(connection_.Facts()));
  if (panel_.Text() != before) overlays_.Repaint(panel_);
  login_.SetCovered(panel_.HasNotice());
  const Activity activity = automations_.Current();
  article_.SetHeld(activity == Activity::kAskCode || activity == Activity::kPush);
  if (badge_.SetText(DescribeActivity(activity, automations_.Progress()))) overlays_.Repaint(badge_);
  timers_.SetAnimating(panel_.IsBusy());
  const bool covered = overlays_.IsCovered();
  if (covered) {
    pointer_.Cancel();
    search_.StopAsking();
  }
  stallSign_.Tell(covered ? AnswerWait::State::kNone : doc_.Answer());
  overlays_.Review();
  RefreshFrame();
}

// What is selected, and what lies under the pointer, is told by the picture's lines.
void CQuillView::ShowOtherLines() {
  RefreshFrame();
  search_.OnLines();
  selection_.OnTextChanged();
  if (!overlays_.IsCovered()) pointer_.OnPictureChanged();
}

// Lines that are yet to come are selected as they come, and not after the button has been let go.
void CQuillView::ScrollSelecting(int lines) {
  const int lastTop = LastTop(article_.LineCount(), article_.LinesInSight());
  article_.ScrollTo(std::clamp(article_.TargetLine() + lines, 0, lastTop));
}

// What is being composed when the page goes is not thrown away.
bool CQuillView::AcceptsComposedText() const {
  const bool mayType = !overlays_.IsCovered() && !overlays_.KeepsTyping();
  return mayType && (ime_.IsComposing() || (!article_.IsShown() && composer_.AcceptsText()));
}

void CQuillView::RefreshFrame() {
  const bool caret = timers_.CaretOn() && hasFocus() && !overlays_.IsCovered() && connection_.IsConnected();
  ime_.SetEnabled(AcceptsComposedText());
  frame_.blinkOff = timers_.BlinkOff();
  frame_.rightInset = qCeil(kRightInset * surface_.Scale());
  composer_.Compose(screen_, page_, caret, frame_);
  pointer_.Decorate(frame_.page);
  links_.Decorate(frame_.page);
  search_.Decorate(frame_.page);
  selection_.Decorate(frame_.page);
  surface_.Refresh(frame_);
  if (HasFlagsAtTop(frame_.page) != flagsAtTop_) PlaceOverlays();
}

void CQuillView::paintEvent(QPaintEvent* event) {
  // The scale factor can change without any other event when the window moves to another screen.
  if (surface_.FollowWidget()) {
    surface_.Refresh(frame_);
    QMetaObject::invokeMethod(this, &CQuillView::PlaceOverlays, Qt::QueuedConnection);
  }
  QPainter painter(this);
  surface_.Paint(painter, event->rect());
  overlays_.Paint(painter, event->region());
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
