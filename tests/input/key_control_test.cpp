#include "input/key_control.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "core/key_sequence.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

using KeyControlTest = WithTables;

KeyAction Decide(KeyPress press) {
  return DecideKey(press, UnderstoodPage());
}

KeyAction Bytes(std::string bytes) {
  return {.kind = KeyActionKind::kSendBytes, .bytes = std::move(bytes)};
}

KeyAction Give(Command command) {
  return {.kind = KeyActionKind::kCommand, .command = command};
}

KeyAction Text(std::u16string text) {
  return {.kind = KeyActionKind::kSendText, .text = std::move(text)};
}

TEST_F(KeyControlTest, CursorKeysGoOutWhateverElseIsHeldButAlt) {
  for (const int key : {kKeyPageUp, kKeyPageDown, kKeyEnd, kKeyHome, kKeyLeft, kKeyUp, kKeyRight, kKeyDown,
                        kKeyInsert, kKeyDelete}) {
    const KeyAction expected{.kind = KeyActionKind::kSendKey, .virtualKey = key};
    EXPECT_EQ(Decide({.virtualKey = key}), expected) << key;
    EXPECT_EQ(Decide({.virtualKey = key, .keypad = true}), expected) << key;
    EXPECT_EQ(Decide({.virtualKey = key, .alt = true}), KeyAction{}) << key;
  }
  EXPECT_EQ(Decide({.virtualKey = kKeyUp, .shift = true}).kind, KeyActionKind::kSendKey);
  EXPECT_EQ(Decide({.virtualKey = kKeyDelete, .text = u"\x7F"}).kind, KeyActionKind::kSendKey);
  for (const int key : {41, 42, 43, 44})
    EXPECT_EQ(Decide({.virtualKey = key}), KeyAction{}) << key;
}

TEST_F(KeyControlTest, EditingKeysAndControlCodes) {
  enum Held { kNothing, kShift, kControl, kBoth };
  struct Row {
    int virtualKey;
    Held held;
    std::u16string_view text;
    std::string_view bytes;  // empty: not the BBS's
  };
  constexpr Row kExpected[] = {
      {kKeyEnter, kShift, {}, "\r"},
      {kKeyBackspace, kNothing, u"\b", "\b"},
      {kKeyBackspace, kControl, u"\x7F", "\b"},
      {kKeyTab, kNothing, u"\t", "\t"},
      {kKeyTab, kShift, {}, {}},
      {kKeyTab, kControl, u"\t", {}},
      {kKeyEscape, kNothing, u"\x1B", "\x1B"},
      {'A', kControl, u"\x01", "\x01"},
      {'Z', kControl, u"\x1A", "\x1A"},
      {kKeyOpenBracket, kControl, {}, "\x1B"},
      {kKeyBackslash, kControl, {}, "\x1C"},
      {kKeyCloseBracket, kControl, {}, "\x1D"},
      {'6', kBoth, {}, "\x1E"},
      {kKeyMinus, kBoth, {}, "\x1F"},
      {'6', kControl, {}, {}},
      {'A', kBoth, {}, {}},
  };
  for (const Row& row : kExpected) {
    const KeyPress press{.virtualKey = row.virtualKey,
                         .control = row.held == kControl || row.held == kBoth,
                         .shift = row.held == kShift || row.held == kBoth,
                         .text = std::u16string(row.text)};
    EXPECT_EQ(Decide(press), row.bytes.empty() ? KeyAction{} : Bytes(std::string(row.bytes)))
        << row.virtualKey << " held " << row.held;
  }
  EXPECT_EQ(Decide({.virtualKey = kKeyEnter, .keypad = true, .text = u"\r"}), Bytes("\r"));
}

TEST_F(KeyControlTest, ClientCommands) {
  EXPECT_EQ(Decide({.virtualKey = 'V', .control = true, .text = u"\x16"}), Give(Command::kPaste));
  EXPECT_EQ(Decide({.virtualKey = kKeyInsert, .shift = true}), Give(Command::kPaste));
  EXPECT_EQ(Decide({.virtualKey = kKeyInsert, .control = true}), Give(Command::kCopy));
  EXPECT_EQ(Decide({.virtualKey = 'C', .control = true, .shift = true}), Give(Command::kCopy));
  EXPECT_EQ(Decide({.virtualKey = kKeyF11}), Give(Command::kFullScreen));
  EXPECT_EQ(Decide({.virtualKey = 'W', .alt = true, .text = u"w"}), Give(Command::kWorkMode));
  EXPECT_EQ(Decide({.virtualKey = 'W', .shift = true, .alt = true, .text = u"W"}), KeyAction{});
  EXPECT_EQ(Decide({.virtualKey = 'V', .control = true, .alt = true, .text = u"“"}), Text(u"“")) << "AltGr";
}

TEST_F(KeyControlTest, CharactersGoOutAsTheLayoutMakesThem) {
  EXPECT_EQ(Decide({.virtualKey = 'A', .shift = true, .text = u"A"}), Text(u"A"));
  EXPECT_EQ(Decide({.keypad = true, .text = u"7"}), Text(u"7"));
  EXPECT_EQ(Decide({.text = u"中文"}), Text(u"中文"));
  EXPECT_EQ(Decide({.text = u"é"}), Text(u"é")) << "a dead key's result";
  EXPECT_EQ(Decide({.virtualKey = 'F', .alt = true, .text = u"f"}), KeyAction{}) << "a menu's letter";
  EXPECT_EQ(Decide({}), KeyAction{}) << "a modifier alone";
  EXPECT_EQ(Decide({.text = u"\x1B[A"}), Text(u"[A")) << "no key smuggles a control character";
}

TEST_F(KeyControlTest, EnterUnderTheConfirmedLogOutQuestionCloses) {
  const auto enterOn = [](int row, std::u16string_view text) {
    ScreenBuilder page;
    page.Put(row, 0, text);
    return DecideKey({.virtualKey = kKeyEnter}, Understand(page.screen));
  };
  const KeyAction closing{.kind = KeyActionKind::kSendThenClose, .bytes = "\r"};
  EXPECT_EQ(enterOn(22, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y"), closing);
  EXPECT_EQ(enterOn(22, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] n"), Bytes("\r"));
  EXPECT_EQ(enterOn(22, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] "), Bytes("\r"));
  EXPECT_EQ(enterOn(21, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y"), Bytes("\r"));
}

TEST(CleanPasteTest, LineEndsBecomeEnterAndControlsGo) {
  EXPECT_EQ(CleanPaste(u"a\r\nb\nc\rd"), u"a\rb\rc\rd");
  EXPECT_EQ(CleanPaste(u"\n\n\r\n\r\r\n"), u"\r\r\r\r\r");
  EXPECT_EQ(CleanPaste(u"一\u2028二\u2029三\u0085四"), u"一\r二\r三\r四");
  EXPECT_EQ(CleanPaste(u"\x1B[31m紅\x07\x08\x7F\x9B\tx"), u"[31m紅\tx");
  EXPECT_EQ(CleanPaste(std::u16string_view(u"\0a\0", 3)), u"a");
  EXPECT_EQ(CleanPaste(u""), u"");
}

TEST(CleanPasteTest, ABlankOfAnotherKindKeepsWordsApart) {
  EXPECT_EQ(CleanPaste(u"two\u00A0words\u202F和\u2003字\u3000"), u"two words 和 字\u3000");
  EXPECT_EQ(DecideKey({.text = u"\u00A0"}, {}).text, u" ");
}

TEST(CleanPasteTest, LinesAreCountedAsTheyAreSent) {
  EXPECT_EQ(PastedLines(u""), 0);
  EXPECT_EQ(PastedLines(u"一行\r"), 1);
  EXPECT_EQ(PastedLines(u"一行\r兩行"), 2);
  EXPECT_EQ(PastedLines(u"\r\r\r"), 3) << "empty lines are lines";
}

}  // namespace
}  // namespace quillet
