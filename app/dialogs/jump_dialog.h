// Asks for an article: by the link of its web page, or by board and code. User-interface thread.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "bbs/article_code.h"

namespace quillet {

class JumpDlg : public QDialog {
  Q_OBJECT

 public:
  // `board` is the one that the user is on, perhaps empty; `clipboard` what he has copied, which stands in
  // the field at first if it holds a link to an article.
  JumpDlg(WebHosts hosts, const QString& board, const QString& clipboard, QWidget* parent = nullptr);

  // With a board and a well-formed code once the dialog was accepted.
  ArticleReference Article() const;

 private:
  // A link fills the fields below it.
  void ReadLink();
  void Check();

  const WebHosts hosts_;
  QLineEdit* link_;
  QLineEdit* board_;
  QLineEdit* code_;
  QLabel* complaint_;
  QPushButton* jump_;
};

}  // namespace quillet
