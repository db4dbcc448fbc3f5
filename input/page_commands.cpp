#include "input/page_commands.h"

namespace quillet {

MouseAction DecidePageCommand(Command command, Picture picture) {
  const bool isEnd = command == Command::kTop || command == Command::kEnd;
  if (isEnd && picture == Picture::kArticle)
    return {.kind = MouseActionKind::kScrollToEnd, .lines = command == Command::kTop ? -1 : 1};
  const std::string_view bytes = SiteKeyOf(command);
  if (bytes.empty()) return {};
  // Pressed twice before the page has changed, another key than these would act upon the next one.
  return {.kind = MouseActionKind::kSend,
          .bytes = std::string(bytes),
          .repeat = isEnd ? Repeat::kFreely : Repeat::kAfterAnswer};
}

}  // namespace quillet
