// The tab "滑鼠控制": what each gesture of the mouse does. User-interface thread.
#pragma once

#include "settings/dialog/option_panel.h"
#include "settings/dialog/setting_controls.h"

namespace quillet {

class OptionControlPanel : public OptionPanelWidget {
  Q_OBJECT

 public:
  explicit OptionControlPanel(QWidget* parent = nullptr);

  void Open(const SettingsStore& store) override;
  void Store(SettingsStore& store) const override;

 private:
  SettingControls controls_;
};

}  // namespace quillet
