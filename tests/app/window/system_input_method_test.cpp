// Chinese by the messages of the system's own input method, which needs a window that the system knows.
#include <algorithm>
#include <windows.h>
// After windows.h, which it needs.
#include <imm.h>

#include <QGuiApplication>

#include "bbs/page_flags.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class SystemInputMethodTest : public WindowTest {
 protected:
  void SetUp() override {
    if (QGuiApplication::platformName() != u"windows"_qs)
      GTEST_SKIP() << "script/try-windows gives it a display";
    WindowTest::SetUp();
    OpenScript();
    script->Deliver("\x1B[24;1H" + ToBig5(u" 編輯文章") + "\x1B[5;11H");
    ASSERT_TRUE(Until([&] {
      frame->activateWindow();
      return View().hasFocus() && (View().Screen().pageFlags & PF_EDITOR) != 0;
    }));
    window = reinterpret_cast<HWND>(frame->winId());
    context = ImmGetContext(window);
    ASSERT_TRUE(context) << "the input method is on where text is typed";
  }
  void TearDown() override {
    if (context != nullptr) ImmReleaseContext(window, context);
    WindowTest::TearDown();
  }

  // What WM_IME_COMPOSITION then tells the window.
  bool Compose(std::wstring text) {
    const auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    return ImmSetCompositionStringW(context, SCS_SETSTR, text.data(), bytes, nullptr, 0) != 0;
  }
  bool Complete() { return ImmNotifyIME(context, NI_COMPOSITIONSTR, CPS_COMPLETE, 0) != 0; }

  HWND window = nullptr;
  HIMC context = nullptr;
};

TEST_F(SystemInputMethodTest, ComposesAtTheCursorInTheGridsLettersAndCommits) {
  LOGFONTW font{};
  ASSERT_TRUE(ImmGetCompositionFontW(context, &font));
  EXPECT_EQ(font.lfHeight, View().Surface().CurrentLayout().fontSize);
  const QRect cursor = View().inputMethodQuery(Qt::ImCursorRectangle).toRect();
  // Without the cell in which the caret blinks.
  const QRect beside(cursor.right() + 1, cursor.y(), 4 * cursor.width(), cursor.height());
  const auto row = [&] { return View().grab(beside).toImage(); };
  const QImage before = row();
  ASSERT_TRUE(Compose(L"\u3113\u3128\u3125"));
  EXPECT_TRUE(Until([&] { return row() != before; })) << "it is seen where it will land";
  EXPECT_EQ(script->Written(), "");
  const auto distance = [&] {
    COMPOSITIONFORM form{};
    const QRect caret = View().inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const QPoint at = View().mapTo(frame.get(), caret.topLeft()) * frame->devicePixelRatioF();
    ImmGetCompositionWindow(context, &form);
    return std::abs(form.ptCurrentPos.x - at.x()) + std::abs(form.ptCurrentPos.y - at.y());
  };
  EXPECT_TRUE(Until([&] { return distance() <= 2; })) << distance();
  ASSERT_TRUE(Compose(L"\u4E2D\u6587"));
  ASSERT_TRUE(Complete());
  EXPECT_TRUE(Until([&] { return script->Written() == ToBig5(u"中文"); }));
  EXPECT_TRUE(Until([&] { return row() == before; }));
}

}  // namespace
}  // namespace quillet
