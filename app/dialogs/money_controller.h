// Gives money along the push lines of the open article: asks to whom in a dialog, keeps the choices, sets the
// document to work, and says what came of it. The view owns it. User-interface thread.
#pragma once

#include <optional>

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "app/dialogs/give_money_dlg.h"
#include "app/document/user_settings.h"
#include "app/messages/money_messages.h"
#include "app/page/article_view.h"
#include "app/session/automations.h"
#include "app/session/connection.h"

namespace quillet {

class MoneyController : public QObject {
  Q_OBJECT

 public:
  // All outlive the object; the dialog lies over `view`.
  struct Parts {
    const Connection& connection;
    Automations& automations;
    UserSettings& settings;
    ArticleView& article;
    QWidget& view;
  };
  explicit MoneyController(const Parts& parts);
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

  const ArticleInfo& OpenArticle() const { return parts_.connection.Seen().article; }

  const Parts parts_;
  QPointer<GiveMoneyDlg> dialog_;
  QTimer follow_;                  // while the dialog is open
  ArticleInfo asked_;              // the article that the dialog is about
  std::optional<unsigned> shown_;  // the version of its lines that the dialog knows
};

// The choices as the settings hold them, and their way back.
MoneyChoices MoneyChoicesOf(const Settings& settings);
std::vector<SettingChange> ChangesFor(const MoneyChoices& choices);

}  // namespace quillet
