#include "core/wrap_text.h"

#include <gtest/gtest.h>
#include <random>

#include "core/term_session.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scripted_transport.h"
#include "tests/support/tables.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

TEST(WrapTextTest, EachPieceIsFollowedByAReturnTheLastOneToo) {
  EXPECT_EQ(WrapBig5(""), "");
  EXPECT_EQ(WrapBig5("ab\xA4\xA4", 3), "ab\r\xA4\xA4\r");
  EXPECT_EQ(WrapBig5("ab\rcd\r", 3), "ab\rcd\r") << "a line break of the text's own ends the piece";
  EXPECT_EQ(WrapBig5("abcd", 3, LastPiece::kLeftOpen), "abc\rd");
  EXPECT_EQ(WrapBig5("ab\r", 3, LastPiece::kLeftOpen), "ab\r") << "the text's own line break stays";
}

// A trail byte may look like a letter or a lead byte; the pair stays whole wherever it falls.
TEST(WrapTextTest, NoPairIsCutAndNoByteIsLost) {
  std::mt19937 random(2);
  for (int round = 0; round < 500; ++round) {
    std::string text;
    const std::size_t length = random() % 400;
    while (text.size() < length) {
      if (random() % 2) {
        text += static_cast<char>(0x81 + random() % 0x7E);
        text += static_cast<char>(0x40 + random() % 0x3F);
      } else {
        text += static_cast<char>(0x20 + random() % 0x5F);
      }
    }
    const std::string wrapped = WrapBig5(text);
    std::string joined;
    std::size_t columns = 0;
    for (std::size_t i = 0; i < wrapped.size(); ++i) {
      if (wrapped[i] == '\r') {
        ASSERT_GE(columns, i + 1 == wrapped.size() ? 1u : kWrapColumns - 1);
        columns = 0;
        continue;
      }
      const std::size_t width = static_cast<unsigned char>(wrapped[i]) >= 0x81 ? 2 : 1;
      joined += wrapped.substr(i, width);
      i += width - 1;
      columns += width;
      ASSERT_LE(columns, kWrapColumns);
    }
    EXPECT_EQ(joined, text);
    EXPECT_EQ(columns, 0u);
  }
}

using SendTextTest = WithTables;

TEST_F(SendTextTest, TextGoesOutInBig5WithoutWhatHasNoCode) {
  auto script = std::make_shared<TransportScript>();
  TermSession session({});
  session.ConnectWith(std::make_unique<ScriptedTransport>(script));
  session.SendText(u"");
  session.SendText(u"a中\U0001F600\n");
  session.SendText(std::u16string(40, u'文'), Wrap::kAt78Columns);
  std::string lines;
  for (int i = 0; i < 39; ++i)
    lines += "\xA4\xE5";
  lines += "\r\xA4\xE5\r";
  ASSERT_TRUE(WaitUntil([&] { return script->Written() == "a\xA4\xA4\n" + lines; })) << script->Written();
}

TEST_F(SendTextTest, WithoutItsTableOnlyAsciiGoesOut) {
  const ScratchFolder empty;
  LoadCharsetTables(empty.Path());
  auto script = std::make_shared<TransportScript>();
  TermSession session({});
  session.ConnectWith(std::make_unique<ScriptedTransport>(script));
  session.SendText(u"推 a中文b");
  EXPECT_TRUE(WaitUntil([&] { return script->Written() == " ab"; })) << script->Written();
  session.Disconnect();
  LoadCharsetTables(QUILLET_SOURCE_DIR "/Data");  // for the tests that follow
}

}  // namespace
}  // namespace quillet
