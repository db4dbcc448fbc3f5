#include "app/main_frame.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QWindow>

#include "app/author_at_cursor.h"
#include "app/connect_dialog.h"
#include "app/id_dialog.h"
#include "app/jump_dialog.h"
#include "app/site_choice.h"
#include "app/window_icon.h"
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
constexpr char kControlV = 0x16;

QAction* Add(QMenu& menu, const QString& text, const QKeySequence& shortcut, std::function<void()> action) {
  QAction* const item = menu.addAction(text);
  item->setShortcut(shortcut);
  QObject::connect(item, &QAction::triggered, &menu, std::move(action));
  return item;
}

SideButton ButtonOf(ArticleListKind kind) {
  switch (kind) {
    case ArticleListKind::kHot:
      return SideButton::kHotList;
    case ArticleListKind::kTracked:
      return SideButton::kTrackedList;
    case ArticleListKind::kBookmarks:
      break;
  }
  return SideButton::kBookmarkList;
}

}  // namespace

CMainFrame::CMainFrame(CQuillDoc& doc, QWidget* parent)
    : QMainWindow(parent), doc_(doc), view_(new CQuillView(doc, this)) {
  setCentralWidget(view_);
  MakeMenus();
  setMinimumSize(kSmallestView + QSize(0, menuBar()->sizeHint().height()));
  connect(view_, &CQuillView::CommandRequested, this, &CMainFrame::OnCommand);
  connect(view_, &CQuillView::DemoRequested, this, &CMainFrame::DemoRequested);
  connect(view_, &CQuillView::OptionsRequested, this, &CMainFrame::ShowOptions);
  connect(&doc_, &CQuillDoc::StatusChanged, this, &CMainFrame::OnStatusChanged);
  connect(&doc_, &CQuillDoc::SettingsChanged, this, &CMainFrame::OnSettingsChanged);
  OnStatusChanged();
  OnSettingsChanged();
  const QSize room = LargestView();
  const bool fits = kFirstSize.width() <= room.width() && kFirstSize.height() <= room.height();
  SizeForView(fits ? kFirstSize : kFirstSize.scaled(room, Qt::KeepAspectRatio));
  view_->setFocus();
}

void CMainFrame::SizeForView(QSize view) {
  resize(view + QSize(0, MenuHeight()));
}

QSize CMainFrame::LargestView() const {
  // Title bar and borders are not known before the window is shown.
  constexpr QSize kDecorations(16, 48);
  return screen()->availableGeometry().size() - kDecorations - QSize(0, MenuHeight());
}

int CMainFrame::MenuHeight() const {
  return menuBar()->isVisibleTo(this) ? menuBar()->sizeHint().height() : 0;
}

void CMainFrame::MakeMenus() {
  MakeConnectionMenu();
  MakeEditMenu();
  MakeLookMenu();
  MakeArticleMenu();
  MakeSettingsMenu();
  QMenu* const help = menuBar()->addMenu(u"說明(&H)"_qs);
  Add(*help, u"關於 Quillet(&A)"_qs, {}, [this] { ShowAbout(); });
}

void CMainFrame::MakeConnectionMenu() {
  QMenu* const menu = menuBar()->addMenu(u"連線(&C)"_qs);
  Add(*menu, u"登入…(&L)"_qs, Qt::CTRL | Qt::SHIFT | Qt::Key_L, [this] { view_->AskLogin(); });
  Add(*menu, u"連線到…(&N)"_qs, Qt::CTRL | Qt::SHIFT | Qt::Key_N, [this] { AskAddress(); });
  Add(*menu, u"示範站台(&D)"_qs, {}, [this] { emit DemoRequested(); });
  menu->addSeparator();
  reconnect_ = Add(*menu, u"重新連線(&R)"_qs, {}, [this] { doc_.Reconnect(); });
  disconnect_ = Add(*menu, u"中斷連線(&K)"_qs, {}, [this] { doc_.Disconnect(); });
  menu->addSeparator();
  Add(*menu, u"離開(&X)"_qs, {}, [this] { close(); });
}

void CMainFrame::MakeEditMenu() {
  QMenu* const menu = menuBar()->addMenu(u"編輯(&E)"_qs);
  Add(*menu, u"複製畫面(&C)"_qs, Qt::CTRL | Qt::SHIFT | Qt::Key_C, [this] { view_->CopyScreen(); });
  Add(*menu, u"貼上(&P)"_qs, Qt::CTRL | Qt::SHIFT | Qt::Key_V, [this] { view_->Paste(); });
  menu->addSeparator();
  Add(*menu, u"傳送 Ctrl+V 給站台(&V)"_qs, {}, [this] { view_->SendControl(kControlV); });
}

void CMainFrame::MakeLookMenu() {
  QMenu* const menu = menuBar()->addMenu(u"檢視(&V)"_qs);
  fullScreen_ = Add(*menu, u"全螢幕(&F)"_qs, Qt::Key_F11, [this] { ToggleFullScreen(); });
  fullScreen_->setCheckable(true);
  workMode_ = Add(*menu, u"上班模式(&W)"_qs, Qt::ALT | Qt::Key_W, [this] { ToggleWorkMode(); });
  workMode_->setCheckable(true);
  menu->addSeparator();
  auto* const layouts = new QActionGroup(menu);
  const auto addLayout = [&](const QString& text, LayoutMode mode) {
    QAction* const item = Add(*menu, text, {}, [this, mode] { TakeLayout(mode); });
    item->setCheckable(true);
    item->setChecked(mode == LayoutMode::kOrdinary);
    layouts->addAction(item);
  };
  addLayout(u"一般版面(&O)"_qs, LayoutMode::kOrdinary);
  addLayout(u"填滿視窗(&L)"_qs, LayoutMode::kFitted);
  addLayout(u"迷你視窗(&M)"_qs, LayoutMode::kNarrow);
  menu->addSeparator();
  Add(*menu, u"顯示名單描述(&D)"_qs, {}, [this] { view_->Reveal(); });
}

void CMainFrame::MakeArticleMenu() {
  constexpr auto kShortcut = Qt::CTRL | Qt::SHIFT;
  QMenu* const menu = menuBar()->addMenu(u"文章(&A)"_qs);
  Add(*menu, u"跳到文章代碼…(&J)"_qs, kShortcut | Qt::Key_J, [this] { JumpToArticle(); });
  menu->addSeparator();
  const auto addCommand = [&](const QString& text, const QKeySequence& keys, ArticleCommand command) {
    Add(*menu, text, keys, [this, command] { view_->PerformArticleCommand(command); });
  };
  addCommand(u"加入／移除書籤(&M)"_qs, kShortcut | Qt::Key_M, ArticleCommand::kBookmark);
  addCommand(u"推文(&P)"_qs, kShortcut | Qt::Key_P, ArticleCommand::kPush);
  addCommand(u"推文開頭(&F)"_qs, kShortcut | Qt::Key_F, ArticleCommand::kFirstPush);
  menu->addSeparator();
  const auto addList = [&](const QString& text, const QKeySequence& keys, ArticleListKind kind) {
    Add(*menu, text, keys, [this, kind] { view_->SideList().Toggle(kind); });
    view_->Buttons().SetShortcut(ButtonOf(kind), keys);
  };
  addList(u"熱門文章(&H)"_qs, kShortcut | Qt::Key_H, ArticleListKind::kHot);
  addList(u"追蹤文章(&T)"_qs, kShortcut | Qt::Key_T, ArticleListKind::kTracked);
  addList(u"書籤(&B)"_qs, kShortcut | Qt::Key_B, ArticleListKind::kBookmarks);
  QAction* const compact = Add(*menu, u"清單每篇一行(&1)"_qs, {},
                               [this] { view_->SideList().SetCompact(!view_->SideList().IsCompact()); });
  compact->setCheckable(true);
}

void CMainFrame::MakeSettingsMenu() {
  QMenu* const menu = menuBar()->addMenu(u"設定(&S)"_qs);
  constexpr auto kOptions = Qt::CTRL | Qt::SHIFT | Qt::Key_O;
  Add(*menu, u"選項…(&O)"_qs, kOptions, [this] { ShowOptions(); });
  view_->Buttons().SetShortcut(SideButton::kOptions, kOptions);
  Add(*menu, u"加入名單…(&B)"_qs, {}, [this] { AddToNames(); });
}

void CMainFrame::AskAddress() {
  ConnectDlg dialog(ProposedAddress(QString::fromStdU16String(doc_.Fields().site), doc_.Hosts().mainHost),
                    this);
  const int answer = dialog.exec();
  activateWindow();
  if (answer != QDialog::Accepted) return;
  if (dialog.Chosen() == ConnectDlg::Choice::kDemo) {
    emit DemoRequested();
    return;
  }
  doc_.Change(u"Basic", u"Site", dialog.Address().toStdU16String());
  doc_.Open({.address = dialog.Address(), .name = {}, .makeTransport = {}});
}

void CMainFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  const bool activated = event->type() == QEvent::ActivationChange && isActiveWindow();
  if (activated && QApplication::activeModalWidget() == nullptr) doc_.TakeInSettings();
}

void CMainFrame::ShowOptions() {
  doc_.TakeInSettings();
  CQuillOptionDlg dialog(doc_.Store(), {}, this);
  const int answer = dialog.exec();
  activateWindow();
  if (answer == QDialog::Accepted) doc_.ApplySettings();
}

void CMainFrame::AddToNames() {
  IdDlg question(QString::fromStdU16String(AuthorAtCursor(view_->Screen(), doc_.OpenArticle())), this);
  if (question.exec() == QDialog::Accepted) {
    doc_.TakeInSettings();
    AddBlackDlg dialog(doc_.Store(), question.Id(), this);
    if (dialog.exec() == QDialog::Accepted) doc_.ApplySettings();
  }
  activateWindow();
}

void CMainFrame::JumpToArticle() {
  if (!doc_.IsConnected()) return view_->ShowNotice(DescribeNoJump(false));
  JumpDlg dialog(WebHostsOf(doc_.Hosts()), QString::fromStdU16String(doc_.OpenArticle().board),
                 QGuiApplication::clipboard()->text(), this);
  const int answer = dialog.exec();
  activateWindow();
  if (answer != QDialog::Accepted) return;
  if (!doc_.JumpTo(dialog.Article())) view_->ShowNotice(DescribeNoJump(doc_.IsConnected()));
}

void CMainFrame::OnCommand(KeyCommand command) {
  if (command == KeyCommand::kConnect)
    AskAddress();
  else if (command == KeyCommand::kFullScreen)
    ToggleFullScreen();
}

void CMainFrame::OnStatusChanged() {
  setWindowTitle(doc_.Title());
  disconnect_->setEnabled(doc_.IsConnected() || doc_.IsConnecting());
  reconnect_->setEnabled(doc_.Session().state == kStateClosed && !doc_.IsConnecting());
}

void CMainFrame::ToggleFullScreen() {
  const bool full = !isFullScreen();
  menuBar()->setVisible(!full);
  setWindowState(windowState().setFlag(Qt::WindowFullScreen, full));
  fullScreen_->setChecked(full);
  view_->setFocus();
}

void CMainFrame::OnSettingsChanged() {
  const bool work = doc_.Fields().work;
  workMode_->setChecked(work);
  setWindowIcon(work ? MakeDisguiseIcon() : QIcon());
  setWindowTitle(doc_.Title());
  ApplyTopmost();
}

void CMainFrame::TakeLayout(LayoutMode mode) {
  if (mode == layout_) return;
  const bool wasNarrow = layout_ == LayoutMode::kNarrow;
  layout_ = mode;
  const bool narrow = mode == LayoutMode::kNarrow;
  setMinimumSize((narrow ? kSmallestNarrowView : kSmallestView) + QSize(0, menuBar()->sizeHint().height()));
  // The small window and the usual one have sizes of their own.
  if (narrow) {
    usualSize_ = size();
    if (!isMaximized() && !isFullScreen()) SizeForView(kFirstNarrowView);
  } else if (wasNarrow && usualSize_.isValid() && !isMaximized() && !isFullScreen()) {
    resize(usualSize_);
  }
  view_->SetLayoutMode(mode);
}

void CMainFrame::ToggleWorkMode() {
  doc_.Change(u"Basic", u"Work", doc_.Fields().work ? u"0" : u"1");
}

void CMainFrame::ApplyTopmost() {
  const bool on = doc_.Fields().topmost;
  if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == on) return;
  // The window that is up is told by itself: the widget's own way hides it, and it comes back elsewhere and
  // without the keyboard.
  overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
  if (windowHandle() != nullptr) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on);
}

void CMainFrame::ShowAbout() {
  QMessageBox box(QMessageBox::NoIcon, u"關於 Quillet"_qs,
                  u"<b>Quillet %1</b>"_qs.arg(QCoreApplication::applicationVersion()), QMessageBox::NoButton,
                  this);
  box.setInformativeText(
      u"連上中文電子佈告欄的桌面程式。<br><br>字元對照表取自 uao-js 套件（MIT 授權），資料來自 MozTW 計畫的 UAO 2.50。"_qs);
  box.addButton(u"關閉"_qs, QMessageBox::AcceptRole);
  box.exec();
  activateWindow();
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  doc_.Disconnect();
  event->accept();
}

}  // namespace quillet
