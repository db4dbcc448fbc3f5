#include "app/dialogs/jump_dialog.h"

#include <utility>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QVBoxLayout>

#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

// Longer texts in the clipboard are no link.
constexpr qsizetype kLongestLink = 2000;

}  // namespace

JumpDlg::JumpDlg(WebHosts hosts, const QString& board, const QString& clipboard, QWidget* parent)
    : QDialog(parent),
      hosts_(std::move(hosts)),
      link_(new QLineEdit),
      board_(new QLineEdit(board)),
      code_(new QLineEdit),
      complaint_(new QLabel) {
  setWindowTitle(u"跳到文章代碼"_qs);
  link_->setObjectName("link");
  board_->setObjectName("board");
  code_->setObjectName("code");
  link_->setPlaceholderText(u"貼上文章的網址，就會填好下面兩格"_qs);
  code_->setPlaceholderText(u"例如 #1a2B3c4D"_qs);
  auto* const form = new QFormLayout;
  form->addRow(u"文章網址(&L)："_qs, link_);
  form->addRow(u"看板(&B)："_qs, board_);
  form->addRow(u"文章代碼(&D)："_qs, code_);
  complaint_->setMinimumHeight(complaint_->fontMetrics().lineSpacing());
  form->addRow(QString(), complaint_);
  auto* const buttons = new QDialogButtonBox;
  jump_ = buttons->addButton(u"前往"_qs, QDialogButtonBox::AcceptRole);
  buttons->addButton(u"取消"_qs, QDialogButtonBox::RejectRole);
  jump_->setDefault(true);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addStretch();
  layout->addWidget(buttons);
  setMinimumWidth(LettersWide(*this, 64));

  connect(link_, &QLineEdit::textChanged, this, &JumpDlg::ReadLink);
  for (QLineEdit* field : {board_, code_})
    connect(field, &QLineEdit::textChanged, this, &JumpDlg::Check);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  ArticleReference copied;
  const QString candidate = clipboard.left(kLongestLink);
  if (ParseArticleUrl(candidate.toStdU16String(), hosts_, copied) && !copied.code.empty())
    link_->setText(candidate.simplified());
  else if (!board.isEmpty())
    code_->setFocus();
  Check();
}

ArticleReference JumpDlg::Article() const {
  QString code = code_->text().trimmed();
  if (code.startsWith(u'#')) code.remove(0, 1);
  return {.board = board_->text().trimmed().toStdU16String(), .code = code.toStdU16String()};
}

void JumpDlg::ReadLink() {
  ArticleReference article;
  if (ParseArticleUrl(link_->text().toStdU16String(), hosts_, article) && !article.code.empty()) {
    board_->setText(QString::fromStdU16String(article.board));
    code_->setText(u'#' + QString::fromStdU16String(article.code));
  }
  Check();
}

void JumpDlg::Check() {
  const ArticleReference article = Article();
  const bool hasCode = !AidToFileName(article.code).empty();
  jump_->setEnabled(hasCode && !article.board.empty());
  ArticleReference ofLink;
  const bool badLink =
      !link_->text().trimmed().isEmpty() &&
      !(ParseArticleUrl(link_->text().toStdU16String(), hosts_, ofLink) && !ofLink.code.empty());
  if (badLink)
    complaint_->setText(u"這不是文章的網址。"_qs);
  else if (!article.code.empty() && !hasCode)
    complaint_->setText(u"文章代碼是 8 個英文字母、數字、「-」或「_」。"_qs);
  else
    complaint_->clear();
}

}  // namespace quillet
