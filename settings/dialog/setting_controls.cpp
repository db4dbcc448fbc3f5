#include "settings/dialog/setting_controls.h"

#include <algorithm>
#include <utility>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

// Leaves to the dialog what is not meant for the control: the wheel where the control only happens to lie
// under the pointer while a panel scrolls, and Ctrl+Tab, which a combo box would look for among its choices.
class ControlGuard : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || (!IsStrayWheel(*widget, *event) && !TurnsTabs(*event))) return false;
    event->ignore();
    return true;
  }

 private:
  static bool IsStrayWheel(const QWidget& widget, const QEvent& event) {
    return event.type() == QEvent::Wheel && !widget.hasFocus();
  }

  static bool TurnsTabs(const QEvent& event) {
    if (event.type() != QEvent::KeyPress) return false;
    const auto& press = static_cast<const QKeyEvent&>(event);
    const bool isTab = press.key() == Qt::Key_Tab || press.key() == Qt::Key_Backtab;
    return isTab && press.modifiers().testFlag(Qt::ControlModifier);
  }
};

QString Words(std::u16string_view text) {
  return QStringView(text).toString();
}

void GreyOut(QWidget& widget) {
  widget.setEnabled(false);
  widget.setToolTip(Words(kActsNotYet));
}

QWidget* MakeComboBox(const SettingRow& row, QWidget& owner) {
  auto* box = new QComboBox(&owner);
  box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  for (const SettingChoice& choice : row.choices)
    box->addItem(Words(choice.label));
  return box;
}

QButtonGroup& ButtonsOf(QWidget& radioButtons) {
  return *radioButtons.findChild<QButtonGroup*>();
}

QWidget* MakeRadioButtons(const SettingRow& row, QWidget& owner) {
  auto* widget = new QWidget(&owner);
  auto* line = new QHBoxLayout(widget);
  line->setContentsMargins(0, 0, 0, 0);
  auto* group = new QButtonGroup(widget);
  for (std::size_t value = 0; value < row.choices.size(); ++value) {
    auto* button = new QRadioButton(Words(row.choices[value].label), widget);
    group->addButton(button, static_cast<int>(value));
    line->addWidget(button);
  }
  line->addStretch();
  return widget;
}

QWidget* MakeSlider(const SettingRow& row, QWidget& owner) {
  auto* slider = new QSlider(Qt::Horizontal, &owner);
  slider->setRange(row.least, row.most);
  return slider;
}

QWidget* MakeNumberBox(const SettingRow& row, QWidget& owner) {
  auto* box = new QSpinBox(&owner);
  box->setRange(row.least, row.most);
  return box;
}

QWidget* MakeTextBox(const SettingRow& row, QWidget& owner) {
  auto* box = new QLineEdit(&owner);
  // What a line of the file holds besides the key and "=".
  box->setMaxLength(static_cast<int>(kLongestLine - row.key.size() - 1));
  return box;
}

void Show(const SettingRow& row, const Settings& settings, QWidget* control) {
  const int number = NumberOf(row, settings);
  switch (row.control) {
    case OptionControl::kCheckBox:
      static_cast<QCheckBox*>(control)->setChecked(number != 0);
      break;
    case OptionControl::kComboBox:
      static_cast<QComboBox*>(control)->setCurrentIndex(number);
      break;
    case OptionControl::kRadioButtons:
      if (QAbstractButton* button = ButtonsOf(*control).button(number)) button->setChecked(true);
      break;
    case OptionControl::kSlider:
      static_cast<QSlider*>(control)->setValue(number);
      break;
    case OptionControl::kNumberBox:
      static_cast<QSpinBox*>(control)->setValue(number);
      break;
    case OptionControl::kTextBox: {
      auto* box = static_cast<QLineEdit*>(control);
      box->setText(Words(TextOf(row, settings)));
      box->setCursorPosition(0);
      break;
    }
    case OptionControl::kNone:
      break;
  }
}

// What the file holds for the state of the control.
std::u16string ValueOf(const SettingRow& row, QWidget* control) {
  switch (row.control) {
    case OptionControl::kCheckBox:
      return ToText(static_cast<QCheckBox*>(control)->isChecked() ? 1 : 0);
    case OptionControl::kComboBox:
      return ToText(static_cast<QComboBox*>(control)->currentIndex());
    case OptionControl::kRadioButtons:
      return ToText(ButtonsOf(*control).checkedId());
    case OptionControl::kSlider:
      return ToText(static_cast<QSlider*>(control)->value());
    case OptionControl::kNumberBox:
      return ToText(static_cast<QSpinBox*>(control)->value());
    case OptionControl::kTextBox:
      return std::u16string(Trimmed(static_cast<QLineEdit*>(control)->text().toStdU16String()));
    case OptionControl::kNone:
      break;
  }
  return {};
}

}  // namespace

SettingControls::SettingControls(OptionPanel panel, QWidget& owner)
    : panel_(panel), owner_(owner), guard_(new ControlGuard(&owner)) {}

QWidget* SettingControls::Control(const SettingField& field) {
  const SettingRow& row = RowOf(field);
  if (row.panel != panel_) qFatal("setting %s is of another panel", qPrintable(Words(row.key)));
  const auto made =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.row == &row; });
  if (made != entries_.end()) return made->control;
  QWidget* control = Make(row);
  control->setObjectName(Words(row.key));
  control->setAccessibleName(Words(row.label).simplified());
  if (!row.Acts()) GreyOut(*control);
  entries_.push_back({&row, control});
  return control;
}

QWidget* SettingControls::Make(const SettingRow& row) {
  QWidget* control = nullptr;
  switch (row.control) {
    case OptionControl::kCheckBox:
      return new QCheckBox(Words(row.label), &owner_);
    case OptionControl::kRadioButtons:
      return MakeRadioButtons(row, owner_);
    case OptionControl::kTextBox:
      return MakeTextBox(row, owner_);
    case OptionControl::kComboBox:
      control = MakeComboBox(row, owner_);
      break;
    case OptionControl::kSlider:
      control = MakeSlider(row, owner_);
      break;
    case OptionControl::kNumberBox:
      control = MakeNumberBox(row, owner_);
      break;
    case OptionControl::kNone:
      qFatal("setting %s has no control", qPrintable(Words(row.key)));
  }
  Guard(*control);
  return control;
}

void SettingControls::Guard(QWidget& control) {
  control.setFocusPolicy(Qt::StrongFocus);
  control.installEventFilter(guard_);
}

QLabel* SettingControls::LabelOf(const SettingField& field) {
  const SettingRow& row = RowOf(field);
  auto* label = new QLabel(Words(row.label), &owner_);
  label->setBuddy(Control(field));
  if (!row.Acts()) GreyOut(*label);
  return label;
}

void SettingControls::AddRow(QFormLayout& form, const SettingField& field) {
  QWidget* control = Control(field);
  if (RowOf(field).control == OptionControl::kCheckBox)
    form.addRow(control);
  else
    form.addRow(LabelOf(field), control);
}

void SettingControls::Open(const Settings& settings) {
  for (Entry& entry : entries_) {
    Show(*entry.row, settings, entry.control);
    entry.opened = ValueOf(*entry.row, entry.control);
  }
}

void SettingControls::Store(SettingsMap& map) const {
  for (const Entry& entry : entries_)
    Put(map, {*entry.row, ValueOf(*entry.row, entry.control)});
}

std::vector<SettingChange> SettingControls::Touched() const {
  std::vector<SettingChange> changes;
  for (const Entry& entry : entries_)
    if (std::u16string value = ValueOf(*entry.row, entry.control); value != entry.opened)
      changes.emplace_back(*entry.row, std::move(value));
  return changes;
}

}  // namespace quillet
