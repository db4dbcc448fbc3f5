// Every setting in one table: where it is kept, what it may be, who acts on it, and its words in the options
// dialog. The map's defaults, the typed fields and the dialog's panels are all made from it, so that a new
// setting is a new row. Constant; any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "settings/settings.h"
#include "settings/settings_map.h"

namespace quillet {

enum class SettingKind {
  kFlag,    // 0 or 1; any other number counts as 1
  kChoice,  // the number of a choice; a number that is none counts as the initial one
  kNumber,  // a quantity; a number outside the range counts as the nearest inside
  kText,
};

enum class ActedOnBy {
  kNobody,    // nothing in this version: kept and shown only
  kDrawing,   // the painters, by way of DisplaySettings
  kStyling,   // what dresses the lines of the screen and of articles
  kPictures,  // what opens the pictures of links
  kMouse,     // the decisions about the mouse
  kWindow,    // the window, its dialogs and whatever else stands behind it
  kLater      // written for versions to come
};

enum class OptionPanel { kNone, kDisplay, kBehavior, kList, kHotTrack, kControl };
enum class OptionControl { kNone, kCheckBox, kComboBox, kRadioButtons, kSlider, kNumberBox, kTextBox };

using SettingField =
    std::variant<bool Settings::*, int Settings::*, std::u16string Settings::*, LeaveMode Settings::*,
                 DownloadEngine Settings::*, PictureScope Settings::*, PictureSize Settings::*,
                 BackdropStyle Settings::*, PushTreatment Settings::*, TitleTreatment Settings::*,
                 HotSortMode Settings::*, MouseScheme Settings::*>;

// One that a setting offers. Its number in the file is its place in the row's list.
struct SettingChoice {
  std::u16string_view label;
  int value;  // of the field's type
};

struct SettingRow {
  std::u16string_view section;
  std::u16string_view key;
  SettingField field;
  SettingKind kind;
  // What the file says while the key is absent.
  int initial;                      // all but texts
  std::u16string_view initialText;  // texts
  bool inMap;                       // the map starts with the key, at this value
  int least;                        // kChoice and kNumber, as in the file
  int most;
  ActedOnBy actedOnBy;
  OptionPanel panel;  // where the options dialog shows it, if it does
  OptionControl control;
  std::u16string_view label;
  std::span<const SettingChoice> choices;  // combo box and radio buttons

  bool Acts() const { return actedOnBy != ActedOnBy::kNobody; }
};

std::span<const SettingRow> SettingTable();

// What is said of a setting that nothing acts on.
inline constexpr std::u16string_view kActsNotYet = u"這個版本還沒有作用";

// Ends the program for a field without a row, which is a mistake in the table.
const SettingRow& RowOf(const SettingField& field);

// What the file says while the key is absent.
std::u16string InitialText(const SettingRow& row);
// The number in the file for a value of the field's type; the initial one where the row does not offer it.
int NumberFor(const SettingRow& row, int value);
// The number in the file for what the field holds; not for texts.
int NumberOf(const SettingRow& row, const Settings& fields);
std::u16string TextOf(const SettingRow& row, const Settings& fields);
// The field from what the file says.
void ApplyRow(const SettingRow& row, std::u16string_view text, Settings& fields);

// A setting and what the file is to say of it.
struct SettingChange {
  SettingChange(const SettingRow& changed, std::u16string said) : row(&changed), text(std::move(said)) {}
  template <typename T>
  SettingChange(T Settings::*field, const std::type_identity_t<T>& value) : row(&RowOf(field)) {
    if constexpr (std::is_same_v<T, std::u16string>)
      text = value;
    else
      text = NumberText(static_cast<int>(value));
  }

  const SettingRow* row;
  std::u16string text;

 private:
  std::u16string NumberText(int value) const;
};

// Into a map whose fields are filled afterwards: for what is changed along with keys of another kind.
void Put(SettingsMap& map, const SettingChange& change);

}  // namespace quillet
