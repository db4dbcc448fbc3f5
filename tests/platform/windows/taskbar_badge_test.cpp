#include "platform/taskbar_badge.h"

#include <gtest/gtest.h>
#include <vector>
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include "tests/support/wait_until.h"

namespace quillet {
namespace {

TEST(TaskbarBadgeTest, IsTakenByTheTaskbarForAWindowThatItHasAButtonOf) {
  ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
  const std::vector<std::uint32_t> pixels(16 * 16, 0xFFFF9F1C);
  EXPECT_FALSE(SetTaskbarBadge(0, pixels, 15, u"")) << "not as many pixels as said";
  const HWND window = CreateWindowExW(WS_EX_APPWINDOW, L"STATIC", L"badge", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                      0, 0, 200, 100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  const auto handle = reinterpret_cast<std::uintptr_t>(window);
  EXPECT_TRUE(WaitUntil([&] { return SetTaskbarBadge(handle, pixels, 16, u"news"); }));
  EXPECT_TRUE(SetTaskbarBadge(handle, {}, 0, u""));
  DestroyWindow(window);
  CoUninitialize();
}

}  // namespace
}  // namespace quillet
