// What the black and white lists ask for a push line or for a title of the article list. Pure.
#pragma once

#include <string_view>

#include "render/style/style_rules.h"

namespace quillet {

// kNone while the user has hidden things shown.
PushTreatment PushTreatmentOf(const StyleRules& rules, std::u16string_view id);
// What the lists ask for all the same.
PushTreatment ListedPushTreatmentOf(const StyleRules& rules, std::u16string_view id);
// `words` are the rules' title words. A title with one of them is treated as if its author were black-listed,
// and hidden at least, for the word was noted to this end; not so when the author is white-listed.
TitleTreatment TitleTreatmentOf(const StyleRules& rules, const Keywords& words, std::u16string_view author,
                                std::u16string_view title);

}  // namespace quillet
