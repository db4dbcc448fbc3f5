#include "bbs/article_code.h"

#include <gtest/gtest.h>
#include <random>

namespace quillet {
namespace {

const WebHosts kHosts{.host = u"www.bbs.example", .mirror1 = u"m1.example", .mirror2 = u"m2.example"};
constexpr std::u16string_view kName = u"M.1700000000.A.1F3";
constexpr std::u16string_view kCode = u"1bK_407p";

// A name written without the code under test.
std::u16string NameOf(char16_t kind, std::uint32_t seconds, unsigned suffix) {
  constexpr std::u16string_view kHex = u"0123456789ABCDEF";
  const std::string digits = std::to_string(seconds);
  std::u16string name{kind, u'.'};
  name.append(10 - digits.size(), u'0').append(digits.begin(), digits.end()).append(u".A.");
  return name.append({kHex[suffix >> 8], kHex[suffix >> 4 & 15], kHex[suffix & 15]});
}

TEST(ArticleCodeTest, KnownCodesAndFileNamesMatch) {
  EXPECT_EQ(AidToValue(kCode), 0x06553F1001F3U);
  EXPECT_EQ(AidToFileName(kCode), kName);
  EXPECT_EQ(FileNameToAid(kName), kCode);
  EXPECT_EQ(FileNameToAid(u"G.1700000000.A.1F3"), u"5bK_407p");
  EXPECT_EQ(FileNameToAid(u"M.2147483647.A.aBc"), u"1_____gy");
  // Kinds that are never made here, and seconds that need all 32 bits.
  EXPECT_EQ(AidToFileName(u"9bK_4000"), u"G.1700000000.A.000");
  EXPECT_EQ(AidToFileName(u"________"), u"G.4294967295.A.FFF");
}

TEST(ArticleCodeTest, SecondsBehindTheSigned32BitsSaturate) {
  for (const std::u16string_view seconds : {u"2147483648", u"4294967296", u"9999999999"}) {
    const std::u16string name = std::u16string(u"M.").append(seconds).append(u".A.FFF");
    EXPECT_EQ(FileNameToAid(name), u"1_______");
  }
}

TEST(ArticleCodeTest, BadCodesNameNoFile) {
  EXPECT_EQ(AidToValue(u"1bK_407p@x漢"), 0x06553F1001F3U);
  EXPECT_EQ(AidToFileName(u"1bK_407p@x漢"), kName);
  EXPECT_EQ(AidToValue(u"10@"), 64U);
  for (const std::u16string_view bad : {u"", u"@", u"1bK_407", u"1bK_407@p", u"1bK_407p0", u"10@"})
    EXPECT_EQ(AidToFileName(bad), u"");
  // Units next to the alphabet's, beyond it, and ones whose low byte is of it.
  for (const char16_t c : {u'/', u':', u'`', u'{', u'[', u',', u'.', u'\0', char16_t{0x80}, char16_t{0x0141},
                           char16_t{0xD841}, u'漢'}) {
    const std::u16string bad = std::u16string(u"1bK_407") + c;
    EXPECT_EQ(AidToValue(bad), 0U) << static_cast<int>(c);
    EXPECT_EQ(AidToFileName(bad), u"") << static_cast<int>(c);
  }
}

TEST(ArticleCodeTest, OnlyWellFormedFileNamesConvert) {
  // Every place of a good name, replaced by what does not belong there.
  for (std::size_t at = 0; at < kName.size(); ++at) {
    for (const char16_t c :
         {u'g', u'm', u'-', u'+', u' ', u':', u'/', u'`', u'@', u'\0', char16_t{0x0141}, u'０'}) {
      std::u16string bad(kName);
      bad[at] = c;
      EXPECT_EQ(FileNameToAid(bad), u"") << at << " " << static_cast<int>(c);
    }
  }
  for (const std::u16string_view bad : {u"", u"M.1700000000.A.1F", u"M.1700000000.A.1F30",
                                        u"M.17000000A0.A.1F3", u"M.1700000000.B.1F3", u"M.1700000000.A.1G3"})
    EXPECT_EQ(FileNameToAid(bad), u"");
}

TEST(ArticleCodeTest, RandomNamesSurviveTheWayThereAndBack) {
  std::mt19937 random(20240601);
  for (int i = 0; i < 20000; ++i) {
    const std::uint32_t seconds = 1000000000U + static_cast<std::uint32_t>(random()) % 1147483648U;
    const unsigned suffix = static_cast<unsigned>(random()) & 0xFFF;
    const std::u16string plain = NameOf(u'M', seconds, suffix);
    const std::u16string other = NameOf(u'G', seconds, suffix);
    ASSERT_EQ(AidToFileName(FileNameToAid(plain)), plain);
    ASSERT_EQ(AidToFileName(FileNameToAid(other)), other);
    // They differ in one bit, and so in the first character only.
    const std::uint64_t difference = AidToValue(FileNameToAid(plain)) ^ AidToValue(FileNameToAid(other));
    ASSERT_EQ(difference, std::uint64_t{1} << 44);
    ASSERT_EQ(FileNameToAid(plain).substr(1), FileNameToAid(other).substr(1));
  }
}

struct Link {
  std::u16string_view text;
  std::u16string_view board;
  std::u16string_view code;
};

TEST(ArticleLinkTest, LinksOfEachHostAreUnderstood) {
  for (const Link& link : {
           Link{u"https://www.bbs.example/bbs/Test/M.1700000000.A.1F3.html", u"Test", kCode},
           Link{u"https://m1.example/bbs/Test/M.1700000000.A.1F3.html", u"Test", kCode},
           Link{u"https://m2.example/p/Test.M.1700000000.A.1F3", u"Test", kCode},
           Link{u"見 https://m2.example/p/Test.M.1700000000.A.1f3 或 a/b", u"Test", kCode},
           // The first host's link counts, wherever it stands.
           Link{u"https://m2.example/p/A/M.1700000000.A.1F3 https://www.bbs.example/bbs/B/G.1700000000.A.1F3",
                u"B", u"5bK_407p"},
           // Links to a board and to its list are no article's.
           Link{u"https://www.bbs.example/bbs/Test/index.html", u"Test", u""},
           Link{u"https://www.bbs.example/bbs/Test/M.1700000000.A.1F", u"Test", u""},
           Link{u"https://www.bbs.example/bbs//", u"", u""},
       }) {
    ArticleReference reference{u"old", u"old", 7};
    EXPECT_TRUE(ParseArticleUrl(link.text, kHosts, reference));
    EXPECT_EQ(reference, (ArticleReference{std::u16string(link.board), std::u16string(link.code), 0}));
  }
}

TEST(ArticleLinkTest, WhatIsNoLinkEmptiesTheReference) {
  for (const std::u16string_view text : {
           u"",
           u"https://www.bbs.example/bbs/Test",
           u"https://www.bbs.example/bbs/Test\r/M.1700000000.A.1F3",
           u"http://www.bbs.example/bbs/Test/M.1700000000.A.1F3.html",
           u"https://www.bbs.example.evil.example/bbs/Test/M.1700000000.A.1F3.html",
           u"https://www.bbs.example/p/Test/M.1700000000.A.1F3.html",
           u"https://m2.example/bbs/Test/M.1700000000.A.1F3.html",
           u"https:///bbs/Test/M.1700000000.A.1F3.html",
       }) {
    ArticleReference reference{u"old", u"old", 7};
    EXPECT_FALSE(ParseArticleUrl(text, kHosts, reference));
    EXPECT_EQ(reference, ArticleReference{});
  }
}

TEST(ArticleLinkTest, HostsThatAreNotConfiguredMatchNothing) {
  ArticleReference reference;
  EXPECT_FALSE(ParseArticleUrl(u"https:///bbs/Test/M.1700000000.A.1F3.html", {}, reference));
  EXPECT_FALSE(ParseArticleUrl(u"https:///p/Test/M.1700000000.A.1F3.html", {}, reference));
  EXPECT_EQ(ArticleUrl(u"Test", kCode, {}), u"");

  Endpoints endpoints;
  endpoints.values = {{"web/host", "WWW.bbs.Example"}, {"web/mirror_1", "m\xC3\xA9.example"}};
  const WebHosts hosts = WebHostsOf(endpoints);
  EXPECT_EQ(hosts.host, u"www.bbs.example");
  EXPECT_EQ(hosts.mirror1, u"");
  EXPECT_EQ(hosts.mirror2, u"");
}

TEST(ArticleLinkTest, BuiltLinksAreUnderstood) {
  const std::u16string url = ArticleUrl(u"Test", kCode, kHosts);
  EXPECT_EQ(url, u"https://www.bbs.example/bbs/Test/M.1700000000.A.1F3.html");
  ArticleReference reference;
  EXPECT_TRUE(ParseArticleUrl(url, kHosts, reference));
  EXPECT_EQ(reference, (ArticleReference{u"Test", std::u16string(kCode), 0}));

  EXPECT_EQ(ArticleUrl(u"", kCode, kHosts), u"");
  EXPECT_EQ(ArticleUrl(u"Test", u"", kHosts), u"");
  EXPECT_EQ(ArticleUrl(u"Test", u"1bK_407/", kHosts), u"");
}

}  // namespace
}  // namespace quillet
