#include "input/copy_text.h"

#include <string_view>

namespace quillet {
namespace {

enum class TrailingBlanks { kDropped, kKeptOnBackground };

std::vector<LineCharacter> SelectedCharacters(const Selection& selection, const SelectableText& text,
                                              int line, TrailingBlanks blanks) {
  std::vector<LineCharacter> characters = CharactersOf(text.Line(line), selection.Range(line, text));
  std::erase_if(characters, [](const LineCharacter& character) { return character.unit == 0; });
  while (!characters.empty() && characters.back().IsBlank() &&
         (blanks == TrailingBlanks::kDropped || BackgroundOf(characters.back().attr) == 0))
    characters.pop_back();
  return characters;
}

// `write` appends one line of the selection.
template <typename Write>
std::u16string Joined(const Selection& selection, const SelectableText& text, TrailingBlanks blanks,
                      std::u16string_view lineEnd, Write write) {
  std::u16string joined;
  if (selection.IsEmpty()) return joined;
  for (int line = selection.First().line; line <= selection.Last().line && line < text.Count(); ++line) {
    if (line != selection.First().line) joined += lineEnd;
    write(SelectedCharacters(selection, text, line, blanks), joined);
  }
  return joined;
}

// ---- Colour sequences

constexpr std::u16string_view kReset = u"\x1B[m";

void AddParameter(std::u16string& parameters, int number) {
  if (!parameters.empty()) parameters += u';';
  if (number >= 10) parameters += static_cast<char16_t>(u'0' + number / 10);
  parameters += static_cast<char16_t>(u'0' + number % 10);
}

// The shortest sequence from one rendition to another. Bold and blinking end only with everything.
std::u16string Sequence(std::uint8_t from, std::uint8_t to) {
  if (from == to) return {};
  if (to == kAttrBlank) return std::u16string(kReset);
  constexpr std::uint8_t kStyles = kAttrBold | kAttrBlink;
  std::u16string parameters;
  if ((from & ~to & kStyles) != 0) {
    AddParameter(parameters, 0);
    from = kAttrBlank;
  }
  if ((to & ~from & kAttrBold) != 0) AddParameter(parameters, 1);
  if ((to & ~from & kAttrBlink) != 0) AddParameter(parameters, 5);
  if (((from ^ to) & kAttrForeground) != 0) AddParameter(parameters, 30 + (to & kAttrForeground));
  if (BackgroundOf(from) != BackgroundOf(to)) AddParameter(parameters, 40 + BackgroundOf(to));
  return u"\x1B[" + parameters + u'm';
}

void WriteAnsi(const std::vector<LineCharacter>& characters, std::u16string& out) {
  std::uint8_t attr = kAttrBlank;
  for (const LineCharacter& character : characters) {
    out += Sequence(attr, character.attr);
    attr = character.attr;
    out += character.unit;
  }
  out += Sequence(attr, kAttrBlank);
}

// ---- HTML

std::u16string HtmlColour(std::uint32_t colour) {
  constexpr std::u16string_view kDigits = u"0123456789abcdef";
  std::u16string text = u"#";
  for (int shift = 20; shift >= 0; shift -= 4)
    text += kDigits[colour >> shift & 0xF];
  return text;
}

std::u16string ColourStyle(std::uint8_t attr, const CopyColours& colours) {
  const auto fore = static_cast<std::size_t>(attr & (kAttrForeground | kAttrBold));
  const std::size_t back = 16U + static_cast<std::size_t>(BackgroundOf(attr));
  return u"color:" + HtmlColour(colours[fore]) + u";background-color:" + HtmlColour(colours[back]);
}

void WriteEscaped(char16_t unit, std::u16string& out) {
  switch (unit) {
    case u'&':
      out += u"&amp;";
      break;
    case u'<':
      out += u"&lt;";
      break;
    case u'>':
      out += u"&gt;";
      break;
    case u'"':
      out += u"&quot;";
      break;
    default:
      out += unit;
      break;
  }
}

// Blinking is not shown; colours that are the whole text's need no span.
void WriteHtml(const std::vector<LineCharacter>& characters, const CopyColours& colours,
               std::u16string& out) {
  constexpr std::uint8_t kBlank = kAttrBlank;
  std::uint8_t attr = kBlank;
  const auto change = [&](std::uint8_t to) {
    if (to == attr) return;
    if (attr != kBlank) out += u"</span>";
    if (to != kBlank) out += u"<span style=\"" + ColourStyle(to, colours) + u"\">";
    attr = to;
  };
  for (const LineCharacter& character : characters) {
    change(static_cast<std::uint8_t>(character.attr & ~kAttrBlink));
    WriteEscaped(character.unit, out);
  }
  change(kBlank);
}

}  // namespace

std::u16string SelectedText(const Selection& selection, const SelectableText& text) {
  return Joined(selection, text, TrailingBlanks::kDropped, u"\r\n",
                [](const std::vector<LineCharacter>& characters, std::u16string& out) {
                  for (const LineCharacter& character : characters)
                    out += character.unit;
                });
}

std::u16string SelectedAnsi(const Selection& selection, const SelectableText& text) {
  return Joined(selection, text, TrailingBlanks::kKeptOnBackground, u"\r\n", WriteAnsi);
}

std::u16string SelectedHtml(const Selection& selection, const SelectableText& text,
                            const CopyColours& colours) {
  if (selection.IsEmpty()) return {};
  const std::u16string lines =
      Joined(selection, text, TrailingBlanks::kKeptOnBackground, u"\n",
             [&](const auto& characters, std::u16string& out) { WriteHtml(characters, colours, out); });
  std::u16string html =
      u"<pre style=\"font-family:'細明體',monospace;" + ColourStyle(kAttrBlank, colours) + u"\">";
  // A line end right behind the tag is none.
  if (lines.starts_with(u'\n')) html += u'\n';
  return html + lines + u"</pre>";
}

}  // namespace quillet
