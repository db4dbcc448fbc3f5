#include "bbs/end_lines.h"

#include <gtest/gtest.h>

#include "bbs/line_address.h"
#include "bbs/screen_fields.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr std::u16string_view kHost = u"bbs.example";

using EndLinesTest = WithTables;

TEST_F(EndLinesTest, ARowIsWhatItsBeginningSays) {
  const struct {
    std::u16string_view line;
    NoteLine note;
  } cases[] = {
      {u"※ 發信站: 奧拉拉文藝坊(bbs.example), 來自: 192.0.2.7", NoteLine::kOrigin},
      {u"※ 發信站: 別的站(other.example)", NoteLine::kOrigin},
      {u"※ 轉錄者: kagami (192.0.2.7), 11/06/2026 06:04:00", NoteLine::kForwarder},
      {u"※ [本文轉錄自 Astronomy 看板 #1a2B3c4_ ]", NoteLine::kForward},
      {u"※ 編輯: kagami (192.0.2.7), 11/06/2026 06:04:00", NoteLine::kEdit},
      {u"※ 開獎站 : 奧拉拉文藝坊(bbs.example)", NoteLine::kLottery},
      {u"※ 文章網址: https://a.example", NoteLine::kOther},
      {u" ※ 編輯: kagami", NoteLine::kNone},
      {u"", NoteLine::kNone},
  };
  for (const auto& entry : cases)
    EXPECT_EQ(ReadNoteLine(ScreenBuilder().Put(0, 0, entry.line).screen.text[0]), entry.note);
}

TEST_F(EndLinesTest, ThePersonsAddressIsTheLastOneOnTheLine) {
  const struct {
    std::u16string_view line, address;
  } cases[] = {
      {u"※ 發信站: 奧拉拉文藝坊(198.51.100.1), 來自: 192.0.2.7 (臺灣)", u"192.0.2.7"},
      {u"※ 編輯: kagami (192.0.2.7 臺灣), 11/06/2026 06:04:00", u"192.0.2.7"},
      {u"※ 轉錄者: kagami (192.0.2.7), 11/06/2026 06:04:00", u"192.0.2.7"},
      {u"《上次上站》11/06/2026 06:04:00 Fri  《上次故鄉》:192.0.2.7", u"192.0.2.7"},
      {u"《上次上站》11/06 06:04 來自 somewhere.example", u""},
      {u"※ 發信站: 奧拉拉文藝坊(bbs.example), 來自: 192.0.2.777", u""},
      {u"※ 文章網址: 192.0.2.7", u""},
      {u"192.0.2.7", u""},
  };
  for (const auto& entry : cases) {
    const ScreenRow row = ScreenBuilder().Put(0, 0, entry.line).screen.text[0];
    EXPECT_EQ(FieldText(row, LineAddress(row, ReadNoteLine(row))), entry.address) << ToBig5(entry.line);
  }
}

TEST_F(EndLinesTest, OriginLineNamesTheHost) {
  EXPECT_TRUE(IsOriginLine(u"※ 發信站: 奧拉拉文藝坊(bbs.example)", kHost));
  EXPECT_TRUE(IsOriginLine(u"※ 發信站: 奧拉拉文藝坊(bbs.example), 來自: 192.0.2.7", kHost));
  for (const std::u16string_view line :
       {u"※ 發信站: 奧拉拉文藝坊(bbs.example", u"※ 發信站: 奧拉拉文藝坊(bbs.example.org)",
        u"※ 發信站: 奧拉拉文藝坊(bbs)", u"※ 發信站: 奧拉拉文藝坊()", u"※ 發信站: 別的站(bbs.example)", u""})
    EXPECT_FALSE(IsOriginLine(line, kHost));
  EXPECT_FALSE(IsOriginLine(u"※ 發信站: 奧拉拉文藝坊()", u""));  // a host that is not configured
}

TEST_F(EndLinesTest, OriginAddressIsAWholeAddressOrNothing) {
  const struct {
    std::u16string_view behind, address;
  } cases[] = {
      {u", 來自: 192.0.2.7", u"192.0.2.7"},
      {u", 來自: 255.255.255.255 (臺灣)", u"255.255.255.255"},
      {u", 來自: 192.0.2.7   ", u"192.0.2.7"},
      {u", 來自: 192.0.2", u""},
      {u", 來自: 192.0.2.", u""},
      {u", 來自: 192.0.2.256", u""},
      {u", 來自: 192.0.2.7.1", u""},
      {u", 來自: 192..2.7", u""},
      {u", 來自: 192.0.2.7(臺灣)", u""},
      {u", 來自: 1920000000000000.0.2.7", u""},
      {u", 來自: 192.0.*.7", u""},
      {u", 來自: ", u""},
      {u", 來自", u""},
      {u"", u""},
  };
  for (const auto& entry : cases) {
    const std::u16string line = u"※ 發信站: 奧拉拉文藝坊(bbs.example)" + std::u16string(entry.behind);
    EXPECT_EQ(OriginAddress(line, kHost), entry.address);
    EXPECT_EQ(OriginAddress(line, u"other.example"), u"");
  }
}

}  // namespace
}  // namespace quillet
