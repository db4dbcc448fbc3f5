#include "app/dialogs/keys_dialog.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

constexpr std::array kPagingKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};

QString Cell(const std::u16string& text) {
  return u"<td style=\"padding-right: 24px\">%1</td>"_qs.arg(QString::fromStdU16String(text).toHtmlEscaped());
}

// One table for all, so that the keys of all groups stand below one another.
QString PageOf(const std::vector<HelpGroup>& groups) {
  if (groups.empty()) return u"<p>沒有符合的指令或按鍵</p>"_qs;
  QString page = u"<table>"_qs;
  for (const HelpGroup& group : groups) {
    page += u"<tr><td colspan=\"3\" style=\"padding-top: 12px\"><b>%1</b></td></tr>"_qs.arg(
        QString::fromStdU16String(group.title).toHtmlEscaped());
    for (const HelpLine& line : group.lines)
      page += u"<tr>%1%2%3</tr>"_qs.arg(Cell(line.name), Cell(line.keys),
                                        Cell(line.alone.empty() ? line.alone : u"讀文章時 " + line.alone));
  }
  return page + u"</table>"_qs;
}

}  // namespace

KeysDlg::KeysDlg(std::vector<HelpGroup> groups, QWidget* parent)
    : QDialog(parent), groups_(std::move(groups)), wanted_(new QLineEdit), text_(new QTextBrowser) {
  setWindowTitle(u"按鍵一覽"_qs);
  wanted_->setPlaceholderText(u"輸入要找的功能或按鍵"_qs);
  wanted_->setClearButtonEnabled(true);
  wanted_->installEventFilter(this);
  text_->setFocusPolicy(Qt::ClickFocus);
  auto* const buttons = new QDialogButtonBox;
  QPushButton* const close = buttons->addButton(u"關閉"_qs, QDialogButtonBox::RejectRole);
  close->setAutoDefault(false);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(wanted_);
  layout->addWidget(text_);
  layout->addWidget(buttons);
  setMinimumWidth(LettersWide(*this, 72));
  resize(sizeHint().expandedTo({0, 560}));
  connect(wanted_, &QLineEdit::textChanged, this, &KeysDlg::Show);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  Show({});
  wanted_->setFocus();
}

bool KeysDlg::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (std::find(kPagingKeys.begin(), kPagingKeys.end(), key) == kPagingKeys.end()) return false;
  QCoreApplication::sendEvent(text_, event);
  return true;
}

void KeysDlg::Show(const QString& wanted) {
  text_->setHtml(PageOf(FilterHelp(groups_, wanted.toStdU16String())));
}

}  // namespace quillet
