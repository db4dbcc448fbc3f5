#include "bbs/idle_key.h"

namespace quillet {
namespace {

constexpr std::string_view kDrawAnew = "\x0C";
// Whatever takes a key for an answer, even over a page that would let it pass.
constexpr std::uint32_t kTakesKeys = PF_PUSH_LINE | PF_PUSH_CONFIRM | PF_ANIMATION_PROMPT | PF_PAUSE |
                                     PF_INPUT_FIELD | PF_STAR_LINE | PF_EDITOR | PF_ANYKEY_BANNER |
                                     PF_DISPUTED_NOTICE | PF_PUSH_OVER_READER;

}  // namespace

std::string_view IdleKey(const UnderstoodPage& page) {
  if (page.Shows(kTakesKeys) || page.typing != Typing::kCommands || page.question != PageQuestion::kNone)
    return {};
  switch (page.kind) {
    case PageKind::kMenu:
    case PageKind::kList:
    case PageKind::kArticleList:
    case PageKind::kReader:
      return kDrawAnew;
    case PageKind::kEditor:
    case PageKind::kTyping:
    case PageKind::kPause:
    case PageKind::kOther:
      break;
  }
  return {};
}

}  // namespace quillet
