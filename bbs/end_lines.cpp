#include "bbs/end_lines.h"

#include <optional>

#include "bbs/screen_fields.h"

namespace quillet {
namespace {

constexpr std::string_view kNoteMark = "\xA1\xB0";  // "※"
constexpr std::u16string_view kAnyOriginStart = u"※ 發信站";
constexpr std::u16string_view kOriginStart = u"※ 發信站: 奧拉拉文藝坊(";
constexpr std::u16string_view kAddressLabel = u", 來自: ";

// What follows HOST and ")" in an origin line.
std::optional<std::u16string_view> BehindOrigin(std::u16string_view text, std::u16string_view host) {
  if (host.empty() || !text.starts_with(kOriginStart)) return std::nullopt;
  text.remove_prefix(kOriginStart.size());
  if (!text.starts_with(host)) return std::nullopt;
  text.remove_prefix(host.size());
  if (!text.starts_with(u')')) return std::nullopt;
  return text.substr(1);
}

bool IsDottedAddress(std::u16string_view text) {
  int numbers = 0;
  while (true) {
    std::size_t digits = 0;
    int number = 0;
    for (; digits < text.size() && text[digits] >= u'0' && text[digits] <= u'9' && digits < 4; ++digits)
      number = 10 * number + (text[digits] - u'0');
    if (digits == 0 || digits > 3 || number > 255) return false;
    ++numbers;
    text.remove_prefix(digits);
    if (text.empty()) return numbers == 4;
    if (text.front() != u'.' || numbers == 4) return false;
    text.remove_prefix(1);
  }
}

}  // namespace

NoteLine ReadNoteLine(const ScreenRow& row) {
  if (!BytesOf(row).starts_with(kNoteMark)) return NoteLine::kNone;
  const std::u16string text = FieldText(row, {0, kCols}, Trim::kNo);
  if (text.starts_with(kAnyOriginStart)) return NoteLine::kOrigin;
  if (IsForwarderLine(text)) return NoteLine::kForwarder;
  if (IsForwardNote(text)) return NoteLine::kForward;
  if (IsEditNote(text)) return NoteLine::kEdit;
  return IsLotteryLine(text) ? NoteLine::kLottery : NoteLine::kOther;
}

bool IsLotteryLine(std::u16string_view text) {
  return text.starts_with(u"※ 開獎站 :");
}

bool IsForwarderLine(std::u16string_view text) {
  return text.starts_with(u"※ 轉錄者: ");
}

bool IsOriginLine(std::u16string_view text, std::u16string_view host) {
  return BehindOrigin(text, host).has_value();
}

bool IsForwardNote(std::u16string_view text) {
  return text.starts_with(u"※ [本文轉錄自 ");
}

bool IsEditNote(std::u16string_view text) {
  return text.starts_with(u"※ 編輯: ");
}

bool IsLastLoginLine(std::u16string_view text) {
  return text.starts_with(u"《上次上站》");
}

std::u16string OriginAddress(std::u16string_view text, std::u16string_view host) {
  const std::optional<std::u16string_view> rest = BehindOrigin(text, host);
  if (!rest || !rest->starts_with(kAddressLabel)) return {};
  const std::u16string_view behind = rest->substr(kAddressLabel.size());
  const std::u16string_view address = behind.substr(0, behind.find(u' '));
  return IsDottedAddress(address) ? std::u16string(address) : std::u16string();
}

}  // namespace quillet
