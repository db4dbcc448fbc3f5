// The controls of a panel, made from the rows of the setting table: each is looked up by its key, labelled
// with the row's label, filled from and written back to the settings map. User-interface thread.
#pragma once

#include <string_view>
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

  // The control of a row (section "Basic" unless said), made on the first call: QCheckBox, QComboBox,
  // QSlider, QSpinBox, QLineEdit, or for radio buttons a QWidget with a row of them. A key that is not of the
  // panel is a mistake in the program and ends it.
  QWidget* Control(std::u16string_view key, std::u16string_view section = u"Basic");
  // Whether something acts on the row's setting; its control is grey otherwise, and says why.
  static bool Acts(std::u16string_view key, std::u16string_view section = u"Basic");
  // The row's label as text.
  static QString Label(std::u16string_view key, std::u16string_view section = u"Basic");
  // A new label with the row's words, belonging to the row's control.
  QLabel* LabelOf(std::u16string_view key, std::u16string_view section = u"Basic");

  // Adds the row's control to the form: a check box alone, any other with its label before it.
  void AddRow(QFormLayout& form, std::u16string_view key, std::u16string_view section = u"Basic");

  // Lets the wheel change `control` only while it has the keyboard, otherwise the panel scrolls; and never
  // Ctrl+Tab, which turns the tabs. What this object makes is so already.
  void Guard(QWidget& control);

  // The keys of the panel for which no control was made; empty on a complete panel.
  std::vector<QString> Missing() const;

  // A key that is absent shows its initial value, one out of range the value that the program uses.
  void Open(const SettingsMap& map);
  // Texts trimmed; numbers as decimals.
  void Store(SettingsMap& map) const;

 private:
  struct Entry {
    const SettingRow* row;
    QWidget* control;
  };

  QWidget* Make(const SettingRow& row);

  OptionPanel panel_;
  QWidget& owner_;
  QObject* guard_;
  std::vector<Entry> entries_;
};

}  // namespace quillet
