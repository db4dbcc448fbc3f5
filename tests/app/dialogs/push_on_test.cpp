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
  void SetUp() override {
    DemoArticleTest::SetUp();
    article = std::make_unique<ArticleView>(ArticleParts(), View());
    desk = std::make_unique<PushController>(PushController::Parts{doc->GetConnection(), doc->GetAutomations(),
                                                                  doc->GetBookmarks(), *article, View()});
    QObject::connect(desk.get(), &PushController::Said, [this](const QString& words) { said = words; });
    QObject::connect(desk.get(), &PushController::Notice,
                     [this](const PanelText& notice) { noticed = notice; });
  }
  void TearDown() override {
    desk.reset();
    article.reset();
    DemoArticleTest::TearDown();
  }
  void LogInAs(const std::u16string& id) {
    doc->GetConnection().Open({.address = QString::fromStdString(demo->Address()), .name = {}, .isBbs = true},
                              MakeLoginOrder({.account = id, .password = id}));
    ASSERT_TRUE(Until([&] { return Seen().loginId == id && IsIdle(); }));
  }

  PushOnDlg& OpenDialog() {
    desk->Open();
    if (desk->Dialog() == nullptr) throw std::runtime_error("no dialog: " + said.toStdString());
    Until([this] { return desk->Dialog()->isVisible(); });
    return *desk->Dialog();
  }
  QPlainTextEdit& Field() { return Find<QPlainTextEdit>(*desk->Dialog(), "text"); }
  QPushButton& StartButton() {
    for (QPushButton* button : desk->Dialog()->findChildren<QPushButton*>())
      if (button->text() == u"開始推文"_qs) return *button;
    throw std::runtime_error("no button");
  }
  void Push(const QString& text) {
    OpenDialog();
    Field().setPlainText(text);
    StartButton().click();
    ASSERT_EQ(desk->Dialog(), nullptr);
    ASSERT_EQ(doc->GetAutomations().Current(), Activity::kPush);
  }
  // The words of the last lines by this writer, as the open article shows them.
  QStringList PushesBy(std::u16string_view id) {
    QStringList words;
    for (int line = 0; line < Lines().Count(); ++line) {
      const std::string row = TextOf(Lines().At(line));
      if (PushWriter(row) != id) continue;
      const std::u16string text = FromBig5(row);
      const std::u16string rest = text.substr(text.find(u':') + 1);
      words << QString::fromStdU16String(rest.substr(0, rest.find(u"127.0.0.1"))).trimmed();
    }
    return words;
  }

  std::unique_ptr<ArticleView> article;  // for the desk alone; the window's own is not to be touched
  std::unique_ptr<PushController> desk;
  QString said;
  PanelText noticed;
};

TEST_F(PushOnTest, ATextIsCutAsItIsTypedPushedAndShownInTheArticle) {
  OpenWhole(talkative);
  const qsizetype before = PushesBy(u"reader").size();
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
  bool tellsProgress = false;
  ASSERT_TRUE(Until([&] {
    tellsProgress |= DescribeActivity(doc->GetAutomations().Current(), doc->GetAutomations().Progress())
                         .contains(u"/3"_qs);
    return !said.isEmpty();
  })) << noticed.lines.join('\n').toStdString();
  EXPECT_TRUE(tellsProgress);
  EXPECT_EQ(said, u"已推出 3 則推文"_qs);
  EXPECT_TRUE(Until([&] { return Lines().IsComplete() && PushesBy(u"reader").size() == before + 3; }));
  EXPECT_EQ(PushesBy(u"reader").back(), u"x"_qs);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), "") << "nothing is left of it";
}

TEST_F(PushOnTest, TheNewLinesComeIntoSight) {
  OpenWhole(talkative);
  const int before = Last();
  View().PerformArticleCommand(ArticleCommand::kPushOn);
  PushOnDlg* const dialog = View().Push().Dialog();
  ASSERT_NE(dialog, nullptr);
  Find<QPlainTextEdit>(*dialog, "text").setPlainText(u"一\n二"_qs);
  emit dialog->StartRequested();
  ASSERT_TRUE(Until([&] { return Lines().IsComplete() && Last() >= before + 2 && AtRest(Last()); }));
  Open(longest);
  EXPECT_EQ(Article().TopLine(), 0) << "another article begins at its top";
}

TEST_F(PushOnTest, WhatIsTypedIsKeptForItsArticleUntilItIsPushed) {
  OpenWhole(talkative);
  OpenDialog();
  Field().setPlainText(u"想到一半\n"_qs);
  desk->Dialog()->findChildren<QRadioButton*>()[1]->click();
  PressIn(Field(), Qt::Key_Escape, "\x1B");
  ASSERT_EQ(desk->Dialog(), nullptr);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), u"想到一半\n"_qs);
  EXPECT_EQ(desk->Dialog()->Kind(), PushKind::kBad);
  desk->Dialog()->reject();
  Open(longest);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), "");
  desk->Dialog()->reject();
  Open(talkative);
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), u"想到一半\n"_qs);
  // The connection is gone: the dialog says so, and stays.
  doc->GetConnection().Disconnect();
  StartButton().click();
  ASSERT_NE(desk->Dialog(), nullptr);
  EXPECT_EQ(Find<QLabel>(*desk->Dialog(), "complaint").text(), DescribeNoPush(NoPushReason::kNotConnected));
}

TEST_F(PushOnTest, AKeyThatStopsItIsTypedNowhereAndTheRestIsInTheDialog) {
  LogInAs(u"hasty");
  OpenWhole(talkative);
  Push(u"一\n二\n三"_qs);
  ASSERT_TRUE(Until([&] { return doc->GetAutomations().Progress().waitSeconds > 0; }));
  EXPECT_EQ(doc->GetAutomations().Progress().done, 1);
  EXPECT_TRUE(DescribeActivity(Activity::kPush, doc->GetAutomations().Progress()).contains(u"站台要求等"_qs));
  TypeText("q");
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kNone);
  EXPECT_EQ(noticed.title, u"推文沒有全部推出"_qs);
  EXPECT_EQ(noticed.lines.value(0), u"共 3 則，已推出 1 則。"_qs);
  ASSERT_TRUE(Until([&] { return !doc->GetAutomations().IsBusy(); }));
  OpenDialog();
  EXPECT_EQ(Field().toPlainText(), u"二\n三"_qs);
  desk->Dialog()->reject();
  TypeText("X");
  const auto answers = [&](std::u16string_view words) {
    return View().Screen().RowText(kBottomRow).find(ToBig5(words)) != std::string_view::npos;
  };
  ASSERT_TRUE(Until([&] { return answers(u"請再等") || answers(u"您覺得這篇文章"); })) << ScreenAsUtf8();
  EXPECT_FALSE(RowStartsWith(View().Screen(), 0, 0, u"【板主:")) << "the article has not been left";
}

TEST_F(PushOnTest, ARefusalIsToldInTheBbssWords) {
  LogInAs(u"hush");
  OpenWhole(talkative);
  Push(u"一"_qs);
  ASSERT_TRUE(Until([&] { return !noticed.title.isEmpty(); }));
  EXPECT_TRUE(noticed.lines.contains(u"站台說：無法推文: 使用者不可發言"_qs))
      << noticed.lines.join('\n').toStdString();
  EXPECT_TRUE(Until([&] { return Article().IsShown(); }));
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

}  // namespace
}  // namespace quillet
