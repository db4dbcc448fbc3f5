#include "app/dialogs/keys_dialog.h"

#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

QString Cell(const std::u16string& text) {
  return u"<td style=\"padding-right: 24px\">%1</td>"_qs.arg(QString::fromStdU16String(text).toHtmlEscaped());
}

// One table for all, so that the keys of all groups stand below one another.
QString PageOf(const std::vector<HelpGroup>& groups) {
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

KeysDlg::KeysDlg(const std::vector<HelpGroup>& groups, QWidget* parent) : QDialog(parent) {
  setWindowTitle(u"按鍵一覽"_qs);
  auto* const text = new QTextBrowser;
  text->setHtml(PageOf(groups));
  auto* const buttons = new QDialogButtonBox;
  buttons->addButton(u"關閉"_qs, QDialogButtonBox::RejectRole);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(text);
  layout->addWidget(buttons);
  setMinimumWidth(LettersWide(*this, 64));
  resize(sizeHint().expandedTo({0, 480}));
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

}  // namespace quillet
