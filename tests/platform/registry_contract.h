// What every form of the registry must do, called by the tests of each.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "platform/registry.h"

namespace quillet {

// `path` is a key that holds nothing yet.
inline void ExpectRegistryContract(Registry& registry, const std::u16string& path) {
  EXPECT_EQ(registry.Text(path, u"Account"), std::nullopt);
  EXPECT_EQ(registry.Number(path, u"Account"), std::nullopt);

  EXPECT_TRUE(registry.SetText(path, u"Account", u"mossgrov"));
  EXPECT_TRUE(registry.SetText(path + u"\\shell\\open", u"Account", u"elsewhere"));
  EXPECT_TRUE(registry.SetNumber(path, u"Quillet.exe", 0xFFFFFFFF));
  EXPECT_EQ(registry.Text(path, u"Account"), u"mossgrov");
  EXPECT_EQ(registry.Text(path + u"\\shell\\open", u"Account"), u"elsewhere");
  EXPECT_EQ(registry.Number(path, u"Quillet.exe"), 0xFFFFFFFF);

  std::u16string otherCase = path;
  for (char16_t& unit : otherCase)
    unit = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  ASSERT_NE(otherCase, path);
  EXPECT_EQ(registry.Text(otherCase, u"ACCOUNT"), u"mossgrov");

  // One value per name, of one type.
  EXPECT_EQ(registry.Number(path, u"Account"), std::nullopt);
  EXPECT_EQ(registry.Text(path, u"Quillet.exe"), std::nullopt);
  EXPECT_TRUE(registry.SetText(path, u"QUILLET.EXE", u"now a text"));
  EXPECT_EQ(registry.Number(path, u"Quillet.exe"), std::nullopt);
  EXPECT_EQ(registry.Text(path, u"Quillet.exe"), u"now a text");

  const std::u16string longText(40000, u'x');
  const std::u16string texts[] = {u"", u" a = \"b\" \\ ] ; \\u0041\n\r\t\x7F[c]", u"帳號 \xD83D\xDE00",
                                  u"\xD800 alone, \xDC00", longText};
  for (const std::u16string& text : texts) {
    EXPECT_TRUE(registry.SetText(path, u"odd ] \"name\" = \\ 名", text));
    EXPECT_EQ(registry.Text(path, u"odd ] \"name\" = \\ 名"), text);
  }

  // The name that stands for the key itself.
  EXPECT_TRUE(registry.SetText(path, u"", u"default"));
  EXPECT_EQ(registry.Text(path, u""), u"default");

  using namespace std::string_view_literals;
  EXPECT_TRUE(registry.SetText(path, u"Cut\0here"sv, u"before\0after"sv));
  EXPECT_EQ(registry.Text(path, u"Cut"), u"before");
}

// The values that ExpectRegistryContract leaves, seen by another object.
inline void ExpectContractValuesRemain(const Registry& registry, const std::u16string& path) {
  EXPECT_EQ(registry.Text(path, u"Account"), u"mossgrov");
  EXPECT_EQ(registry.Text(path + u"\\shell\\open", u"Account"), u"elsewhere");
  EXPECT_EQ(registry.Text(path, u"Quillet.exe"), u"now a text");
  EXPECT_EQ(registry.Text(path, u"odd ] \"name\" = \\ 名"), std::u16string(40000, u'x'));
  EXPECT_EQ(registry.Text(path, u""), u"default");
  EXPECT_EQ(registry.Text(path, u"Cut"), u"before");
}

}  // namespace quillet
