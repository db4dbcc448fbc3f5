#include "input/paste_plan.h"

#include <algorithm>

#include "core/wrap_text.h"
#include "input/colour_paste.h"
#include "input/key_control.h"

namespace quillet {
namespace {

constexpr char16_t kEnterKey = u'\r';
constexpr std::size_t kPreviewLines = 3;
constexpr std::size_t kPreviewUnits = 36;
constexpr std::size_t kLongestLink = 8 * 1024;
constexpr std::u16string_view kLineEnds = u"\r\n";

bool IsFirstHalf(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

std::u16string ShortenedLine(std::u16string_view line) {
  if (line.size() <= kPreviewUnits) return std::u16string(line);
  const std::size_t cut = IsFirstHalf(line[kPreviewUnits - 1]) ? kPreviewUnits - 1 : kPreviewUnits;
  return std::u16string(line.substr(0, cut)) + u"…";
}

PastePlan PlanElsewhere(std::u16string clean) {
  const std::u16string_view line = WithoutLineEnds(clean);
  if (line.empty()) return {};
  if (line.find(kEnterKey) == std::u16string_view::npos)
    return {.way = PasteWay::kSend, .text = std::u16string(line)};
  if (clean.back() == kEnterKey) clean.pop_back();
  return {.way = PasteWay::kAsk, .text = std::move(clean)};
}

}  // namespace

PastePlan PlanPaste(std::u16string_view clipboard, PastePlace place, Wrap editorWrap) {
  if (clipboard.size() > kLongestPaste) return {.way = PasteWay::kTooLong};
  std::u16string clean = CleanPaste(WithoutSequences(clipboard));
  if (place == PastePlace::kElsewhere) return PlanElsewhere(std::move(clean));
  if (clean.empty()) return {};
  PastePlan plan{.way = PasteWay::kSend, .text = std::move(clean), .wrap = editorWrap};
  if (HoldsColours(clipboard)) {
    plan.way = PasteWay::kAskColours;
    plan.coloured = ColoursForEditor(clipboard, editorWrap == Wrap::kNone ? 0 : kWrapColumns);
  }
  return plan;
}

std::u16string FirstLine(std::u16string_view clean) {
  const std::size_t begin = std::min(clean.find_first_not_of(kEnterKey), clean.size());
  const std::u16string_view rest = clean.substr(begin);
  return std::u16string(rest.substr(0, rest.find(kEnterKey)));
}

std::u16string PastePreview(std::u16string_view clean) {
  std::u16string preview;
  for (std::size_t lines = 0; !clean.empty(); ++lines) {
    if (lines == kPreviewLines) return preview + u"…\n";
    const std::size_t end = std::min(clean.find(kEnterKey), clean.size());
    preview += ShortenedLine(clean.substr(0, end)) + u"\n";
    clean.remove_prefix(std::min(end + 1, clean.size()));
  }
  return preview;
}

bool MayBeLink(std::u16string_view clipboard) {
  const std::u16string_view line = WithoutLineEnds(clipboard);
  return line.size() <= kLongestLink && line.find_first_of(kLineEnds) == std::u16string_view::npos &&
         line.find_first_not_of(u" \t") != std::u16string_view::npos;
}

std::u16string_view WithoutLineEnds(std::u16string_view text) {
  return text.substr(0, text.find_last_not_of(kLineEnds) + 1);
}

}  // namespace quillet
