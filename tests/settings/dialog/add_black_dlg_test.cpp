#include "settings/dialog/add_black_dlg.h"

#include <array>
#include <gtest/gtest.h>
#include <map>
#include <random>

#include <QCheckBox>
#include <QLineEdit>

#include "platform/user_file.h"
#include "tests/settings/dialog/dialog_checks.h"

namespace quillet {
namespace {

constexpr std::array<const char16_t*, kFlagColours> kColourNames{u"紅", u"綠",   u"黃", u"深藍",
                                                                 u"紫", u"淺藍", u"白"};

struct OpenDialog {
  OpenDialog(SettingsStore& store, std::u16string_view id) : dialog(store, QStringView(id).toString()) {
    dialog.show();
  }

  QComboBox& Kind() { return *dialog.findChild<QComboBox*>(); }
  QLineEdit& Description() { return *dialog.findChild<QLineEdit*>(); }
  QAbstractButton& Ok() { return *ButtonOf(dialog, u"確定"_qs); }
  QAbstractButton& Underline() { return *ButtonOf(dialog, u"畫底線"_qs); }
  QAbstractButton& Colour(int colour) {
    return *ButtonOf(dialog, QString::fromUtf16(kColourNames[static_cast<std::size_t>(colour - 1)]));
  }
  bool Says(const QString& words) {
    for (auto* const label : dialog.findChildren<QLabel*>())
      if (label->isVisible() && label->text().contains(words)) return true;
    return false;
  }

  AddBlackDlg dialog;
};

class AddBlackDlgTest : public testing::Test, public LoadedStore {};

TEST_F(AddBlackDlgTest, NewIdStartsAsPlainBlackAndIsWrittenAsEntered) {
  OpenDialog open(store, u"troll");
  EXPECT_TRUE(open.Says(u"troll"_qs));
  EXPECT_EQ(open.dialog.focusWidget(), &open.Description());
  EXPECT_EQ(open.Kind().currentText(), u"黑名單");
  for (int colour = 1; colour <= kFlagColours; ++colour) {
    EXPECT_FALSE(open.Colour(colour).isChecked());
    EXPECT_FALSE(open.Colour(colour).icon().isNull());
  }

  open.Kind().setCurrentText(u"超黑名單"_qs);
  open.Description().setText(u" 1:愛引戰 "_qs);
  open.Underline().click();
  open.Colour(1).click();
  open.Colour(3).click();
  Press(open.Description(), Qt::Key_Return);

  EXPECT_EQ(open.dialog.result(), QDialog::Accepted);
  const ListEntry expected{ListKind::kSuperBlack, true, 0b1010, u"1:愛引戰", true};
  ASSERT_NE(store.Names().Find(u"troll"), nullptr);
  EXPECT_EQ(*store.Names().Find(u"troll"), expected);
  EXPECT_EQ(FileAt(working / kNamesFile), EncodeText(u"troll=_C13:1:愛引戰\n", kLineEnd));
}

TEST_F(AddBlackDlgTest, ListedIdIsShownAsItIsAndOnlyWhatIsTouchedChanges) {
  store.Names().Set(u"first", {});
  const ListEntry before{ListKind::kWhite, true, 0b10000010, u"同學: 阿明"};
  store.Names().Set(u"friend", before);
  store.Names().Set(u"last", {});

  OpenDialog cancelled(store, u"friend");
  EXPECT_EQ(cancelled.Kind().currentText(), u"白名單");
  EXPECT_EQ(cancelled.Description().text(), u"同學: 阿明");
  EXPECT_TRUE(cancelled.Underline().isChecked());
  for (int colour = 1; colour <= kFlagColours; ++colour)
    EXPECT_EQ(cancelled.Colour(colour).isChecked(), before.HasColour(colour)) << colour;
  cancelled.Kind().setCurrentText(u"無"_qs);
  cancelled.Description().clear();
  cancelled.Colour(4).click();
  Press(cancelled.Description(), Qt::Key_Escape);
  EXPECT_FALSE(cancelled.dialog.isVisible());
  EXPECT_EQ(*store.Names().Find(u"friend"), before);
  EXPECT_FALSE(std::filesystem::exists(working / kNamesFile));

  OpenDialog edited(store, u"friend");
  edited.Colour(7).click();
  edited.Ok().click();
  EXPECT_EQ(store.Names().AsText(), u"first\nfriend=_W1:同學: 阿明\nlast\n");
  EXPECT_TRUE(store.Names().Find(u"friend")->changed);
  EXPECT_FALSE(store.Names().Find(u"first")->changed);
}

TEST_F(AddBlackDlgTest, DescriptionThatTheFileCannotHoldIsStoppedWhileItIsTyped) {
  OpenDialog open(store, u"troll");
  const auto expectStopped = [&](const QString& description, const QString& words) {
    open.Description().setText(description);
    EXPECT_FALSE(open.Ok().isEnabled()) << description.toStdString();
    EXPECT_TRUE(open.Says(words)) << words.toStdString();
    open.dialog.accept();
    EXPECT_TRUE(open.dialog.isVisible());
  };
  expectStopped(u"愛=恨"_qs, u"描述第 2 個字元「=」"_qs);
  expectStopped(u"  =恨"_qs, u"描述第 3 個字元「=」"_qs);
  expectStopped(u"一\t二"_qs, u"描述第 2 個字元 U+0009"_qs);
  expectStopped(u"一\n二=三"_qs, u"描述第 2 個字元 U+000A"_qs);
  expectStopped(QString(506, u'長'), u"最多 505 個字元，現在有 506 個"_qs);
  EXPECT_EQ(store.Names().Size(), 0U);

  open.Description().setText(QString(505, u'長'));
  EXPECT_TRUE(open.Ok().isEnabled());
  EXPECT_FALSE(open.Says(u"描述太長"_qs));
  open.Colour(2).click();
  EXPECT_TRUE(open.Says(u"最多 502 個字元"_qs)) << "the marker takes room of the line";
  EXPECT_FALSE(open.Ok().isEnabled());
  open.Colour(2).click();
  open.Ok().click();
  EXPECT_EQ(store.Names().Find(u"troll")->description.size(), 505U);
}

TEST_F(AddBlackDlgTest, IdThatTheFileCannotHoldIsRefused) {
  for (const std::u16string_view id : {u"", u" ", u" a", u"a ", u"a\t", u"=a", u"a=b", u"a\nb", u"a\u0001"}) {
    OpenDialog open(store, id);
    EXPECT_TRUE(open.Says(u"id"_qs));
    EXPECT_TRUE(open.Says(u"無法"_qs)) << QStringView(id).toString().toStdString();
    EXPECT_FALSE(open.Ok().isEnabled());
  }
  const std::u16string longest(kLongestLine, u'x');
  OpenDialog open(store, longest);
  EXPECT_LT(open.dialog.width(), 1366);
  EXPECT_TRUE(open.Ok().isEnabled());
  open.Underline().click();
  EXPECT_FALSE(open.Ok().isEnabled());
  EXPECT_FALSE(OpenDialog(store, longest + u'x').Ok().isEnabled());
}

TEST_F(AddBlackDlgTest, WhateverIsAcceptedComesBackFromTheFile) {
  constexpr std::u16string_view kUnits = u" \t:=_BCWN017#長\xD83D\xDE00";
  std::mt19937 random(20240229);
  const auto pick = [&](unsigned below) { return static_cast<unsigned>(random()) % below; };
  const auto randomText = [&](unsigned most) {
    std::u16string text;
    for (unsigned length = pick(most + 1); text.size() < length;)
      text += kUnits[pick(kUnits.size())];
    return text;
  };
  std::map<std::u16string, ListEntry> accepted;
  for (int round = 0; round < 300; ++round) {
    const std::u16string id = randomText(3);
    OpenDialog open(store, id);
    open.Kind().setCurrentIndex(static_cast<int>(pick(4)));
    open.Description().setText(QString::fromStdU16String(randomText(5)));
    open.Underline().setChecked(pick(4) == 0);
    open.Colour(1).setChecked(pick(4) == 0);
    if (!open.Ok().isEnabled()) continue;
    open.Ok().click();
    accepted[id] = *store.Names().Find(id);
    accepted[id].changed = false;
  }
  EXPECT_GT(accepted.size(), 20U);

  SettingsStore later(files, "bbs.example.org");
  later.Load();
  EXPECT_EQ(later.Names().Size(), accepted.size());
  for (const auto& [id, entry] : accepted) {
    const ListEntry* const read = later.Names().Find(id);
    ASSERT_NE(read, nullptr) << QString::fromStdU16String(id).toStdString();
    EXPECT_EQ(*read, entry) << QString::fromStdU16String(id).toStdString();
  }
}

TEST_F(AddBlackDlgTest, WhatIsDoneToTheKindIsSaidAndCanBeChosen) {
  OpenDialog open(store, u"troll");
  const auto box = [&](const char* key) {
    return open.dialog.findChild<QComboBox*>(QString::fromLatin1(key));
  };
  EXPECT_TRUE(open.Says(u"目前黑名單的標題和推文照常顯示"_qs));
  box("BlackPush")->setCurrentText(u"整行移除"_qs);
  EXPECT_TRUE(open.Says(u"黑名單裡所有的id都有效"_qs));
  open.Kind().setCurrentText(u"白名單"_qs);
  EXPECT_TRUE(open.Says(u"這種名單"_qs));
  open.Kind().setCurrentText(u"超黑名單"_qs);
  EXPECT_TRUE(open.Says(u"目前超黑名單的標題和推文照常顯示"_qs));
  EXPECT_TRUE(box("SBlackTitle")->isVisible() && !box("BlackTitle")->isVisible());
  open.Ok().click();
  EXPECT_EQ(store.Fields().blackPush, PushTreatment::kRemove);
  EXPECT_EQ(store.Map().Find(u"Basic", u"SBlackTitle"), nullptr) << "what was left alone is not written";
  SettingsStore later(files, "bbs.example.org");
  later.Load();
  EXPECT_EQ(later.Fields().blackPush, PushTreatment::kRemove);
}

TEST_F(AddBlackDlgTest, LayoutFollowsTheEyeAndNothingJumps) {
  OpenDialog open(store, u"Mossgrov1234");
  ExpectTabOrderByEye(open.dialog, open.dialog);
  const QSize before = open.dialog.size();
  open.Description().setText(u"長"_qs.repeated(490) + u"\t"_qs);
  open.Description().setText(u"長"_qs.repeated(998));
  QApplication::processEvents();
  EXPECT_TRUE(open.Says(u"太長"_qs));
  ExpectNothingCut(open.dialog);
  EXPECT_EQ(open.dialog.size(), before);
}

}  // namespace
}  // namespace quillet
