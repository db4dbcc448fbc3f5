// All dialogs at once: none is larger than a small screen when the text is large, and nothing in them is cut.
#include <QClipboard>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QTabWidget>

#include "app/dialogs/connect_dialog.h"
#include "app/dialogs/give_money_dlg.h"
#include "app/dialogs/id_dialog.h"
#include "app/dialogs/jump_dialog.h"
#include "app/dialogs/keys_dialog.h"
#include "app/dialogs/push_on_dlg.h"
#include "app/interaction/clipboard/paste_question.h"
#include "app/messages/text_messages.h"
#include "settings/dialog/add_black_dlg.h"
#include "settings/dialog/dialog_room.h"
#include "settings/dialog/options_dlg.h"
#include "tests/app/dialogs/dialog_answers.h"
#include "tests/app/window_fixture.h"
#include "tests/support/dialog_looks.h"

namespace quillet {
namespace {

constexpr QSize kScreen(1280, 800);

class DialogSizesTest : public WindowTest {
 protected:
  void Check(QWidget& window) {
    SCOPED_TRACE(window.windowTitle().toStdString());
    window.show();
    window.resize(window.layout()->totalSizeHint().boundedTo(kScreen));
    QCoreApplication::processEvents();
    EXPECT_LE(window.width(), kScreen.width());
    EXPECT_LE(window.height(), kScreen.height());
    // The toolkit lays its own boxes out.
    if (qobject_cast<QMessageBox*>(&window) == nullptr) ExpectNothingCut(window);
  }
  template <typename Dialog, typename... Given>
  void CheckNew(Given&&... given) {
    Dialog dialog(std::forward<Given>(given)...);
    Check(dialog);
  }
  void CheckOptions() {
    CQuillOptionDlg dialog(doc->GetSettings().Store(), {[] {}});
    for (int tab = 0; tab < dialog.Tabs().count(); ++tab) {
      dialog.Tabs().setCurrentIndex(tab);
      Check(dialog);
    }
  }
  void CheckMoney() {
    const MoneyChoices choices{.number = 99999, .moneyForEach = kMostMoney, .afterTax = true};
    const auto nobody = [](std::u16string_view) { return IdStanding::kOrdinary; };
    GiveMoneyDlg dialog(choices, {.self = {}, .standing = nobody}, 1);
    dialog.SetFloorsUnknown(12345, u"關掉這個視窗，把文章讀到最後再來。"_qs);
    Check(dialog);
    dialog.SetFloors(std::vector<PushFloor>(500, {.floor = 9999, .id = u"mmmmmmmmmmmm", .words = {}}));
    Check(dialog);
  }
  void CheckPushes() {
    PushOnDlg dialog({.title = QString(39, u'題'), .text = QString(5000, u'推') + u"\U0001F600"_qs});
    Check(dialog);
  }
  void CheckBoxes() {
    PasteQuestion question(*frame);
    question.Ask(AskForLines(std::u16string(400, u'x') + u"\r" + std::u16string(400, u'長')), {});
    Check(*frame->findChild<QMessageBox*>());
    question.Close();
    for (QAction* const action : frame->findChildren<QAction*>())
      if (action->text().contains(u"關於"))
        AnswerDialogs([&] { action->trigger(); }, {[&](QDialog& box) {
                        Check(box);
                        box.reject();
                      }});
  }
};

TEST_F(DialogSizesTest, LargeTextFitsASmallScreen) {
  // A face of Chinese characters has other measures than one of Latin letters.
  for (const char* family : {"Sans Serif", "Noto Sans CJK TC"})
    for (const double factor : {1.0, 1.5, 2.0}) {
      SCOPED_TRACE(family + std::to_string(factor));
      const LargeText large(factor, family);
      CheckOptions();
      CheckNew<AddBlackDlg>(doc->GetSettings().Store(), u"Mossgrov1234"_qs);
      const RecentSite site{
          .address = u"wss://bbs.example.org:443/bbs", .account = u"Mossgrov1234", .name = u"名"};
      CheckNew<ConnectDlg>(
          u"gopher://bbs.example.org:23"_qs,
          ConnectDlg::Sites{.listed = std::vector<RecentSite>(8, site), .keep = {}, .remove = {}});
      CheckNew<JumpDlg>(WebHosts{}, u"Board"_qs, QString());
      CheckNew<IdDlg>(u"Mossgrov1234"_qs);
      CheckNew<KeysDlg>(MakeHelp({}, {}));
      CheckMoney();
      CheckPushes();
      CheckBoxes();
    }
}

TEST_F(DialogSizesTest, NothingScrollsWhereTheScreenHasRoom) {
  const auto nobody = [](std::u16string_view) { return IdStanding::kOrdinary; };
  GiveMoneyDlg dialog({}, {.self = {}, .standing = nobody}, 1);
  dialog.show();
  dialog.SetFloors({{.floor = 1, .id = u"reader", .words = {}}});
  QCoreApplication::processEvents();
  ASSERT_LT(dialog.height() + 48, dialog.screen()->availableSize().height());
  EXPECT_EQ(dialog.findChild<ContentScroll*>()->verticalScrollBar()->maximum(), 0);
}

// Its letters follow the terminal's, whatever the application's are.
TEST_F(DialogSizesTest, TheLoginFormFitsTheView) {
  for (const QSize view : {QSize(1280, 752), QSize(1920, 1032)}) {
    frame->SizeForView(view);
    View().AskLogin();
    QCoreApplication::processEvents();
    auto* const form = frame->findChild<LoginForm*>();
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(View().rect().contains(form->geometry()));
    ExpectNothingCut(*form);
  }
}

}  // namespace
}  // namespace quillet
