#include "media/fetch/address_rule.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(AddressRuleTest, OnlyWhatIsEverybodysIsPublic) {
  for (const char* const text : {"0.0.0.0",
                                 "0.1.2.3",
                                 "10.0.0.1",
                                 "100.64.0.1",
                                 "100.127.255.255",
                                 "127.0.0.1",
                                 "127.255.255.255",
                                 "169.254.169.254",
                                 "172.16.0.1",
                                 "172.31.255.255",
                                 "192.0.0.1",
                                 "192.168.0.1",
                                 "198.18.0.1",
                                 "198.19.255.255",
                                 "224.0.0.1",
                                 "240.0.0.1",
                                 "255.255.255.255",
                                 "::",
                                 "::1",
                                 "::7f00:1",
                                 "::ffff:127.0.0.1",
                                 "::ffff:10.0.0.1",
                                 "64:ff9b::127.0.0.1",
                                 "64:ff9b::a9fe:a9fe",
                                 "64:ff9b:1::1.1.1.1",
                                 "2002:7f00:1::",
                                 "2002:c0a8:1::1",
                                 "2001::1",
                                 "2001:db8::1",
                                 "100::1",
                                 "fc00::1",
                                 "fd12::1",
                                 "fe80::1",
                                 "fe80::1%1",
                                 "fec0::1",
                                 "ff02::1",
                                 "3fff::1",
                                 "4000::1"})
    EXPECT_FALSE(IsPublicAddress(QHostAddress(QString::fromLatin1(text)))) << text;
  for (const char* const text :
       {"1.1.1.1", "9.255.255.255", "11.0.0.0", "100.63.255.255", "100.128.0.0", "126.255.255.255",
        "172.15.255.255", "172.32.0.0", "192.167.255.255", "198.17.255.255", "223.255.255.255",
        "::ffff:1.1.1.1", "64:ff9b::1.1.1.1", "2002:101:101::1", "2001:200::1", "2606:4700::1111", "2a00::1"})
    EXPECT_TRUE(IsPublicAddress(QHostAddress(QString::fromLatin1(text)))) << text;
  EXPECT_FALSE(IsPublicAddress(QHostAddress()));
}

}  // namespace
}  // namespace quillet
