#include "app/window/main_frame.h"

#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QWindow>

#include "app/dialogs/connect_dialog.h"
#include "app/dialogs/id_dialog.h"
#include "app/dialogs/jump_dialog.h"
#include "app/dialogs/keys_dialog.h"
#include "app/dialogs/site_choice.h"
#include "app/messages/link_messages.h"
#include "app/messages/picture_messages.h"
#include "app/messages/window_title.h"
#include "app/window/news_badge.h"
#include "settings/dialog/add_black_dlg.h"
#include "settings/dialog/options_dlg.h"

namespace quillet {
namespace {

constexpr QSize kFirstSize(1280, 720);
// Glyphs of 12 pixels, the smallest that the layout draws.
constexpr QSize kSmallestView(480, 288);
// The narrow layout: 33 characters of 12 pixels and four rows; at first eight rows of 17.
constexpr QSize kSmallestNarrowView(396, 48);
constexpr QSize kFirstNarrowView(528, 136);

IconBadge BadgeFor(ConnectionStatus status) {
  switch (status) {
    case ConnectionStatus::kQuiet:
      return IconBadge::kNone;
    case ConnectionStatus::kSomethingNew:
      return IconBadge::kNews;
    case ConnectionStatus::kNotConnected:
      return IconBadge::kNotConnected;
  }
  return IconBadge::kNone;
}

}  // namespace

CMainFrame::CMainFrame(CQuillDoc& doc, QWidget* parent)
    : QMainWindow(parent),
      doc_(doc),
      connection_(doc.GetConnection()),
      settings_(doc.GetSettings()),
      view_(new CQuillView(doc, this)),
      linkHandler_(doc.SystemRegistry(), [this](LinkChoice choice) { TellLinkChoice(choice); }) {
  setCentralWidget(view_);
  MakeMenus();
  setMinimumSize(kSmallestView + QSize(0, menuBar()->sizeHint().height()));
  connect(view_, &CQuillView::DemoRequested, this, &CMainFrame::DemoRequested);
  connect(&doc_, &CQuillDoc::StatusChanged, this, &CMainFrame::ShowState);
  connect(&view_->Log(), &SessionLogControl::Changed, this, &CMainFrame::ShowState);
  connect(&settings_, &UserSettings::Changed, this, &CMainFrame::OnSettingsChanged);
  OnSettingsChanged();
  SizeForView(UsualView());
  RestorePlace();
  view_->setFocus();
}

// The view asks the window's commands to its end, when it loses the keyboard.
CMainFrame::~CMainFrame() {
  delete view_;
}

void CMainFrame::SizeForView(QSize view) {
  resize(view + QSize(0, MenuHeight()));
}

QSize CMainFrame::LargestView() const {
  // Title bar and borders are not known before the window is shown.
  constexpr QSize kDecorations(16, 48);
  return screen()->availableGeometry().size() - kDecorations - QSize(0, MenuHeight());
}

QSize CMainFrame::UsualView() const {
  const QSize room = LargestView();
  const bool fits = kFirstSize.width() <= room.width() && kFirstSize.height() <= room.height();
  return fits ? kFirstSize : kFirstSize.scaled(room, Qt::KeepAspectRatio);
}

int CMainFrame::MenuHeight() const {
  return menuBar()->isVisibleTo(this) ? menuBar()->sizeHint().height() : 0;
}

void CMainFrame::AskAddress() {
  settings_.Refresh();
  ConnectDlg dialog(
      ProposedAddress(QString::fromStdU16String(settings_.Fields().site), doc_.Hosts().mainHost),
      {.listed = settings_.RecentSites(),
       .keep =
           [this](const RecentSite& before, const RecentSite& site) {
             bool isKept = false;
             settings_.ChangeMap([&](SettingsMap& map) { isKept = KeepSite(map, before, site); });
             return isKept;
           },
       .remove =
           [this](const RecentSite& site) {
             settings_.ChangeMap([&](SettingsMap& map) { ForgetSite(map, site, settings_.Fields().site); });
           }},
      this);
  const int answer = dialog.exec();
  activateWindow();
  if (answer != QDialog::Accepted) return;
  if (dialog.Chosen() == ConnectDlg::Choice::kDemo) {
    OpenDemo();
    return;
  }
  // Who has an account there is asked for its password, if that is not remembered.
  if (const RecentSite* const site = dialog.Site(); site != nullptr && !site->account.empty())
    return view_->AskLogin(*site);
  view_->Leaving().Before(LeaveFor::kOtherSite, [this, address = dialog.Address()] {
    connection_.Open({.address = address, .name = {}, .makeTransport = {}});
  });
}

void CMainFrame::OpenDemo() {
  view_->Leaving().Before(LeaveFor::kOtherSite,
                          [this] { emit DemoRequested(nullptr, TransportKind::kTelnet); });
}

void CMainFrame::Disconnect() {
  view_->Leaving().Before(LeaveFor::kDisconnecting, [this] { connection_.Disconnect(); });
}

void CMainFrame::Reconnect() {
  // Where nothing is answered nobody can log out.
  Reconnector& reconnector = doc_.GetReconnector();
  if (doc_.Answer() == AnswerWait::State::kStalled) return reconnector.Reconnect(Reconnector::Told::kNo);
  // He logs out in order to come back.
  view_->Leaving().Before(LeaveFor::kReconnecting, [&reconnector, login = connection_.LoginAgain()] {
    reconnector.ReconnectWith(login, Reconnector::Told::kNo);
  });
}

void CMainFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  const bool activated = event->type() == QEvent::ActivationChange && isActiveWindow();
  if (activated && QApplication::activeModalWidget() == nullptr) settings_.Refresh();
  if (activated) connection_.NoteUserHere();
}

void CMainFrame::ShowOptions() {
  settings_.Refresh();
  CQuillOptionDlg dialog(settings_.Store(),
                         {.becomeDefaultBrowser = [this] { linkHandler_.Wish(); },
                          .aboutDefaultBrowser = DescribeLinkHandlerButton(AsksUserForLinkHandler()),
                          .emptyPictureCache = [this] { view_->FetchedPictures().EmptyDiskCache(); }},
                         this);
  const PictureStore& pictures = view_->FetchedPictures();
  const auto showCache = [&dialog](qint64 bytes) { dialog.ShowPictureCache(ByteCountText(bytes)); };
  connect(&pictures, &PictureStore::DiskCacheCounted, &dialog, showCache);
  showCache(pictures.DiskCacheSize());
  const int answer = dialog.exec();
  activateWindow();
  if (answer == QDialog::Accepted) settings_.Apply();
}

void CMainFrame::AskForName() {
  IdDlg question(view_->IdInQuestion(), this);
  if (question.exec() == QDialog::Accepted) AddToNames(question.Id());
  activateWindow();
}

void CMainFrame::AddToNames(const QString& id) {
  settings_.Refresh();
  AddBlackDlg dialog(settings_.Store(), id, this);
  if (dialog.exec() == QDialog::Accepted) {
    settings_.Apply();
    view_->NoteAddedName(id);
  }
  activateWindow();
}

void CMainFrame::OpenUserPage() {
  IdDlg question(view_->IdInQuestion(), this);
  const int answer = question.exec();
  activateWindow();
  if (answer == QDialog::Accepted) view_->OpenUserPage(question.Id());
}

void CMainFrame::ShowArticle(const ArticleReference& article) {
  setWindowState(windowState().setFlag(Qt::WindowMinimized, false));
  show();
  raise();
  activateWindow();
  view_->WantArticle(article);
}

void CMainFrame::TellLinkChoice(LinkChoice choice) {
  const QString words = DescribeLinkChoice(choice);
  if (words.isEmpty()) return;
  QWidget* const dialog = QApplication::activeModalWidget();
  auto* const box =
      new QMessageBox(choice == LinkChoice::kFailed ? QMessageBox::Warning : QMessageBox::Information,
                      u"預設瀏覽器"_qs, words, QMessageBox::NoButton, dialog != nullptr ? dialog : this);
  box->addButton(u"關閉"_qs, QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

void CMainFrame::JumpToArticle() {
  JumpDlg dialog(WebHostsOf(doc_.Hosts()), QString::fromStdU16String(connection_.Seen().article.board),
                 QGuiApplication::clipboard()->text(), this);
  const int answer = dialog.exec();
  activateWindow();
  if (answer != QDialog::Accepted) return;
  if (!doc_.GetAutomations().JumpTo(dialog.Article()))
    view_->ShowNotice(DescribeNoJump(connection_.IsConnected()));
}

void CMainFrame::ShowState() {
  const Settings& settings = settings_.Fields();
  const ConnectionStatus status = doc_.Driver().Status();
  setWindowTitle(DescribeTitle(
      connection_.Facts(),
      {.work = settings.work,
       .news = status == ConnectionStatus::kSomethingNew,
       .logging = view_->Log().IsOn(),
       .id = settings.titleShowId ? QString::fromStdU16String(connection_.Seen().loginId) : QString()}));
  ShowIcon({.work = settings.work, .badge = BadgeFor(status)});
}

void CMainFrame::ShowIcon(IconLook look) {
  const IconLook before = std::exchange(icon_, look);
  if (before == look) return;
  const bool tells = look.TellsNews();
  const bool isOverButton = (tells || before.TellsNews()) && ShowNewsBadge(*this, tells);
  setWindowIcon(look.work ? MakeDisguiseIcon()
                          : MakeWindowIcon(tells && isOverButton ? IconBadge::kNone : look.badge));
}

void CMainFrame::ToggleFullScreen() {
  const bool full = !isFullScreen();
  menuBar()->setVisible(!full);
  // Not every window manager keeps both.
  if (full) wasMaximized_ = isMaximized();
  setWindowState(
      windowState().setFlag(Qt::WindowFullScreen, full).setFlag(Qt::WindowMaximized, wasMaximized_));
  view_->setFocus();
}

void CMainFrame::OnSettingsChanged() {
  const bool work = settings_.Fields().work;
  workMenus_->Show(work ? MenuFace::kEditor : MenuFace::kOwn);
  ShowState();
  ApplyTopmost();
}

void CMainFrame::ApplyLayout(LayoutMode mode) {
  if (mode == layout_) return;
  const bool wasNarrow = layout_ == LayoutMode::kNarrow;
  layout_ = mode;
  const bool narrow = mode == LayoutMode::kNarrow;
  const QSize before = normalGeometry().size();
  setMinimumSize((narrow ? kSmallestNarrowView : kSmallestView) + QSize(0, menuBar()->sizeHint().height()));
  // The small window and the usual one have sizes of their own.
  const bool resizes = !isMaximized() && !isFullScreen();
  if (narrow) {
    usualSize_ = before;
    if (resizes && smallSize_.isEmpty()) SizeForView(kFirstNarrowView);
    if (resizes && !smallSize_.isEmpty()) resize(smallSize_);
  } else if (wasNarrow) {
    smallSize_ = before;
    if (resizes && !usualSize_.isEmpty()) resize(usualSize_);
  }
  view_->SetLayoutMode(mode);
}

void CMainFrame::ApplyZoom(Zoom wish) {
  const ZoomState state{.percent = settings_.Fields().zoom,
                        .rowHeight = view_->Surface().CurrentLayout().rowHeight,
                        .view = view_->size(),
                        .least = kSmallestView,
                        .most = LargestView(),
                        .usual = UsualView(),
                        .follows = layout_ == LayoutMode::kOrdinary && !isMaximized() && !isFullScreen()};
  const ZoomPlan plan = PlanZoom(wish, state);
  settings_.Set(&Settings::zoom, plan.percent);
  if (plan.view != state.view) SizeForView(plan.view);
  if (wish == Zoom::kUsual || plan != ZoomPlan{state.percent, state.view}) return;
  view_->Tell(wish == Zoom::kLarger ? u"畫面已經是最大"_qs : u"畫面已經是最小"_qs);
}

void CMainFrame::ToggleWorkMode() {
  settings_.Set(&Settings::work, !settings_.Fields().work);
}

void CMainFrame::ApplyTopmost() {
  const bool on = settings_.Fields().topmost;
  if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == on) return;
  // The window that is up is told by itself: the widget's own way hides it, and it comes back elsewhere and
  // without the keyboard.
  overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
  if (windowHandle() != nullptr) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on);
}

void CMainFrame::ShowKeys() {
  KeysDlg dialog(MakeHelp(view_->Commands().State(), view_->WordsForMenus()), this);
  dialog.exec();
  activateWindow();
}

void CMainFrame::ShowAbout() {
  if (settings_.Fields().work) return ShowEditorAbout(*this);
  QMessageBox box(QMessageBox::NoIcon, u"關於 Quillet"_qs,
                  u"<b>Quillet %1</b>"_qs.arg(QCoreApplication::applicationVersion()), QMessageBox::NoButton,
                  this);
  const QStringList credits{
      u"Qt %1（LGPL 3）、libssh（LGPL 2.1）、cpprestsdk（MIT）、WebSocket++（BSD）、libxml2（MIT）、OpenSSL（Apache 2.0）、Boost（BSL 1.0）"_qs
          .arg(QString::fromLatin1(qVersion())),
      u"字元對照表：MozTW 計畫的 UAO 2.50，取自 uao-js 套件（MIT）"_qs,
      u"位址的國家：IPFire Location database（CC BY-SA 4.0）"_qs,
      u"位址的網路：Route Views、NRO、IP Geolocation by DB-IP（CC BY 4.0）"_qs,
      u"國名：iso-codes（LGPL 2.1+）"_qs,
      u"VPN 服務與資料中心：X4BNet lists_vpn（MIT）"_qs};
  box.setInformativeText(
      u"連上中文電子佈告欄的桌面程式。<br><br>%1<br><br>出處與授權全文在 Data/README.md。"_qs.arg(
          credits.join(u"<br>"_qs)));
  box.addButton(u"關閉"_qs, QMessageBox::AcceptRole);
  box.exec();
  activateWindow();
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  RememberPlace();
  // The end of the desktop's session waits for no answer.
  if (!qApp->isSavingSession() && !view_->Leaving().IsFree(LeaveFor::kClosing)) {
    event->ignore();
    view_->Leaving().Before(LeaveFor::kClosing, [this] {
      connection_.Disconnect();
      QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    });
    return;
  }
  connection_.Disconnect();
  event->accept();
}

}  // namespace quillet
