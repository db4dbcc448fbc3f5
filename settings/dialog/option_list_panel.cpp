#include "settings/dialog/option_list_panel.h"

#include <algorithm>

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillet {
namespace {

using S = Settings;

// A line of the list as the reader of its file has it, but with all that stands behind the id.
struct NameLine {
  std::u16string_view id;
  std::u16string_view text;
};

NameLine PartsOf(std::u16string_view line) {
  const auto from = [&line](std::size_t at) { return line.substr(std::min(at, line.size())); };
  line = from(line.find_first_not_of(u'='));
  const std::size_t idEnd = line.find(u'=');
  return {Trimmed(line.substr(0, idEnd)), Trimmed(from(line.find_first_not_of(u'=', idEnd)))};
}

QString NameFault(std::u16string_view line) {
  const NameLine parts = PartsOf(line);
  if (parts.id.empty()) return u"「=」前面沒有id"_qs;
  if (parts.text.find(u'=') == std::u16string_view::npos) return {};
  return u"描述裡不能有「=」，從那裡起的文字會遺失"_qs;
}

NameList NamesOf(const std::vector<std::u16string>& lines, const NameList& before) {
  NameList names;
  names.ReadLines(lines);
  for (const std::u16string& line : lines) {
    const std::u16string_view id = PartsOf(line).id;
    const ListEntry* const now = names.Find(id);
    if (now == nullptr) continue;
    ListEntry entry = *now;
    const ListEntry* const old = before.Find(id);
    if (old != nullptr) entry.changed = old->changed;
    if (old == nullptr || entry != *old) entry.changed = true;
    names.Set(id, std::move(entry));
  }
  return names;
}

QGroupBox* Framed(const QString& title, QWidget* content) {
  auto* const group = new QGroupBox(title);
  (new QVBoxLayout(group))->addWidget(content);
  return group;
}

}  // namespace

OptionListPanel::OptionListPanel(QWidget* parent)
    : OptionPanelWidget(parent),
      controls_(OptionPanel::kList, *this),
      names_(new LinesEdit(u"id黑白名單"_qs)),
      titleWords_(new LinesEdit(u"文章標題黑名單"_qs)) {
  names_->setObjectName(u"names");
  titleWords_->setObjectName(u"titleWords");
  auto* const options = new QHBoxLayout;
  auto* const left = new QVBoxLayout;
  auto* const right = new QVBoxLayout;
  options->addLayout(left, 1);
  options->addLayout(right, 1);
  AddGroup(*left, u"id黑名單等級(高等級包含低等級效果)"_qs, controls_,
           {&S::blackTitle, &S::blackPush, &S::superBlackTitle, &S::superBlackPush})
      ->addRow(new NoteLabel(u"(「不自動開圖」%1)"_qs.arg(QStringView(kActsNotYet))));
  QFormLayout* const switches =
      AddGroup(*right, u"顯示與快捷鍵"_qs, controls_, {&S::hideCharShowStar, &S::addBlackHotKey});
  switches->addRow(
      new NoteLabel(u"(鼠標指到id上, \n按 ` 可切換黑名單, \n按 0~7 可切換旗子顏色, \n按 u 可切換底線, "
                    u"按~\n可加入上次新增的名單)"_qs));
  auto* const lists = new QHBoxLayout;
  lists->addWidget(Framed(u"id黑白名單 (id上按右鍵可直接加入名單)"_qs, names_), 3);
  lists->addWidget(Framed(u"文章標題黑名單"_qs, titleWords_), 2);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(options);
  layout->addLayout(lists, 1);
}

void OptionListPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Fields());
  names_->Fill(store.Names().AsText());
  titleWords_->Fill(TitleWordsAsText(store.TitleWords()));
}

QString OptionListPanel::Complaint() {
  const QString complaint = names_->Complaint(NameFault);
  return complaint.isEmpty() ? titleWords_->Complaint() : complaint;
}

void OptionListPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
  if (names_->IsTouched()) store.Names() = NamesOf(names_->Lines(), store.Names());
  if (titleWords_->IsTouched()) store.TitleWords() = titleWords_->Lines();
}

}  // namespace quillet
