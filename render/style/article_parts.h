// Whose words a line of an article is: the author's, somebody's whom he quotes, his signature, a push line.
// The settings say for each of them how its pictures open. Called for each line as it comes. Pure.
#pragma once

#include <cstdint>
#include <vector>

#include "bbs/article/article_lines.h"
#include "settings/settings.h"

namespace quillet {

enum class LinePart : std::uint8_t { kText, kQuote, kSignature, kPush };

// Of each line, from the first on. A signature stands between the last "--" above the origin line and that
// line; where there is no origin line, or none yet, there is no signature.
std::vector<LinePart> PartsOf(const ArticleLines& lines);

PictureSize PictureSizeOf(LinePart part, const Settings& settings);

}  // namespace quillet
