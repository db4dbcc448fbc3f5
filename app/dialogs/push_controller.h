// Continuous pushing from the window: asks for the text in a dialog, sets the document to work, says what
// came of it, and keeps for each article what was typed and not pushed as long as the program runs. The view
// owns it. User-interface thread.
#pragma once

#include <map>
#include <optional>
#include <string>

#include <QObject>
#include <QPointer>

#include "app/dialogs/push_on_dlg.h"
#include "app/document/bookmarks.h"
#include "app/messages/push_messages.h"
#include "app/page/article_view.h"
#include "app/session/automations.h"
#include "app/session/connection.h"

namespace quillet {

class PushController : public QObject {
  Q_OBJECT

 public:
  // All outlive the object; the dialog lies over `view`.
  struct Parts {
    const Connection& connection;
    Automations& automations;
    const Bookmarks& bookmarks;
    ArticleView& article;
    QWidget& view;
  };
  explicit PushController(const Parts& parts);
  ~PushController() override;

  // Opens the dialog for the article that is open, and returns; leaves it as it is when it is open. Says so
  // where nothing can be pushed.
  void Open();
  // Something that was typed has not been pushed.
  bool HasDraft() const { return !drafts_.empty(); }
  // Null while it is closed.
  PushOnDlg* Dialog() const { return dialog_; }

 signals:
  // For a line over the terminal that goes by itself.
  void Said(const QString& words);
  // For the panel over the screen.
  void Notice(const quillet::PanelText& notice);

 private:
  struct Draft {
    QString text;
    PushKind kind = PushKind::kGood;
  };
  // What tells the articles apart.
  static std::u16string KeyOf(const ArticleInfo& article);
  std::optional<NoPushReason> Obstacle() const;
  bool IsOwnArticle() const;
  // What the field has shown, or the id lets expect.
  int LikelyColumns() const;
  void KeepDraft();
  void Start();
  void OnEnded(const PushRunResult& result);

  const ArticleInfo& OpenArticle() const { return parts_.connection.Seen().article; }
  const std::u16string& LoginId() const { return parts_.connection.Seen().loginId; }

  const Parts parts_;
  QPointer<PushOnDlg> dialog_;
  std::u16string asked_;   // the key of the article that the dialog is about
  std::u16string pushed_;  // and the one that is pushed to
  std::map<std::u16string, Draft> drafts_;
  int columns_ = 0;             // of the field that was seen last; 0: none
  std::u16string columnsOfId_;  // by whom
};

}  // namespace quillet
