#include "core/endpoints.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

using namespace std::string_literals;

class EndpointsTest : public testing::Test {
 protected:
  bool Load(std::string_view text) {
    const std::filesystem::path file = folder_.Path() / "endpoints.ini";
    std::ofstream(file, std::ios::binary) << text;
    return LoadEndpoints(file, endpoints_);
  }

  ScratchFolder folder_;
  Endpoints endpoints_;
};

bool IsReserved(std::string_view host) {
  return host.ends_with(".example") || host.ends_with(".invalid");
}

TEST_F(EndpointsTest, ShippedFileNamesEveryAddressAndOnlyReservedOnesOfTheBbs) {
  ASSERT_TRUE(LoadEndpoints(QUILLET_SOURCE_DIR "/Data/endpoints.ini", endpoints_));
  EXPECT_TRUE(IsReserved(endpoints_.mainHost)) << endpoints_.mainHost;
  EXPECT_TRUE(IsReserved(endpoints_.secondaryHost)) << endpoints_.secondaryHost;
  EXPECT_TRUE(IsReserved(endpoints_.webSocketHost)) << endpoints_.webSocketHost;
  for (const char* name : {"web/host", "web/mirror_1", "web/mirror_2", "web/user_pages"})
    EXPECT_TRUE(IsReserved(endpoints_.Value(name))) << name;
  for (const char* name : {"search/engine_1", "search/engine_2", "shortener/host"})
    EXPECT_NE(endpoints_.Value(name), "") << name;
  // 203.0.113.0/24 is reserved for documentation.
  EXPECT_EQ(endpoints_.serverNetwork, 0xCB007100u);
  EXPECT_EQ(endpoints_.secondaryHost.find(endpoints_.mainHost), std::string::npos)
      << "a secondary host that contains the main host's name would pass for it";
}

TEST_F(EndpointsTest, SecondFileIsLaidOverTheFirst) {
  ASSERT_TRUE(
      Load("[bbs]\nmain_host=one.example\nsecondary_host=two.example\nserver_network=203.0.113.16\n[web]"
           "\nhost=w.example\n"));
  ASSERT_TRUE(Load("[bbs]\nmain_host=other.example\n[web]\nhost=\n"));
  EXPECT_EQ(endpoints_.mainHost, "other.example");
  EXPECT_EQ(endpoints_.secondaryHost, "two.example");
  EXPECT_EQ(endpoints_.serverNetwork, 0xCB007110u);
  EXPECT_EQ(endpoints_.Value("web/host"), "") << "an empty value takes a name away";
  EXPECT_EQ(endpoints_.Value("web/none"), "");
}

TEST_F(EndpointsTest, ByteOrderMarkLineEndsBlanksCaseAndCommentsDoNotMatter) {
  ASSERT_TRUE(
      Load("\xEF\xBB\xBF[BBS]\r\n; main_host=no.example\r\n#main_host=no.example\r\n"
           "  Main_Host \t=\t BBS.Example  \r\n\r\n[ Web ]\r\nHost=a=b;c#d\r\nlast=Q"));
  EXPECT_EQ(endpoints_.mainHost, "bbs.example");
  EXPECT_EQ(endpoints_.Value("web/host"), "a=b;c#d");
  EXPECT_EQ(endpoints_.Value("web/last"), "Q");
  EXPECT_EQ(endpoints_.values.size(), 3u);
}

TEST_F(EndpointsTest, DamagedLinesAreSkippedAndHarmNoOthers) {
  ASSERT_TRUE(
      Load("orphan=1\n[bbs]\nnonsense\n=value\nmain_host=good.example\nsecondary_host=a\x01"
           "b\n"
           "[web\nmain_host=bad.example\n[]\nmain_host=bad.example\n[\nx=1\n[bbs]\nserver_network=1.2.3\n"));
  EXPECT_EQ(endpoints_.mainHost, "good.example");
  EXPECT_EQ(endpoints_.secondaryHost, "");
  EXPECT_EQ(endpoints_.serverNetwork, 0u);
  EXPECT_EQ(endpoints_.values.size(), 2u);
}

TEST_F(EndpointsTest, WhatCannotBeReadChangesNothing) {
  ASSERT_TRUE(Load("[bbs]\nmain_host=one.example\n"));
  EXPECT_FALSE(LoadEndpoints(folder_.Path() / "missing.ini", endpoints_));
  EXPECT_FALSE(LoadEndpoints(folder_.Path(), endpoints_)) << "a folder is no file";
  EXPECT_EQ(endpoints_.mainHost, "one.example");
  EXPECT_EQ(endpoints_.values.size(), 1u);
}

TEST_F(EndpointsTest, AnyBytesLeaveOnlyWellFormedValues) {
  std::minstd_rand random(20261124);
  const std::string alphabet =
      "[]=;#\r\n\t \0\x01\x7f\xA4\xEF\xBB\xBF"
      "ab./"s;
  for (int round = 0; round < 200; ++round) {
    std::string text;
    for (int i = 0; i < 400; ++i)
      text.push_back(alphabet[random() % alphabet.size()]);
    endpoints_ = {};
    ASSERT_TRUE(Load(text));
    for (const auto& [name, value] : endpoints_.values) {
      EXPECT_NE(name.find('/'), std::string::npos);
      for (const char c : value)
        EXPECT_TRUE(c == '\t' || c < 0 || c >= 0x20);
    }
  }
  EXPECT_TRUE(Load("[bbs]\nmain_host=x.example\n" + std::string(5'000'000, 'z'))) << "far too long";
  EXPECT_EQ(endpoints_.mainHost, "x.example");
}

TEST(DottedAddressTest, FourGroupsMakeANumberAndAnythingElseIsZero) {
  EXPECT_EQ(ParseDottedAddress("203.0.113.9"), 0xCB007109u);
  EXPECT_EQ(ParseDottedAddress("255.255.255.255"), 0xFFFFFFFFu);
  EXPECT_EQ(ParseDottedAddress("001.002.003.004"), 0x01020304u);
  for (const char* text :
       {"", ".", "1.2.3", "1.2.3.", "1.2.3.4.", "1.2.3.4.5", ".1.2.3", "1..2.3", "256.1.1.1", "1.1.1.256",
        "1.1.1.0001", " 1.2.3.4", "1.2.3.4 ", "1.2.3.+4", "-1.2.3.4", "1.2.3.x", "0x1.2.3.4", "::1"})
    EXPECT_EQ(ParseDottedAddress(text), 0u) << text;
}

}  // namespace
}  // namespace quillet
