#include "settings/dialog/add_black_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "settings/dialog/black_treatment.h"
#include "settings/dialog/colour_swatch.h"
#include "settings/dialog/dialog_room.h"
#include "settings/dialog/lines_edit.h"
#include "settings/dialog/mnemonics.h"
#include "settings/dialog/option_panel.h"

namespace quillet {
namespace {

struct FlagColour {
  const char16_t* name;
  QRgb shown;
};

// By number, from 1. The tones are told from one another on a light and on a dark window.
constexpr std::array<FlagColour, kFlagColours> kColours{{
    {u"紅", 0xFFE04A40},
    {u"綠", 0xFF3DA350},
    {u"黃", 0xFFEBC21A},
    {u"深藍", 0xFF2F55D0},
    {u"紫", 0xFFA24FD6},
    {u"淺藍", 0xFF45BDE8},
    {u"白", 0xFFFAFAFA},
}};
constexpr int kColoursPerRow = 4;

// By kind.
const QStringList& KindNames() {
  static const QStringList names{u"無"_qs, u"黑名單"_qs, u"超黑名單"_qs, u"白名單"_qs};
  return names;
}

// Whether the entry comes back whole from a line of the file.
bool IsKept(std::u16string_view id, const ListEntry& entry) {
  NameList written;
  written.Set(id, entry);
  NameList read;
  read.ReadLines(ReadLines(EncodeText(written.AsText(), "\n")).lines);
  const ListEntry* const found = read.Find(id);
  if (found == nullptr) return false;
  ListEntry same = *found;
  same.changed = entry.changed;
  return same == entry;
}

QString UnfitWords(char16_t character) {
  return character == u'=' ? u"字元「=」"_qs : NameOfUnseen(character) + u' ';
}

QString IdFault(std::u16string_view id, const ListEntry& entry) {
  if (Trimmed(id).empty()) return u"沒有id，無法加入名單。"_qs;
  if (Trimmed(id) != id) return u"id的前後有空白，無法加入名單。"_qs;
  if (const char16_t unfit = FirstUnfitCharacter(id))
    return u"id第 %1 個%2無法存進名單檔。"_qs.arg(id.find(unfit) + 1).arg(UnfitWords(unfit));
  if (id.size() > kLongestLine || (LongestDescription(id, entry) == 0 && !EntryText(entry).empty()))
    return u"id太長了，無法加入名單。"_qs;
  return {};
}

// `shown` is the description as it stands in the field, blanks at its ends included.
QString DescriptionFault(std::u16string_view id, const ListEntry& entry, std::u16string_view shown) {
  const std::u16string_view description = entry.description;
  if (const char16_t unfit = FirstUnfitCharacter(description)) {
    const std::size_t place = shown.find(unfit, shown.find(description)) + 1;
    return u"描述第 %1 個%2無法存進名單檔。"_qs.arg(place).arg(UnfitWords(unfit));
  }
  const std::size_t most = LongestDescription(id, entry);
  if (description.size() > most)
    return u"描述太長了，最多 %1 個字元，現在有 %2 個。"_qs.arg(most).arg(description.size());
  return {};
}

QString FaultOf(std::u16string_view id, const ListEntry& entry, std::u16string_view shown) {
  QString fault = IdFault(id, entry);
  if (fault.isEmpty()) fault = DescriptionFault(id, entry, shown);
  if (fault.isEmpty() && !IsKept(id, entry)) fault = u"名單檔存不下這個id的資料。"_qs;
  return fault;
}

// The room of a full line of the field; every complaint fits into it.
QSize LineSize(const QFontMetrics& metrics) {
  return metrics.size(Qt::TextSingleLine, QString(25, u'描'));
}

// Ids come from the screen of the BBS, of any length and content.
QLabel* MakeIdLabel(const QString& id) {
  auto* const label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  const QFontMetrics metrics(bold);
  const QString line = QString::fromStdU16String(OneLine(id.toStdU16String()));
  label->setText(metrics.elidedText(line, Qt::ElideRight, LineSize(metrics).width()));
  return label;
}

}  // namespace

AddBlackDlg::AddBlackDlg(SettingsStore& store, const QString& id, QWidget* parent)
    : QDialog(parent),
      store_(store),
      id_(id.toStdU16String()),
      kind_(new QComboBox),
      description_(new QLineEdit),
      complaint_(new QLabel),
      underline_(new QCheckBox(u"畫底線"_qs)),
      treatment_(new BlackTreatment(store)) {
  setWindowTitle(u"加入名單"_qs);
  kind_->addItems(KindNames());
  kind_->setObjectName("Kind");
  description_->setObjectName("Description");
  underline_->setObjectName("Underline");
  LayOut();
  GiveMnemonics({this});
  const ListEntry* const listed = store_.Names().Find(id_);
  Show(listed != nullptr ? *listed : ListEntry{});

  connect(description_, &QLineEdit::textChanged, this, &AddBlackDlg::Check);
  // The marker takes of the line's room.
  connect(kind_, &QComboBox::currentIndexChanged, this, &AddBlackDlg::Check);
  connect(underline_, &QCheckBox::toggled, this, &AddBlackDlg::Check);
  for (QCheckBox* const colour : colours_)
    connect(colour, &QCheckBox::toggled, this, &AddBlackDlg::Check);
  Check();
  FitToScreen(*this);
  description_->setFocus();
}

void AddBlackDlg::LayOut() {
  complaint_->setTextFormat(Qt::PlainText);
  // Its room is kept, so that nothing jumps when there is something to complain about.
  complaint_->setMinimumSize(LineSize(complaint_->fontMetrics()));
  auto* const content = new QWidget;
  auto* const parts = new QVBoxLayout(content);
  parts->setContentsMargins(0, 0, 0, 0);
  auto* const form = new QFormLayout;
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  form->addRow(u"id"_qs, MakeIdLabel(QString::fromStdU16String(id_)));
  form->addRow(u"黑或白"_qs, kind_);
  form->addRow(u"描述"_qs, description_);
  form->addRow(QString(), complaint_);
  form->addRow(QString(), underline_);

  parts->addLayout(form);
  parts->addWidget(MakeColours());
  parts->addWidget(treatment_);
  parts->addWidget(new NoteLabel(
      u"按Tab可顯示所有id的描述 (原Qor Tab功能改為按 ` )\n雙擊Tab可顯示所有黑名單被隱藏的推文/標題"_qs));
  parts->addStretch();
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScroll(content, Sideways::kNever));
  layout->addWidget(MakeButtons());
}

QWidget* AddBlackDlg::MakeColours() {
  auto* const group = new QGroupBox(u"旗子顏色"_qs);
  auto* const grid = new QGridLayout(group);
  for (int i = 0; i < kFlagColours; ++i) {
    const FlagColour& colour = kColours[static_cast<std::size_t>(i)];
    auto* const box = new QCheckBox(QString::fromUtf16(colour.name));
    // The key that switches it on the BBS's pages, too.
    box->setObjectName(QString::number(i + 1));
    const int side = box->fontMetrics().height();
    box->setIconSize({side, side});
    box->setIcon(ColourSwatch(colour.shown));
    grid->addWidget(box, i / kColoursPerRow, i % kColoursPerRow);
    colours_[static_cast<std::size_t>(i)] = box;
  }
  return group;
}

QDialogButtonBox* AddBlackDlg::MakeButtons() {
  auto* const buttons = new QDialogButtonBox;
  ok_ = buttons->addButton(u"確定"_qs, QDialogButtonBox::AcceptRole);
  ok_->setDefault(true);
  buttons->addButton(u"取消"_qs, QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

void AddBlackDlg::Show(const ListEntry& entry) {
  kind_->setCurrentIndex(static_cast<int>(entry.kind));
  description_->setText(QString::fromStdU16String(entry.description));
  underline_->setChecked(entry.underline);
  for (int i = 0; i < kFlagColours; ++i)
    colours_[static_cast<std::size_t>(i)]->setChecked(entry.HasColour(i + 1));
}

ListEntry AddBlackDlg::Entered() const {
  ListEntry entry;
  entry.kind = static_cast<ListKind>(kind_->currentIndex());
  entry.underline = underline_->isChecked();
  for (int i = 0; i < kFlagColours; ++i)
    entry.SetColour(i + 1, colours_[static_cast<std::size_t>(i)]->isChecked());
  entry.description = Trimmed(description_->text().toStdU16String());
  entry.changed = true;
  return entry;
}

void AddBlackDlg::Check() {
  treatment_->SetKind(Entered().kind);
  const QString fault = FaultOf(id_, Entered(), description_->text().toStdU16String());
  complaint_->setText(fault);
  description_->setAccessibleDescription(fault);
  ok_->setEnabled(fault.isEmpty());
}

void AddBlackDlg::accept() {
  Check();
  if (!ok_->isEnabled()) return;
  store_.Names().Set(id_, Entered());
  store_.SaveNames();
  treatment_->Store();
  QDialog::accept();
}

}  // namespace quillet
