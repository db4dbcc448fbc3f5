// Adds one user id to the black and white lists, or edits its entry: kind, description, underline, flag
// colours. Shows, too, what is done to ids of its kind. User-interface thread.
#pragma once

#include <array>

#include <QDialog>

#include "settings/settings_store.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quillet {

class BlackTreatment;

class AddBlackDlg : public QDialog {
  Q_OBJECT

 public:
  // `store` outlives the dialog. The id is shown; an id that is not listed yet starts as a plain black entry.
  // What the file could not hold is said below the description while it is entered, and keeps OK disabled.
  AddBlackDlg(SettingsStore& store, const QString& id, QWidget* parent = nullptr);

  // Writes the entry to the list and the list to disk, and what was chosen for all ids of its kind.
  void accept() override;

 private:
  QWidget* MakeColours();
  QDialogButtonBox* MakeButtons();
  void LayOut();
  void Show(const ListEntry& entry);
  ListEntry Entered() const;
  void Check();

  SettingsStore& store_;
  std::u16string id_;
  QComboBox* kind_;
  QLineEdit* description_;
  QLabel* complaint_;
  QCheckBox* underline_;
  std::array<QCheckBox*, kFlagColours> colours_{};
  BlackTreatment* treatment_;
  QPushButton* ok_ = nullptr;
};

}  // namespace quillet
