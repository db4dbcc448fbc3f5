#include "app/document/user_settings.h"

#include <cstddef>
#include <string>

namespace quillet {

void UserSettings::Load() {
  store_.Load();
  Apply();
}

void UserSettings::Change(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  if (const std::u16string* const stored = store_.Map().Find(section, key); stored && *stored == value)
    return;
  store_.Change(section, key, value);
  Apply();
}

void UserSettings::ChangeMap(const std::function<void(SettingsMap&)>& change) {
  change(store_.Map());
  store_.Apply();
  store_.Save();
  Apply();
}

void UserSettings::Refresh() {
  const std::size_t before = store_.MergedInCount();
  store_.Refresh();
  if (store_.MergedInCount() != before) Apply();
}

void UserSettings::Apply() {
  display_ = DisplayOf(Fields());
  emit Changed();
}

}  // namespace quillet
