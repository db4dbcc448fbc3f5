// The remembered accounts and their sealed passwords, one for each site, in the registry: the one that was
// remembered last where older versions have it, the others under the names of their sites. A site is named by
// its key, a text that the caller makes; nothing is kept for an empty one. User-interface thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace quillet {

class AccountStore {
 public:
  // `machineTag` is asked when a password is sealed or unsealed, not before, because it may take a while.
  // `registry` outlives the store.
  AccountStore(Registry& registry, std::function<std::string()> machineTag);

  // An account that a version kept which knew of no sites belongs to `site` from now on.
  void AdoptFor(std::u16string_view site);

  // Remembered last, for whichever site. Empty when there is none.
  std::u16string Account() const { return LastOne().account; }

  // Empty when none is remembered for the site.
  std::u16string Account(std::u16string_view site) const;
  // Empty when none is remembered or it was not sealed on this machine; then the account is written back with
  // an empty password. Empty too where the machine does not tell its tag now; then nothing is forgotten.
  std::u16string Password(std::u16string_view site);

  // False for a password that the seal cannot give back as it is (too long, or of other than one-byte
  // characters), because the BBS would refuse the rest of it, and where the machine has no tag.
  bool CanRemember(std::u16string_view password);
  // Remembers the account, with the password unless that is empty or cannot be remembered. What is remembered
  // for other sites stays.
  void Remember(std::u16string_view site, std::u16string_view account, std::u16string_view password);
  void Forget(std::u16string_view site);
  // The account stays.
  void ForgetPassword(std::u16string_view site);

 private:
  struct Kept {
    std::u16string account;
    std::u16string sealed;
  };
  Kept LastOne() const;
  // The site that it is for.
  std::u16string LastSite() const;
  Kept At(std::u16string_view site) const;
  void Write(std::u16string_view site, const Kept& kept);
  void WriteAside(std::u16string_view site, const Kept& kept);
  void WriteLast(std::u16string_view site, const Kept& kept);
  std::u16string Seal(std::u16string_view password);
  const std::string& Tag();

  Registry& registry_;
  std::function<std::string()> machineTag_;
  std::string tag_;  // empty until it is needed
};

}  // namespace quillet
