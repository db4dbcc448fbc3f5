// The menus of the main window: every command of the client's, with its shortcut.
#include <QMenuBar>
#include <QShortcut>

#include "app/window/main_frame.h"
#include "settings/setting_table.h"

namespace quillet {
namespace {

constexpr char kControlV = 0x16;
// The client's own keys: the BBS has no use for Ctrl and Shift together.
constexpr auto kClientKeys = Qt::CTRL | Qt::SHIFT;

QAction* Add(QMenu& menu, const QString& text, const QKeySequence& shortcut, std::function<void()> action) {
  QAction* const item = menu.addAction(text);
  item->setShortcut(shortcut);
  item->setAutoRepeat(false);  // held a little long, it would undo what it has done
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

void CMainFrame::MakeMenus() {
  MakeConnectionMenu();
  MakeEditMenu();
  MakeLookMenu();
  MakeArticleMenu();
  MakeSettingsMenu();
  QMenu* const help = menuBar()->addMenu(u"說明(&H)"_qs);
  Add(*help, u"關於 Quillet(&A)"_qs, Qt::Key_F1, [this] { ShowAbout(); });
  // The shortcuts of a menu bar that is hidden in full screen are dead, those of the window are not.
  for (const QMenu* const menu : menuBar()->findChildren<QMenu*>())
    addActions(menu->actions());
  workMenus_ = std::make_unique<WorkMenus>(*menuBar(), WorkMenus::Items{.quit = quit_,
                                                                        .copy = copy_,
                                                                        .paste = paste_,
                                                                        .selectAll = selectAll_,
                                                                        .fullScreen = fullScreen_,
                                                                        .leave = [this] { ToggleWorkMode(); },
                                                                        .about = [this] { ShowAbout(); }});
}

void CMainFrame::MakeConnectionMenu() {
  QMenu* const menu = menuBar()->addMenu(u"連線(&C)"_qs);
  Add(*menu, u"登入…(&L)"_qs, kClientKeys | Qt::Key_L, [this] { view_->AskLogin(); });
  Add(*menu, u"連線到…(&N)"_qs, kClientKeys | Qt::Key_N, [this] { AskAddress(); });
  // Without keys: nobody needs it often, and pressed by mistake it would leave the site.
  Add(*menu, u"示範站台(&D)"_qs, {}, [this] { OpenDemo(); });
  menu->addSeparator();
  reconnect_ = Add(*menu, u"重新連線(&R)"_qs, kClientKeys | Qt::Key_R, [this] { Reconnect(); });
  disconnect_ = Add(*menu, u"中斷連線(&K)"_qs, kClientKeys | Qt::Key_D, [this] { Disconnect(); });
  menu->addSeparator();
  quit_ = Add(*menu, u"離開(&X)"_qs, Qt::ALT | Qt::Key_F4, [this] { close(); });
}

void CMainFrame::MakeEditMenu() {
  QMenu* const menu = menuBar()->addMenu(u"編輯(&E)"_qs);
  const auto addEdit = [&](const QString& text, const QKeySequence& keys, EditCommand command) {
    return Add(*menu, text, keys, [this, command] { view_->Edit(command); });
  };
  copy_ = addEdit(u"複製(&C)"_qs, kClientKeys | Qt::Key_C, EditCommand::kCopy);
  addEdit(u"複製成 HTML（含色彩）(&H)"_qs, kClientKeys | Qt::Key_W, EditCommand::kCopyHtml);
  addEdit(u"複製成 ANSI 色碼(&N)"_qs, kClientKeys | Qt::Key_Q, EditCommand::kCopyAnsi);
  selectAll_ = addEdit(u"全選(&A)"_qs, kClientKeys | Qt::Key_A, EditCommand::kSelectAll);
  menu->addSeparator();
  paste_ = addEdit(u"貼上(&P)"_qs, kClientKeys | Qt::Key_V, EditCommand::kPaste);
  addEdit(u"貼上短網址(&S)"_qs, kClientKeys | Qt::Key_K, EditCommand::kPasteShortLink);
  menu->addSeparator();
  AddSearch(*menu, SearchEngine::kFirst, kClientKeys | Qt::Key_S);
  AddSearch(*menu, SearchEngine::kSecond, kClientKeys | Qt::Key_E);
  Add(*menu, u"開啟畫面上的連結…(&O)"_qs, kClientKeys | Qt::Key_U,
      [this] { view_->ShowLinks(EditCommand::kOpenLink); });
  Add(*menu, u"複製畫面上的連結…(&L)"_qs, Qt::ALT | Qt::Key_U,
      [this] { view_->ShowLinks(EditCommand::kCopyLink); });
  Add(*menu, u"使用者的網頁…(&U)"_qs, kClientKeys | Qt::Key_I, [this] { OpenUserPage(); });
  menu->addSeparator();
  Add(*menu, u"傳送 Ctrl+V 給站台(&V)"_qs, Qt::CTRL | Qt::ALT | Qt::Key_V,
      [this] { view_->SendControl(kControlV); });
}

// Where the engine is configured.
void CMainFrame::AddSearch(QMenu& menu, SearchEngine engine, const QKeySequence& keys) {
  const QString name = view_->Web().EngineName(engine);
  if (name.isEmpty()) return;
  const bool first = engine == SearchEngine::kFirst;
  const EditCommand command = first ? EditCommand::kSearchFirst : EditCommand::kSearchSecond;
  Add(menu, (first ? u"用 %1 搜尋選取的文字(&1)"_qs : u"用 %1 搜尋選取的文字(&2)"_qs).arg(name), keys,
      [this, command] { view_->Edit(command); });
}

void CMainFrame::MakeLookMenu() {
  QMenu* const menu = menuBar()->addMenu(u"檢視(&V)"_qs);
  fullScreen_ = Add(*menu, u"全螢幕(&F)"_qs, Qt::Key_F11, [this] { ToggleFullScreen(); });
  fullScreen_->setCheckable(true);
  workMode_ = Add(*menu, u"上班模式(&W)"_qs, Qt::ALT | Qt::Key_W, [this] { ToggleWorkMode(); });
  workMode_->setCheckable(true);
  menu->addSeparator();
  layouts_ = new QActionGroup(menu);
  const auto addLayout = [&](const QString& text, const QKeySequence& keys, LayoutMode mode) {
    QAction* const item = Add(*menu, text, keys, [this, mode] { ApplyLayout(mode); });
    item->setCheckable(true);
    item->setChecked(mode == LayoutMode::kOrdinary);
    layouts_->addAction(item);
  };
  addLayout(u"一般版面(&O)"_qs, Qt::ALT | Qt::Key_1, LayoutMode::kOrdinary);
  addLayout(u"填滿視窗(&L)"_qs, Qt::ALT | Qt::Key_2, LayoutMode::kFitted);
  addLayout(u"迷你視窗(&M)"_qs, Qt::ALT | Qt::Key_3, LayoutMode::kNarrow);
  menu->addSeparator();
  Add(*menu, u"顯示名單描述(&D)"_qs, Qt::CTRL | Qt::Key_Tab, [this] { view_->Reveal(); });
  AddPlaces(*menu);
}

// While nothing acts on it, it is grey and says why; its keys are not left to the BBS but say the same.
void CMainFrame::AddPlaces(QMenu& menu) {
  const QString text = u"推文IP轉地理位置"_qs;
  const QKeySequence keys(kClientKeys | Qt::Key_G);
  if (RowOf(&Settings::ipToName).Acts()) {
    Add(menu, text + u"(&I)"_qs, keys, [this] { view_->TogglePlaces(); });
    return;
  }
  const QString why = QStringView(kActsNotYet).toString();
  menu.addAction(u"%1（%2）(&I)\t%3"_qs.arg(text, why, keys.toString(QKeySequence::NativeText)))
      ->setEnabled(false);
  auto* const shortcut = new QShortcut(keys, this);
  shortcut->setAutoRepeat(false);
  connect(shortcut, &QShortcut::activated, view_, &CQuillView::TogglePlaces);
}

void CMainFrame::MakeArticleMenu() {
  QMenu* const menu = menuBar()->addMenu(u"文章(&A)"_qs);
  Add(*menu, u"跳到文章代碼…(&J)"_qs, kClientKeys | Qt::Key_J, [this] { JumpToArticle(); });
  menu->addSeparator();
  const auto addCommand = [&](const QString& text, const QKeySequence& keys, ArticleCommand command) {
    Add(*menu, text, keys, [this, command] { view_->PerformArticleCommand(command); });
  };
  addCommand(u"加入／移除書籤(&M)"_qs, kClientKeys | Qt::Key_M, ArticleCommand::kBookmark);
  addCommand(u"推文(&P)"_qs, kClientKeys | Qt::Key_P, ArticleCommand::kPush);
  addCommand(u"連續推文…(&X)"_qs, kClientKeys | Qt::Key_X, ArticleCommand::kPushOn);
  addCommand(u"自動發P幣…(&G)"_qs, Qt::ALT | Qt::Key_G, ArticleCommand::kGiveMoney);
  addCommand(u"推文開頭(&F)"_qs, kClientKeys | Qt::Key_F, ArticleCommand::kFirstPush);
  menu->addSeparator();
  const auto addSearch = [&](const QString& text, const QKeySequence& keys, SearchStep step) {
    Add(*menu, text, keys, [this, step] { view_->Search(step); })->setAutoRepeat(true);
  };
  addSearch(u"在文章中尋找…(&S)"_qs, Qt::CTRL | Qt::Key_F, SearchStep::kAsk);
  addSearch(u"找下一處(&N)"_qs, Qt::Key_F3, SearchStep::kNext);
  addSearch(u"找上一處(&V)"_qs, Qt::SHIFT | Qt::Key_F3, SearchStep::kPrevious);
  menu->addSeparator();
  const auto addList = [&](const QString& text, const QKeySequence& keys, ArticleListKind kind) {
    Add(*menu, text, keys, [this, kind] { view_->SideList().Toggle(kind); });
    view_->Buttons().SetShortcut(ButtonOf(kind), keys);
  };
  addList(u"熱門文章(&H)"_qs, kClientKeys | Qt::Key_H, ArticleListKind::kHot);
  addList(u"追蹤文章(&T)"_qs, kClientKeys | Qt::Key_T, ArticleListKind::kTracked);
  addList(u"書籤(&B)"_qs, kClientKeys | Qt::Key_B, ArticleListKind::kBookmarks);
  QAction* const compact = Add(*menu, u"清單每篇一行(&1)"_qs, Qt::ALT | Qt::Key_L,
                               [this] { view_->SideList().SetCompact(!view_->SideList().IsCompact()); });
  compact->setCheckable(true);
  connect(&view_->SideList(), &SideListView::CompactChanged, compact, &QAction::setChecked);
}

void CMainFrame::MakeSettingsMenu() {
  QMenu* const menu = menuBar()->addMenu(u"設定(&S)"_qs);
  constexpr auto kOptions = kClientKeys | Qt::Key_O;
  Add(*menu, u"選項…(&O)"_qs, kOptions, [this] { ShowOptions(); });
  view_->Buttons().SetShortcut(SideButton::kOptions, kOptions);
  Add(*menu, u"加入名單…(&B)"_qs, kClientKeys | Qt::Key_Y, [this] { AskForName(); });
}

}  // namespace quillet
