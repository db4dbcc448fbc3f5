// The quiet signs behind links that show a picture or a video. Called for each row that is composed, after it
// has been styled. Pure.
#pragma once

#include "bbs/link_places.h"
#include "render/page_row.h"

namespace quillet {

// A sign stands behind its link, one cell away, where the row is free up to one cell behind the sign: it
// covers nothing and moves nothing, and ages keep their place. None where the link is hidden, and none behind
// shortened links, of which nobody knows yet.
void LayLinkSigns(const LinkPlaces& links, PageRow& row);

}  // namespace quillet
