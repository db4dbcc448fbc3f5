// What a selection is on the clipboard: plain text, HTML that looks like the screen, or text with the BBS's
// colour sequences. Codes without a character are left out. Pure; any thread once the character tables are
// loaded.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "input/selection.h"

namespace quillet {

// Lines joined by CR LF, without the blanks at their ends. Empty when nothing is selected.
std::u16string SelectedText(const Selection& selection, const SelectableText& text);
// The same with ESC sequences, each line begun and ended without colours. Blanks at the ends stay where they
// have a background. A character has one colour: that of its first half.
std::u16string SelectedAnsi(const Selection& selection, const SelectableText& text);
// A fragment for the clipboard, with the same characters as SelectedAnsi; `colours` are the sixteen
// foregrounds and eight backgrounds, 0xRRGGBB.
using CopyColours = std::array<std::uint32_t, 24>;
std::u16string SelectedHtml(const Selection& selection, const SelectableText& text,
                            const CopyColours& colours);

}  // namespace quillet
