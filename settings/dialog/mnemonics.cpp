#include "settings/dialog/mnemonics.h"

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QPlainTextEdit>

#include "settings/mnemonic_letters.h"

namespace quillet {
namespace {

// What takes a key: its words, and whose name the key is taken from.
struct Bearer {
  QString words;
  std::function<void(const QString&)> setWords;
  QString name;
};

QString NameOf(const QWidget& control, const QString& words) {
  return control.objectName().isEmpty() ? words : control.objectName();
}

bool IsOfButtonRow(const QWidget& button) {
  return qobject_cast<QDialogButtonBox*>(button.parentWidget()) != nullptr;
}

void AddBearer(QWidget* widget, std::vector<Bearer>& bearers) {
  if (auto* const button = qobject_cast<QAbstractButton*>(widget)) {
    if (!button->text().isEmpty() && !IsOfButtonRow(*button))
      bearers.push_back({button->text(), [=](const QString& words) { button->setText(words); },
                         NameOf(*button, button->text())});
  } else if (auto* const label = qobject_cast<QLabel*>(widget)) {
    const QWidget* const buddy = label->buddy();
    const bool leads = buddy != nullptr && buddy->focusPolicy() != Qt::NoFocus;
    if (leads)
      bearers.push_back({label->text(), [=](const QString& words) { label->setText(words); },
                         NameOf(*buddy, label->text())});
  } else if (auto* const group = qobject_cast<QGroupBox*>(widget)) {
    if (const auto* const edit = group->findChild<QPlainTextEdit*>())
      bearers.push_back({group->title(), [=](const QString& words) { group->setTitle(words); },
                         NameOf(*edit, group->title())});
  }
}

}  // namespace

void GiveMnemonics(std::initializer_list<QWidget*> shownTogether) {
  std::vector<Bearer> bearers;
  for (QWidget* const part : shownTogether) {
    AddBearer(part, bearers);
    for (QWidget* const widget : part->findChildren<QWidget*>())
      AddBearer(widget, bearers);
  }
  std::set<char16_t> taken;
  std::erase_if(bearers, [&](const Bearer& bearer) {
    const QKeySequence key = QKeySequence::mnemonic(bearer.words);
    if (key.isEmpty()) return false;
    taken.insert(static_cast<char16_t>(key[0].key()));
    return true;
  });
  std::vector<std::u16string> names;
  names.reserve(bearers.size());
  for (const Bearer& bearer : bearers)
    names.push_back(bearer.name.toStdU16String());
  const std::vector<char16_t> letters = ChooseMnemonics(names, std::move(taken));
  for (std::size_t i = 0; i < bearers.size(); ++i)
    if (letters[i] != 0) bearers[i].setWords(u"%1(&%2)"_qs.arg(bearers[i].words, QChar(letters[i])));
}

}  // namespace quillet
