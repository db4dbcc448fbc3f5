// What the window says about text on its way to the site. Pure.
#pragma once

#include <QString>

#include "app/paste_question.h"
#include "input/lost_characters.h"
#include "input/paste_plan.h"

namespace quillet {

// That they have not come along; empty when none is lost.
QString DescribeLostCharacters(const LostCharacters& lost);

// The page was another one, or an automation was at work, when the link came.
QString DescribeDroppedLink();

// Before several lines go where each is sent like a typed one; line ends are CR.
PasteQuestion::Question AskForLines(std::u16string lines);
// Before a text with colours goes into the editor, as kAskColours planned it.
PasteQuestion::Question AskForColours(PastePlan plan);

}  // namespace quillet
