// The captions of an article's bar, made from the command table. User-interface thread.
#pragma once

#include <vector>

#include "input/commands/commands.h"
#include "render/article_bar.h"

namespace quillet {

// All that the state offers, the most important one first.
std::vector<BarCaption> MakeCaptions(Conditions holds);

// For ArticleBarInput::hovered.
constexpr int NumberOf(Command command) {
  return static_cast<int>(command);
}
// The command whose caption covers the column.
inline Command CaptionCommandAt(const std::vector<CaptionArea>& areas, int col) {
  return static_cast<Command>(CommandAt(areas, col));
}

}  // namespace quillet
