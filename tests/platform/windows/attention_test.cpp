#include "platform/attention.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/folders.h"

namespace quillet {
namespace {

// Whether there is a sound card is the machine's affair; that every call comes back is ours.
TEST(AttentionTest, SoundsAreNotWaitedFor) {
  const std::unique_ptr<Attention> attention = OpenAttention();
  const std::filesystem::path sound = ResourceFolder() / "Data" / "PushUpdated.wav";
  ASSERT_TRUE(std::filesystem::exists(sound));
  for (int i = 0; i < 3; ++i)
    attention->PlaySoundFile(sound);
  attention->PlaySoundFile(ResourceFolder() / "Data" / "missing.wav");
  attention->Beep();
}

TEST(AttentionTest, OnlyAWindowThatExistsIsFlashed) {
  const std::unique_ptr<Attention> attention = OpenAttention();
  EXPECT_FALSE(attention->Flash(0));
  // A window that needs no desktop.
  const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  ASSERT_TRUE(window);
  EXPECT_TRUE(attention->Flash(reinterpret_cast<std::uintptr_t>(window)));
  DestroyWindow(window);
  EXPECT_FALSE(attention->Flash(reinterpret_cast<std::uintptr_t>(window)));
}

}  // namespace
}  // namespace quillet
