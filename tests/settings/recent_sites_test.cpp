#include "settings/recent_sites.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

std::u16string List(const SettingsMap& map) {
  std::u16string list;
  for (const RecentSite& site : RecentSitesIn(map))
    list += site.address + u"(" + site.name + u") ";
  return list;
}

TEST(RecentSitesTest, TheLastEightAreListedWithTheirNamesAndComeBackFromTheFile) {
  SettingsMap map;
  NoteSiteUsed(map, u"Old.example:23 ", 1000);
  NameSite(map, u"old.example", u" 老站 ");
  NoteSiteUsed(map, u"[2001:db8::5]:2323", 1001);
  NoteSiteUsed(map, u"ssh://old.example", 900);  // the clock was put back
  NoteSiteUsed(map, u"wss://w.example/a=b", 1002);
  NoteSiteUsed(map, std::u16string(600, u'a'), 1002);
  NameSite(map, u"never.example", u"never");
  EXPECT_EQ(List(map), u"ssh://old.example() telnet://[2001:db8::5]:2323() telnet://old.example(老站) ");
  SettingsMap read;
  read.ReadLines({u"[RecentSites]", u"telnet://never=99999999999999999999 x", u"telnet://a = 12 one=1",
                  u"telnet://b", u"telnet://c=name only"});
  EXPECT_EQ(List(read), u"telnet://a(one=1) telnet://b() telnet://c(name only) telnet://never() ");

  for (int i = 0; i < 7; ++i)
    NoteSiteUsed(map, std::u16string(u"site") + char16_t(u'0' + i), 2000 + i);
  EXPECT_EQ(RecentSitesIn(map).size(), kMostRecentSites);
  EXPECT_EQ(RecentSitesIn(map).back().address, u"ssh://old.example");
  EXPECT_EQ(NameOfSite(map, u"old.example"), u"") << "it went";
}

TEST(RecentSitesTest, ASiteThatIsRemovedIsNotProposedEither) {
  SettingsMap map;
  NoteSiteUsed(map, u"first", 1);
  NoteSiteUsed(map, u"second", 2);
  ForgetSite(map, u"second", u"Second:23");
  EXPECT_EQ(map.Text(u"Basic", u"Site"), u"telnet://first");
  ForgetSite(map, u"first", u"telnet://first");
  EXPECT_EQ(List(map), u"");
}

}  // namespace
}  // namespace quillet
