// Every setting in one table: where it is kept, what it may be, and its words in the options dialog. The
// map's defaults, the typed fields and the dialog's panels are all made from it, so that a new setting is a
// new row. Constant; any thread.
#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "settings/settings.h"

namespace quillet {

enum class SettingKind {
  kFlag,    // 0 or 1; any other number counts as 1
  kChoice,  // the index of a choice; a number that is none counts as the initial one
  kNumber,  // a quantity; a number outside the range counts as the nearest inside
  kText,
};

enum class OptionPanel { kNone, kDisplay, kBehavior, kList, kHotTrack, kControl };
enum class OptionControl { kNone, kCheckBox, kComboBox, kRadioButtons, kSlider, kNumberBox, kTextBox };

using SettingField = std::variant<bool Settings::*, int Settings::*, std::u16string Settings::*>;

struct SettingRow {
  std::u16string_view section;
  std::u16string_view key;
  SettingField field;
  SettingKind kind;
  std::u16string_view initial;  // as text; what the field is while the key is absent
  bool inMap;                   // the map starts with the key, at this value
  int least;                    // kChoice and kNumber
  int most;
  OptionPanel panel;  // where the options dialog shows it, if it does
  OptionControl control;
  std::u16string_view label;
  std::span<const std::u16string_view> choices;  // combo box and radio buttons, by value
  bool acts = true;                              // something in this version acts on it
};

std::span<const SettingRow> SettingTable();

// What is said of a setting that nothing acts on.
inline constexpr std::u16string_view kActsNotYet = u"這個版本還沒有作用";

// Null when there is none.
const SettingRow* FindSetting(std::u16string_view section, std::u16string_view key);

// Whether something acts on the setting; false when there is none.
bool Acts(std::u16string_view section, std::u16string_view key);

}  // namespace quillet
