#include "app/login_id_watch.h"

#include <gtest/gtest.h>

#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

class LoginIdWatchTest : public WithTables {
 protected:
  static ScreenSnapshot Prompt(const std::u16string& typed) {
    ScreenBuilder page;
    page.Put(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊: " + typed);
    return page.screen;
  }
  static ScreenSnapshot Page(std::uint32_t flags) {
    ScreenBuilder page;
    page.screen.pageFlags = flags;
    return page.screen;
  }
};

TEST_F(LoginIdWatchTest, WhatWasTypedInsteadOfTheExpectedOneCounts) {
  LoginIdWatch watch;
  watch.Expect(u"guest");
  EXPECT_TRUE(watch.Look(Page(PF_LIST_CURSOR)));
  EXPECT_EQ(watch.Id(), u"guest");
  watch.Expect(u"guest");
  EXPECT_FALSE(watch.Look(Prompt(u"bob \xFFFD")));
  EXPECT_TRUE(watch.Look(Page(PF_READING)));
  EXPECT_EQ(watch.Id(), u"bob");
}

}  // namespace
}  // namespace quillet
