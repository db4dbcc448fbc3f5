// The lines beginning with "※" that the BBS puts at the end of an article, and the line of the last login,
// recognised from their text. Pure; any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

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
