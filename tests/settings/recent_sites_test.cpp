#include "settings/recent_sites.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

std::u16string List(const SettingsMap& map) {
  std::u16string list;
  for (const RecentSite& site : RecentSitesIn(map))
    list += site.address + u"(" + site.account + u"," + site.name + u") ";
  return list;
}

RecentSite At(std::u16string address, std::u16string account, std::u16string name) {
  return {.address = std::move(address), .account = std::move(account), .name = std::move(name)};
}

TEST(RecentSitesTest, TheLastEightAndAllNamedOnesAreListedAndComeBackFromTheFile) {
  SettingsMap map;
  NoteSiteUsed(map, u"Old.example:23 ", 1000);
  NoteSiteUsed(map, u"[2001:db8::5]:2323", 1001);
  NoteSiteUsed(map, u"ssh://old.example", 900);  // the clock was put back
  NoteSiteUsed(map, u"wss://w.example/a=b", 1002);
  NoteSiteUsed(map, std::u16string(600, u'a'), 1002);
  EXPECT_EQ(List(map), u"ssh://old.example(,) telnet://[2001:db8::5]:2323(,) telnet://old.example(,) ");
  EXPECT_TRUE(KeepSite(map, At(u"telnet://old.example", u"", u""), At(u"OLD.example", u"", u" 老站 ")));
  EXPECT_TRUE(KeepSite(map, {}, At(u"ssh://old.example", u"carol", u"a=b")));
  EXPECT_FALSE(KeepSite(map, {}, At(u"ssh://old.example", u"two words", u"x")));
  EXPECT_FALSE(KeepSite(map, {}, At(u"wss://w.example/a=b", u"", u"x")));
  NoteSiteUsed(map, u"old.example", 2000);
  const std::u16string named = u"ssh://old.example(carol,a=b) telnet://old.example(,老站) ";
  EXPECT_EQ(List(map), named + u"telnet://[2001:db8::5]:2323(,) ");
  SettingsMap read;
  read.ReadLines({u"[RecentSites]", u"telnet://never=99999999999999999999 x", u"telnet://a = 12 one=1",
                  u"telnet://b", u"telnet://c=name only"});
  EXPECT_EQ(List(read), u"telnet://c(,name only) telnet://a(,one=1) telnet://b(,) telnet://never(,) ");

  for (int i = 0; i < 9; ++i)
    NoteSiteUsed(map, std::u16string(u"site") + char16_t(u'0' + i), 3000 + i);
  EXPECT_EQ(RecentSitesIn(map).size(), 2 + kMostRecentSites);
  EXPECT_EQ(RecentSitesIn(map).back().address, u"telnet://site1") << "the oldest went, but no named one";
  EXPECT_EQ(NameOfSite(map, u"old.example"), u"老站");
  std::size_t kept = 2;
  while (kept < 100 && KeepSite(map, {}, At(u"many", std::u16string(1, char16_t(u'A' + kept)), u"")))
    ++kept;
  EXPECT_EQ(kept, kMostNamedSites);
}

TEST(RecentSitesTest, ASiteThatIsRemovedIsNotProposedEither) {
  SettingsMap map;
  NoteSiteUsed(map, u"first", 1);
  NoteSiteUsed(map, u"second", 2);
  KeepSite(map, {}, At(u"second", u"carol", u""));
  ForgetSite(map, At(u"telnet://second", u"carol", u""), u"second");
  EXPECT_FALSE(map.Find(u"Basic", u"Site")) << "it is still listed";
  ForgetSite(map, At(u"telnet://second", u"", u""), u"Second:23");
  EXPECT_EQ(map.Text(u"Basic", u"Site"), u"telnet://first");
  ForgetSite(map, At(u"telnet://first", u"", u""), u"telnet://first");
  EXPECT_EQ(List(map), u"");
}

}  // namespace
}  // namespace quillet
