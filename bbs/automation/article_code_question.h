// Asks the BBS for the code of the article that is open: opens its information box, reads it and takes it
// away again. A worker thread's.
#pragma once

#include <string>

#include "bbs/automation/screen_waits.h"

namespace quillet {

// From a whole page of the reader, which may still be arriving. Eight characters; empty, and nothing typed,
// when no such page comes within three seconds; empty too when no box with a code comes within three more, or
// the run ends. Where a code is returned the article shows again; a box without one is taken away, too.
std::u16string AskArticleCode(ScreenWaits& waits);

}  // namespace quillet
