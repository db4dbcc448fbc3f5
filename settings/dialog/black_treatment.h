// What lists and articles do to titles and push lines of the ids on the black lists, where an id is put on
// one: as set, nothing may be seen of it. The same settings as on the options' tab. User-interface thread;
// AddBlackDlg holds it.
#pragma once

#include <QGroupBox>

#include "settings/dialog/setting_controls.h"
#include "settings/files/list_entry.h"
#include "settings/settings_store.h"

class QStackedWidget;

namespace quillet {

class BlackTreatment : public QGroupBox {
  Q_OBJECT

 public:
  // `store` outlives the object.
  explicit BlackTreatment(SettingsStore& store);

  // Shows what concerns ids of this kind.
  void SetKind(ListKind kind);
  // Writes the choices that are others than they were to the store, applies and saves them.
  void Store();

 private:
  QWidget* MakeChoices(const QString& listName, const SettingField& titles, const SettingField& pushes);

  SettingsStore& store_;
  SettingControls controls_;
  QStackedWidget* pages_;  // black, super-black, others
};

}  // namespace quillet
