#include "app/session/login_id_watch.h"

#include <algorithm>
#include <utility>

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr int kPromptRow = 20;
// Pages that nobody sees before he is logged in.
constexpr std::uint32_t kInside = PF_ANYKEY_BANNER | PF_LIST_CURSOR | PF_READING;

}  // namespace

LoginIdWatch::LoginIdWatch() : prompt_(ToBig5(u"請輸入代號，或以 guest 參觀，或以 new 註冊:")) {}

bool LoginIdWatch::Look(const ScreenSnapshot& screen) {
  if (RowStartsWith(screen, kPromptRow, 0, std::string_view(prompt_))) {
    std::string_view field = screen.RowText(kPromptRow).substr(prompt_.size());
    field.remove_prefix(std::min(field.find_first_not_of(' '), field.size()));
    const auto end = std::find_if_not(field.begin(), field.end(), IsAsciiLetterOrDigit<char>);
    typed_.assign(field.begin(), end);
    return false;
  }
  if (typed_.empty() || (screen.pageFlags & kInside) == 0) return false;
  std::u16string id = std::exchange(typed_, {});
  if (id == id_) return false;
  id_ = std::move(id);
  return true;
}

void LoginIdWatch::Set(std::u16string id) {
  id_ = std::move(id);
  typed_.clear();
}

}  // namespace quillet
