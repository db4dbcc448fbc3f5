// Any bytes as lines of the screen and any units as a text from elsewhere: links are looked for, text is
// selected and copied, pasted, cut into pushes. What comes out has the form that callers, the BBS and the
// opener rely on.
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "bbs/automation/push_pieces.h"
#include "core/charset.h"
#include "core/term_screen.h"
#include "input/paste_plan.h"
#include "input/text/copy_text.h"
#include "input/text/line_characters.h"
#include "input/text/lost_characters.h"
#include "input/text/text_link.h"
#include "input/text/web_commands.h"
#include "platform/web_address.h"
#include "tests/support/kept_lines.h"

namespace quillet {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

// The bytes, row by row, over and over until each of a few lines is full.
class Lines : public SelectableText {
 public:
  explicit Lines(std::string_view bytes) : lines_(kLines) {
    std::size_t at = 0;
    for (ArticleLine& line : lines_) {
      line.text.fill(' ');
      line.attr.fill(kAttrBlank);
      for (std::size_t col = 0; col < kCols; ++col, ++at) {
        if (bytes.empty()) return;
        line.text[col] = static_cast<std::uint8_t>(bytes[at % bytes.size()]);
        line.attr[col] = static_cast<std::uint8_t>(bytes[(at * 7 + 3) % bytes.size()]);
      }
    }
  }
  int Count() const override { return kLines; }
  const ArticleLine& Line(int index) const override { return lines_[static_cast<std::size_t>(index)]; }

 private:
  static constexpr int kLines = 4;
  std::vector<ArticleLine> lines_;
};

void RequireOpenable(std::string_view address) {
  if (address.empty()) return;
  Require(address.starts_with("http://") || address.starts_with("https://"));
  constexpr std::string_view kUnsafe = "\"\\`<>^{|} ";
  for (const char c : address)
    Require(c > ' ' && c < 0x7F && kUnsafe.find(c) == kUnsafe.npos);
}

void LookForLinks(const Lines& lines) {
  const WebHosts hosts{u"www.bbs.example", u"mirror1.example", u"mirror2.example"};
  for (int line = 0; line < lines.Count(); ++line) {
    int end = 0;
    const ScreenRow& text = lines.Line(line).text;
    for (const LinkPlace& place : FindLinkPlaces(text)) {
      const TextLink link = LinkOf(text, place, hosts);
      Require(link.first >= end && link.first < link.last && link.last <= kCols);
      Require(link.article || IsWebAddress(link.address));
      end = link.last;
    }
  }
}

void RequireWholeCharacters(const Selection& selection, const Lines& lines) {
  for (int line = -1; line <= lines.Count(); ++line) {
    const ColumnSpan span = selection.Range(line, lines);
    Require(0 <= span.first && span.first <= span.last && span.last <= kCols);
    if (span.IsEmpty()) continue;
    for (const LineCharacter& character : CharactersOf(lines.Line(line)))
      for (const int end : {span.first, span.last})
        Require(end <= character.cols.first || end >= character.cols.last);
  }
}

void Select(const Lines& lines, std::string_view choices) {
  const auto choice = [&](std::size_t at) {
    return at < choices.size() ? static_cast<std::int8_t>(choices[at]) : std::int8_t{0};
  };
  const auto unit = static_cast<SelectUnit>(static_cast<std::uint8_t>(choice(0)) % 3);
  const auto shape = choice(1) % 2 == 0 ? SelectShape::kStream : SelectShape::kColumn;
  const TextPoint one{choice(2), choice(3)}, other{choice(4), choice(5)};
  Selection selection;
  selection.Begin(one, unit, shape, lines);
  const int line = selection.First().line;
  const ColumnSpan first = selection.Range(line, lines);
  selection.ExtendTo(other, lines);
  const ColumnSpan now = selection.Range(line, lines);
  Require(first.IsEmpty() || (now.first <= first.first && first.last <= now.last));
  RequireWholeCharacters(selection, lines);
  if (unit == SelectUnit::kCharacter) {
    Selection back;
    back.Begin(other, unit, shape, lines);
    back.ExtendTo(one, lines);
    Require(SelectedText(back, lines) == SelectedText(selection, lines));
  }
  for (const char16_t unitOfText : SelectedText(selection, lines))
    Require(!IsControl(unitOfText) || unitOfText == u'\r' || unitOfText == u'\n');
  SelectedAnsi(selection, lines);
  SelectedHtml(selection, lines, {});
}

// The sequences of copied colours mean to a terminal what was on the screen that they were copied from.
void CopyToATerminal(std::string_view bytes) {
  constexpr std::u16string_view kSome = u"ab 推文　■，<&";
  KeptLines text = {u""};
  ArticleLine& line = text.lines.front();
  std::size_t col = 0;
  for (std::size_t at = 0; at + 1 < bytes.size() && col < kCols - 2; at += 2) {
    const std::u16string_view unit = kSome.substr(static_cast<std::uint8_t>(bytes[at]) % kSome.size(), 1);
    PutInLine(line, static_cast<int>(col), unit, static_cast<std::uint8_t>(bytes[at + 1]));
    col += ToBig5(unit).size();
  }
  Selection all;
  all.SelectAll(text);
  const std::string copied = "\x1B[m" + ToBig5(SelectedAnsi(all, text));
  TermScreen screen;
  screen.Feed({reinterpret_cast<const std::uint8_t*>(copied.data()), copied.size()});
  const auto end = static_cast<std::size_t>(EndOfText(line));
  Require(screen.RowText(0).substr(0, end) == BytesOf(line.text).substr(0, end));
  // The colour of blanks that are left out does not show.
  for (std::size_t at = 0; at < kCols; ++at)
    Require(((screen.attr[0][at] ^ line.attr[at]) & (at < end ? 0xFF : 0xE0)) == 0);
}

void Paste(std::u16string_view text) {
  for (const PastePlace place : {PastePlace::kEditor, PastePlace::kElsewhere}) {
    const PastePlan plan = PlanPaste(text, place, Wrap::kAt78ColumnsLeftOpen);
    for (const char16_t unit : plan.text)
      Require(!IsControl(unit) || unit == u'\r' || unit == u'\t');
    if (place == PastePlace::kElsewhere) {
      Require((plan.text.find(u'\r') != plan.text.npos) == (plan.way == PasteWay::kAsk));
      Require(FirstLine(plan.text).empty() == (plan.way == PasteWay::kNothing));
    }
    for (const char16_t unit : plan.coloured)
      Require(!IsControl(unit) || unit == u'\r' || unit == u'\t' || unit == 0x15);
    Require(plan.coloured.empty() == (plan.way != PasteWay::kAskColours));
    PastePreview(plan.text);
  }
  const LostCharacters lost = FindLostCharacters(text);
  Require(lost.some.size() <= kMostLostNamed && lost.some.size() <= lost.count);
  RequireOpenable(OpenableAddress(text));
  Endpoints endpoints;
  endpoints.values["search/engine_1"] = "search.example";
  RequireOpenable(OpenableAddress(SearchAddress(SearchEngine::kFirst, text, endpoints)));
}

void CutPushes(std::u16string_view text, int columns) {
  std::size_t taken = 0;
  for (const PushPiece& piece : CutIntoPushes(text, columns, 50)) {
    Require(!piece.text.empty() && piece.columns <= columns && piece.taken > 0);
    taken += piece.taken;
  }
  Require(taken <= text.size());
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  quillet::Require(quillet::LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const Lines lines(bytes);
  LookForLinks(lines);
  Select(lines, bytes);
  CopyToATerminal(bytes);
  std::u16string text;
  for (std::size_t at = 0; at + 1 < size; at += 2)
    text += static_cast<char16_t>(data[at] | data[at + 1] << 8);
  Paste(text);
  const std::u16string wide = FromBig5(bytes);
  Paste(wide);
  CutPushes(wide, 2 + static_cast<int>(size % 70));
  return 0;
}
