#include "settings/account_store.h"

#include <utility>

#include "settings/files/data_files.h"
#include "settings/password_seal.h"

namespace quillet {
namespace {

constexpr std::u16string_view kAccountName = u"Account";
constexpr std::u16string_view kPasswordName = u"AutoLogin";
// The site of these two.
constexpr std::u16string_view kSiteName = u"AccountSite";

// Where the other sites have theirs, under the same names.
std::u16string PathOf(std::u16string_view site) {
  return std::u16string(kRegistryPath).append(u"\\Sites\\").append(site);
}

}  // namespace

AccountStore::AccountStore(Registry& registry, std::function<std::string()> machineTag)
    : registry_(registry), machineTag_(std::move(machineTag)) {}

void AccountStore::AdoptFor(std::u16string_view site) {
  if (!Account().empty() && !registry_.Text(kRegistryPath, kSiteName))
    registry_.SetText(kRegistryPath, kSiteName, site);
}

AccountStore::Kept AccountStore::LastOne() const {
  return {.account = registry_.Text(kRegistryPath, kAccountName).value_or(u""),
          .sealed = registry_.Text(kRegistryPath, kPasswordName).value_or(u"")};
}

std::u16string AccountStore::LastSite() const {
  return registry_.Text(kRegistryPath, kSiteName).value_or(u"");
}

AccountStore::Kept AccountStore::At(std::u16string_view site) const {
  if (site.empty()) return {};
  if (site == LastSite()) return LastOne();
  const std::u16string path = PathOf(site);
  return {.account = registry_.Text(path, kAccountName).value_or(u""),
          .sealed = registry_.Text(path, kPasswordName).value_or(u"")};
}

void AccountStore::Write(std::u16string_view site, const Kept& kept) {
  if (site == LastSite())
    WriteLast(site, kept);
  else
    WriteAside(site, kept);
}

void AccountStore::WriteAside(std::u16string_view site, const Kept& kept) {
  registry_.SetText(PathOf(site), kAccountName, kept.account);
  registry_.SetText(PathOf(site), kPasswordName, kept.sealed);
}

// The password last: in a run that is cut short none stands beside another account or site.
void AccountStore::WriteLast(std::u16string_view site, const Kept& kept) {
  if (Account() != kept.account || LastSite() != site) {
    registry_.SetText(kRegistryPath, kPasswordName, u"");
    registry_.SetText(kRegistryPath, kAccountName, kept.account);
    registry_.SetText(kRegistryPath, kSiteName, site);
  }
  registry_.SetText(kRegistryPath, kPasswordName, kept.sealed);
}

std::u16string AccountStore::Account(std::u16string_view site) const {
  return At(site).account;
}

std::u16string AccountStore::Password(std::u16string_view site) {
  const Kept kept = At(site);
  if (kept.account.empty()) return {};
  std::u16string password;
  if (!kept.sealed.empty()) {
    // The serial number may be there again at the next start.
    if (Tag().empty()) return {};
    password = UnsealPassword(kept.sealed, Tag());
  }
  if (password.empty()) ForgetPassword(site);
  return password;
}

std::u16string AccountStore::Seal(std::u16string_view password) {
  if (password.empty()) return {};
  std::u16string sealed = SealPassword(password, Tag());
  return UnsealPassword(sealed, Tag()) == password ? sealed : std::u16string();
}

bool AccountStore::CanRemember(std::u16string_view password) {
  return password.empty() || !Seal(password).empty();
}

void AccountStore::Remember(std::u16string_view site, std::u16string_view account,
                            std::u16string_view password) {
  if (site.empty()) return;
  const Kept kept{.account = std::u16string(account), .sealed = Seal(password)};
  const std::u16string formerSite = LastSite();
  if (site == formerSite) return WriteLast(site, kept);
  const Kept former = LastOne();
  const bool leftCopy = !At(site).account.empty();
  if (!formerSite.empty() && !former.account.empty()) WriteAside(formerSite, former);
  WriteLast(site, kept);
  // A second one would outlive the day on which this one is forgotten.
  if (leftCopy) WriteAside(site, {});
}

void AccountStore::Forget(std::u16string_view site) {
  if (!At(site).account.empty()) Write(site, {});
}

void AccountStore::ForgetPassword(std::u16string_view site) {
  const std::u16string account = Account(site);
  if (!account.empty()) Write(site, {.account = account, .sealed = {}});
}

const std::string& AccountStore::Tag() {
  if (tag_.empty()) tag_ = machineTag_();
  return tag_;
}

}  // namespace quillet
