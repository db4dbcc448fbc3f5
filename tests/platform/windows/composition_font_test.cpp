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
  // Windows of a system without a display begin without one.
  const HIMC own = ImmCreateContext();
  if (own == nullptr) GTEST_SKIP() << "there are no input methods";
  ImmAssociateContext(window, own);
  const auto handle = reinterpret_cast<std::uintptr_t>(window);
  EXPECT_TRUE(SetCompositionFont(handle, std::u16string(100, u'x'), 31));
  EXPECT_TRUE(SetCompositionFont(handle, u"\u7d30\u660e\u9ad4", 24));
  LOGFONTW font{};
  EXPECT_TRUE(ImmGetCompositionFontW(own, &font));
  EXPECT_STREQ(font.lfFaceName, L"\u7d30\u660e\u9ad4");
  EXPECT_EQ(font.lfHeight, 24);
  DestroyWindow(window);
  ImmDestroyContext(own);
  EXPECT_FALSE(SetCompositionFont(handle, u"", 24));
}

}  // namespace
}  // namespace quillet
