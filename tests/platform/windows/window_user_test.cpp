#include "platform/windows/window_user.h"

#include <gtest/gtest.h>

#include "tests/support/wine.h"

namespace quillet {
namespace {

TEST(WindowUserTest, TellsThisUsersWindowsFromTheSystems) {
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  EXPECT_TRUE(IsOfThisUser(window));
  DestroyWindow(window);
  EXPECT_FALSE(IsOfThisUser(window)) << "it is gone";
  // The desktop is the system's; Wine has one user for everything.
  EXPECT_EQ(IsOfThisUser(GetDesktopWindow()), IsWine());
}

}  // namespace
}  // namespace quillet
