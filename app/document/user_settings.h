// What the user has set, as the windows and dialogs use it: read, changed and saved here, and everybody told
// when something is different. The document owns it. User-interface thread.
#pragma once

#include <functional>
#include <string_view>
#include <type_traits>
#include <vector>

#include <QObject>

#include "settings/recent_sites.h"
#include "settings/settings_store.h"

namespace quillet {

class UserSettings : public QObject {
  Q_OBJECT

 public:
  // Nothing is read yet. `files` outlives the object; `mainHost` as for the store.
  UserSettings(DataFiles& files, std::string_view mainHost) : store_(files, mainHost) {}
  // Once.
  void Load();

  // A dialog that changes it calls Apply when it has done so; single values go through Set.
  SettingsStore& Store() { return store_; }
  const SettingsStore& Store() const { return store_; }
  const Settings& Fields() const { return store_.Fields(); }
  const DisplaySettings& Display() const { return display_; }
  // Where the user has been, the last site first.
  std::vector<RecentSite> RecentSites() const { return RecentSitesIn(store_.Map()); }

  // Applied and saved at once. Nothing when all of it stands there already.
  void Set(const std::vector<SettingChange>& changes);
  template <typename T>
  void Set(T Settings::*field, const std::type_identity_t<T>& value) {
    Set({{field, value}});
  }
  // The same for keys that are no rows of the table.
  void ChangeMap(const std::function<void(SettingsMap&)>& change);
  // Takes in what another window of the program has saved meanwhile; not while a dialog shows the settings.
  void Refresh();
  // Brings the store's fields to everything that is made of them.
  void Apply();

 signals:
  // A setting or a list of names is different, or could not be saved.
  void Changed();

 private:
  SettingsStore store_;
  DisplaySettings display_;
};

}  // namespace quillet
