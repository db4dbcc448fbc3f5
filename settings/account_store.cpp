#include "settings/account_store.h"

#include <utility>

#include "settings/data_files.h"
#include "settings/password_seal.h"

namespace quillet {
namespace {

constexpr std::u16string_view kAccountName = u"Account";
constexpr std::u16string_view kPasswordName = u"AutoLogin";

}  // namespace

AccountStore::AccountStore(Registry& registry, std::function<std::string()> machineTag)
    : registry_(registry),
      machineTag_(std::move(machineTag)),
      account_(registry.Text(kRegistryPath, kAccountName).value_or(u"")),
      sealed_(registry.Text(kRegistryPath, kPasswordName).value_or(u"")) {}

std::u16string AccountStore::Password() {
  std::u16string password;
  if (!sealed_.empty()) {
    // The serial number may be there again at the next start.
    if (Tag().empty()) return password;
    password = UnsealPassword(sealed_, Tag());
  }
  if (password.empty()) {
    sealed_.clear();
    Write();
  }
  return password;
}

bool AccountStore::Remember(std::u16string_view account, std::u16string_view password) {
  account_ = account;
  sealed_.clear();
  bool held = true;
  if (!password.empty()) {
    sealed_ = SealPassword(password, Tag());
    held = UnsealPassword(sealed_, Tag()) == password;
    if (!held) sealed_.clear();
  }
  Write();
  return held;
}

void AccountStore::Forget() {
  account_.clear();
  sealed_.clear();
  Write();
}

const std::string& AccountStore::Tag() {
  if (tag_.empty()) tag_ = machineTag_();
  return tag_;
}

void AccountStore::Write() {
  registry_.SetText(kRegistryPath, kAccountName, account_);
  registry_.SetText(kRegistryPath, kPasswordName, sealed_);
}

}  // namespace quillet
