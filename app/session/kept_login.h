// The login that a site was last entered with, for entering it once more while the program runs: in memory
// only, and for that site alone. The connection owns it. User-interface thread.
#pragma once

#include <string>
#include <string_view>

#include "app/session/wiped_text.h"

namespace quillet {

class KeptLogin {
 public:
  // It has succeeded at the site of that key (SiteKey); an empty key is no site.
  void Keep(LoginOrder login, std::u16string site);
  // Null when none is kept for the site.
  LoginOrder For(std::u16string_view site) const;
  // The user is on his way to that site: what was kept for another one is forgotten.
  void OnSite(std::u16string_view site);
  // Somebody is logged in there: only his own login is still kept. Empty: nobody is known to be.
  void OnUser(std::u16string_view id);
  // The password is overwritten unless a login with it goes on.
  void Forget() { login_.reset(); }

 private:
  LoginOrder login_;
  std::u16string site_;
};

// The same login, which leaves other logins of the account alone.
LoginOrder WithoutEndingOthers(const LoginOrder& login);

}  // namespace quillet
