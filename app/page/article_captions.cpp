#include "app/page/article_captions.h"

namespace quillet {

std::vector<BarCaption> MakeCaptions(Conditions holds) {
  std::vector<BarCaption> captions;
  for (const Command command : CaptionsOfArticle()) {
    const std::u16string_view words = CaptionOf(command, {.holds = holds});
    if (words.empty()) continue;
    captions.push_back(
        {.command = NumberOf(command), .key = RowOf(command).articleKey, .words = std::u16string(words)});
  }
  return captions;
}

}  // namespace quillet
