// The lines beginning with "※" that the BBS puts at the end of an article, and the line of the last login,
// recognised from their text. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/screen_snapshot.h"

namespace quillet {

// What a line of an article is that the BBS has written with "※" in front.
enum class NoteLine : std::uint8_t {
  kNone,       // a line without the mark
  kOther,      // none of those below
  kOrigin,     // where an article came from, this BBS or another one
  kForwarder,  // who has forwarded it
  kForward,    // where the text below comes from
  kEdit,       // the author has edited it
  kLottery     // the numbers that were drawn
};
NoteLine ReadNoteLine(const ScreenRow& text);

// "※ 開獎站 :"
bool IsLotteryLine(std::u16string_view text);
// "※ 轉錄者: "
bool IsForwarderLine(std::u16string_view text);
// "※ 發信站: 奧拉拉文藝坊(HOST)"; `host` is the BBS's name as configured.
bool IsOriginLine(std::u16string_view text, std::u16string_view host);
// "※ [本文轉錄自 "
bool IsForwardNote(std::u16string_view text);
// "※ 編輯: "; callers ask only when the user wants to hear of edits.
bool IsEditNote(std::u16string_view text);
// "《上次上站》"
bool IsLastLoginLine(std::u16string_view text);

// The IPv4 address behind an origin line's "), 來自: ", up to the next blank; empty when there is none, or
// what stands there is none.
std::u16string OriginAddress(std::u16string_view text, std::u16string_view host);

}  // namespace quillet
