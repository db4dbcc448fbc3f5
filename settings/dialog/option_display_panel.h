// The tab "畫面顯示": how the screen is drawn, the window, the background picture. User-interface thread.
#pragma once

#include "settings/dialog/option_panel.h"
#include "settings/dialog/setting_controls.h"

namespace quillet {

class OptionDisplayPanel : public OptionPanelWidget {
  Q_OBJECT

 public:
  explicit OptionDisplayPanel(QWidget* parent = nullptr);

  void Open(const SettingsStore& store) override;
  void Store(SettingsStore& store) const override;

 private:
  void AddText(QVBoxLayout& column);
  void AddBackground(QVBoxLayout& column);
  QWidget* MakeFontBox();
  void BrowseForPicture();

  SettingControls controls_;
};

}  // namespace quillet
