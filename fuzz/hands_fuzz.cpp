// Any bytes as lines of the screen and any units as a text from elsewhere: links are looked for, text is
// selected and copied, pasted, cut into pushes. What comes out has the form that callers, the BBS and the
// opener rely on.
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "bbs/automation/push_pieces.h"
#include "core/charset.h"
#include "input/copy_text.h"
#include "input/lost_characters.h"
#include "input/paste_plan.h"
#include "input/text_link.h"
#include "input/web_commands.h"
#include "platform/web_address.h"

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

void Select(const Lines& lines, std::string_view choices) {
  const auto choice = [&](std::size_t at) {
    return at < choices.size() ? static_cast<std::int8_t>(choices[at]) : std::int8_t{0};
  };
  const auto unit = static_cast<SelectUnit>(static_cast<std::uint8_t>(choice(0)) % 3);
  const auto shape = choice(1) % 2 == 0 ? SelectShape::kStream : SelectShape::kColumn;
  Selection selection;
  selection.Begin({choice(2), choice(3)}, unit, shape, lines);
  selection.ExtendTo({choice(4), choice(5)}, lines);
  for (int line = -1; line <= lines.Count(); ++line) {
    const ColumnSpan span = selection.Range(line, lines);
    Require(span.IsEmpty() || (span.first >= 0 && span.last <= kCols));
  }
  for (const char16_t unitOfText : SelectedText(selection, lines))
    Require(!IsControl(unitOfText) || unitOfText == u'\r' || unitOfText == u'\n');
  SelectedAnsi(selection, lines);
  SelectedHtml(selection, lines, {});
}

void Paste(std::u16string_view text) {
  for (const PastePlace place : {PastePlace::kEditor, PastePlace::kElsewhere}) {
    const PastePlan plan = PlanPaste(text, place, Wrap::kAt78ColumnsLeftOpen);
    for (const char16_t unit : plan.text)
      Require(!IsControl(unit) || unit == u'\r' || unit == u'\t');
    if (place == PastePlace::kElsewhere && plan.way == PasteWay::kSend)
      Require(plan.text.find(u'\r') == plan.text.npos);
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
  std::u16string text;
  for (std::size_t at = 0; at + 1 < size; at += 2)
    text += static_cast<char16_t>(data[at] | data[at + 1] << 8);
  Paste(text);
  const std::u16string wide = FromBig5(bytes);
  Paste(wide);
  CutPushes(wide, 2 + static_cast<int>(size % 70));
  return 0;
}
