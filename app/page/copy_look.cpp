#include "app/page/copy_look.h"

#include "render/row_look.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

LineColours ColoursOf(PageRow row, const LookColours& colours, const TextColours& plain) {
  // The selection, the cursor's bar, the pointer's row; and the signs, which are no text.
  for (PageCell& cell : row.cells) {
    cell.style = 0;
    if (IsSign(cell.fore)) cell.fore = kPlainFore;
  }
  const RowLook look = ResolveRow(row, {}, false, Charset(), colours);
  LineColours line;
  for (std::size_t col = 0; col < line.size(); ++col)
    line[col] = {look[col].unit == 0 ? plain.fore : look[col].foreground, look[col].background};
  return line;
}

}  // namespace

CopyLook CopyLookOf(const ShownText& text, const DisplaySettings& settings) {
  const LookColours colours(PaletteOf(PaletteKindFor(settings)), settings.lighterDarkBlue);
  const PageCell blank;
  const TextColours plain{colours.Foreground(blank, u'x'), colours.Background(blank)};
  return {.plain = plain,
          .of = [&text, colours, plain](int line) { return ColoursOf(text.Look(line), colours, plain); }};
}

}  // namespace quillet
