#include "settings/dialog/option_control_panel.h"

#include <QBoxLayout>
#include <QFormLayout>

namespace quillet {

OptionControlPanel::OptionControlPanel(QWidget* parent)
    : OptionPanelWidget(parent), controls_(OptionPanel::kControl, *this) {
  const auto [left, right] = MakeColumns();
  QFormLayout* buttons =
      AddGroup(*left, QStringLiteral("按鍵"), controls_, {u"LButton", u"SButton"}, u"Mouse");
  controls_.AddRow(*buttons, u"MButtonOpenURL");
  AddGroup(*right, QStringLiteral("滾輪"), controls_, {u"Wheel", u"LButtonWheel", u"RButtonWheel"}, u"Mouse");
}

void OptionControlPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Map());
}

void OptionControlPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
}

}  // namespace quillet
