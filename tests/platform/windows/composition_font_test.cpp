#include "platform/composition_font.h"

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <imm.h>

namespace quillet {
namespace {

TEST(CompositionFontTest, IsTheWindowsInputMethodsOwn) {
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  ASSERT_TRUE(window);
  const auto handle = reinterpret_cast<std::uintptr_t>(window);
  EXPECT_TRUE(SetCompositionFont(handle, std::u16string(100, u'x'), 31));
  EXPECT_TRUE(SetCompositionFont(handle, u"\u7d30\u660e\u9ad4", 24));
  const HIMC context = ImmGetContext(window);
  LOGFONTW font{};
  EXPECT_TRUE(ImmGetCompositionFontW(context, &font));
  ImmReleaseContext(window, context);
  EXPECT_STREQ(font.lfFaceName, L"\u7d30\u660e\u9ad4");
  EXPECT_EQ(font.lfHeight, 24);
  DestroyWindow(window);
  EXPECT_FALSE(SetCompositionFont(handle, u"", 24));
}

}  // namespace
}  // namespace quillet
