#include "input/text/copy_text.h"

namespace quillet {
namespace {

// Blanks at the end go, except those that `keeps` says have something to show.
template <typename Keeps>
std::vector<LineCharacter> SelectedCharacters(const Selection& selection, const SelectableText& text,
                                              int line, Keeps keeps) {
  std::vector<LineCharacter> characters = CharactersOf(text.Line(line), selection.Range(line, text));
  std::erase_if(characters, [](const LineCharacter& character) { return character.unit == 0; });
  while (!characters.empty() && characters.back().IsBlank() && !keeps(characters.back()))
    characters.pop_back();
  return characters;
}

// `write` appends one line of the selection.
template <typename Write>
std::u16string Joined(const Selection& selection, const SelectableText& text, std::u16string_view lineEnd,
                      Write write) {
  std::u16string joined;
  if (selection.IsEmpty()) return joined;
  for (int line = selection.First().line; line <= selection.Last().line && line < text.Count(); ++line) {
    if (line != selection.First().line) joined += lineEnd;
    write(line, joined);
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

std::u16string ColourStyle(const TextColours& colours) {
  return u"color:" + HtmlColour(colours.fore) + u";background-color:" + HtmlColour(colours.back);
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

// Blinking is not shown; colours that are the whole text's need no span. Of a blank only the ground counts.
void WriteHtml(const std::vector<LineCharacter>& characters, const LineColours& colours,
               const TextColours& plain, std::u16string& out) {
  TextColours now = plain;
  const auto change = [&](const TextColours& to) {
    if (to == now) return;
    if (now != plain) out += u"</span>";
    if (to != plain) out += u"<span style=\"" + ColourStyle(to) + u"\">";
    now = to;
  };
  for (const LineCharacter& character : characters) {
    const TextColours& its = colours[static_cast<std::size_t>(character.cols.first)];
    if (!character.IsBlank() || its.back != now.back) change(its);
    WriteEscaped(character.unit, out);
  }
  change(plain);
}

// In a browser too a letter is half as wide as a Chinese character, and the grounds of two rows meet. Before
// all the fragment's own styles, which are made for programs that it is pasted into.
constexpr std::u16string_view kGridStyle =
    u"<style>\n"
    u"pre { font-family: '細明體', 'MingLiU', 'Noto Sans Mono CJK TC', 'Sarasa Mono TC', 'Source Han Mono "
    u"TC', "
    u"'WenQuanYi Zen Hei Mono', 'AR PL UMing TW', monospace !important; line-height: 1.25em; }\n"
    u"pre span { display: inline-block; height: 1.25em; }\n"
    u"</style>\n";

}  // namespace

std::u16string SelectedText(const Selection& selection, const SelectableText& text) {
  const auto none = [](const LineCharacter&) { return false; };
  return Joined(selection, text, u"\r\n", [&](int line, std::u16string& out) {
    for (const LineCharacter& character : SelectedCharacters(selection, text, line, none))
      out += character.unit;
  });
}

std::u16string SelectedAnsi(const Selection& selection, const SelectableText& text) {
  const auto coloured = [](const LineCharacter& character) { return BackgroundOf(character.attr) != 0; };
  return Joined(selection, text, u"\n", [&](int line, std::u16string& out) {
    WriteAnsi(SelectedCharacters(selection, text, line, coloured), out);
  });
}

std::u16string SelectedHtml(const Selection& selection, const SelectableText& text, const CopyLook& look) {
  if (selection.IsEmpty()) return {};
  LineColours colours;
  colours.fill(look.plain);
  const auto hasGround = [&](const LineCharacter& character) {
    return colours[static_cast<std::size_t>(character.cols.first)].back != look.plain.back;
  };
  const std::u16string lines = Joined(selection, text, u"\n", [&](int line, std::u16string& out) {
    if (look.of) colours = look.of(line);
    WriteHtml(SelectedCharacters(selection, text, line, hasGround), colours, look.plain, out);
  });
  std::u16string html = u"<pre style=\"font-family:'細明體',monospace;" + ColourStyle(look.plain) + u"\">";
  // A line end right behind the tag is none.
  if (lines.starts_with(u'\n')) html += u'\n';
  return html + lines + u"</pre>";
}

std::u16string HtmlPage(std::u16string_view title, std::u16string_view fragment, const TextColours& plain) {
  std::u16string page =
      u"<!DOCTYPE html>\n<html lang=\"zh-Hant\">\n<head>\n<meta charset=\"utf-8\">\n<title>";
  for (const char16_t unit : title)
    WriteEscaped(unit, page);
  page += u"</title>\n";
  page.append(kGridStyle);
  page += u"</head>\n<body style=\"" + ColourStyle(plain) + u"\">\n";
  return page.append(fragment) + u"\n</body>\n</html>\n";
}

}  // namespace quillet
