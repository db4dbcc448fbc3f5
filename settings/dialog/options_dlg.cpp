#include "settings/dialog/options_dlg.h"

#include <algorithm>
#include <utility>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "settings/dialog/dialog_room.h"
#include "settings/dialog/mnemonics.h"
#include "settings/dialog/option_control_panel.h"
#include "settings/dialog/option_display_panel.h"
#include "settings/dialog/option_hot_track_panel.h"
#include "settings/dialog/option_list_panel.h"

namespace quillet {

CQuillOptionDlg::CQuillOptionDlg(SettingsStore& store, const OptionActions& actions, QWidget* parent)
    : QDialog(parent),
      store_(store),
      tabs_(new QTabWidget(this)),
      behavior_(new OptionBehaviorPanel(actions)) {
  setWindowTitle(QStringLiteral("Quillet | by mossgrov"));
  setSizeGripEnabled(true);
  tabs_->setElideMode(Qt::ElideNone);
  AddPanel(QStringLiteral("畫面顯示"), new OptionDisplayPanel);
  AddPanel(QStringLiteral("行為"), behavior_);
  AddPanel(QStringLiteral("黑白名單"), new OptionListPanel);
  AddPanel(QStringLiteral("熱門/追蹤文章"), new OptionHotTrackPanel);
  AddPanel(QStringLiteral("滑鼠控制"), new OptionControlPanel);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs_);
  layout->addLayout(MakeBottomLine());
  for (OptionPanelWidget* const panel : panels_)
    GiveMnemonics({useDataFolder_, panel});
  FitSize();
}

void CQuillOptionDlg::AddPanel(const QString& title, OptionPanelWidget* panel) {
  panel->Open(store_);
  tabs_->addTab(new ContentScroll(panel, Sideways::kScrolls), title);
  panels_.push_back(panel);
}

QHBoxLayout* CQuillOptionDlg::MakeBottomLine() {
  DataFiles& files = store_.Files();
  useDataFolder_ = new QCheckBox(QStringLiteral("設定檔放在使用者資料夾"), this);
  useDataFolder_->setObjectName(QStringLiteral("UseAppDataLocalPath"));
  useDataFolder_->setChecked(files.UsesDataFolder());
  useDataFolder_->setToolTip(QStringLiteral("不勾選時，設定檔放在程式所在的資料夾"));
  if (!files.CanChooseFolder()) {
    useDataFolder_->setEnabled(false);
    useDataFolder_->setChecked(true);
    useDataFolder_->setToolTip(QStringLiteral("程式所在的資料夾不能放設定檔，只能放在使用者資料夾"));
  }

  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(QStringLiteral("確定"), QDialogButtonBox::AcceptRole)->setDefault(true);
  buttons->addButton(QStringLiteral("取消"), QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &CQuillOptionDlg::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CQuillOptionDlg::reject);

  auto* line = new QHBoxLayout;
  line->addWidget(useDataFolder_);
  line->addStretch();
  line->addWidget(buttons);
  return line;
}

void CQuillOptionDlg::FitSize() {
  FitToScreen(*this);
  // The first control rather than the tabs, which Ctrl+Tab turns from anywhere.
  for (QWidget* next = panels_.front()->nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
    if (!panels_.front()->isAncestorOf(next) || (next->focusPolicy() & Qt::TabFocus) == 0) continue;
    next->setFocus();
    break;
  }
}

void CQuillOptionDlg::accept() {
  if (std::any_of(panels_.begin(), panels_.end(),
                  [this](OptionPanelWidget* panel) { return Complains(*panel); }))
    return;
  StoreAll();
  QDialog::accept();
}

bool CQuillOptionDlg::Complains(OptionPanelWidget& panel) {
  const QString words = panel.Complaint();
  if (words.isEmpty()) return false;
  QWidget* atFault = panel.focusWidget();
  const auto at = std::find(panels_.begin(), panels_.end(), &panel) - panels_.begin();
  tabs_->setCurrentIndex(static_cast<int>(at));
  QMessageBox box(QMessageBox::Warning, windowTitle(), words, QMessageBox::NoButton, this);
  box.addButton(QStringLiteral("確定"), QMessageBox::AcceptRole);
  box.exec();
  if (atFault != nullptr) atFault->setFocus();
  return true;
}

void CQuillOptionDlg::StoreAll() {
  DataFiles& files = store_.Files();
  const std::u16string namesBefore = store_.Names().AsText();
  const bool usedDataFolder = files.UsesDataFolder();
  for (const OptionPanelWidget* panel : panels_)
    panel->Store(store_);
  if (files.CanChooseFolder()) files.SetUsesDataFolder(useDataFolder_->isChecked());
  store_.Apply();
  store_.Save();
  // In the other folder an older list may lie.
  const bool hasMoved = files.UsesDataFolder() != usedDataFolder;
  if (hasMoved || store_.Names().AsText() != namesBefore) store_.SaveNames();
}

}  // namespace quillet
