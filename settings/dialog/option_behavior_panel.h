// The tab "行為": opening of pictures, articles, notices, copying and pasting, the default browser.
// User-interface thread.
#pragma once

#include <functional>

#include "settings/dialog/option_panel.h"
#include "settings/dialog/setting_controls.h"

namespace quillet {

// What the dialog asks of the application.
struct OptionActions {
  // Makes the program the system's browser for the BBS's web pages. The button is disabled while this is
  // empty.
  std::function<void()> becomeDefaultBrowser{};
  // What pressing it does, told below it.
  QString aboutDefaultBrowser{};
  // Removes the files of pictures that were fetched. The button is disabled while this is empty.
  std::function<void()> emptyPictureCache{};
};

class OptionBehaviorPanel : public OptionPanelWidget {
  Q_OBJECT

 public:
  explicit OptionBehaviorPanel(const OptionActions& actions, QWidget* parent = nullptr);

  void Open(const SettingsStore& store) override;
  void Store(SettingsStore& store) const override;
  // What the files of pictures take on the disk, in words.
  void ShowPictureCache(const QString& size);

 private:
  void AddProgram(QVBoxLayout& column, const OptionActions& actions);
  void AddPictureCache(QFormLayout& group, const OptionActions& actions);

  SettingControls controls_;
  QLabel* pictureCache_ = nullptr;
};

}  // namespace quillet
