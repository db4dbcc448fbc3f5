#include "settings/dialog/option_control_panel.h"

#include <QBoxLayout>
#include <QFormLayout>

namespace quillet {
namespace {

using S = Settings;

}  // namespace

OptionControlPanel::OptionControlPanel(QWidget* parent)
    : OptionPanelWidget(parent), controls_(OptionPanel::kControl, *this) {
  const auto [left, right] = MakeColumns();
  QFormLayout* buttons = AddGroup(*left, QStringLiteral("按鍵"), controls_, {&S::leftButton, &S::sideButton});
  controls_.AddRow(*buttons, &S::middleButtonOpensUrl);
  AddGroup(*right, QStringLiteral("滾輪"), controls_, {&S::wheel, &S::leftButtonWheel, &S::rightButtonWheel});
}

void OptionControlPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Fields());
}

void OptionControlPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
}

}  // namespace quillet
