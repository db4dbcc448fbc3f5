// Giving money along the push lines, from the window.
#include <QApplication>
#include <QTableView>

#include "app/dialogs/give_money_dlg.h"
#include "app/dialogs/money_controller.h"
#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {
namespace {

// Reader, who has 1280, in the article with the most pushes.
class GiveMoneyTest : public DemoArticleTest {
 protected:
  const MoneyController& Desk() { return View().Money(); }
  GiveMoneyDlg* Dialog() { return Desk().Dialog(); }
  // The dialog over the whole article.
  GiveMoneyDlg& Ask() {
    View().PerformArticleCommand(ArticleCommand::kGiveMoney);
    EXPECT_TRUE(Until([&] { return Dialog() != nullptr && Send().isEnabled(); }));
    return *Dialog();
  }
  QPushButton& Send() { return Find<QPushButton>(*Dialog(), "send"); }
  QString Note() { return Find<QLabel>(*Dialog(), "note").text(); }
  void Number(const QString& name, int value) { Find<QSpinBox>(*Dialog(), name).setValue(value); }
  void Check(const QString& name, bool on) { Find<QCheckBox>(*Dialog(), name).setChecked(on); }
  bool IsOver() {
    return Until([&] { return View().Panel().HasNotice() && IsIdle(); });
  }
  std::string Words() {
    const PanelText& notice = View().Panel().Text();
    return (notice.title + '\n' + notice.lines.join('\n')).toStdString();
  }
};

TEST_F(GiveMoneyTest, WhatTheListShowsIsGivenAndTold) {
  OpenWhole(talkative);
  Press(Qt::Key_PageDown);
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(2 * kPageStep));
  GiveMoneyDlg& dialog = Ask();
  Number("number", 3);
  Number("moneyForEach", 9);
  Check("afterTax", true);
  const std::vector<FloorGift> gifts = dialog.Gifts();
  ASSERT_EQ(gifts.size(), 3u);
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
  QCoreApplication::sendEvent(&Find<QSpinBox>(dialog, "number"), &enter);
  ASSERT_TRUE(dialog.isVisible()) << "a habit sends no money";
  EXPECT_EQ(gifts[0].amount, 10);
  EXPECT_EQ(Send().text(), u"送出 3 份，共 $30"_qs);
  const auto* const rows = Find<QTableView>(dialog, "gifts").model();
  ASSERT_EQ(rows->rowCount(), 3);
  EXPECT_EQ(rows->index(2, 1).data().toString().toStdU16String(), gifts[2].id);
  std::vector<MoneyRunResult> results;
  QObject::connect(&doc->GetAutomations(), &Automations::MoneyEnded, &View(),
                   [&](const MoneyRunResult& result) { results.push_back(result); });
  Send().click();
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kGiveMoney);
  EXPECT_EQ(doc->GetAutomations().Progress().total, 3);
  ASSERT_TRUE(IsOver());
  ASSERT_EQ(results.size(), 1u);
  ASSERT_EQ(results[0].gifts.size(), 3u);
  // Not everybody who has pushed in the demo has an account there.
  const int given = results[0].Count(GiftState::kGiven);
  EXPECT_EQ(given + results[0].Count(GiftState::kRefused), 3) << Words();
  for (std::size_t at = 0; at < 3; ++at)
    EXPECT_EQ(results[0].gifts[at].gift.id, gifts[at].id);
  Enter();
  EXPECT_FALSE(View().Panel().HasNotice()) << "told once";
  EXPECT_TRUE(Until([&] { return Article().IsShown() && Article().TopLine() == 2 * kPageStep; }))
      << "back in the article, where it was";
  EXPECT_EQ(Seen().article.board, talkative.board);
}

TEST_F(GiveMoneyTest, NothingCanBeSentBeforeTheArticleIsWhole) {
  doc->GetSettings().Set(&Settings::webArticle, false);
  ASSERT_TRUE(doc->GetAutomations().JumpTo(longest));
  ASSERT_TRUE(Until([&] { return Seen().article.IsArticle() && IsIdle(); }));
  View().PerformArticleCommand(ArticleCommand::kGiveMoney);
  ASSERT_NE(Dialog(), nullptr);
  EXPECT_FALSE(Send().isEnabled());
  EXPECT_NE(Note().indexOf(u"還沒有讀完"_qs), -1) << Note().toStdString();
  EXPECT_NE(Note().indexOf(u"最後一頁"_qs), -1);
  Dialog()->accept();
  EXPECT_TRUE(Dialog()->isVisible());
  // While the dialog is open the rest arrives.
  doc->GetSettings().Set(&Settings::webArticle, true);
  EXPECT_TRUE(Until([&] { return Lines().IsComplete() && Note().indexOf(u"還沒有讀完"_qs) == -1; }));
  Dialog()->reject();
}

TEST_F(GiveMoneyTest, TheChoicesAreKeptOnlyWhenTheyWereUsed) {
  OpenWhole(talkative);
  Ask();
  Number("fromFloor", 4);
  Check("boo", true);
  Dialog()->reject();
  Ask();
  EXPECT_EQ(Dialog()->Choices(), MoneyChoicesOf(Settings{})) << "cancelled: as they were";
  Number("fromFloor", 2);
  Number("floorInterval", 2);
  Number("number", 1);
  Number("moneyForEach", 1);
  for (const QString name : {"boo", "arrow", "matchCase", "noBlack", "noSuperBlack", "random", "afterTax"})
    Check(name, true);
  Check("noDupe", false);
  const MoneyChoices used = Dialog()->Choices();
  ASSERT_TRUE(Send().isEnabled()) << Note().toStdString();
  Send().click();
  ASSERT_TRUE(IsOver());
  Start();
  EXPECT_EQ(MoneyChoicesOf(Fields()), used) << "read from the file";
}

TEST_F(GiveMoneyTest, TheBlackListIsHeededAndALotIsDrawnAgain) {
  OpenWhole(talkative);
  GiveMoneyDlg& dialog = Ask();
  ASSERT_GE(dialog.Gifts().size(), 4u);
  const std::u16string first = dialog.Gifts().front().id;
  ListEntry entry;
  entry.kind = ListKind::kSuperBlack;
  doc->GetSettings().Store().Names().Set(first, entry);
  Check("noBlack", true);
  EXPECT_EQ(dialog.Gifts().front().id, first);
  Check("noSuperBlack", true);
  EXPECT_NE(dialog.Gifts().front().id, first);
  Number("number", 1);
  Check("random", true);
  const std::vector<FloorGift> drawn = dialog.Gifts();
  Number("moneyForEach", 7);
  EXPECT_EQ(dialog.Gifts().front().floor, drawn.front().floor) << "the draw stays";
  bool another = false;
  for (int draw = 0; draw < 200 && !another; ++draw) {
    Find<QPushButton>(dialog, "drawAgain").click();
    another = dialog.Gifts().front().floor != drawn.front().floor;
  }
  EXPECT_TRUE(another);
  Number("fromFloor", 99999);
  EXPECT_FALSE(Send().isEnabled());
  Check("afterTax", true);
  Number("moneyForEach", kMostMoney);
  EXPECT_EQ(Find<QLabel>(dialog, "tax").text(), u"每份送出 $99999999，對方拿到 $89999999"_qs)
      << "nobody is promised more than the BBS's field can send";
  dialog.reject();
}

TEST_F(GiveMoneyTest, WithoutAnArticleOrAConnectionThereIsNothingToAsk) {
  MoneyController desk({doc->GetConnection(), doc->GetAutomations(), doc->GetSettings(), doc->PageReader(),
                        const_cast<ArticleView&>(Article()), View()});
  QString said;
  QObject::connect(&desk, &MoneyController::Notice, &View(),
                   [&said](const PanelText& notice) { said = notice.lines.join('\n'); });
  desk.Open();
  EXPECT_EQ(desk.Dialog(), nullptr);
  EXPECT_TRUE(said.startsWith(u"請先打開"_qs)) << said.toStdString();
  OpenWhole(talkative);
  TypeText("g");
  ASSERT_NE(Dialog(), nullptr) << "by the key that the caption names";
  doc->GetConnection().Disconnect();
  EXPECT_EQ(Dialog(), nullptr) << "closed with the connection";
  desk.Open();
  EXPECT_EQ(desk.Dialog(), nullptr);
  EXPECT_TRUE(said.startsWith(u"請先連線"_qs)) << said.toStdString();
}

TEST(MoneyMessagesTest, EveryEndNamesWhoGotNothing) {
  MoneyRunResult result;
  result.money = 5;
  const auto add = [&result](const char16_t* id, GiftState state, const char16_t* words = u"") {
    GiftRecord& record = result.gifts.emplace_back();
    record.gift.id = id;
    record.gift.amount = 10;
    record.state = state;
    record.words = words;
  };
  add(u"amy", GiftState::kGiven);
  add(u"bob", GiftState::kRefused, u"沒有這個人");
  add(u"carol", GiftState::kAsked);
  for (int i = 0; i < 40; ++i)
    add(u"late", GiftState::kNotYet);
  result.end = MoneyRunEnd::kTakenOver;
  EXPECT_TRUE(DescribeMoneyEnd(result).lines.join('\n').contains(u"您停止了送錢"));
  for (int end = 0; end <= static_cast<int>(MoneyRunEnd::kClosed); ++end) {
    result.end = static_cast<MoneyRunEnd>(end);
    const PanelText text = DescribeMoneyEnd(result);
    const QString lines = text.lines.join('\n');
    EXPECT_EQ(text.title, u"只發出一部分P幣"_qs);
    EXPECT_TRUE(lines.contains("bob") && lines.contains(u"沒有這個人"_qs) && lines.contains("carol"));
    EXPECT_TRUE(lines.contains(u"還有 24 份"_qs)) << lines.toStdString();
    EXPECT_LT(text.lines.size(), 16) << "fits the window";
  }
}

}  // namespace
}  // namespace quillet
