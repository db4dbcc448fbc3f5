// What the user keeps, seen through the window: set in the dialogs, at work at once, there after a restart,
// and told when it cannot be read or written.
#include <fstream>

#include <QCheckBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QWindow>

#include "tests/app/dialogs/dialog_answers.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class SettingsWindowTest : public WindowTest {
 protected:
  void TearDown() override {
    frame.reset();
    doc.reset();
  }
  void Choose(const QString& item, const std::vector<std::function<void(QDialog&)>>& answers) {
    for (QAction* action : frame->findChildren<QAction*>())
      if (action->text().contains(item)) return AnswerDialogs([action] { action->trigger(); }, answers);
    FAIL() << "no menu item " << item.toStdString();
  }
  void SetInOptions(const std::function<void(QDialog&)>& set) {
    Choose(u"選項"_qs, {[&](QDialog& dialog) {
             set(dialog);
             dialog.accept();
           }});
  }
  void WriteFile(const std::string& name, const std::string& bytes) {
    std::ofstream(ProgramHome() / name, std::ios::binary) << bytes;
  }
  std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
};

TEST_F(SettingsWindowTest, StayingOnTopComesAndGoesWithoutTheWindowVanishing) {
  const QRect place = frame->geometry();
  const QWindow* const window = frame->windowHandle();
  int hidden = 0;
  QObject::connect(window, &QWindow::visibleChanged, [&](bool visible) { hidden += visible ? 0 : 1; });
  for (const bool on : {true, false}) {
    SetInOptions([on](QDialog& dialog) { Find<QCheckBox>(dialog, "Topmost").setChecked(on); });
    EXPECT_EQ(frame->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint), on);
    EXPECT_EQ(frame->windowHandle(), window);
    EXPECT_EQ(frame->geometry(), place);
    EXPECT_EQ(frame->focusWidget(), &View());
  }
  EXPECT_EQ(hidden, 0);
  SetInOptions([](QDialog& dialog) { Find<QCheckBox>(dialog, "Topmost").setChecked(true); });
  Start();
  EXPECT_TRUE(frame->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint))
      << "from the first moment on";
}

TEST_F(SettingsWindowTest, ADamagedFileIsToldOnceAndKeptAside) {
  const std::string damaged = "[Basic]\nDarkColor=1\n\xFF\xFE\x01\n";
  WriteFile("Quill.ini", damaged);
  Start();
  EXPECT_TRUE(Fields().darkColor) << "what could be read is used";
  const QString told = PanelLines();
  EXPECT_TRUE(told.contains("Quill.ini") && told.contains(u"第 3 行"_qs)) << told.toStdString();
  EXPECT_TRUE(told.contains(QString::fromStdU16String(ProgramHome().u16string())));
  EXPECT_TRUE(told.contains("Quill.ini.unreadable")) << "where it is kept";

  Enter();
  EXPECT_TRUE(PanelSays(u"尚未連線"_qs));
  doc->GetSettings().Set(&Settings::darkColor, false);
  EXPECT_TRUE(PanelSays(u"尚未連線"_qs)) << "told once";
  Start();
  EXPECT_TRUE(PanelSays(u"尚未連線"_qs)) << "the file is whole again";
}

TEST_F(SettingsWindowTest, WhatCannotBeSavedIsToldAndHoldsUntilTheEnd) {
  std::filesystem::create_directory(ProgramHome() / "black.txt");
  Choose(u"加入名單"_qs, {[](QDialog& dialog) {
                            dialog.findChild<QLineEdit*>()->setText("reader");
                            dialog.accept();
                          },
                          Accept});
  EXPECT_TRUE(PanelLines().contains("black.txt")) << PanelLines().toStdString();
  EXPECT_NE(doc->GetSettings().Store().Names().Find(u"reader"), nullptr);
}

TEST_F(SettingsWindowTest, AFullDiskOrAFileThatMayNotBeWrittenIsTold) {
  std::filesystem::permissions(ProgramHome() / "Quill.ini", std::filesystem::perms::owner_read);
  doc->GetSettings().Set(&Settings::darkColor, true);
  EXPECT_TRUE(PanelSays(u"設定無法存檔"_qs));
  EXPECT_TRUE(Fields().darkColor);
}

TEST_F(SettingsWindowTest, ListsThatHoldSomethingAreNewsUntilTheUserTypes) {
  WriteFile("track.txt", "header\n1700000000 5 0 Cats 1XYZabcd x title\n");
  Start();
  OpenScript();
  EXPECT_EQ(doc->Driver().Status(), ConnectionStatus::kSomethingNew);
  EXPECT_TRUE(frame->windowTitle().startsWith(u"●"));
  TypeText("a");
  EXPECT_EQ(doc->Driver().Status(), ConnectionStatus::kQuiet);
  EXPECT_EQ(frame->windowTitle(), "script - Quillet");
  Start();
  OpenScript();
  EXPECT_EQ(doc->Driver().Status(), ConnectionStatus::kSomethingNew);
  doc->GetSettings().Set(&Settings::trackArticle, false);
  EXPECT_EQ(doc->Driver().Status(), ConnectionStatus::kQuiet) << "the user does not follow them";
}

TEST_F(SettingsWindowTest, WhatEndsWhileTheUserIsElsewhereCallsHimUntilHeIsBack) {
  OpenScript();
  ASSERT_TRUE(Until([&] { return frame->isActiveWindow(); }));
  emit doc->GetAutomations().MoneyEnded({});
  EXPECT_EQ(signaller.flashes, 0) << "he sees it";
  QWidget elsewhere;
  elsewhere.show();
  elsewhere.activateWindow();
  ASSERT_TRUE(Until([&] { return !frame->isActiveWindow(); }));
  emit doc->GetAutomations().PushesEnded({});
  emit doc->GetAutomations().MoneyEnded({});
  EXPECT_EQ(signaller.flashes, 2);
  EXPECT_TRUE(frame->windowTitle().startsWith(u"●"));
  frame->activateWindow();
  EXPECT_TRUE(Until([&] { return !frame->windowTitle().startsWith(u"●"); }));
}

TEST_F(SettingsWindowTest, WhatAnotherWindowSavedIsTakenInWithTheKeyboard) {
  ASSERT_TRUE(Until([&] { return frame->isActiveWindow(); }));
  const std::string file = ReadFile(ProgramHome() / kSettingsFile);
  WriteFile(std::string(kSettingsFile), file + "[Basic]\nDarkColor=1\n");
  QEvent activated(QEvent::ActivationChange);
  QCoreApplication::sendEvent(frame.get(), &activated);
  EXPECT_TRUE(Fields().darkColor);
  EXPECT_TRUE(doc->GetSettings().Display().darkColor);
}

TEST_F(SettingsWindowTest, TheEmbeddedBrowserIsSetUpAndTheVersionNoted) {
  EXPECT_TRUE(doc->EmulatesBrowser());
  EXPECT_EQ(registry.Number(u"SOFTWARE\\Microsoft\\Internet Explorer\\Main\\FeatureControl\\"
                            u"FEATURE_BROWSER_EMULATION",
                            u"Quillet.exe"),
            11000U);
  EXPECT_EQ(Fields().version, u"1.0");
}

}  // namespace
}  // namespace quillet
