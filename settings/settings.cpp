#include "settings/settings.h"

namespace quillet {

DisplaySettings DisplayOf(const Settings& settings) {
  DisplaySettings display;
  display.font = settings.font;
  display.lineSpacing = settings.lineSpacing;
  display.pushLineSpacing = settings.pushLineSpacing;
  display.darkColor = settings.darkColor;
  display.work = settings.work;
  display.smoothFont = settings.smoothFont;
  display.lighterDarkBlue = settings.lighterDarkBlue;
  return display;
}

}  // namespace quillet
