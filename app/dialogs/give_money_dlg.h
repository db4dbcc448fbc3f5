// Asks to whom of an article's push lines money shall be given, and how much, and shows all the while who
// would get it. User-interface thread.
#pragma once

#include <random>
#include <vector>

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>

#include "bbs/automation/money_floors.h"

namespace quillet {

class GiftTable;

class GiveMoneyDlg : public QDialog {
  Q_OBJECT

 public:
  // `lot` decides what is drawn by lot.
  GiveMoneyDlg(const MoneyChoices& choices, MoneyPeople people, std::mt19937::result_type lot,
               QWidget* parent = nullptr);

  // Nothing can be sent before all lines of the article are known; `known` of them are. `hint` says what the
  // user can do about it.
  void SetFloorsUnknown(int known, const QString& hint);
  void SetFloors(std::vector<PushFloor> floors);

  MoneyChoices Choices() const;
  // As the list shows them.
  const std::vector<FloorGift>& Gifts() const { return gifts_; }

  void accept() override;

 private:
  QWidget* MakeReceivers(const MoneyChoices& choices);
  QWidget* MakeAmount(const MoneyChoices& choices);
  QWidget* MakeList();
  QLayout* MakeButtons();
  QSpinBox* MakeNumber(const char* name, int least, int most, int value);
  QCheckBox* MakeCheck(const char* name, const QString& label, bool on);
  // Brings the list and the words to the choices.
  void Review();
  QString NoteFor(const MoneyChoices& choices) const;

  const MoneyPeople people_;
  std::mt19937::result_type lot_;
  std::vector<PushFloor> floors_;
  bool complete_ = false;
  QString unknownNote_;
  std::vector<FloorGift> gifts_;

  QCheckBox *push_, *boo_, *arrow_;
  QSpinBox *fromFloor_, *toFloor_, *floorInterval_, *number_, *moneyForEach_;
  QLineEdit* contentInclude_;
  QCheckBox *matchCase_, *noDupe_, *noBlack_, *noSuperBlack_, *random_, *afterTax_;
  QPushButton *drawAgain_, *send_;
  QLabel *note_, *tax_;
  GiftTable* table_;
};

}  // namespace quillet
