#include "app/interaction/key_adapter.h"

#include <gtest/gtest.h>
#include <vector>

#include "core/key_sequence.h"

namespace quillet {
namespace {

KeyPress Translate(int key, Qt::KeyboardModifiers modifiers, const QString& text = {}) {
  return ToKeyPress(QKeyEvent(QEvent::KeyPress, key, modifiers, text));
}

TEST(KeyAdapterTest, KeysHaveTheirVirtualCodes) {
  const std::vector<std::pair<int, int>> rows = {{Qt::Key_Delete, kKeyDelete},
                                                 {Qt::Key_Enter, kKeyEnter},
                                                 {Qt::Key_Backtab, kKeyTab},
                                                 {Qt::Key_Q, 'Q'},
                                                 {Qt::Key_5, '5'},
                                                 {Qt::Key_Underscore, kKeyMinus},
                                                 {Qt::Key_Dead_Acute, 0},
                                                 {Qt::Key_F5, 0}};
  for (const auto& [key, virtualKey] : rows)
    EXPECT_EQ(Translate(key, Qt::NoModifier).virtualKey, virtualKey) << key;
}

TEST(KeyAdapterTest, ModifiersAndTextComeAlong) {
  const KeyPress press = Translate(Qt::Key_1, Qt::ControlModifier | Qt::KeypadModifier, u"中"_qs);
  EXPECT_TRUE(press.control && press.keypad);
  EXPECT_FALSE(press.shift || press.alt);
  EXPECT_EQ(press.text, u"中");
  EXPECT_TRUE(Translate(Qt::Key_A, Qt::ShiftModifier).shift);
  EXPECT_TRUE(Translate(Qt::Key_A, Qt::AltModifier).alt);
  EXPECT_TRUE(Translate(Qt::Key_A, Qt::MetaModifier).alt) << "the desktop's keys are not the BBS's";
}

}  // namespace
}  // namespace quillet
