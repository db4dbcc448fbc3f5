// What two programs did to one list of articles since both knew it as the same, put together: called before a
// list is changed that another program has written. An item is known by its folder, its board and its code
// (without one, by its time and title), a folder by its name. Pure.
#pragma once

#include "settings/files/article_lists.h"

namespace quillet {

// Takes over what `theirs` has added, changed or removed since `base`; what `ours` has added, changed or
// removed since `base` stays, and a folder as long as anything is in it. The order is theirs, with this
// list's additions behind what they stood behind.
void MergeArticles(ArticleFolder& ours, const ArticleFolder& theirs, const ArticleFolder& base);

}  // namespace quillet
