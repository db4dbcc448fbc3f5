#include "platform/web_address.h"

#include <gtest/gtest.h>
#include <random>

#include "platform/utf8.h"

namespace quillet {
namespace {

TEST(WebAddressTest, OnlyWebSitesMayBeOpened) {
  for (const std::u16string_view address :
       {u"http://a", u"HttpS://A-b_1.example", u"https://a.example.", u"https://a.example:443",
        u"http://127.0.0.1/", u"http://[2001:db8::1]:8080/x", u"http://a?b", u"http://a#b",
        u"http://a/@b:c"}) {
    EXPECT_TRUE(IsWebAddress(address)) << Utf8FromUtf16(address);
    EXPECT_NE(OpenableAddress(address), "") << Utf8FromUtf16(address);
  }
  for (const std::u16string_view address : {u"",
                                            u"http:/a",
                                            u"http://",
                                            u"http://?a",
                                            u"http://.",
                                            u"http://a..b",
                                            u"httpx://a",
                                            u"http://a:",
                                            u"http://a:b",
                                            u"http://a:65536",
                                            u"http://a:123456",
                                            u"http://a@b",
                                            u"http://a:1@b",
                                            u"http://[::1",
                                            u"http://[]",
                                            u"http://[::1]x",
                                            u"http://[::g]",
                                            u"http://%61",
                                            u"http://文藝",
                                            u"http://a\\b",
                                            u"http://a\u00A0b",
                                            u"file://a/b",
                                            u"data:text/html,a",
                                            u"javascript://a.example/%0Aalert(1)"}) {
    EXPECT_FALSE(IsWebAddress(address)) << Utf8FromUtf16(address);
    EXPECT_EQ(OpenableAddress(address), "") << Utf8FromUtf16(address);
  }
}

TEST(WebAddressTest, ALinkHoldsNothingThatHasToBeEncodedFirst) {
  for (const std::u16string_view address : {u"http://a/b c", u"http://a/\"", u"http://a/<", u"http://a/>",
                                            u"http://a/`", u"http://a/\\", u"http://a/文"}) {
    EXPECT_FALSE(IsWebAddress(address)) << Utf8FromUtf16(address);
    EXPECT_NE(OpenableAddress(address), "") << Utf8FromUtf16(address);
  }
}

TEST(WebAddressTest, EscapesStayAndStrayPercentSignsBecomeOnes) {
  EXPECT_EQ(OpenableAddress(u"http://a/%e4%B8%AD%2"), "http://a/%e4%B8%AD%252");
  EXPECT_EQ(OpenableAddress(u"http://a/?q=100%"), "http://a/?q=100%25");
  EXPECT_EQ(OpenableAddress(u"http://a/%zz%%41"), "http://a/%25zz%25%41");
}

TEST(WebAddressTest, TheHostStandsBetweenSchemeAndPort) {
  const auto hostIn = [](std::u16string_view address) {
    const HostPlace place = HostIn(address);
    return address.substr(place.first, place.last - place.first);
  };
  EXPECT_EQ(hostIn(u"HTTPS://A.example:443/@b"), u"A.example");
  EXPECT_EQ(hostIn(u"http://a/" + std::u16string(kLongestWebAddress, u'b')), u"a");
  for (const std::u16string_view none : {u"", u"a.example/", u"http://", u"http://a@b/", u"http://a:b/"})
    EXPECT_TRUE(HostIn(none).IsEmpty()) << Utf8FromUtf16(none);
}

TEST(WebAddressTest, LengthHasALimit) {
  const std::u16string longest = u"http://a/" + std::u16string(kLongestWebAddress - 9, u'b');
  EXPECT_TRUE(IsWebAddress(longest));
  EXPECT_EQ(OpenableAddress(longest).size(), longest.size());
  EXPECT_FALSE(IsWebAddress(longest + u"b"));
  EXPECT_EQ(OpenableAddress(longest + u"b"), "");
}

TEST(WebAddressTest, WhateverComesOnlyPlainSignsGoOut) {
  std::minstd_rand random(7);
  std::size_t opened = 0;
  for (int round = 0; round < 20000; ++round) {
    std::u16string address = round % 2 == 0 ? u"http://a" : u"https://b.c/";
    for (int i = 0; i < 12; ++i)
      address += static_cast<char16_t>(random() % 4 == 0 ? random() : 0x20 + random() % 0x60);
    const std::string openable = OpenableAddress(address);
    if (openable.empty()) continue;
    ++opened;
    ASSERT_TRUE(openable.starts_with("http"));
    for (const char c : openable)
      ASSERT_TRUE(c > ' ' && c < 0x7F && std::string_view("\"<>\\^`{|}").find(c) == std::string_view::npos);
    ASSERT_EQ(OpenableAddress(std::u16string(openable.begin(), openable.end())),
              openable.size() <= kLongestWebAddress ? openable : "");
  }
  EXPECT_GT(opened, 1000U);
}

}  // namespace
}  // namespace quillet
