// The remembered account and its sealed password, in the registry. User-interface thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace quillet {

class AccountStore {
 public:
  // `machineTag` is asked when a password is sealed or unsealed, not before, because it may take a while.
  // `registry` outlives the store; both values are read here.
  AccountStore(Registry& registry, std::function<std::string()> machineTag);

  // Empty when none is remembered.
  const std::u16string& Account() const { return account_; }
  // Empty when none is remembered or it was not sealed on this machine; then the account is written back with
  // an empty password. Empty too where the machine does not tell its tag now; then nothing is forgotten.
  std::u16string Password();

  // Remembers the account, with the password unless it is empty. A password that the seal cannot give back as
  // it is (too long, or of other than one-byte characters) is not remembered, because the BBS would refuse
  // the rest of it, nor is any where the machine has no tag; false then.
  bool Remember(std::u16string_view account, std::u16string_view password);
  void Forget();

 private:
  const std::string& Tag();
  void Write();

  Registry& registry_;
  std::function<std::string()> machineTag_;
  std::u16string account_;
  std::u16string sealed_;
  std::string tag_;  // empty until it is needed
};

}  // namespace quillet
