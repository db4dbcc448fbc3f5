// Asks for a longer text to push, shows how it will be cut into pieces, and in which kind of push. It keeps
// nothing: what is typed goes to whoever asks at every change. User-interface thread.
#pragma once

#include <QButtonGroup>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

#include "bbs/automation/push_run.h"

namespace quillet {

class PushOnDlg : public QDialog {
  Q_OBJECT

 public:
  // Who may push, and how.
  enum class Kinds {
    kAll,
    kNoteOnly  // one's own article
  };
  struct Contents {
    QString title;  // of the article
    QString text;   // what stands in the field at first
    PushKind kind = PushKind::kGood;
    Kinds kinds = Kinds::kAll;
    int columns = 33;  // that a piece is likely to have, 2 or more
  };
  explicit PushOnDlg(const Contents& contents, QWidget* parent = nullptr);

  QString Text() const { return text_->toPlainText(); }
  PushKind Kind() const;
  // What came of the last try to start: the dialog stays, and says why.
  void Complain(const QString& words);

  // A longer text is not for pushing.
  static constexpr int kMostPieces = 100;

 signals:
  // The text or the kind is different.
  void Edited();
  // The user wants to push what there is, and it can be pushed.
  void StartRequested();

 private:
  void Arrange(const Contents& contents);
  QWidget* KindButtons(const Contents& contents);
  void Review();
  void ShowPieces();
  void Start();

  const int columns_;
  QPlainTextEdit* text_;
  QButtonGroup* kinds_;
  QLabel* heading_;
  QTreeWidget* pieces_;
  QLabel* unpushable_;
  QLabel* complaint_;
  QPushButton* start_;
};

}  // namespace quillet
