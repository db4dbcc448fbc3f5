#include <gtest/gtest.h>
#include <set>
#include <string>

#include "settings/account_store.h"
#include "settings/files/data_files.h"
#include "settings/password_seal.h"

namespace quillet {
namespace {

constexpr std::string_view kTag = "00A1B2C";

TEST(PasswordSealTest, OpensToWhatWasSealedUpToNineCharacters) {
  const std::u16string password = u"aB3$ \u00FFxyz";
  std::set<std::u16string> seals;
  for (std::size_t length = 1; length <= kSealedPasswordLength; ++length) {
    const std::u16string part = password.substr(0, length);
    const std::u16string sealed = SealPassword(part, kTag);
    ASSERT_EQ(sealed.size(), 32U);
    EXPECT_EQ(sealed.find_first_not_of(u"0123456789abcdef"), std::u16string::npos);
    EXPECT_EQ(UnsealPassword(sealed, kTag), part);
    seals.insert(sealed);
  }
  EXPECT_EQ(seals.size(), kSealedPasswordLength);
}

// A seal of an earlier version must open in every later one: key, cipher and layout stay.
TEST(PasswordSealTest, StaysTheSameBetweenVersions) {
  EXPECT_EQ(SealPassword(u"secret", kTag), u"2f72a97115ab298a9bef5b16c1698774");
}

TEST(PasswordSealTest, OpensUnderNoOtherTag) {
  const std::u16string sealed = SealPassword(u"secret", kTag);
  for (std::size_t i = 0; i < kTag.size(); ++i) {
    std::string other(kTag);
    other[i] = static_cast<char>(other[i] ^ 0x80);
    EXPECT_EQ(UnsealPassword(sealed, other), u"");
  }
  for (const std::string_view tag : {"", "A1B2C", "000A1B2C"}) {
    EXPECT_EQ(SealPassword(u"secret", tag), u"");
    EXPECT_EQ(UnsealPassword(sealed, tag), u"");
  }
}

TEST(PasswordSealTest, OpensWithNothingButItsOwnDigits) {
  const std::u16string sealed = SealPassword(u"secret", kTag);
  for (std::size_t i = 0; i < sealed.size(); ++i) {
    for (const char16_t digit : std::u16string_view(u"0123456789abcdefABCDEFg/: \0\u0131\uFF11", 29)) {
      if (digit == sealed[i]) continue;
      std::u16string changed = sealed;
      changed[i] = digit;
      ASSERT_EQ(UnsealPassword(changed, kTag), u"") << i << " " << static_cast<unsigned>(digit);
    }
    EXPECT_EQ(UnsealPassword(sealed.substr(0, i), kTag), u"");
  }
  EXPECT_EQ(UnsealPassword(sealed + u"0", kTag), u"");
  EXPECT_EQ(UnsealPassword(sealed + sealed, kTag), u"");
}

class AccountStoreTest : public testing::Test {
 protected:
  AccountStore Open(std::string tag = std::string(kTag)) {
    return AccountStore(registry_, [this, tag] {
      ++questions_;
      return tag;
    });
  }
  std::u16string Value(std::u16string_view name) const {
    return registry_.Text(kRegistryPath, name).value_or(u"missing");
  }

  MemoryRegistry registry_;
  int questions_ = 0;
};

constexpr std::u16string_view kSite = u"bbs.example";

TEST_F(AccountStoreTest, RemembersOverARestart) {
  EXPECT_EQ(Open().Account(kSite), u"");
  Open().Remember(kSite, u"mossgrov", u"secret");
  EXPECT_EQ(Value(u"Account"), u"mossgrov");
  EXPECT_EQ(Value(u"AutoLogin"), SealPassword(u"secret", kTag));
  questions_ = 0;
  AccountStore store = Open();
  EXPECT_EQ(store.Account(kSite), u"mossgrov");
  EXPECT_EQ(questions_, 0) << "the tag is asked for when it is needed";
  EXPECT_EQ(store.Password(kSite), u"secret");
  EXPECT_EQ(store.Password(kSite), u"secret");
  EXPECT_EQ(questions_, 1);
  store.Remember(kSite, u"second", u"");
  EXPECT_EQ(Open().Account(), u"second");
  EXPECT_EQ(Open().Password(kSite), u"");
  store.Forget(kSite);
  EXPECT_EQ(store.Account(), u"");
  EXPECT_EQ(Value(u"Account"), u"");
  EXPECT_EQ(Value(u"AutoLogin"), u"");
}

TEST_F(AccountStoreTest, EachSiteHasItsOwnAndWhatIsForgottenIsNowhere) {
  const std::u16string_view other = u"other.example";
  Open().Remember(kSite, u"mossgrov", u"secret");
  Open().Remember(other, u"alice", u"wonder");
  EXPECT_EQ(Value(u"Account"), u"alice") << "of the site used last";
  EXPECT_EQ(Open().Password(kSite), u"secret");
  Open().Remember(kSite, u"mossgrov", u"secret");
  EXPECT_EQ(Open().Password(other), u"wonder");
  Open().ForgetPassword(other);
  EXPECT_EQ(Open().Account(other), u"alice");
  EXPECT_EQ(Value(u"Account"), u"mossgrov") << "nobody has been there since";
  EXPECT_EQ(Open().Account(u"third.example"), u"");
  Open().Remember(u"", u"nobody", u"nowhere");
  Open().Forget(u"third.example");
  EXPECT_EQ(Open().Password(kSite), u"secret");
  Open().Forget(kSite);
  Open().Forget(other);
  for (const std::u16string_view site : {kSite, other})
    for (const std::u16string_view name : {u"Account", u"AutoLogin"})
      EXPECT_EQ(registry_.Text(u"SOFTWARE\\Quillet\\Sites\\" + std::u16string(site), name).value_or(u""),
                u"");
  EXPECT_EQ(Open().Account(), u"");
}

TEST_F(AccountStoreTest, APasswordThatTheSealWouldChangeIsNotRemembered) {
  for (const std::u16string_view password : {u"0123456789", u"\u4E2D\u6587", u"a\u0100b"}) {
    AccountStore store = Open();
    store.Remember(kSite, u"mossgrov", u"earlier");
    EXPECT_FALSE(store.CanRemember(password));
    store.Remember(kSite, u"mossgrov", password);
    EXPECT_EQ(store.Password(kSite), u"");
    EXPECT_EQ(Value(u"Account"), u"mossgrov");
    EXPECT_EQ(Value(u"AutoLogin"), u"");
  }
  EXPECT_TRUE(Open().CanRemember(u"012345678"));
  EXPECT_FALSE(Open("").CanRemember(u"secret")) << "a machine without a tag";
}

TEST_F(AccountStoreTest, ASealThatDoesNotOpenHereIsForgottenAndTheAccountKept) {
  Open().Remember(kSite, u"mossgrov", u"secret");
  AccountStore elsewhere = Open("otherPC");
  EXPECT_EQ(Value(u"AutoLogin").size(), 32U);
  EXPECT_EQ(elsewhere.Password(kSite), u"");
  EXPECT_EQ(Value(u"Account"), u"mossgrov");
  EXPECT_EQ(Value(u"AutoLogin"), u"");
}

TEST_F(AccountStoreTest, AMachineThatDoesNotTellItsTagNowForgetsNothing) {
  Open().Remember(kSite, u"mossgrov", u"secret");
  EXPECT_EQ(Open("").Password(kSite), u"");
  EXPECT_EQ(Open().Password(kSite), u"secret");
}

}  // namespace
}  // namespace quillet
