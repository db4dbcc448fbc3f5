#include "app/window/quill_view.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>
#include <QtMath>

#include "app/document/media_services.h"
#include "app/messages/article_messages.h"
#include "app/messages/picture_messages.h"
#include "app/messages/text_messages.h"
#include "bbs/idle_key.h"
#include "platform/clock.h"

namespace quillet {

namespace {

// What ages keep away from at the right edge, in widget units: the article's scroll bar.
constexpr qreal kRightInset = 10;

PictureStoreOptions StoreOptionsFor(const CQuillDoc& doc) {
  PictureStoreOptions options;
  options.hosts = MediaHostsOf(doc.Hosts());
  options.cacheFolder = QString::fromStdU16String(doc.CacheFolder().u16string());
  return options;
}

FetchBehavior BehaviorOf(const Settings& settings) {
  const bool manyConnections = settings.downloadEngine == DownloadEngine::kWinInet;
  return {.strategy = manyConnections ? FetchStrategy::kManyConnections : FetchStrategy::kOneConnection,
          .partial = settings.openPicAfterDownload ? PartialPictures::kHidden : PartialPictures::kShown};
}

}  // namespace

CQuillView::CQuillView(CQuillDoc& doc, QWidget* parent)
    : QWidget(parent),
      doc_(doc),
      connection_(doc.GetConnection()),
      automations_(doc.GetAutomations()),
      settings_(doc.GetSettings()),
      linkMarks_(MediaHostsOf(doc.Hosts())),
      places_(doc.PlaceFolders()),
      overlays_(*this),
      surface_(*this),
      panel_([this](PanelAction action) { PerformPanelAction(action); }),
      toast_(images_, [this] { overlays_.Repaint(toast_); }),
      leaving_(
          {.connection = connection_, .automations = automations_, .settings = settings_, .window = *this},
          [this] { return LeaveFacts{.inEditor = page_.Shows(PF_EDITOR), .hasDraft = hands_.HasDraft()}; }),
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
                .settings = settings_.Store()},
               *this),
      pictureStore_(StoreOptionsFor(doc)),
      pictures_({.article = article_,
                 .store = pictureStore_,
                 .settings = settings_.Fields(),
                 .wordsFor = DescribePictureWithoutImage}),
      screenPicture_(pictureStore_, settings_.Fields(), *this),
      viewer_(pictureStore_, settings_.Fields(), *this,
              {.isForWindow = &CQuillView::StaysWindows,
               .menu = [this](const QPoint& at) { hands_.ShowMenuOfViewer(at); },
               .perform = [this](Command command) { hands_.PerformInViewer(command); }}),
      pictureQuestion_(*this, [this](PictureScope scope) { settings_.Set(&Settings::showPicMode, scope); }),
      composer_({.article = article_,
                 .bookmarks = doc.GetBookmarks(),
                 .settings = settings_.Store(),
                 .seen = connection_.Seen()}),
      sideList_(doc.GetBookmarks(), settings_, images_, this),
      sideButtons_(images_, *this),
      buttonsPart_([this](const OverlayPlace& /*place*/) { PlaceSideButtons(); }),
      scrollBarPart_([this](const OverlayPlace& place) { article_.PlaceScrollBar(place.area, place.work); }),
      stallSign_(this),
      ime_(*this, surface_),
      hands_({.doc = doc,
              .view = *this,
              .surface = surface_,
              .composer = composer_,
              .article = article_,
              .pictures = pictures_,
              .screenPicture = screenPicture_,
              .store = pictureStore_,
              .viewer = viewer_,
              .overlays = overlays_,
              .sideList = sideList_,
              .sideButtons = sideButtons_,
              .toast = toast_,
              .login = login_,
              .screen = screen_,
              .page = page_,
              .picture = frame_.page,
              .places =
                  [this](std::uint32_t address) {
                    return places_.Lookup(address, settings_.Fields().ipDetectProxy ? ProxyDetection::kOn
                                                                                    : ProxyDetection::kOff);
                  }},
             {.typing = [this] { timers_.RestartCaret(); },
              .pictureChanged = [this] { RefreshFrame(); },
              .linesChanged = [this] { ShowOtherLines(); },
              .notice = [this](const PanelText& notice) { ShowNotice(notice); },
              .noSite = [this] { panel_.OnTyped(); }}),
      timers_({.phaseTurned = [this] { OnClock(); },
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
    hands_.Keys().DropWaiting();
    article_.Forget();
    places_.OpenSite(connection_.CurrentSite().placesFolder);
    OpenWebSites(connection_.CurrentSite());
  });
  connect(&stallSign_, &StallSign::clicked, this,
          [this] { doc_.GetReconnector().Reconnect(Reconnector::Told::kNo); });
  connect(&doc_.GetReconnector(), &Reconnector::UnsentLost, this,
          [this](std::size_t bytes) { ShowNotice(DescribeUnsentLost(bytes)); });
  WhenSeen([this] { places_.Begin(); });
  ListOverlays();
  ConnectLogin();
  ConnectPicture();
  ConnectViewer();
  doc_.Messages().Attach(this);
  ApplyDisplaySettings();
  TellFileProblems();
  ReviewPanel();
}

CQuillView::~CQuillView() {
  delete videoDialog_;  // which uses the store to its end
  doc_.Messages().Detach();
}

void CQuillView::OnSettingsChanged() {
  ApplyDisplaySettings();
  TellFileProblems();
}

// What links show, and where their pictures are fetched.
void CQuillView::OpenWebSites(const Site& site) {
  const MediaHosts services = site.webSites ? site.webSites->services : MediaHostsOf(doc_.Hosts());
  std::vector<LoopbackHost> own;
  if (site.webSites)
    for (const QString& host : site.webSites->hosts)
      own.push_back({host, site.webSites->port});
  linkMarks_.SetHosts(services);
  pictureStore_.SetHosts(services);
  pictureStore_.SetLoopbackHosts(own);
}

void CQuillView::ConnectLogin() {
  connect(&login_, &LoginController::Changed, this, [this] {
    if (login_.IsOpen()) doc_.GetReconnector().Stop();
    RefreshPanel();
  });
  connect(&login_, &LoginController::AccountWritten, this, &CQuillView::TellFileProblems);
  connect(&login_, &LoginController::AddressRequested, this, [this] { Commands().Run(Command::kConnect); });
  connect(&login_, &LoginController::DemoRequested, this, &CQuillView::DemoRequested);
}

void CQuillView::ConnectPicture() {
  connect(&article_, &ArticleView::Changed, this, [this] {
    hands_.Keys().Flush();
    ShowOtherLines();
  });
  connect(&pictures_, &ArticlePictures::RowsChanged, this, &CQuillView::ShowOtherLines);
  connect(&pictures_, &ArticlePictures::ImagesChanged, this, &CQuillView::RefreshFrame);
  connect(&screenPicture_, &ScreenPicture::Changed, this, [this] {
    overlays_.Repaint(screenPicture_);
    RefreshPanel();
  });
  connect(&article_, &ArticleView::NewsArrived, this, &CQuillView::TellNews);
  // Both take minutes, which nobody waits out in front of them.
  connect(&automations_, &Automations::MoneyEnded, this, [this] { CallUser(SignalSound::kBeep); });
  connect(&automations_, &Automations::PushesEnded, this, [this] { CallUser(SignalSound::kBeep); });
  connect(&background_, &BackgroundPicture::Loaded, this, &CQuillView::ApplyBackground);
  connect(&background_, &BackgroundPicture::Failed, this,
          [this](const QString& source, const QString& reason) {
            ShowNotice(DescribeNoBackground(source, reason));
          });
  connect(&doc_.GetBookmarks(), &Bookmarks::Changed, this, [this] {
    sideList_.Refresh();
    TellFileProblems();
    RefreshFrame();
  });
}

void CQuillView::ConnectViewer() {
  connect(&pictures_, &ArticlePictures::PictureClicked, this, &CQuillView::LookAt);
  connect(&viewer_, &PictureViewer::Changed, this, [this] {
    if (viewer_.IsOpen()) hands_.OnCovered();
    RefreshPanel();
  });
}

// Videos are no pictures to go on to.
void CQuillView::LookAt(const QString& link) {
  if (pictureStore_.Look(link, {}).isVideo) return ShowVideo(link);
  std::vector<QString> links = pictures_.OpenLinks();
  std::erase_if(links, [this](const QString& other) { return pictureStore_.Look(other, {}).isVideo; });
  viewer_.Open(std::move(links), link);
}

void CQuillView::ShowVideo(const QString& link) {
  videoDialog_ = new VideoDlg(
      pictureStore_, link, [this, link] { hands_.BrowsePicture(link); }, this);
  videoDialog_->setAttribute(Qt::WA_DeleteOnClose);
  videoDialog_->open();
}

void CQuillView::TellNews(const ArticleNews& news) {
  toast_.Show(DescribeNews(news), news.edited ? EmbeddedImage::kEdited : EmbeddedImage::kNews);
  CallUser(SignalSound::kUpdated);
}

// Who reads here sees it without a sound.
void CQuillView::CallUser(SignalSound sound) {
  if (!isActiveWindow()) connection_.CallUser(sound);
}

// From the bottom up.
void CQuillView::ListOverlays() {
  for (Overlay* const overlay : std::initializer_list<Overlay*>{
           &ime_, &badge_, &toast_, &hands_.Links(), &hands_.Places(), &screenPicture_, &panel_,
           &scrollBarPart_, &buttonsPart_, &stallSign_, &pictureQuestion_, &sideList_, &hands_.Search().Bar(),
           &login_, &viewer_})
    overlays_.Add(*overlay);
}

void CQuillView::PlaceOverlays() {
  if (!isVisible()) return;
  if (composer_.SetRowsInSight(surface_.CurrentLayout().rowsInSight)) ShowOtherLines();
  overlays_.PlaceAll(PlaceOfOverlays());
}

OverlayPlace CQuillView::PlaceOfOverlays() const {
  const Layout& layout = surface_.CurrentLayout();
  const qreal scale = surface_.Scale();
  return {.area = rect(),
          .unit = layout.rowHeight / scale,
          .footTop = surface_.CellRect(kBottomRow, 0).top(),
          .font = font(),
          .work = settings_.Fields().work};
}

void CQuillView::PlaceSideButtons() {
  const qreal scale = surface_.Scale();
  SideRoom room = SideRoomOf(surface_.CurrentLayout(), frame_.page, qRound(height() * scale), scale);
  if (settings_.Fields().hideTopLeftIcons || settings_.Fields().work) room.wish = SideRoom::Wish::kHidden;
  sideButtons_.Place(room);
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
  pictureStore_.SetBehavior(BehaviorOf(settings_.Fields()));
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
  if (notice.title.isEmpty()) return;
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
  if (event->type() == QEvent::ShortcutOverride && !login_.IsShown() && !hands_.IsAsking() &&
      hands_.Keyboard().IsOurs(*static_cast<QKeyEvent*>(event))) {
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
    linkMarks_.Mark(screen_, page_);
    ++screenCount_;
    if (messages.reason != ScreenReason::kUpdated) hands_.Keys().DropWaiting();
    doc_.OnScreen(messages.reason, std::move(messages.seen));
    if (automations_.IsBusy()) article_.OnAutomationKey();
    article_.OnScreen(screen_, page_);
    const std::string keys = composer_.OnScreen(screen_, page_);
    if (!keys.empty() && !automations_.IsBusy()) hands_.Keys().SendBytes(keys);
    hands_.Keys().Flush();
    ShowOtherLines();
    hands_.OnScreen();
    UpdateIme(ImeAdapter::Move::kIfChanged);
  }
  if (messages.bell) doc_.Driver().OnBell(automations_.IsBusy());
}

void CQuillView::Tick() {
  doc_.Driver().Tick();
  doc_.ReviewAnswer();
  ReviewPanel();
  const bool busy = automations_.IsBusy() || hands_.IsAsking() || panel_.IsActive() || login_.IsOpen() ||
                    ime_.IsComposing() || QApplication::activeModalWidget() != nullptr;
  article_.OnTick(!busy && isVisible());
  if (!busy && settings_.Fields().keepAwake) doc_.Driver().KeepAwake(IdleKey(page_));
  hands_.Keys().Flush();
  OnClock();
}

void CQuillView::RefreshPanel() {
  ReviewPanel();
  RefreshFrame();
}

void CQuillView::ReviewPanel() {
  const PanelText before = panel_.Text();
  panel_.SetSession(DescribeSession(doc_.Facts()));
  if (panel_.Text() != before) overlays_.Repaint(panel_);
  login_.SetCovered(panel_.HasNotice());
  const Activity activity = automations_.Current();
  article_.SetHeld(activity == Activity::kAskCode || activity == Activity::kPush);
  if (badge_.SetText(DescribeActivity(activity, automations_.Progress()))) overlays_.Repaint(badge_);
  timers_.SetAnimating(panel_.IsBusy());
  const bool covered = overlays_.IsCovered();
  if (covered) hands_.OnCovered();
  stallSign_.Tell(covered ? AnswerWait::State::kNone : doc_.Answer());
  overlays_.Review();
}

void CQuillView::ShowOtherLines() {
  RefreshFrame();
  hands_.OnOtherLines();
}

// What is being composed when the page goes is not thrown away.
bool CQuillView::AcceptsComposedText() const {
  const bool mayType = !overlays_.IsCovered() && !overlays_.KeepsTyping();
  return mayType && (ime_.IsComposing() || (!article_.IsShown() && page_.typing == Typing::kText));
}

bool CQuillView::ShowsCaret() const {
  return timers_.CaretOn() && hasFocus() && !overlays_.IsCovered() && connection_.IsConnected();
}

// Time alone changes nothing in the page but how long ago something was, which is told to the second.
void CQuillView::OnClock() {
  if (SecondsNow() != composedAt_) {
    FollowTimeZone();
    return RefreshFrame();
  }
  ime_.SetEnabled(AcceptsComposedText());
  frame_.blinkOff = timers_.BlinkOff();
  composer_.PlaceCaret(screen_, page_, ShowsCaret(), frame_);
  surface_.Refresh(frame_);
}

void CQuillView::FollowPictures() {
  const QWindow* const shown = window()->windowHandle();
  const bool isSeen = isVisible() && shown != nullptr && shown->isExposed();
  viewer_.SetSeen(isSeen);
  pictures_.Follow(surface_.RoomForPictures(article_.LinesInSight()),
                   isSeen ? ArticlePictures::Seen::kYes : ArticlePictures::Seen::kNo);
}

void CQuillView::RefreshFrame() {
  // Before it is seen it has neither its size nor its settings for good.
  if (!isVisible()) return;
  composedAt_ = SecondsNow();
  ime_.SetEnabled(AcceptsComposedText());
  frame_.blinkOff = timers_.BlinkOff();
  frame_.rightInset = qCeil(kRightInset * surface_.Scale());
  FollowPictures();
  composer_.Compose(screen_, page_, ShowsCaret(), frame_);
  pictures_.Compose(frame_);
  hands_.Decorate(frame_.page);
  surface_.Refresh(frame_);
  PlaceSideButtons();
  sideButtons_.Follow(Commands().State({}));
}

void CQuillView::paintEvent(QPaintEvent* event) {
  // The scale factor can change without any other event when the window moves to another screen.
  if (surface_.FollowWidget()) {
    surface_.Refresh(frame_);
    QMetaObject::invokeMethod(this, &CQuillView::PlaceOverlays, Qt::QueuedConnection);
  }
  QPainter painter(this);
  surface_.Paint(painter, event->rect());
  if (isSeen_) return overlays_.Paint(painter, event->region());
  // What lies over the page is words about a connection that is about to be made, or asked for.
  isSeen_ = true;
  update();
  for (std::function<void()>& action : std::exchange(whenSeen_, {}))
    WhenSeen(std::move(action));
}

void CQuillView::WhenSeen(std::function<void()> action) {
  if (isSeen_)
    QMetaObject::invokeMethod(this, std::move(action), Qt::QueuedConnection);
  else
    whenSeen_.push_back(std::move(action));
}

void CQuillView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  ShowOtherLines();
  PlaceOverlays();
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
  hands_.Pointer().Cancel();
  ime_.End();
  QWidget::focusOutEvent(event);
}

}  // namespace quillet
