#include "app/session/kept_login.h"

#include <algorithm>
#include <utility>

#include "core/ascii.h"

namespace quillet {
namespace {

// The BBS takes capitals and small letters of an id alike.
bool IsSameId(std::u16string_view one, std::u16string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char16_t left, char16_t right) { return AsciiLower(left) == AsciiLower(right); });
}

}  // namespace

void KeptLogin::Keep(LoginOrder login, std::u16string site) {
  login_ = site.empty() ? nullptr : std::move(login);
  site_ = std::move(site);
}

LoginOrder KeptLogin::For(std::u16string_view site) const {
  return site == site_ ? login_ : nullptr;
}

void KeptLogin::OnSite(std::u16string_view site) {
  if (site != site_) Forget();
}

void KeptLogin::OnUser(std::u16string_view id) {
  if (login_ && !id.empty() && !IsSameId(id, login_->account)) Forget();
}

LoginOrder WithoutEndingOthers(const LoginOrder& login) {
  if (!login || !login->kickOthers) return login;
  LoginRequest request = *login;
  request.kickOthers = false;
  LoginOrder gentle = MakeLoginOrder(request);
  Wipe(request.password);
  return gentle;
}

}  // namespace quillet
