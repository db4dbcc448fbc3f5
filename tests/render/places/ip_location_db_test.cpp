#include "render/places/ip_location_db.h"

#include <gtest/gtest.h>

#include "render/places/places_on_worker.h"
#include "tests/support/allocation_count.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

IpLocationDb SomePlaces() {
  const std::vector<IpRange> vpn = {{100, 100, 1}, {101, 101, 0}, {300, 300, 7}};
  const std::vector<IpRange> proxy = {{101, 101, 3U << 29}, {300, 300, 1U << 30}, {301, 301, 7U << 28},
                                      {302, 302, 3U << 28}, {303, 303, 1U << 28}, {304, 304, ~(7U << 28)}};
  const std::vector<IpRange> world = {{100, 199, 5},        {300, 304, 5},        {400, 400, 5U | 3U << 30},
                                      {401, 401, 1U << 31}, {402, 402, 1U << 30}, {403, 403, 0x0F123456},
                                      {404, 404, 0},        {405, 405, 0xFFFFFF}};
  return IpLocationDb({.detail = {{100, 109, u"大安區"}, {200, 209, u"文山"}},
                       .names = {{5, u"日本"}, {0xFFFFFF, u"天涯海角的一個小地方"}},
                       .vpn = MakeRangeTable(vpn).table,
                       .proxy = MakeRangeTable(proxy).table,
                       .world = MakeRangeTable(world).table});
}

TEST(IpLocationDbTest, TheFinerNameComesFirstAndMarksBeforeNames) {
  struct {
    std::uint32_t address;
    std::u16string detected, plain;
  } const cases[] = {
      {100, u"*VPN大安區", u"大安區"},   {101, u"*pxy大安區", u"大安區"},
      {109, u"大安區", u"大安區"},       {110, u"日本", u"日本"},
      {200, u"文山", u"文山"},           {300, u"*VPN日本", u"日本"},
      {301, u"*pxy日本", u"日本"},       {302, u"*VPN日本", u"日本"},
      {303, u"*pxy日本", u"日本"},       {304, u"日本", u"日本"},
      {400, u"*pxy#日本", u"#日本"},     {401, u"#不要問", u"#不要問"},
      {402, u"*pxy不要問", u"不要問"},   {403, u"GN=1193046", u"GN=1193046"},
      {404, u"#未知網域", u"#未知網域"}, {405, u"天涯海角的一個小地方", u"天涯海角的一個小地方"},
      {0, u"#未知網域", u"#未知網域"},   {0xFFFFFFFF, u"#未知網域", u"#未知網域"}};
  const IpLocationDb places = SomePlaces();
  for (const auto& [address, detected, plain] : cases) {
    const int before = allocations;
    const std::u16string text = places.LookupIpLocation(address, ProxyDetection::kOn);
    // No text of seven units takes memory, and no other more than its own.
    EXPECT_EQ(allocations - before, text.size() > 7 ? 1 : 0) << address;
    EXPECT_EQ(text, detected) << address;
    EXPECT_EQ(places.LookupIpLocation(address, ProxyDetection::kOff), plain) << address;
  }
  EXPECT_EQ(IpLocationDb().LookupIpLocation(1, ProxyDetection::kOn), u"#未知網域");
}

class PlaceFilesTest : public testing::Test {
 protected:
  // One record: all addresses have this value.
  static std::string Everywhere(char lowest, char highest) {
    return std::string(4, '\0') + std::string(4, '\xFF') + lowest + std::string(2, '\0') + highest;
  }
  std::u16string At(std::uint32_t address) {
    return PlacesOnWorker({program_.Path(), user_.Path()})
        .Places()
        .LookupIpLocation(address, ProxyDetection::kOn);
  }
  std::vector<std::string> Remarks() { return PlacesOnWorker({program_.Path(), user_.Path()}).Remarks(); }

  ScratchFolder program_, user_;
};

TEST_F(PlaceFilesTest, AUsersFileTakesThePlaceOfThePrograms) {
  EXPECT_EQ(At(0x01000001), u"#未知網域") << "no files at all";
  PutFile(program_.Path() / kDetailFile, "1.0.0.0,1.0.0.9,大安\n2.0.0.0,2.0.0.9,文山\n");
  PutFile(program_.Path() / kPlaceNamesFile, "7,日本\n8,美國\n");
  PutFile(program_.Path() / kWorldFile, Everywhere(7, 0));
  PutFile(program_.Path() / kProxyFile, Everywhere(0, 0x10));
  EXPECT_EQ(At(0x01000001), u"*pxy大安");
  EXPECT_EQ(At(0x03000001), u"*pxy日本");
  PutFile(user_.Path() / kDetailFile, "1.0.0.0,1.0.0.9,我家\n");
  PutFile(user_.Path() / kWorldFile, Everywhere(8, 0));
  PutFile(user_.Path() / kVpnFile, Everywhere(1, 0) + "rest");
  EXPECT_EQ(At(0x01000001), u"*VPN我家");
  EXPECT_EQ(At(0x02000001), u"*VPN美國") << "the whole file, not its lines";
  EXPECT_EQ(Remarks(), std::vector<std::string>{"vpn_ip.bin: ends within a record"});
  const PlacesOnWorker unasked({user_.Path()});
  std::stop_source stop;
  stop.request_stop();
  const std::filesystem::path folders[] = {user_.Path()};
  EXPECT_TRUE(LoadIpLocationDb(folders, stop.get_token()).remarks.empty()) << "the files were read";
}

TEST_F(PlaceFilesTest, WhatCannotBeUsedLeavesItsTableEmptyAndIsTold) {
  PutFile(program_.Path() / kWorldFile, Everywhere(7, 0));
  PutFile(user_.Path() / kWorldFile, Everywhere(7, 0) + Everywhere(7, 0));
  std::filesystem::create_directories(user_.Path() / kDetailFile);
  PutFile(user_.Path() / kPlaceNamesFile, "7,\xFF\n");
  PutFile(user_.Path() / kProxyFile, "");
  PutFile(user_.Path() / kVpnFile, "");
  std::filesystem::resize_file(user_.Path() / kVpnFile, 1U << 30);
  EXPECT_EQ(At(1), u"#未知網域");
  const std::vector<std::string> remarks = Remarks();
  ASSERT_EQ(remarks.size(), 4u);
  EXPECT_TRUE(remarks[0].starts_with("taiwan_ip_detail.txt: cannot be read")) << remarks[0];
  EXPECT_TRUE(remarks[1].starts_with("geoname_translation.txt: line 1 ")) << remarks[1];
  EXPECT_TRUE(remarks[2].starts_with("vpn_ip.bin: is larger")) << remarks[2];
  EXPECT_TRUE(remarks[3].starts_with("geo_ip.bin: record 2 ")) << remarks[3];
}

}  // namespace
}  // namespace quillet
