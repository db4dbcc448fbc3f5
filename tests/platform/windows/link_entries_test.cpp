#include <gtest/gtest.h>
#include <string>

#include "platform/folders.h"
#include "platform/link_handler.h"
#include "tests/platform/windows/noted_program.h"

namespace quillet {
namespace {

std::wstring ClassText(const wchar_t* key, const wchar_t* name) {
  std::wstring text(1000, L'\0');
  auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  const std::wstring path = std::wstring(L"SOFTWARE\\Classes\\") + key;
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
      ERROR_SUCCESS)
    return {};
  return text.c_str();
}

// A real user's entries are left as they are.
TEST(LinkEntriesTest, TheUsersClassesStartTheFileThatRuns) {
  if (!IsWine()) GTEST_SKIP();
  std::string told;
  RefreshLinkHandler(*OpenUserRegistry(), [&](std::string_view what) { told += what; });
  EXPECT_EQ(told, "");
  EXPECT_EQ(ClassText(L"QuilletHTML\\shell\\open\\command", nullptr),
            L"\"" + ProgramFile().wstring() + L"\" --single-argument %1");
  EXPECT_EQ(ClassText(L"QuilletHTML\\DefaultIcon", nullptr), ProgramFile().wstring() + L",0");
}

TEST(LinkEntriesTest, WhoHasTheLinksStandsInTheUsersChoice) {
  if (!IsWine()) GTEST_SKIP();
  constexpr std::u16string_view kChoice =
      u"SOFTWARE\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\https\\UserChoice";
  const auto registry = OpenUserRegistry();
  ASSERT_TRUE(registry->SetText(kChoice, u"ProgId", u"OtherHTML"));
  EXPECT_EQ(CurrentLinkHandling().owner, LinkOwner::kOther);
  EXPECT_EQ(CurrentLinkHandling().other, u"OtherHTML");
  ASSERT_TRUE(registry->SetText(kChoice, u"ProgId", u"QuilletHTML"));
  EXPECT_EQ(CurrentLinkHandling().owner, LinkOwner::kThisProgram);
  ASSERT_TRUE(registry->SetText(kChoice, u"ProgId", u""));
  EXPECT_EQ(CurrentLinkHandling().owner, LinkOwner::kUnknown);
}

}  // namespace
}  // namespace quillet
