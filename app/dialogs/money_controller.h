// Gives money along the push lines of the open article: asks to whom in a dialog, keeps the choices, sets the
// document to work, and says what came of it. The view owns it. User-interface thread.
#pragma once

#include <optional>

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "app/dialogs/give_money_dlg.h"
#include "app/document/quill_doc.h"
#include "app/messages/money_messages.h"
#include "app/page/article_view.h"

namespace quillet {

class MoneyController : public QObject {
  Q_OBJECT

 public:
  // All outlive the desk; the dialog lies over `view`.
  MoneyController(CQuillDoc& doc, ArticleView& article, QWidget& view);
  ~MoneyController() override;

  // Opens the dialog and returns; leaves it as it is when it is open.
  void Open();
  GiveMoneyDlg* Dialog() const { return dialog_; }

 signals:
  // For the panel over the screen.
  void Notice(const quillet::PanelText& notice);

 private:
  // Brings the article's lines to the dialog.
  void Follow();
  void OnFinished(int answer);
  void Send(const GiveMoneyDlg& dialog);

  CQuillDoc& doc_;
  ArticleView& article_;
  QWidget& view_;
  QPointer<GiveMoneyDlg> dialog_;
  QTimer follow_;                  // while the dialog is open
  ArticleInfo asked_;              // the article that the dialog is about
  std::optional<unsigned> shown_;  // the version of its lines that the dialog knows
};

// The choices as the settings hold them, and their way back.
MoneyChoices MoneyChoicesOf(const Settings& settings);
std::vector<SettingChange> ChangesFor(const MoneyChoices& choices);

}  // namespace quillet
