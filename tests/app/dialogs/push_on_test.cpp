// Continuous pushing from the window: the dialog, its drafts, the run at the demo BBS, and what is said of
// it.
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTreeWidget>

#include "app/dialogs/push_controller.h"
#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {
namespace {

void PressIn(QWidget& widget, int key, const QString& text = {},
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  // What a shortcut takes never comes to the widget; the toolkit asks for it before.
  QKeyEvent shortcut(QEvent::ShortcutOverride, key, modifiers, text);
  QCoreApplication::sendEvent(&widget, &shortcut);
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QCoreApplication::sendEvent(widget.window()->windowHandle(), &press);
}

class PushOnTest : public DemoArticleTest {
 protected:
  void LogInAs(const std::u16string& id) {
    doc->GetConnection().Open({.address = QString::fromStdString(demo->Address()), .name = {}, .isBbs = true},
                              MakeLoginOrder({.account = id, .password = id}));
    ASSERT_TRUE(Until([&] { return Seen().loginId == id && IsIdle(); }));
  }

  PushOnDlg* Dialog() { return View().Push().Dialog(); }
  QString Said() { return View().LastToast().Text(); }
  PushOnDlg& OpenDialog() {
    View().Commands().Run(Command::kPushOn);
    if (Dialog() == nullptr) throw std::runtime_error("no dialog: " + Said().toStdString());
    Until([this] { return Dialog()->isVisible(); });
    return *Dialog();
  }
  QPlainTextEdit& Field() { return Find<QPlainTextEdit>(*Dialog(), "text"); }
  QPushButton& StartButton() {
    for (QPushButton* button : Dialog()->findChildren<QPushButton*>())
      if (button->text() == u"開始推文"_qs) return *button;
    throw std::runtime_error("no button");
  }
  void Push(const QString& text) {
    OpenDialog();
    Field().setPlainText(text);
    StartButton().click();
    ASSERT_EQ(Dialog(), nullptr);
    ASSERT_EQ(doc->GetAutomations().Current(), Activity::kPush);
  }
  int PushesBy(std::u16string_view id) {
    int count = 0;
    for (int line = 0; line < Lines().Count(); ++line)
      count += PushWriter(TextOf(Lines().At(line))) == id ? 1 : 0;
    return count;
  }
};

TEST_F(PushOnTest, ATextIsCutAsItIsTypedPushedAndShownInTheArticle) {
  OpenWhole(talkative);
  doc->GetSettings().Set(&Settings::markAfterPush, true);
  const int before = PushesBy(u"reader");
  PushOnDlg& dialog = OpenDialog();
  auto& pieces = Find<QTreeWidget>(dialog, "pieces");
  EXPECT_FALSE(StartButton().isEnabled());
  EXPECT_EQ(QApplication::focusWidget(), &Field());
  QInputMethodEvent composed(QString(), {});
  composed.setCommitString(u"這是要分成兩則的一段話，因為它比推文的一行還要長一些些"_qs);
  QCoreApplication::sendEvent(&Field(), &composed);
  ASSERT_EQ(pieces.topLevelItemCount(), 2);
  EXPECT_EQ(pieces.topLevelItem(1)->text(1), u"一行還要長一些些"_qs)
      << pieces.topLevelItem(0)->text(2).toStdString();
  PressIn(Field(), Qt::Key_Return, "\r");
  PressIn(Field(), Qt::Key_X, "x");
  EXPECT_EQ(pieces.topLevelItemCount(), 3);
  EXPECT_TRUE(StartButton().isEnabled());
  PressIn(Field(), Qt::Key_Return, "\r", Qt::ControlModifier);
  ASSERT_EQ(doc->GetAutomations().Current(), Activity::kPush);
  ASSERT_TRUE(Until([&] { return Said() == u"已推出 3 則推文"_qs; })) << PanelLines().toStdString();
  EXPECT_TRUE(Until([&] { return Lines().IsComplete() && PushesBy(u"reader") == before + 3; }));
  EXPECT_TRUE(AtRest(Last())) << "the new lines come into sight";
  EXPECT_NE(Row(22).find(": x "), std::string::npos) << Row(22);
  EXPECT_TRUE(doc->GetBookmarks().HasOpenArticle()) << "as the user wants it";
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), "") << "nothing is left of it";
  Dialog()->reject();
  OpenWhole(longest);
  EXPECT_EQ(Article().TopLine(), 0) << "another article begins at its top";
}

TEST_F(PushOnTest, WhatIsTypedIsKeptForItsArticleUntilItIsPushed) {
  OpenWhole(talkative);
  OpenDialog();
  Field().setPlainText(u"想到一半\n"_qs);
  Dialog()->findChildren<QRadioButton*>()[1]->click();
  PressIn(Field(), Qt::Key_Escape, "\x1B");
  ASSERT_EQ(Dialog(), nullptr);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), u"想到一半\n"_qs);
  EXPECT_EQ(Dialog()->Kind(), PushKind::kBad);
  Dialog()->reject();
  Open(longest);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), "");
  Dialog()->reject();
  Open(talkative);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), u"想到一半\n"_qs);
  // The connection is gone: the dialog says so, and stays.
  doc->GetConnection().Disconnect();
  StartButton().click();
  ASSERT_NE(Dialog(), nullptr);
  EXPECT_EQ(Find<QLabel>(*Dialog(), "complaint").text(), DescribeNoPush(NoPushReason::kNotConnected));
}

TEST_F(PushOnTest, AKeyThatStopsItIsTypedNowhereAndTheRestIsInTheDialog) {
  LogInAs(u"hasty");
  OpenWhole(talkative);
  Push(u"一\n二\n三"_qs);
  ASSERT_TRUE(Until([&] { return doc->GetAutomations().Progress().waitSeconds > 0; }));
  EXPECT_EQ(doc->GetAutomations().Progress().done, 1);
  const QString told = DescribeActivity(doc->GetAutomations().Current(), doc->GetAutomations().Progress());
  EXPECT_TRUE(told.contains(u" 2/3"_qs) && told.contains(u"站台要求等"_qs)) << told.toStdString();
  TypeText("q");
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kNone);
  EXPECT_TRUE(PanelSays(u"推文沒有全部推出"_qs));
  EXPECT_TRUE(PanelLines().startsWith(u"共 3 則，已推出 1 則。"_qs)) << PanelLines().toStdString();
  ASSERT_TRUE(Until([&] { return !doc->GetAutomations().IsBusy(); }));
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), u"二\n三"_qs);
  EXPECT_FALSE(RowStartsWith(View().Screen(), 0, 0, u"【板主:")) << "the article has not been left";
}

TEST_F(PushOnTest, ARefusalIsToldInTheBbssWords) {
  LogInAs(u"hush");
  OpenWhole(talkative);
  Push(u"一"_qs);
  ASSERT_TRUE(Until([&] { return View().Panel().HasNotice(); }));
  EXPECT_TRUE(PanelLines().contains(u"站台說：無法推文: 使用者不可發言"_qs)) << PanelLines().toStdString();
}

TEST_F(PushOnTest, TheDialogNamesWhatWillBeLeftOutAndStopsAtTooMuch) {
  PushOnDlg dialog({.title = {}, .text = u"哈😀ก"_qs, .kinds = PushOnDlg::Kinds::kNoteOnly});
  EXPECT_TRUE(Find<QLabel>(dialog, "unpushable").text().endsWith(u"😀 ก"_qs));
  EXPECT_EQ(dialog.Kind(), PushKind::kNote);
  int starts = 0;
  QObject::connect(&dialog, &PushOnDlg::StartRequested, [&] { ++starts; });
  auto& text = Find<QPlainTextEdit>(dialog, "text");
  auto& complaint = Find<QLabel>(dialog, "complaint");
  QPushButton& start = *dialog.findChildren<QPushButton*>()[0];
  start.click();
  EXPECT_EQ(starts, 1);
  text.setPlainText(u"😀"_qs);
  start.click();
  text.setPlainText(QString(u"哈\n"_qs).repeated(PushOnDlg::kMostPieces + 1));
  EXPECT_FALSE(complaint.text().isEmpty());
  start.click();
  EXPECT_EQ(starts, 1);
  text.setPlainText(QString(u"哈\n"_qs).repeated(PushOnDlg::kMostPieces));
  EXPECT_TRUE(complaint.text().isEmpty());
  start.click();
  EXPECT_EQ(starts, 2);
}

TEST(PushMessagesTest, ThePushThatMayHaveBeenMadeIsNamed) {
  PushRunResult result;
  result.outcome = PushOutcome::kNoAnswer;
  result.total = 3;
  result.pushed = 1;
  result.unsure = true;
  EXPECT_TRUE(DescribePushEnd(result).lines.value(2).startsWith(u"第 2 則可能已經推出"_qs));
}

}  // namespace
}  // namespace quillet
