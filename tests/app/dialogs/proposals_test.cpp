// What the dialogs propose: an address to connect to, an id to note.
#include <gtest/gtest.h>

#include "app/dialogs/site_choice.h"
#include "app/interaction/author_at_cursor.h"
#include "app/session/site.h"
#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

using ProposalsTest = WithTables;

TEST_F(ProposalsTest, TheAddressUsedLastWhereItCanBeConnectedTo) {
  EXPECT_EQ(ProposedAddress("telnet://other.example:2323", "bbs.example"), "telnet://other.example:2323");
  EXPECT_EQ(ProposedAddress("other.example", "bbs.example"), "other.example");
  for (const char* unfit : {"", "ssh://", "gopher://x", "telnet://"})
    EXPECT_EQ(ProposedAddress(unfit, "bbs.example"), "telnet://bbs.example") << unfit;
  EXPECT_EQ(ProposedAddress("", ""), "");
}

TEST_F(ProposalsTest, TheWaysToLogInAreTheBbssOwnButForTheSiteInUse) {
  Endpoints endpoints;
  endpoints.mainHost = "bbs.example";
  endpoints.webSocketHost = "ws.bbs.example";
  const auto addresses = [&](const QString& preferred) {
    QStringList all;
    for (const LoginSites::Way& way : ProposedLogin(preferred, endpoints).ways)
      all << way.address;
    return all;
  };
  const QStringList own = {"telnet://bbs.example", "ssh://bbs.example", "wss://ws.bbs.example/bbs"};
  for (const char* unfit : {"", "gopher://x", "telnet://"})
    EXPECT_EQ(addresses(unfit), own) << unfit;
  EXPECT_EQ(addresses("other.example:2323"), (QStringList{"other.example:2323", own[1], own[2]}));
  EXPECT_EQ(addresses("wss://w.example/bbs"), (QStringList{own[0], own[1], "wss://w.example/bbs"}));
  for (const LoginSites::Way& way : ProposedLogin({}, {}).ways)
    EXPECT_FALSE(way.possible);
  // The way in use is proposed where it can be gone, by telnet otherwise.
  for (const char* preferred : {"ssh://bbs.example", "wss://w.example/bbs", "telnet://x"}) {
    const LoginSites sites = ProposedLogin(preferred, endpoints);
    const TransportKind kind = ParseSiteAddress(preferred).address.kind;
    EXPECT_EQ(sites.proposed, sites.Of(kind).possible ? kind : TransportKind::kTelnet) << preferred;
  }
}

TEST_F(ProposalsTest, TheNamesOfOneSiteAreOneKey) {
  Endpoints endpoints;
  endpoints.mainHost = "bbs.example";
  endpoints.webSocketHost = "ws.bbs.example";
  const auto key = [&](const QString& address) { return SiteKey(address, endpoints); };
  for (const char* own :
       {"BBS.example", "ssh://bbs.example:22", "wss://ws.bbs.example/bbs", "wss://ws.bbs.example:443/bbs"})
    EXPECT_EQ(key(own), key("telnet://bbs.example")) << own;
  for (const char* other : {"bbs.example.evil", "evilbbs.example", "wss://evil/bbs.example", "127.0.0.1"})
    EXPECT_NE(key(other), key("telnet://bbs.example")) << other;
  EXPECT_EQ(key("telnet://other:23"), key("ssh://OTHER"));
  EXPECT_EQ(key("gopher://bbs.example"), u"");
  EXPECT_EQ(key(""), u"");
  EXPECT_EQ(SiteKey("", {}), u"") << "an unnamed host is no site";
}

TEST_F(ProposalsTest, TheAuthorUnderTheListsCursorOrOfTheOpenArticle) {
  ScreenBuilder list;
  list.Put(5, 17, u"kitten      ").Cursor(5, 1);
  const auto author = [](const ScreenBuilder& page, const ArticleInfo& open) {
    return AuthorAtCursor(page.screen, Understand(page.screen), open);
  };
  EXPECT_EQ(author(list, {}), u"") << "not known as a list";
  list.screen.pageFlags = PF_ARTICLE_LIST | PF_ARTICLE_LIST_CURSOR;
  EXPECT_EQ(author(list, {}), u"kitten");
  EXPECT_EQ(author(list.Cursor(-3, 200), {}), u"");

  ScreenBuilder article;
  article.Put(0, 0, u"the text, far down");
  article.screen.pageFlags = PF_READING;
  ArticleInfo open;
  EXPECT_EQ(author(article, open), u"");
  open.author = u"kitten";
  EXPECT_EQ(author(article, open), u"kitten");
  open.author = u"no id.";
  EXPECT_EQ(author(article, open), u"");
}

}  // namespace
}  // namespace quillet
