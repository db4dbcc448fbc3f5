// The controls of a panel, made from the rows of the setting table: each is asked for by its field, labelled
// with the row's label, filled from the fields and written back to the settings map. User-interface thread.
#pragma once

#include <string>
#include <vector>

#include <QWidget>

#include "settings/setting_table.h"
#include "settings/settings_map.h"

class QFormLayout;
class QLabel;

namespace quillet {

class SettingControls {
 public:
  // Only rows of this panel can be asked for. The controls become children of `owner`, with the row's key as
  // their object name.
  SettingControls(OptionPanel panel, QWidget& owner);

  // The control of the field's row, made on the first call: QCheckBox, QComboBox, QSlider, QSpinBox,
  // QLineEdit, or for radio buttons a QWidget with a row of them. Grey where nothing acts on the setting, and
  // says so. A field that is not of the panel is a mistake in the program and ends it.
  QWidget* Control(const SettingField& field);
  // A new label with the row's words, belonging to the row's control.
  QLabel* LabelOf(const SettingField& field);

  // Adds the row's control to the form: a check box alone, any other with its label before it.
  void AddRow(QFormLayout& form, const SettingField& field);

  // Lets the wheel change `control` only while it has the keyboard, otherwise the panel scrolls; and never
  // Ctrl+Tab, which turns the tabs. What this object makes is so already.
  void Guard(QWidget& control);

  void Open(const Settings& settings);
  // All of them, texts trimmed.
  void Store(SettingsMap& map) const;
  // Those that say something else than they were opened with.
  std::vector<SettingChange> Touched() const;

 private:
  struct Entry {
    const SettingRow* row;
    QWidget* control;
    std::u16string opened{};
  };

  QWidget* Make(const SettingRow& row);

  OptionPanel panel_;
  QWidget& owner_;
  QObject* guard_;
  std::vector<Entry> entries_;
};

}  // namespace quillet
