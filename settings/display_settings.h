// The settings that decide how the screen is drawn, as typed fields with their built-in values. A plain
// value: the document owns one and hands copies to the view's objects.
#pragma once

#include <string>

namespace quillet {

struct DisplaySettings {
  std::u16string font = u"細明體";
  int lineSpacing = 0;      // each step takes 4% of the row height from the glyphs
  int pushLineSpacing = 0;  // the same for push lines
  int zoom = 100;           // percent of the largest grid that the window has room for
  bool darkColor = false;
  bool work = false;  // looks like office work; before darkColor
  bool smoothFont = true;
  bool lighterDarkBlue = true;

  bool operator==(const DisplaySettings&) const = default;
};

}  // namespace quillet
