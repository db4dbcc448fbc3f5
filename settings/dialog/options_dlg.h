// The options dialog: five tabs over the settings map and the lists. Nothing changes before OK; OK writes the
// map, the lists and the folder choice, applies and saves them. User-interface thread.
#pragma once

#include <vector>

#include <QDialog>

#include "settings/dialog/option_behavior_panel.h"
#include "settings/settings_store.h"

class QCheckBox;
class QHBoxLayout;
class QTabWidget;

namespace quillet {

class CQuillOptionDlg : public QDialog {
  Q_OBJECT

 public:
  // `store` outlives the dialog.
  CQuillOptionDlg(SettingsStore& store, const OptionActions& actions, QWidget* parent = nullptr);

  // In the order of the tabs: display, behaviour, lists, hot and tracked articles, mouse.
  QTabWidget& Tabs() { return *tabs_; }

  // What the files of fetched pictures take on the disk, in words.
  void ShowPictureCache(const QString& size) { behavior_->ShowPictureCache(size); }

  // Stops at the first panel that has something to complain about, and shows it. What did not reach the disk
  // stands in the problems of the store's files afterwards.
  void accept() override;

 private:
  void AddPanel(const QString& title, OptionPanelWidget* panel);
  QHBoxLayout* MakeBottomLine();
  void FitSize();
  bool Complains(OptionPanelWidget& panel);
  void StoreAll();

  SettingsStore& store_;
  QTabWidget* tabs_;
  OptionBehaviorPanel* behavior_;
  std::vector<OptionPanelWidget*> panels_;  // by tab
  QCheckBox* useDataFolder_ = nullptr;
};

}  // namespace quillet
