#include "app/session/login_id_watch.h"

#include <gtest/gtest.h>

#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using LoginIdWatchTest = WithTables;

TEST_F(LoginIdWatchTest, WhatWasTypedInsteadOfTheExpectedOneCounts) {
  ScreenBuilder prompt, menu;
  prompt.Put(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊: bob \xFFFD");
  menu.screen.pageFlags = PF_LIST_CURSOR;
  LoginIdWatch watch;
  watch.Expect(u"guest");
  EXPECT_TRUE(watch.Look(menu.screen));
  EXPECT_EQ(watch.Id(), u"guest");
  watch.Expect(u"guest");
  EXPECT_FALSE(watch.Look(prompt.screen));
  EXPECT_TRUE(watch.Look(menu.screen));
  EXPECT_EQ(watch.Id(), u"bob");
  watch.Clear();
  EXPECT_FALSE(watch.Look(menu.screen));
}

}  // namespace
}  // namespace quillet
