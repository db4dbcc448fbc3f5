#include "input/text/text_link.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>

#include "platform/utf8.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {

void PrintTo(const TextLink& link, std::ostream* out) {
  *out << link.first << "-" << link.last << " " << Utf8FromUtf16(link.address);
  if (link.article)
    *out << " #" << Utf8FromUtf16(link.article->code) << " (" << Utf8FromUtf16(link.article->board) << ")";
}

namespace {

const WebHosts kHosts{.host = u"www.bbs.example", .mirror1 = u"m1.example", .mirror2 = u"m2.example"};
constexpr std::u16string_view kFileName = u"M.1700000000.A.1F3";

std::vector<TextLink> FindLinks(const ScreenRow& row) {
  std::vector<TextLink> links;
  for (const LinkPlace& place : FindLinkPlaces(row))
    links.push_back(LinkOf(row, place, kHosts));
  return links;
}

class LinkFinderTest : public WithTables {
 protected:
  static std::vector<TextLink> Find(std::u16string_view text, int col = 0) {
    return FindLinks(ScreenBuilder().Put(0, col, text).screen.text[0]);
  }
  // The addresses, with a bar between them.
  static std::string Addresses(std::u16string_view text) {
    std::string all;
    for (const TextLink& link : Find(text))
      all += (all.empty() ? "" : "|") + Utf8FromUtf16(link.address);
    return all;
  }
  static std::optional<ArticleReference> ArticleIn(std::u16string_view text) {
    const std::vector<TextLink> links = Find(text);
    return links.size() == 1 ? links[0].article : std::nullopt;
  }
  static ArticleReference Article(std::u16string_view board) {
    return {.board = std::u16string(board), .code = FileNameToAid(kFileName)};
  }
};

TEST_F(LinkFinderTest, LinksAreToldByTheirColumns) {
  EXPECT_EQ(Find(u"看 http://a.example/x 和 HTTPS://b.example。", 1),
            (std::vector<TextLink>{{4, 22, u"http://a.example/x", {}}, {26, 43, u"HTTPS://b.example", {}}}));
  EXPECT_EQ(Find(u"https://a.example/long", kCols - 17),
            (std::vector<TextLink>{{kCols - 17, kCols, u"https://a.example", {}}}));
}

TEST_F(LinkFinderTest, ALinkEndsWhereTheSentenceGoesOn) {
  struct Case {
    std::u16string_view text;
    const char* addresses;
  };
  for (const Case& c : {
           Case{u"http://a.example/路徑/x", "http://a.example/"},
           Case{u"<http://a.example/b>", "http://a.example/b"},
           Case{u"\"http://a.example/b\"", "http://a.example/b"},
           Case{u"(http://a.example/b).", "http://a.example/b"},
           Case{u"{see http://a.example/b}!?", "http://a.example/b"},
           Case{u"http://a.example/b_(c)", "http://a.example/b_(c)"},
           Case{u"(http://a.example/b_(c))", "http://a.example/b_(c)"},
           Case{u"http://a.example/b?c=d&e=f#g,", "http://a.example/b?c=d&e=f#g"},
           Case{u"http://a.example...", "http://a.example"},
           Case{u"http://a.example/it's", "http://a.example/it's"},
           Case{u"http://a.example/b\\http://c.example", "http://a.example/b|http://c.example"},
           Case{u"http://a.example/?u=http://b.example/", "http://a.example/?u=http://b.example/"},
           Case{u"http://a.example:8080/ http://[::1]/b", "http://a.example:8080/|http://[::1]/b"},
       })
    EXPECT_EQ(Addresses(c.text), c.addresses) << Utf8FromUtf16(c.text);
}

TEST_F(LinkFinderTest, WhatCannotBeOpenedIsNoLink) {
  EXPECT_EQ(Addresses(u"http:// https:// http://. http://) http://。"), "");
  EXPECT_EQ(Addresses(u"ftp://a.example javascript:alert(1) file:///etc/passwd www.a.example"), "");
  EXPECT_EQ(Addresses(u"https://www.bbs.example@evil.example/ https://u:p@evil.example"), "");
  EXPECT_EQ(Addresses(u"http://http://a.example/b"), "http://a.example/b") << "the scheme typed twice";
}

TEST_F(LinkFinderTest, AWebLinkOfTheBbsIsItsArticle) {
  for (const std::u16string_view front :
       {u"https://www.bbs.example/bbs/", u"https://m1.example/bbs/", u"https://m2.example/p/"}) {
    const std::u16string file(kFileName);
    EXPECT_EQ(ArticleIn(std::u16string(front) + u"Baseball/" + file + u".html,"), Article(u"Baseball"));
    EXPECT_EQ(ArticleIn(std::u16string(front) + u"Baseball/index.html"), std::nullopt);
    EXPECT_EQ(ArticleIn(std::u16string(front) + u"Base'ball/" + file + u".html"), std::nullopt);
  }
  EXPECT_EQ(ArticleIn(u"HTTPS://WWW.BBS.Example/bbs/Test/" + std::u16string(kFileName) + u".html"),
            Article(u"Test"));
}

// Such a link opens its own site: it must not claim to lead to the BBS.
TEST_F(LinkFinderTest, AnArticlesAddressWithinAnotherIsThatSitesAffair) {
  const std::u16string inner = u"https://www.bbs.example/bbs/A/" + std::u16string(kFileName);
  for (const std::u16string_view front :
       {u"https://evil.example/", u"https://m1.example/x?u=", u"http://e.example#"}) {
    const std::vector<TextLink> links = Find(std::u16string(front) + inner);
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(links[0].article, std::nullopt) << Utf8FromUtf16(links[0].address);
  }
}

TEST_F(LinkFinderTest, ACodeWithItsBoardIsAnArticle) {
  const ArticleReference article{.board = u"C_Chat", .code = u"1a2B3c4_"};
  EXPECT_EQ(Find(u"  │ 文章代碼(AID): #1a2B3c4_ (C_Chat) [bbs.example] 標題"),
            (std::vector<TextLink>{{20, 38, {}, article, LinkKind::kArticleCode}}));
  EXPECT_EQ(ArticleIn(u"見#1a2B3c4_(C_Chat)。"), article);
  EXPECT_EQ(ArticleIn(u"乙#1a2B3c4_(C_Chat)。"), article) << "the first character's second byte is an A";
  EXPECT_EQ(Find(u"#1a2B3c4_ (A) #1a2B3c4_ (B)").size(), 2U);
  for (const std::u16string_view text :
       {u"#1a2B3c4 (A)", u"#1a2B3c4_5 (A)", u"#1a2B3c4_  (A)", u"#1a2B3c4_ ()", u"#1a2B3c4_ (A", u"#1a2B3c4_",
        u"#1a2B3c4_ (a b)", u"#1a2B3c4_ (看板)", u"x#1a2B3c4_ (A)", u"#1a2B3c4! (A)", u"#trending (Now)",
        u"#1a2B3c4_ (AVeryLongNameOfSomething)"})
    EXPECT_TRUE(Find(text).empty()) << Utf8FromUtf16(text);
}

// The second byte of a character is no "#" and no "h".
TEST_F(LinkFinderTest, CharactersAreTakenWhole) {
  ScreenBuilder page;
  page.Put(0, 1, u"http://a.example http://b.example");
  page.screen.text[0][0] = 0xA4;
  const std::vector<TextLink> links = FindLinks(page.screen.text[0]);
  ASSERT_EQ(links.size(), 1U);
  EXPECT_EQ(links[0].address, u"http://b.example");
}

}  // namespace
}  // namespace quillet
