#include "settings/dialog/options_dlg.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <string>

#include <QCheckBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>

#include "render/contrast.h"
#include "settings/files/text_lines.h"
#include "settings/setting_table.h"
#include "tests/settings/dialog/dialog_checks.h"

namespace quillet {
namespace {

constexpr int kTabOfDisplay = 0;
constexpr int kTabOfBehavior = 1;
constexpr int kTabOfHotTrack = 3;

QString Text(std::u16string_view text) {
  return QStringView(text).toString();
}

std::vector<const SettingRow*> ShownRows() {
  std::vector<const SettingRow*> rows;
  for (const SettingRow& row : SettingTable())
    if (row.panel != OptionPanel::kNone) rows.push_back(&row);
  return rows;
}

// Gives the control another value than it has, as a user would, and answers what the file must then hold.
std::u16string ChangeControl(QWidget* control) {
  if (auto* box = qobject_cast<QCheckBox*>(control)) {
    box->click();
    return ToText(box->isChecked() ? 1 : 0);
  }
  if (auto* box = qobject_cast<QComboBox*>(control)) {
    box->setCurrentIndex((box->currentIndex() + 1) % box->count());
    return ToText(box->currentIndex());
  }
  if (auto* slider = qobject_cast<QSlider*>(control)) {
    slider->setValue(slider->value() + 7);
    return ToText(slider->value());
  }
  if (auto* box = qobject_cast<QSpinBox*>(control)) {
    box->stepUp();
    return ToText(box->value());
  }
  if (auto* box = qobject_cast<QLineEdit*>(control)) {
    box->setText(u"  C:\\圖 a=b;#.png "_qs);
    return u"C:\\圖 a=b;#.png";
  }
  const QList<QRadioButton*> buttons = control->findChildren<QRadioButton*>();
  for (qsizetype value = 0; value < buttons.size(); ++value) {
    if (buttons[value]->isChecked()) continue;
    buttons[value]->click();
    return ToText(static_cast<int>(value));
  }
  ADD_FAILURE() << "not a control: " << control->objectName().toStdString();
  return {};
}

class OptionsDlgTest : public testing::Test, public LoadedStore {
 protected:
  CQuillOptionDlg& Open(OptionActions actions = {}) {
    dialog_ = std::make_unique<CQuillOptionDlg>(store, std::move(actions));
    dialog_->show();
    QApplication::processEvents();
    return *dialog_;
  }
  void ShowTab(int tab) {
    dialog_->Tabs().setCurrentIndex(tab);
    QApplication::processEvents();
  }
  QWidget& Page() { return *dialog_->Tabs().currentWidget(); }
  QWidget* Control(std::u16string_view key) { return dialog_->findChild<QWidget*>(Text(key)); }
  template <typename Widget>
  Widget& Named(const char* name) {
    return *dialog_->findChild<Widget*>(QString::fromLatin1(name));
  }
  std::map<const SettingRow*, std::u16string> ChangeAll() {
    std::map<const SettingRow*, std::u16string> expected;
    for (const SettingRow* row : ShownRows())
      if (row->Acts()) expected[row] = ChangeControl(Control(row->key));
    return expected;
  }
  std::string SettingsFile() { return FileAt(files.Locate(kSettingsFile)); }
  void PressFocused(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QString text = key == Qt::Key_Tab ? u"\t"_qs : QString();
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(dialog_->focusWidget(), &press);
  }

  std::unique_ptr<CQuillOptionDlg> dialog_;
};

TEST_F(OptionsDlgTest, ShowsEveryRowOnceOnItsTab) {
  Open();
  for (const SettingRow* row : ShownRows()) {
    SCOPED_TRACE(Text(row->key).toStdString());
    ASSERT_EQ(dialog_->findChildren<QWidget*>(Text(row->key)).size(), 1);
    ShowTab(static_cast<int>(row->panel) - static_cast<int>(OptionPanel::kDisplay));
    const QWidget* control = Control(row->key);
    EXPECT_TRUE(Page().isAncestorOf(control));
    EXPECT_TRUE(control->isVisible());
    EXPECT_EQ(control->isEnabled(), row->Acts());
    EXPECT_EQ(control->toolTip(), row->Acts() ? QString() : Text(kActsNotYet));
  }
}

TEST_F(OptionsDlgTest, OkWritesEveryChangedControl) {
  const Settings before = store.Fields();
  Open();
  const auto expected = ChangeAll();
  ButtonOf(*dialog_, u"確定"_qs)->click();
  EXPECT_FALSE(dialog_->isVisible());

  SettingsStore reloaded(files, "bbs.example.org");
  reloaded.Load();
  for (const auto& [row, value] : expected) {
    SCOPED_TRACE(Text(row->key).toStdString());
    EXPECT_EQ(Text(reloaded.Map().Text(row->section, row->key)), Text(value));
    EXPECT_NE(TextOf(*row, store.Fields()), TextOf(*row, before));
  }
  EXPECT_EQ(reloaded.Fields(), store.Fields());

  // What is shown the next time is what was stored.
  dialog_ = nullptr;
  const SettingsMap stored = store.Map();
  Open().accept();
  EXPECT_EQ(store.Map(), stored);
}

TEST_F(OptionsDlgTest, LeavingInAnyOtherWayChangesNothing) {
  const std::string file = SettingsFile();
  ASSERT_FALSE(file.empty());
  const SettingsMap map = store.Map();
  const std::function<void()> leave[] = {
      [&] { ButtonOf(*dialog_, u"取消"_qs)->click(); },
      [&] { PressFocused(Qt::Key_Escape); },
      [&] { dialog_->close(); },
  };
  for (const auto& way : leave) {
    Open();
    ChangeAll();
    Named<QCheckBox>("UseAppDataLocalPath").click();
    way();
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(dialog_->result(), QDialog::Rejected);
    dialog_ = nullptr;
    EXPECT_EQ(store.Map(), map);
    EXPECT_EQ(SettingsFile(), file);
    EXPECT_FALSE(files.UsesDataFolder());
  }
}

TEST_F(OptionsDlgTest, ShowsTheValueInUseWhereTheFileHasAnImpossibleOne) {
  store.Map().Set(u"Basic", u"PushPic", u"9");
  store.Map().Set(u"Basic", u"BackPicOpacity", u"300");
  store.Map().Set(u"Basic", u"DownloadEngine", u"-1");
  store.Map().Set(u"Basic", u"Flash", u"5");
  store.Apply();
  Open();
  EXPECT_EQ(Named<QComboBox>("PushPic").currentText(), u"一般開圖");
  EXPECT_EQ(Named<QSlider>("BackPicOpacity").value(), 100);
  EXPECT_TRUE(ButtonOf(*dialog_, u"WinHttp"_qs)->isChecked());
  dialog_->accept();
  EXPECT_EQ(store.Map().Text(u"Basic", u"PushPic"), u"2");
  EXPECT_EQ(store.Map().Text(u"Basic", u"BackPicOpacity"), u"100");
  EXPECT_EQ(store.Map().Text(u"Basic", u"DownloadEngine"), u"1");
  EXPECT_EQ(store.Map().Text(u"Basic", u"Flash"), u"1");
}

TEST_F(OptionsDlgTest, FolderChoiceMovesTheFilesAndAnOlderListThereDoesNotComeBack) {
  store.Names().Set(u"newer", ListEntry{});
  store.SaveNames();
  PutFile(data / kNamesFile, "older\n");
  Open();
  auto& choice = Named<QCheckBox>("UseAppDataLocalPath");
  EXPECT_TRUE(choice.isEnabled());
  EXPECT_FALSE(choice.isChecked());
  choice.click();
  dialog_->accept();
  EXPECT_EQ(registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"1");
  EXPECT_FALSE(std::filesystem::exists(working / kSettingsFile));
  EXPECT_TRUE(std::filesystem::exists(data / kSettingsFile));
  SettingsStore next(files, "bbs.example.org");
  next.Load();
  EXPECT_EQ(next.Names().AsText(), u"newer\n");
}

TEST_F(OptionsDlgTest, FolderCannotBeChosenWhereTheProgramsIsClosed) {
  // A file in the place of the folder refuses even a privileged user.
  const auto closed = working / "no folder";
  PutFile(closed, "");
  StartedFiles onlyData(registry, {closed, data});
  SettingsStore there(onlyData, "bbs.example.org");
  there.Load();
  CQuillOptionDlg dialog(there, {});
  auto* choice = dialog.findChild<QCheckBox*>(u"UseAppDataLocalPath"_qs);
  EXPECT_FALSE(choice->isEnabled());
  EXPECT_TRUE(choice->isChecked());
  EXPECT_TRUE(choice->toolTip().contains(u"不能放設定檔"));
  dialog.accept();
  EXPECT_EQ(registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"1");
}

TEST_F(OptionsDlgTest, WorksByKeyboardAlone) {
  Open({[] {}});
  EXPECT_EQ(dialog_->focusWidget(), Control(u"DarkerReadArticle"));
  for (int tab = 0; tab < dialog_->Tabs().count(); ++tab) {
    SCOPED_TRACE(dialog_->Tabs().tabText(tab).toStdString());
    EXPECT_EQ(dialog_->Tabs().currentIndex(), tab);
    std::set<const QWidget*> reached;
    while (reached.insert(dialog_->focusWidget()).second)
      PressFocused(Qt::Key_Tab);
    // Of radio buttons Tab stops at the chosen one, and the arrows go on.
    for (const QWidget* control : Page().findChildren<QWidget*>()) {
      const auto* radio = qobject_cast<const QRadioButton*>(control);
      if (radio != nullptr && !radio->isChecked()) continue;
      if (!control->isVisibleTo(&Page()) || !control->isEnabled() ||
          (control->focusPolicy() & Qt::TabFocus) == 0)
        continue;
      const QWidget* holder = control->focusProxy() == nullptr ? control : control->focusProxy();
      EXPECT_TRUE(reached.contains(holder)) << control->objectName().toStdString();
    }
    EXPECT_TRUE(reached.contains(ButtonOf(*dialog_, u"確定"_qs)));
    PressFocused(Qt::Key_Tab, Qt::ControlModifier);
    QApplication::processEvents();
  }
}

TEST_F(OptionsDlgTest, AltWithALetterOfItsOwnReachesEveryControlOfATab) {
  Open();
  for (int tab = 0; tab < dialog_->Tabs().count(); ++tab) {
    ShowTab(tab);
    SCOPED_TRACE(dialog_->Tabs().tabText(tab).toStdString());
    QStringList words;
    for (const auto* button : dialog_->findChildren<QAbstractButton*>())
      if (button->isVisible()) words << button->text();
    for (const auto* label : Page().findChildren<QLabel*>())
      if (label->buddy() != nullptr) words << label->text();
    for (const auto* group : Page().findChildren<QGroupBox*>())
      words << group->title();
    std::set<QString> keys;
    for (const QString& text : words) {
      const QString key = QKeySequence::mnemonic(text).toString();
      EXPECT_TRUE(key.isEmpty() || keys.insert(key).second) << text.toStdString();
    }
    std::size_t controls = 1;  // the choice of the folder
    for (const QWidget* control : Page().findChildren<QWidget*>())
      if (control->isVisible() && (control->focusPolicy() & Qt::TabFocus) != 0 &&
          control->focusProxy() == nullptr)
        ++controls;
    EXPECT_EQ(keys.size(), controls);
  }
  EXPECT_TRUE(Named<QCheckBox>("Work").text().endsWith(u"(Alt+W)(&W)"));
}

TEST_F(OptionsDlgTest, TabFollowsTheEyeInEachGroup) {
  Open();
  for (int tab = 0; tab < dialog_->Tabs().count(); ++tab) {
    ShowTab(tab);
    for (const QWidget* group : Page().findChildren<QGroupBox*>())
      ExpectTabOrderByEye(*dialog_, *group);
  }
}

TEST_F(OptionsDlgTest, EnterStoresFromFieldsThatTakeText) {
  for (const char16_t* key : {u"Font", u"LineSpacing", u"BackgroundPicture", u"Topmost"}) {
    SCOPED_TRACE(Text(key).toStdString());
    Open();
    Control(key)->setFocus();
    PressFocused(Qt::Key_Return);
    EXPECT_EQ(dialog_->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog_->isVisible());
  }
}

TEST_F(OptionsDlgTest, AnyFaceCanBeNamed) {
  Open();
  auto& edit = Named<QLineEdit>("Font");
  auto* box = qobject_cast<QComboBox*>(edit.parentWidget());
  ASSERT_NE(box, nullptr);
  ASSERT_GT(box->count(), 0);
  const QString other = box->itemText(0).left(4).toUpper();
  dialog_->activateWindow();
  box->setFocus();
  edit.selectAll();
  for (const QChar letter : other)
    Press(*box, 0, letter);
  dialog_->accept();
  EXPECT_EQ(store.Fields().font, other.toStdU16String());

  Open();
  box = qobject_cast<QComboBox*>(Named<QLineEdit>("Font").parentWidget());
  box->setCurrentIndex(0);
  const std::u16string chosen = box->itemText(0).toStdU16String();
  dialog_->accept();
  EXPECT_EQ(store.Fields().font, chosen);
}

TEST_F(OptionsDlgTest, WheelOverAnUnfocusedControlLeavesItAlone) {
  Open();
  const auto turn = [](QWidget& control) {
    QWheelEvent wheel(control.rect().center(), control.mapToGlobal(control.rect().center()), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&control, &wheel);
  };
  Control(u"Topmost")->setFocus();
  auto& spacing = Named<QSpinBox>("LineSpacing");
  auto& opacity = Named<QSlider>("BackPicOpacity");
  auto& style = Named<QComboBox>("BackgroundPictureStyle");
  spacing.setValue(5);
  style.setCurrentIndex(0);
  turn(spacing);
  turn(opacity);
  turn(style);
  EXPECT_EQ(spacing.value(), 5);
  EXPECT_EQ(opacity.value(), 40);
  EXPECT_EQ(style.currentIndex(), 0);
}

TEST_F(OptionsDlgTest, ScrollsToTheControlWithTheKeyboardWhenTheScreenIsSmall) {
  Open();
  dialog_->resize(dialog_->width(), 300);
  QApplication::processEvents();
  const auto& area = static_cast<QScrollArea&>(Page());
  ASSERT_GT(area.verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0);
  while (dialog_->focusWidget() != Control(u"BackPicOpacity"))
    PressFocused(Qt::Key_Tab);
  const QWidget* slider = Control(u"BackPicOpacity");
  const QRect seen(slider->mapTo(area.viewport(), QPoint()), slider->size());
  EXPECT_TRUE(area.viewport()->rect().contains(seen));
}

double ContrastOf(const QColor& one, const QColor& other) {
  return Contrast(one.rgb() & 0xFFFFFF, other.rgb() & 0xFFFFFF);
}

TEST_F(OptionsDlgTest, NotesAreQuieterAndReadableAsTheLookChanges) {
  const QPalette before = QApplication::palette();
  Open();
  ShowTab(kTabOfDisplay);
  const auto* note = dialog_->findChild<NoteLabel*>();
  ASSERT_NE(note, nullptr);
  for (const QColor back : {QColor(0xef, 0xef, 0xef), QColor(0x35, 0x35, 0x35)}) {
    const QPalette look{back, back};
    QApplication::setPalette(look);
    QApplication::processEvents();
    const QColor colour = note->palette().color(QPalette::WindowText);
    EXPECT_GE(ContrastOf(colour, back), kReadableContrast);
    EXPECT_LT(ContrastOf(colour, back), ContrastOf(look.color(QPalette::WindowText), back));
  }
  QApplication::setPalette(before);
}

TEST_F(OptionsDlgTest, ComplaintStopsOkAndShowsTheFault) {
  const std::string file = SettingsFile();
  const SettingsMap map = store.Map();
  Open();
  ChangeAll();
  auto& rules = Named<QPlainTextEdit>("rules");
  rules.insertPlainText(u"no rule"_qs);
  QString words;
  QTimer::singleShot(0, dialog_.get(), [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    words = box->text();
    box->accept();
  });
  dialog_->accept();
  EXPECT_TRUE(words.contains(u"第 1 行"));
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(dialog_->Tabs().currentIndex(), kTabOfHotTrack);
  EXPECT_EQ(dialog_->focusWidget(), &rules);
  EXPECT_EQ(store.Map(), map);
  EXPECT_EQ(SettingsFile(), file);
}

TEST_F(OptionsDlgTest, EditedNamesReachTheirFile) {
  Open();
  Named<QPlainTextEdit>("names").insertPlainText(u"troll=C1:吵\n"_qs);
  dialog_->accept();
  SettingsStore reloaded(files, "bbs.example.org");
  reloaded.Load();
  ASSERT_NE(reloaded.Names().Find(u"troll"), nullptr);
  EXPECT_EQ(reloaded.Names().Find(u"troll")->kind, ListKind::kSuperBlack);
}

TEST_F(OptionsDlgTest, ButtonsDoWhatTheySay) {
  Open();
  EXPECT_FALSE(Named<QPushButton>("becomeDefaultBrowser").isEnabled());

  int asked = 0;
  Open({[&] { ++asked; }});
  ShowTab(kTabOfBehavior);
  Named<QPushButton>("becomeDefaultBrowser").click();
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_FALSE(Named<QPushButton>("emptyPictureCache").isEnabled());
  Open({.emptyPictureCache = [&] { dialog_->ShowPictureCache("0 KB"); }});
  dialog_->ShowPictureCache("12.3 MB");
  EXPECT_EQ(Named<QLabel>("pictureCacheSize").text(), Text(u"已用 12.3 MB"));
  Named<QPushButton>("emptyPictureCache").click();
  EXPECT_EQ(Named<QLabel>("pictureCacheSize").text(), Text(u"已用 0 KB"));
  Open({[&] { ++asked; }});

  const auto picture = working / "圖 1.png";
  PutFile(picture, "x");
  const QString path = QString::fromStdString(picture.string());
  QTimer::singleShot(0, dialog_.get(), [&] {
    auto* browser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(browser, nullptr);
    const QString pictures = browser->nameFilters().value(0);
    for (const char* taken : {"*.png", "*.jpg", "*.gif", "*.bmp"})
      EXPECT_TRUE(pictures.contains(QString::fromLatin1(taken))) << taken;
    for (const char* refused : {"*.svg", "*.xpm", "*.xbm"})
      EXPECT_FALSE(pictures.contains(QString::fromLatin1(refused))) << refused;
    browser->findChild<QLineEdit*>()->setText(path);
    static_cast<QDialog*>(browser)->accept();
  });
  Named<QToolButton>("browse").click();
  EXPECT_EQ(QDir::fromNativeSeparators(Named<QLineEdit>("BackgroundPicture").text()),
            QDir::fromNativeSeparators(path));
}

}  // namespace
}  // namespace quillet
