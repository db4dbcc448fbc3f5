#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QCheckBox>
#include <QTextBlock>

#include "settings/dialog/option_hot_track_panel.h"
#include "settings/dialog/option_list_panel.h"
#include "tests/settings/dialog/dialog_checks.h"

namespace quillet {
namespace {

QString Chars(int count) {
  return QString(count, u'長');
}

// A panel over a store of its own, as the options dialog has it.
template <typename Panel>
class PanelTest : public testing::Test, public LoadedStore {
 protected:
  void Open() {
    panel.Open(store);
    panel.show();
  }
  QPlainTextEdit& Edit(const QString& name) { return *panel.template findChild<QPlainTextEdit*>(name); }
  // As though typed: setPlainText alone would count as a new document.
  void Type(const QString& name, const QString& text) {
    Edit(name).selectAll();
    Edit(name).insertPlainText(text);
  }
  void ExpectComplaint(const QString& edit, const QString& text, int line, const QString& words) {
    Type(edit, text);
    const QString complaint = panel.Complaint();
    EXPECT_TRUE(complaint.contains(u"第 %1 行"_qs.arg(line))) << complaint.toStdString();
    EXPECT_TRUE(complaint.contains(words)) << complaint.toStdString();
    EXPECT_EQ(panel.focusWidget(), &Edit(edit));
    // Shift+Enter breaks a line inside a block.
    const QTextCursor cursor = Edit(edit).textCursor();
    const QString above = Edit(edit).toPlainText().left(cursor.position());
    EXPECT_EQ(above.count(u'\n') + 1, line) << complaint.toStdString();
  }

  Panel panel;
};

using OptionListPanelTest = PanelTest<OptionListPanel>;

TEST_F(OptionListPanelTest, OnlyLinesThatSaySomethingNewAreMarkedChanged) {
  store.Names().Set(u"same", {ListKind::kSuperBlack, false, 0b1010, u"描述"});
  store.Names().Set(u"respelled", {ListKind::kBlack, false, 0, u"描述"});
  store.Names().Set(u"edited", {ListKind::kWhite, false, 0, u"舊"});
  store.Names().Set(u"gone", {});
  store.Names().Set(u"earlier", {ListKind::kWhite, true, 0, {}, true});
  Open();
  Type(u"names"_qs, u"new\n\n edited = W:新\r\nrespelled==B0:描述\nsame=C13:描述\nearlier=_W:"_qs);
  EXPECT_EQ(panel.Complaint(), QString());
  EXPECT_EQ(store.Names().Size(), 5U);
  panel.Store(store);

  const NameList& names = store.Names();
  EXPECT_EQ(names.AsText(), u"new\nedited=W:新\nrespelled=描述\nsame=C13:描述\nearlier=_W:\n");
  EXPECT_TRUE(names.Find(u"new")->changed);
  EXPECT_TRUE(names.Find(u"edited")->changed);
  EXPECT_FALSE(names.Find(u"respelled")->changed);
  EXPECT_FALSE(names.Find(u"same")->changed);
  EXPECT_TRUE(names.Find(u"earlier")->changed);
}

TEST_F(OptionListPanelTest, LinesMeanWhatTheyMeanInTheFiles) {
  store.TitleWords() = {u"[公告]", u"發錢"};
  Open();
  EXPECT_EQ(Edit(u"titleWords"_qs).toPlainText(), u"[公告]\n發錢");
  const QString text =
      u"twice=1:一\n==lead=_B2:二\n  blank  ==  C:三 \nbare\ncolon=http://x\n1:2\ntwice=W:四\nbare=\n"_qs;
  Type(u"names"_qs, text);
  Type(u"titleWords"_qs, u"  發錢 \n\n \n=x=y\n發錢\n"_qs);
  EXPECT_EQ(panel.Complaint(), QString());
  panel.Store(store);
  NameList fromFile;
  fromFile.ReadLines(ReadLines(text.toStdString()).lines);
  EXPECT_EQ(store.Names().AsText(), fromFile.AsText());
  EXPECT_EQ(store.Names().Find(u"twice")->kind, ListKind::kWhite);
  EXPECT_EQ(store.TitleWords(), (std::vector<std::u16string>{u"發錢", u"=x=y", u"發錢"}));
}

TEST_F(OptionListPanelTest, UntouchedListsStayEvenWhereTheFilesCannotHoldThem) {
  store.Names().Set(u"a", {ListKind::kBlack, false, 0, u"cut=off"});
  store.TitleWords() = {u"a\nb"};
  Open();
  EXPECT_EQ(panel.Complaint(), QString());
  panel.Store(store);
  EXPECT_EQ(store.Names().Find(u"a")->description, u"cut=off");
  EXPECT_EQ(store.TitleWords(), std::vector<std::u16string>{u"a\nb"});
}

TEST_F(OptionListPanelTest, BlankThatDoesNotBreakIsKept) {
  store.Names().Set(u"a", {ListKind::kBlack, false, 0, u"一\u00A0二"});
  Open();
  Edit(u"names"_qs).appendPlainText(u"b"_qs);
  panel.Store(store);
  EXPECT_EQ(store.Names().Find(u"a")->description, u"一\u00A0二");
  EXPECT_FALSE(store.Names().Find(u"a")->changed);
}

TEST_F(OptionListPanelTest, FirstLineThatTheFilesCannotHoldIsNamedAndGoneTo) {
  Open();
  const QString names = u"names"_qs;
  ExpectComplaint(names, u"ok\n\nid=a=b\nid=c=d"_qs, 3, u"「=」"_qs);
  ExpectComplaint(names, u"id=a="_qs, 1, u"「=」"_qs);
  ExpectComplaint(names, u"ok\n= =x"_qs, 2, u"沒有id"_qs);
  ExpectComplaint(names, u"ok\u2028ok\u2028id=a=b"_qs, 3, u"「=」"_qs);
  ExpectComplaint(names, u"ok\nid="_qs + Chars(509), 2, u"最多 511 個字元，現在有 512 個"_qs);
  ExpectComplaint(names, u"ok\nid=a\tb"_qs, 2, u"第 5 個字元是檔案存不下的字元 U+0009"_qs);
  Type(names, u"ok\nid="_qs + Chars(508) + u"  \n\tid=x"_qs);
  EXPECT_EQ(panel.Complaint(), QString());

  ExpectComplaint(u"titleWords"_qs, u"發=錢\n"_qs + Chars(512), 2, u"「文章標題黑名單」"_qs);
  ExpectComplaint(u"titleWords"_qs, u"\n一\u0007"_qs, 2, u"U+0007"_qs);
}

using OptionHotTrackPanelTest = PanelTest<OptionHotTrackPanel>;

TEST_F(OptionHotTrackPanelTest, RulesAreStoredOnceInTodaysSpelling) {
  store.Map().SetTrackLines({u"author=mossgrov"});
  Open();
  EXPECT_EQ(Edit(u"rules"_qs).toPlainText(), u"author=mossgrov");
  Type(
      u"rules"_qs,
      u"title=發錢\n\n  board:Beauty && title!=帥哥 && title!=a=b\nBoard=gossiping\ntitle:發錢\ntitle=發錢"_qs);
  EXPECT_EQ(panel.Complaint(), QString());
  EXPECT_EQ(store.Map().TrackLines(), (std::vector<std::u16string>{u"author=mossgrov"}));
  panel.Store(store);
  EXPECT_EQ(store.Map().TrackLines(),
            (std::vector<std::u16string>{u"Board=gossiping", u"board=Beauty && title!=帥哥 && title!=a=b",
                                         u"title=發錢"}));
  Type(u"rules"_qs, {});
  panel.Store(store);
  EXPECT_TRUE(store.Map().TrackLines().empty());
}

TEST_F(OptionHotTrackPanelTest, LineThatIsNoRuleIsNamedAndGoneTo) {
  Open();
  for (const char16_t* const wrong :
       {u"發錢", u"title", u"title=", u"title!=", u"title= ", u"=x", u"!=x", u"title!x", u"topic=x",
        u"title =x", u"title!!=x", u"[title=x", u"title=x && ", u"title=x && y", u"&& title=x",
        u"title=x && board", u"title=x &&  && board=y"})
    ExpectComplaint(u"rules"_qs, u"author=a\n\n"_qs + QString::fromUtf16(wrong), 3, u"不是追蹤規則"_qs);
  ExpectComplaint(u"rules"_qs, u"title="_qs + Chars(506), 1, u"最多 511 個字元"_qs);
  ExpectComplaint(u"rules"_qs, u"title=a\tb"_qs, 1, u"U+0009"_qs);
}

TEST_F(OptionHotTrackPanelTest, RuleOfAnOlderVersionStaysUntilItIsTouched) {
  store.Map().SetTrackLines({u"什麼都不是"});
  Open();
  EXPECT_EQ(panel.Complaint(), QString());
  panel.Store(store);
  EXPECT_EQ(store.Map().TrackLines(), (std::vector<std::u16string>{u"什麼都不是"}));
}

TEST_F(OptionHotTrackPanelTest, TheExamplesAreRules) {
  Open();
  QStringList examples;
  for (auto* const label : panel.findChildren<QLabel*>())
    if (label->text().startsWith(u"範例: "_qs)) examples = label->text().split(u'\n');
  ASSERT_EQ(examples.size(), 4);
  EXPECT_EQ(examples[0], u"範例: author=mossgrov  (mossgrov的所有文章)");
  examples[0].remove(u"範例: "_qs);
  Type(u"rules"_qs, examples.join(u'\n'));
  EXPECT_EQ(panel.Complaint(), QString());
}

}  // namespace
}  // namespace quillet
