// The tab of hot and tracked articles: what is on, the order of the hot ones, the rules of tracking as text.
// User-interface thread.
#pragma once

#include "settings/dialog/lines_edit.h"
#include "settings/dialog/option_panel.h"
#include "settings/dialog/setting_controls.h"

namespace quillet {

class OptionHotTrackPanel : public OptionPanelWidget {
  Q_OBJECT

 public:
  explicit OptionHotTrackPanel(QWidget* parent = nullptr);

  void Open(const SettingsStore& store) override;
  QString Complaint() override;
  // Each rule once, in today's spelling.
  void Store(SettingsStore& store) const override;

 private:
  QWidget* MakeRules();

  SettingControls controls_;
  LinesEdit* rules_;
};

// Whether a line is a rule of tracking: conditions joined by " && ", each "board", "author" or "title" in
// either case, "=" or "!=", then a value.
bool IsTrackRule(std::u16string_view line);

}  // namespace quillet
