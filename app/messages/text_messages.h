// What the window says about text on its way to the site. Pure.
#pragma once

#include <string>
#include <vector>

#include <QString>

#include "core/term_session.h"
#include "input/paste_plan.h"
#include "input/text/lost_characters.h"

namespace quillet {

// A way to paste a text that could go in more than one.
struct PasteChoice {
  QString caption;
  std::u16string text{};  // what it pastes
  Wrap wrap = Wrap::kNone;
};
struct PasteChoices {
  enum class Safest { kFirstChoice, kNothing };
  QString words;
  QString reason;
  std::vector<PasteChoice> choices;
  Safest safest = Safest::kNothing;  // what Enter takes
};

// That they have not come along; empty when none is lost.
QString DescribeLostCharacters(const LostCharacters& lost);

// The page was another one, or an automation was at work, when the link came.
QString DescribeDroppedLink();

// Before several lines go where each is sent like a typed one; line ends are CR.
PasteChoices AskForLines(std::u16string lines);
// Before a text with colours goes into the editor, as kAskColours planned it.
PasteChoices AskForColours(PastePlan plan);

}  // namespace quillet
