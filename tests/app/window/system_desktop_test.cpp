// What the toolkit does in the program's name on a desktop of the system's, asked of the system itself.
#include <string>
#include <windows.h>

#include <QGuiApplication>
#include <QStyleHints>

#include "app/interaction/clipboard/clipboard_device.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class SystemDesktopTest : public WindowTest {
 protected:
  void SetUp() override {
    if (QGuiApplication::platformName() != u"windows"_qs)
      GTEST_SKIP() << "script/try-windows gives it a display";
    WindowTest::SetUp();
  }

  static UINT WheelLines() {
    UINT lines = 0;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    return lines;
  }
  static void SetWheelLines(UINT lines) { SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, lines, nullptr, 0); }

  // Of the clipboard, up to its first NUL.
  static std::string BytesIn(UINT format) {
    std::string bytes;
    if (!OpenClipboard(nullptr)) return bytes;
    if (const HANDLE data = GetClipboardData(format)) {
      bytes.assign(static_cast<const char*>(GlobalLock(data)), GlobalSize(data));
      GlobalUnlock(data);
    }
    CloseClipboard();
    return bytes;
  }
};

TEST_F(SystemDesktopTest, KeepsTheWindowOnTopWhereTheUserWantsIt) {
  const auto window = reinterpret_cast<HWND>(frame->winId());
  const auto isOnTop = [&] { return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
  for (const bool on : {true, false}) {
    doc->GetSettings().Set(&Settings::topmost, on);
    EXPECT_TRUE(Until([&] { return isOnTop() == on; })) << on;
    EXPECT_EQ(reinterpret_cast<HWND>(frame->winId()), window) << "the window is the same";
  }
}

TEST_F(SystemDesktopTest, TheWheelMovesAsManyLinesAsTheSystemSays) {
  const UINT before = WheelLines();
  SetWheelLines(before + 4);
  EXPECT_EQ(QGuiApplication::styleHints()->wheelScrollLines(), static_cast<int>(before) + 4);
  SetWheelLines(before);
}

TEST_F(SystemDesktopTest, WhatIsCopiedIsThereAsTextAndAsHtml) {
  const std::u16string text = u"中文";
  const std::string html = "<b>\xE4\xB8\xAD\xE6\x96\x87</b>";
  const ClipboardBlock blocks[] = {
      {ClipboardFormat::kUnicodeText, text.c_str(), (text.size() + 1) * sizeof(char16_t)},
      {ClipboardFormat::kHtml, html.c_str(), html.size() + 1}};
  QtClipboard clipboard(*QGuiApplication::clipboard());
  ASSERT_TRUE(clipboard.Open());
  ASSERT_TRUE(clipboard.Set(blocks));
  clipboard.Close();
  const std::string wide(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
  EXPECT_TRUE(Until([&] { return BytesIn(CF_UNICODETEXT).starts_with(wide); }));
  EXPECT_NE(BytesIn(RegisterClipboardFormatW(L"HTML Format")).find(html), std::string::npos);
}

}  // namespace
}  // namespace quillet
