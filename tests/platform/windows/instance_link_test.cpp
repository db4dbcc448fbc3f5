#include "platform/instance_link.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/instance_message.h"
#include "tests/platform/windows/second_process.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

// Of one thread, which a message to its own window does not leave.
TEST(InstanceLinkTest, AWindowOfTheClassTakesOrRefuses) {
  std::u16string taken;
  auto link = ListenForLinks([&](const std::u16string& text) {
    taken = text;
    return text != u"refused";
  });
  ASSERT_TRUE(link);
  link->NoteUserHere();
  EXPECT_TRUE(SendToInstance(u"--single-argument 文"));
  EXPECT_EQ(taken, u"--single-argument 文");
  EXPECT_FALSE(SendToInstance(u"refused"));
  EXPECT_FALSE(SendToInstance(std::u16string(kMostMessageUnits, u'x')));

  const HWND window = FindWindowW(L"Quill.AppID.NoVersion", nullptr);
  char16_t noText[] = {0xD83D, 0};
  COPYDATASTRUCT data{};
  data.cbData = sizeof noText;
  data.lpData = noText;
  EXPECT_FALSE(SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)));
  noText[0] = u'x';
  data.dwData = 1;
  EXPECT_FALSE(SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)));
  data.dwData = 0;
  EXPECT_TRUE(SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)));
  link.reset();
  EXPECT_EQ(FindWindowW(L"Quill.AppID.NoVersion", nullptr), nullptr);
  EXPECT_FALSE(SendToInstance(u"--single-argument x"));
}

// Not a test: what the other process does.
TEST(SecondInstance, DISABLED_HandsALinkOver) {
  EXPECT_TRUE(SendToInstance(u"--single-argument https://a.example/文"));
}

TEST(InstanceLinkTest, AnotherProcessHandsItsLinkOver) {
  std::u16string taken;
  const auto link = ListenForLinks([&](const std::u16string& text) {
    taken = text;
    return true;
  });
  const SecondProcess second(L"SecondInstance.DISABLED_HandsALinkOver");
  EXPECT_TRUE(WaitUntil([&] {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      DispatchMessageW(&message);
    return second.Code().has_value();
  }));
  EXPECT_EQ(second.Code(), 0U) << "it was taken";
  EXPECT_EQ(taken, u"--single-argument https://a.example/文");
}

}  // namespace
}  // namespace quillet
