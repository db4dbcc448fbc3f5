// Going to an article by its link or code, from the window.
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>

#include "app/dialogs/jump_dialog.h"
#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {
namespace {

class JumpTest : public DemoArticleTest {
 protected:
  void SetUp() override {
    endpoints.values["web/host"] = "www.bbs.example";
    DemoArticleTest::SetUp();
    target = shortest;
    ASSERT_FALSE(target.code.empty());
  }
  QString Link() const {
    return QString::fromStdU16String(ArticleUrl(target.board, target.code, WebHostsOf(endpoints)));
  }
  void Answer(const std::function<void(QDialog&)>& answer) {
    AnswerDialogs([&] { frame->JumpToArticle(); }, {answer});
  }

  ArticleReference target;
};

TEST_F(JumpTest, ACopiedLinkOpensItsArticle) {
  QGuiApplication::clipboard()->setText(u"看這篇 "_qs + Link() + u" 真好"_qs);
  Answer([&](QDialog& dialog) {
    EXPECT_EQ(Find<QLineEdit>(dialog, "board").text().toStdU16String(), target.board);
    EXPECT_EQ(Find<QLineEdit>(dialog, "code").text().toStdU16String(), u"#" + target.code);
    dialog.accept();
  });
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kJump);
  EXPECT_TRUE(Until([&] { return Seen().article.board == target.board; }));
  EXPECT_TRUE(Until([&] { return IsIdle(); }));
  EXPECT_FALSE(View().Panel().IsActive());
  EXPECT_NE(View().Screen().pageFlags & PF_READ_TOP, 0u);
  const std::u16string author = Seen().article.author;
  ASSERT_FALSE(author.empty());
  Press(Qt::Key_PageDown);
  Press(Qt::Key_End);
  AnswerDialogs([&] { frame->AskForName(); }, {[&](QDialog& dialog) {
                  EXPECT_EQ(dialog.findChild<QLineEdit*>()->text().toStdU16String(), author);
                  dialog.reject();
                }});
}

TEST_F(JumpTest, WhatIsNotThereIsTold) {
  QGuiApplication::clipboard()->clear();
  const auto fill = [&](const QString& board, const QString& code) {
    Answer([&](QDialog& dialog) {
      Find<QLineEdit>(dialog, "board").setText(board);
      Find<QLineEdit>(dialog, "code").setText(code);
      dialog.accept();
    });
  };
  fill(QString::fromStdU16String(target.board), "#00000001");
  EXPECT_TRUE(Until([&] { return PanelSays(u"找不到這篇文章"_qs); })) << PanelLines().toStdString();
  Enter();
  EXPECT_FALSE(View().Panel().IsActive());
  fill("NoSuchBoard", QString::fromStdU16String(target.code));
  EXPECT_TRUE(Until([&] { return PanelSays(u"沒有這個看板"_qs); }));
  Enter();
  TypeText("s");
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_INPUT_FIELD) != 0; }));
  fill(QString::fromStdU16String(target.board), QString::fromStdU16String(target.code));
  EXPECT_TRUE(Until([&] { return PanelSays(u"現在不能跳到文章"_qs); })) << "the user is typing";
  Enter();
  doc->GetConnection().Disconnect();
  frame->JumpToArticle();
  EXPECT_TRUE(PanelSays(u"現在不能跳到文章"_qs));
}

TEST_F(JumpTest, TheDialogAcceptsOnlyWhatCanBeAnArticle) {
  JumpDlg dialog(WebHostsOf(endpoints), "Cats", u"no link"_qs);
  auto& link = Find<QLineEdit>(dialog, "link");
  auto& board = Find<QLineEdit>(dialog, "board");
  auto& code = Find<QLineEdit>(dialog, "code");
  QPushButton* jump = nullptr;
  for (QPushButton* button : dialog.findChildren<QPushButton*>())
    if (button->text() == u"前往"_qs) jump = button;
  ASSERT_NE(jump, nullptr);
  EXPECT_EQ(link.text(), "");
  EXPECT_EQ(board.text(), "Cats");
  EXPECT_FALSE(jump->isEnabled());
  code.setText(" #1a2B3c4D ");
  EXPECT_TRUE(jump->isEnabled());
  EXPECT_EQ(dialog.Article(), (ArticleReference{u"Cats", u"1a2B3c4D", 0}));
  for (const char* bad : {"#1a2B3c4", "1a2B3c4D5", "1a2B3c4!", ""}) {
    code.setText(bad);
    EXPECT_FALSE(jump->isEnabled()) << bad;
  }
  link.setText(Link());
  EXPECT_TRUE(jump->isEnabled());
  EXPECT_EQ(dialog.Article().board, target.board);
  board.setText(" ");
  EXPECT_FALSE(jump->isEnabled());
}

}  // namespace
}  // namespace quillet
