// The colours that text is shown in, for copying it as it looks: those of the styled page, with the client's
// own grounds and colours, but without what is only laid over it for a while. Used by the edit commands.
// User-interface thread.
#pragma once

#include "app/page/shown_text.h"
#include "input/text/copy_text.h"
#include "settings/display_settings.h"

namespace quillet {

// `text` outlives the result.
CopyLook CopyLookOf(const ShownText& text, const DisplaySettings& settings);

}  // namespace quillet
