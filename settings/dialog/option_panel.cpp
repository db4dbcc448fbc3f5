#include "settings/dialog/option_panel.h"

#include <algorithm>

#include <QBoxLayout>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QPalette>

#include "settings/dialog/setting_controls.h"

namespace quillet {
namespace {

// The share of the text's colour in a note's, the rest being the background's. At 0.7 black on a light grey
// window keeps a contrast of 8:1, white on a dark one 7:1.
constexpr float kNoteStrength = 0.7F;

QColor Between(const QColor& back, const QColor& text, float share) {
  const auto mix = [share](float b, float t) { return b + (t - b) * share; };
  return QColor::fromRgbF(mix(back.redF(), text.redF()), mix(back.greenF(), text.greenF()),
                          mix(back.blueF(), text.blueF()));
}

}  // namespace

OptionPanelWidget::Columns OptionPanelWidget::MakeColumns() {
  auto* whole = new QVBoxLayout(this);
  auto* columns = new QHBoxLayout;
  whole->addLayout(columns);
  whole->addStretch();
  const Columns made{new QVBoxLayout, new QVBoxLayout};
  columns->addLayout(made.left, 1);
  columns->addLayout(made.right, 1);
  return made;
}

QFormLayout* OptionPanelWidget::AddGroup(QBoxLayout& column, const QString& title, SettingControls& controls,
                                         std::initializer_list<SettingField> fields) {
  QFormLayout* group = AddGroup(column, title);
  for (const SettingField& field : fields)
    controls.AddRow(*group, field);
  const auto acts = [](const SettingField& field) { return RowOf(field).Acts(); };
  if (!std::all_of(fields.begin(), fields.end(), acts))
    group->addRow(new NoteLabel(QStringLiteral("(灰色的選項%1)").arg(QStringView(kActsNotYet)), this));
  return group;
}

QFormLayout* OptionPanelWidget::AddGroup(QBoxLayout& column, const QString& title) {
  auto* group = new QGroupBox(title, this);
  auto* form = new QFormLayout(group);
  // Whatever the style's own way is: combo boxes of one column are of one width.
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  column.addWidget(group);
  return form;
}

NoteLabel::NoteLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
}

void NoteLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ApplyColour();
}

void NoteLabel::showEvent(QShowEvent* event) {
  ApplyColour();
  QLabel::showEvent(event);
}

void NoteLabel::ApplyColour() {
  if (parentWidget() == nullptr) return;
  const QPalette& around = parentWidget()->palette();
  const QColor colour =
      Between(around.color(QPalette::Window), around.color(QPalette::WindowText), kNoteStrength);
  // Setting the palette comes back here as a change.
  if (palette().color(QPalette::WindowText) == colour) return;
  QPalette quiet = palette();
  quiet.setColor(QPalette::WindowText, colour);
  setPalette(quiet);
}

}  // namespace quillet
