// Makes the controls of a dialog reachable with Alt: behind the words of each stands a key of its own, as in
// "推文灰底(&G)". User-interface thread, once all controls are there.
#pragma once

#include <initializer_list>

class QWidget;

namespace quillet {

// For what is in these widgets and shows together: check boxes, radio buttons, other buttons outside of a
// dialog's own row, labels that belong to a control, and the titles of groups around a text edit. Words that
// have a key already keep it.
void GiveMnemonics(std::initializer_list<QWidget*> shownTogether);

}  // namespace quillet
