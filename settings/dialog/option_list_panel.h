// The tab of the black and white lists: how listed ids are treated, the list and the title words as text.
// User-interface thread.
#pragma once

#include "settings/dialog/lines_edit.h"
#include "settings/dialog/option_panel.h"
#include "settings/dialog/setting_controls.h"

namespace quillet {

class OptionListPanel : public OptionPanelWidget {
  Q_OBJECT

 public:
  explicit OptionListPanel(QWidget* parent = nullptr);

  void Open(const SettingsStore& store) override;
  QString Complaint() override;
  // Entries whose line says what it said before keep their record; the others are marked changed.
  void Store(SettingsStore& store) const override;

 private:
  SettingControls controls_;
  LinesEdit* names_;
  LinesEdit* titleWords_;
};

}  // namespace quillet
