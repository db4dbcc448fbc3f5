#include "app/document/user_settings.h"

#include <cstddef>
#include <string>

namespace quillet {

void UserSettings::Load() {
  store_.Load();
  Apply();
}

void UserSettings::Set(const std::vector<SettingChange>& changes) {
  if (store_.Set(changes)) Apply();
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
