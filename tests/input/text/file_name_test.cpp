#include "input/text/file_name.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(FileNameTest, TitlesBecomeNamesThatEverySystemTakes) {
  const std::pair<std::u16string_view, std::u16string_view> kRows[] = {
      {u"[心得] 貓  v1.5 發布", u"[心得] 貓 v1.5 發布"},
      {u"a/b\\c:d*e?\"<>|", u"a_b_c_d_e_____"},
      {u"  ..\u3000隱藏. ", u"隱藏"},
      {u"一\r\n二\u202E三", u"一二三"},
      {u"con", u"_con"},
      {u"LPT1 .x", u"_LPT1 .x"},
      {u"COMA", u"COMA"},
      {u"..", u"文章"},
      {u"", u"文章"},
  };
  for (const auto& [title, name] : kRows)
    EXPECT_EQ(FileNameOf(title, u"文章"), name);
  EXPECT_EQ(FileNameOf(std::u16string(70, u'貓'), u"").size(), 60U);
  EXPECT_EQ(FileNameOf(std::u16string(59, u'x') + u"\U0001F431", u""), std::u16string(59, u'x'));
}

}  // namespace
}  // namespace quillet
