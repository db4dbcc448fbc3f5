// The tab "行為": opening of pictures, articles, notices, copying and pasting, the default browser.
// User-interface thread.
#pragma once

#include <functional>

#include "settings/dialog/option_panel.h"
#include "settings/dialog/setting_controls.h"

namespace quillet {

class OptionBehaviorPanel : public OptionPanelWidget {
  Q_OBJECT

 public:
  // The button for the default browser calls `becomeDefaultBrowser`, and is disabled when that is empty.
  explicit OptionBehaviorPanel(std::function<void()> becomeDefaultBrowser, QWidget* parent = nullptr);

  void Open(const SettingsStore& store) override;
  void Store(SettingsStore& store) const override;

 private:
  void AddProgram(QVBoxLayout& column, std::function<void()> becomeDefaultBrowser);

  SettingControls controls_;
};

}  // namespace quillet
