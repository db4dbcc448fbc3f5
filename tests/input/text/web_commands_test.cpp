#include "input/text/web_commands.h"

#include <gtest/gtest.h>

#include "platform/web_address.h"

namespace quillet {
namespace {

Endpoints Configured() {
  Endpoints endpoints;
  endpoints.values = {{"search/engine_1", "one.example"},
                      {"search/engine_2", "two.example"},
                      {"web/user_pages", "users.example"},
                      {"shortener/host", "short.example"}};
  return endpoints;
}

TEST(WebCommandsTest, EachEngineHasItsAddressWithThreeSignsEscapedAndLinesJoined) {
  EXPECT_EQ(SearchAddress(SearchEngine::kFirst, u"C++ 文藝 & more", Configured()),
            u"https://one.example/search?q=C%2B%2B 文藝 %26 more");
  EXPECT_EQ(SearchAddress(SearchEngine::kSecond, u"a\r\nb\nc\td#%26?=/\"<", Configured()),
            u"https://two.example/?q=a b c d%23%26?=/\"<");
}

TEST(WebCommandsTest, UserPagesAndTheShortenerHaveTheirs) {
  EXPECT_EQ(UserPageAddress(u"Some1+", Configured()), u"https://users.example/user/Some1%2B");
  EXPECT_EQ(ShortenerRequest(u"https://a.example/?b&c#d", Configured()),
            u"https://short.example/api-create.php?url=https://a.example/?b&c#d");
}

TEST(WebCommandsTest, NothingToLookUpAndNoHostGiveNoAddress) {
  EXPECT_EQ(SearchAddress(SearchEngine::kFirst, u"", Configured()), u"");
  EXPECT_EQ(UserPageAddress(u"", Configured()), u"");
  Endpoints none = Configured();
  for (auto& [name, host] : none.values)
    host = "";
  for (const Endpoints& endpoints : {Endpoints(), none}) {
    EXPECT_EQ(SearchAddress(SearchEngine::kFirst, u"a", endpoints), u"");
    EXPECT_EQ(UserPageAddress(u"a", endpoints), u"");
    EXPECT_EQ(ShortenerRequest(u"a", endpoints), u"");
  }
}

// Whatever is selected, its search can be opened: cut to size, with no escape and no character cut through.
TEST(WebCommandsTest, ALongTextIsCutToWhatAnAddressTakes) {
  for (const std::u16string_view unit : {u"a", u"&", u"中", u"\xD83D\xDE00", u"+x", u"\r\n"})
    for (std::size_t shift = 0; shift < 3; ++shift) {
      std::u16string text(shift, u'x');
      while (text.size() < 50000)
        text += unit;
      const std::u16string address = SearchAddress(SearchEngine::kFirst, text, Configured());
      ASSERT_LE(address.size(), kLongestWebAddress);
      ASSERT_GT(address.size(), kLongestWebAddress - 3);
      const std::size_t percent = address.rfind(u'%');
      EXPECT_TRUE(percent == address.npos || percent + 3 <= address.size());
      EXPECT_EQ(OpenableAddress(address).find("%EF%BF%BD"), std::string::npos) << "half a pair";
      EXPECT_NE(OpenableAddress(address), "");
    }
}

}  // namespace
}  // namespace quillet
