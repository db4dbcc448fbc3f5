#include "render/style/push_line.h"

#include <algorithm>
#include <string_view>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr int kIdCol = 3;
constexpr std::string_view kStampForm = "dd/dd dd:dd";
constexpr int kStampLength = static_cast<int>(kStampForm.size());
constexpr int kAddressNumbers = 4;
constexpr std::uint8_t kArrow[] = {0xA1, 0xF7};  // "→" in Big5

// The row's 80 cells. No second half of a character is a digit, a blank, ".", "/" or ":", so all of these can
// be looked for by bytes.
// One behind the last byte of `cells` that is no blank; `first` when there is none.
int EndOfText(std::string_view cells, int first, int last) {
  while (last > first && cells[static_cast<std::size_t>(last - 1)] == ' ')
    --last;
  return last;
}

bool IsStamp(std::string_view text) {
  return std::equal(kStampForm.begin(), kStampForm.end(), text.begin(), text.end(),
                    [](char form, char c) { return form == 'd' ? IsAsciiDigit(c) : form == c; });
}

std::uint8_t TwoDigits(std::string_view text) {
  return static_cast<std::uint8_t>((text[0] - '0') * 10 + (text[1] - '0'));
}

// Where the IPv4 address that ends before `last` begins; `last` when there is none.
int StartOfAddress(std::string_view cells, int first, int last) {
  int start = EndOfText(cells, first, last);
  for (int number = 1; number <= kAddressNumbers; ++number) {
    const int end = start;
    while (start > first && IsAsciiDigit(cells[static_cast<std::size_t>(start - 1)]))
      --start;
    const char before = number == kAddressNumbers ? ' ' : '.';
    if (start == end || start <= first || cells[static_cast<std::size_t>(start - 1)] != before) return last;
    if (before == '.') --start;
  }
  return start;
}

}  // namespace

PushLine ReadPushLine(const ScreenRow& text) {
  const std::string_view cells = BytesOf(text);
  PushLine line;
  line.isNote = text[0] == kArrow[0] && text[1] == kArrow[1];
  const auto colon = static_cast<int>(std::min<std::size_t>(cells.find(':', kIdCol), kCols));
  line.id = {kIdCol, EndOfText(cells, kIdCol, colon)};
  line.words = {std::min(colon + 1, kCols), kCols};

  const int stampCol = EndOfText(cells, line.words.first, kCols) - kStampLength;
  if (stampCol <= line.words.first || cells[static_cast<std::size_t>(stampCol - 1)] != ' ') return line;
  const std::string_view stamp = cells.substr(static_cast<std::size_t>(stampCol), kStampForm.size());
  if (!IsStamp(stamp)) return line;
  line.stamp = PushStamp{TwoDigits(stamp), TwoDigits(stamp.substr(3)), TwoDigits(stamp.substr(6)),
                         TwoDigits(stamp.substr(9))};
  line.words.last = StartOfAddress(cells, line.words.first, stampCol);
  return line;
}

}  // namespace quillet
