// What becomes of a text that the user pastes: sent, asked about, refused. Pure; any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/term_session.h"

namespace quillet {

// Longer texts in the clipboard, in UTF-16 units, were not meant for a BBS.
inline constexpr std::size_t kLongestPaste = 1'000'000;

// Where the text would go. Only an editor takes lines as lines; anywhere else their ends are the Enter key.
enum class PastePlace { kEditor, kElsewhere };

enum class PasteWay {
  kNothing,     // nothing is left of the text that could be sent
  kSend,        //
  kAsk,         // several lines where no editor is open
  kAskColours,  // the editor could take the colours of the text too
  kTooLong
};

struct PastePlan {
  PasteWay way = PasteWay::kNothing;
  std::u16string text{};  // clean, as it is to be sent
  Wrap wrap = Wrap::kNone;
  std::u16string coloured{};  // of kAskColours: to be sent in place of `text`, and not to be wrapped

  bool operator==(const PastePlan&) const = default;
};

// `editorWrap` is how the user wants lines broken in the editor, which does not break them itself. Elsewhere
// nothing is broken, and the line ends behind a single line are dropped: nobody who pastes a copied line
// means to press Enter. Colour sequences are no text anywhere; only the editor can be given them.
PastePlan PlanPaste(std::u16string_view clipboard, PastePlace place, Wrap editorWrap);

// Of a clean text: its first line that is not empty, without the line's end.
std::u16string FirstLine(std::u16string_view clean);
// Of a clean text: its first few lines, each cut where it is long, to be shown. Lines end with LF.
std::u16string PastePreview(std::u16string_view clean);

// A single line that a link shortener may be bothered with.
bool MayBeLink(std::u16string_view clipboard);
// Without the line ends behind it.
std::u16string_view WithoutLineEnds(std::u16string_view text);

}  // namespace quillet
