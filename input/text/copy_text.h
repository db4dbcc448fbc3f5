// What a selection is on the clipboard: plain text, HTML that looks like the screen, or text with the BBS's
// colour sequences. Codes without a character are left out. Pure; any thread once the character tables are
// loaded.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "input/text/selection.h"

namespace quillet {

// Lines joined by CR LF, without the blanks at their ends. Empty when nothing is selected.
std::u16string SelectedText(const Selection& selection, const SelectableText& text);
// The same with ESC sequences, each line begun and ended without colours, joined by LF, which the clipboard
// makes the system's line end of. Blanks at the ends stay where they have a background. A character has one
// colour: that of its first half.
std::u16string SelectedAnsi(const Selection& selection, const SelectableText& text);

// 0xRRGGBB.
struct TextColours {
  std::uint32_t fore = 0;
  std::uint32_t back = 0;

  bool operator==(const TextColours&) const = default;
};
// Of each cell.
using LineColours = std::array<TextColours, kCols>;
// What the lines look like where they are copied from.
struct CopyLook {
  TextColours plain;                        // of the page
  std::function<LineColours(int line)> of;  // without it every line is plain
};
// A fragment for the clipboard, with the same characters as SelectedAnsi; blanks at the ends stay where their
// ground is not the page's.
std::u16string SelectedHtml(const Selection& selection, const SelectableText& text, const CopyLook& look);
// A page for a file that is to be UTF-8, of such a fragment and in its colours.
std::u16string HtmlPage(std::u16string_view title, std::u16string_view fragment, const TextColours& plain);

}  // namespace quillet
