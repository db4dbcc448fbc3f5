#include "settings/dialog/black_treatment.h"

#include <QComboBox>
#include <QFormLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "settings/dialog/option_panel.h"
#include "settings/text_lines.h"

namespace quillet {
namespace {

enum Page { kBlackPage, kSuperBlackPage, kOtherPage };

// By the settings' numbers: the first treatment of push lines concerns pictures only.
QString SeenWords(const QString& listName, int title, int push) {
  if (title > 0 || push > 1) return u"對%1裡所有的id都有效。"_qs.arg(listName);
  return u"目前%1的標題和推文照常顯示，看不出差別。"_qs.arg(listName);
}

}  // namespace

BlackTreatment::BlackTreatment(SettingsStore& store)
    : store_(store), controls_(OptionPanel::kList, *this), pages_(new QStackedWidget(this)) {
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(pages_);
  pages_->addWidget(MakeChoices(u"黑名單"_qs, u"BlackTitle", u"BlackPush"));
  pages_->addWidget(MakeChoices(u"超黑名單"_qs, u"SBlackTitle", u"SBlackPush"));
  pages_->addWidget(new NoteLabel(u"這種名單的標題和推文照常顯示，\n只加上底線與旗子。"_qs));
  controls_.Open(store_.Map());
  for (Choice& choice : choices_)
    choice.before = choice.box->currentIndex();
}

QWidget* BlackTreatment::MakeChoices(const QString& listName, std::u16string_view titleKey,
                                     std::u16string_view pushKey) {
  auto* const page = new QWidget;
  auto* const form = new QFormLayout(page);
  form->setContentsMargins(0, 0, 0, 0);
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  const auto addBox = [&](std::u16string_view key) {
    controls_.AddRow(*form, key);
    auto* const box = static_cast<QComboBox*>(controls_.Control(key));
    choices_.push_back({key, box, box->currentIndex()});
    return box;
  };
  const QComboBox* const title = addBox(titleKey);
  const QComboBox* const push = addBox(pushKey);
  auto* const seen = new NoteLabel(SeenWords(listName, 0, 0));
  form->addRow(seen);
  // The longer words' room is kept.
  seen->setMinimumWidth(seen->sizeHint().width());
  const auto say = [=] { seen->setText(SeenWords(listName, title->currentIndex(), push->currentIndex())); };
  for (const QComboBox* const box : {title, push})
    connect(box, &QComboBox::currentIndexChanged, seen, say);
  return page;
}

void BlackTreatment::SetKind(ListKind kind) {
  const bool isBlack = kind == ListKind::kBlack;
  const bool isSuperBlack = kind == ListKind::kSuperBlack;
  setTitle(isBlack ? u"目前對黑名單的處理"_qs : isSuperBlack ? u"目前對超黑名單的處理"_qs : u"目前的處理"_qs);
  pages_->setCurrentIndex(isBlack ? kBlackPage : isSuperBlack ? kSuperBlackPage : kOtherPage);
}

void BlackTreatment::Store() {
  for (const Choice& choice : choices_)
    if (choice.box->currentIndex() != choice.before)
      store_.Change(u"Basic", choice.key, ToText(choice.box->currentIndex()));
}

}  // namespace quillet
