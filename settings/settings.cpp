#include "settings/settings.h"

#include "settings/setting_table.h"

namespace quillet {

Settings::Settings() {
  for (const SettingRow& row : SettingTable())
    ApplyRow(row, InitialText(row), *this);
}

DisplaySettings DisplayOf(const Settings& settings) {
  DisplaySettings display;
  display.font = settings.font;
  display.lineSpacing = settings.lineSpacing;
  display.pushLineSpacing = settings.pushLineSpacing;
  display.zoom = settings.zoom;
  display.darkColor = settings.darkColor;
  display.work = settings.work;
  display.smoothFont = settings.smoothFont;
  display.lighterDarkBlue = settings.lighterDarkBlue;
  return display;
}

}  // namespace quillet
