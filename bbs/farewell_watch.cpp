#include "bbs/farewell_watch.h"

#include <algorithm>
#include <string_view>

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr int kQuestionRow = 22;
// Pages that show what others have written, or that one comes to in the middle of a visit.
constexpr std::uint32_t kInside = PF_READING | PF_LIST_CURSOR | PF_ARTICLE_LIST | PF_EDITOR;

}  // namespace

FarewellWatch::FarewellWatch()
    : question_(ToBig5(u"您確定要離開")),
      replaced_{ToBig5(u"已在別處登入"), ToBig5(u"您有其它連線已登入此帳號")} {}

Farewell FarewellWatch::Read(const ScreenSnapshot& screen) const {
  if (!question_.empty() && RowStartsWith(screen, kQuestionRow, 0, std::string_view(question_)))
    return Farewell::kLoggedOut;
  if ((screen.pageFlags & kInside) == 0 && TellsOfAnotherLogin(screen)) return Farewell::kReplaced;
  return Farewell::kNone;
}

void FarewellWatch::Look(const ScreenSnapshot& screen) {
  const Farewell said = Read(screen);
  if (said != Farewell::kNone || (screen.pageFlags & kInside) != 0) last_ = said;
}

// Who logs in is told of his other logins as well, and asked about them.
bool FarewellWatch::TellsOfAnotherLogin(const ScreenSnapshot& screen) const {
  if ((screen.pageFlags & PF_INPUT_FIELD) != 0) return false;
  for (int row = 0; row < kRows; ++row) {
    const std::string_view text = screen.RowText(row);
    if (std::any_of(replaced_.begin(), replaced_.end(), [&](const std::string& words) {
          return !words.empty() && text.find(words) != std::string_view::npos;
        }))
      return true;
  }
  return false;
}

}  // namespace quillet
