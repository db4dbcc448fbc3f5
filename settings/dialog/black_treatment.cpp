#include "settings/dialog/black_treatment.h"

#include <QComboBox>
#include <QFormLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "settings/dialog/option_panel.h"

namespace quillet {
namespace {

using S = Settings;

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
  pages_->addWidget(MakeChoices(u"黑名單"_qs, &S::blackTitle, &S::blackPush));
  pages_->addWidget(MakeChoices(u"超黑名單"_qs, &S::superBlackTitle, &S::superBlackPush));
  pages_->addWidget(new NoteLabel(u"這種名單的標題和推文照常顯示，\n只加上底線與旗子。"_qs));
  controls_.Open(store_.Fields());
}

QWidget* BlackTreatment::MakeChoices(const QString& listName, const SettingField& titles,
                                     const SettingField& pushes) {
  auto* const page = new QWidget;
  auto* const form = new QFormLayout(page);
  form->setContentsMargins(0, 0, 0, 0);
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  const auto addBox = [&](const SettingField& field) {
    controls_.AddRow(*form, field);
    return static_cast<const QComboBox*>(controls_.Control(field));
  };
  const QComboBox* const title = addBox(titles);
  const QComboBox* const push = addBox(pushes);
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
  store_.Set(controls_.Touched());
}

}  // namespace quillet
