#include "platform/registry.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <windows.h>

#include "tests/platform/registry_contract.h"

namespace quillet {
namespace {

// A key of the test's own, removed with all it holds when the test ends.
class SystemRegistryTest : public testing::Test {
 protected:
  ~SystemRegistryTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, wide_.c_str()); }

  // As another program may write it: any bytes, called a text.
  void WriteRaw(const wchar_t* name, DWORD type, std::string_view bytes) const {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, wide_.c_str(), name, type, bytes.data(),
                              static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
  }

  std::wstring wide_ = L"SOFTWARE\\QuilletTest" + std::to_wstring(std::random_device{}());
  std::u16string path_{wide_.begin(), wide_.end()};
};

TEST_F(SystemRegistryTest, KeepsTheContractAndAnotherObjectSeesTheValues) {
  const auto registry = OpenUserRegistry();
  ExpectRegistryContract(*registry, path_);
  ExpectContractValuesRemain(*OpenUserRegistry(), path_);
  EXPECT_FALSE(registry->Problem());
}

TEST_F(SystemRegistryTest, TextsOfOtherProgramsEndAtTheirFirstNulOrAtTheirLastByte) {
  using namespace std::string_view_literals;
  WriteRaw(L"NoEnd", REG_SZ, "a\0b\0c\0"sv);
  WriteRaw(L"TwoEnds", REG_SZ, "a\0b\0\0\0\0\0"sv);
  WriteRaw(L"Inside", REG_SZ, "a\0\0\0b\0\0\0"sv);
  WriteRaw(L"Odd", REG_SZ, "a\0b\0c"sv);
  WriteRaw(L"Nothing", REG_SZ, ""sv);
  WriteRaw(L"Bytes", REG_BINARY, "a\0b\0\0\0"sv);
  const auto registry = OpenUserRegistry();
  EXPECT_EQ(registry->Text(path_, u"NoEnd"), u"abc");
  EXPECT_EQ(registry->Text(path_, u"TwoEnds"), u"ab");
  EXPECT_EQ(registry->Text(path_, u"Inside"), u"a");
  EXPECT_EQ(registry->Text(path_, u"Odd").value_or(u"").substr(0, 2), u"ab");
  EXPECT_EQ(registry->Text(path_, u"Nothing"), u"");
  EXPECT_EQ(registry->Text(path_, u"Bytes"), std::nullopt);
}

TEST_F(SystemRegistryTest, AnUnendedTextIsReadWholeAtEveryLength) {
  const auto registry = OpenUserRegistry();
  for (std::size_t length = 120; length < 140; ++length) {
    std::string bytes;
    for (std::size_t i = 0; i < length; ++i)
      bytes += {static_cast<char>('a' + i % 26), '\0'};
    WriteRaw(L"NoEnd", REG_SZ, bytes);
    EXPECT_EQ(registry->Text(path_, u"NoEnd").value_or(u"").size(), length);
  }
}

TEST_F(SystemRegistryTest, WhatTheSystemRefusesLivesAsLongAsTheObject) {
  // No key has a name this long.
  const std::u16string refused = path_ + u"\\" + std::u16string(300, u'k');
  const auto registry = OpenUserRegistry();
  EXPECT_FALSE(registry->SetText(refused, u"Account", u"mossgrov"));
  EXPECT_FALSE(registry->SetNumber(refused, u"N", 7));
  EXPECT_EQ(registry->Text(refused, u"Account"), u"mossgrov");
  EXPECT_EQ(registry->Number(refused, u"N"), 7U);
  EXPECT_EQ(OpenUserRegistry()->Text(refused, u"Account"), std::nullopt);
  EXPECT_FALSE(registry->Problem()) << "another program's key";
}

TEST_F(SystemRegistryTest, WhatIsRefusedOfTheUsersOwnIsToldAsAProblem) {
  const std::u16string own(kRegistryPath), name(16384, u'n');  // longer than the name of any value
  const auto registry = OpenUserRegistry();
  EXPECT_FALSE(registry->SetText(own, name, u"mossgrov"));
  ASSERT_TRUE(registry->Problem());
  EXPECT_EQ(registry->Problem()->file, L"HKEY_CURRENT_USER\\SOFTWARE\\Quillet");
  EXPECT_FALSE(registry->Problem()->reason.empty());
}

}  // namespace
}  // namespace quillet
