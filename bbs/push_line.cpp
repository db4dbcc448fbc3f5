#include "bbs/push_line.h"

#include <algorithm>
#include <string_view>

#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr int kIdCol = 3;
constexpr int kColonLastCol = 15;
constexpr std::string_view kStampForm = "dd/dd dd:dd";
constexpr int kStampLength = static_cast<int>(kStampForm.size());
constexpr int kAddressNumbers = 4;

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

// Of a line that begins as a push line does.
std::optional<int> ColonBehindId(const ScreenRow& text) {
  if (text[kIdCol - 1] != ' ' || !IsAsciiLetter(text[kIdCol])) return std::nullopt;
  bool idEnded = false;
  for (int col = kIdCol + 1; col <= kColonLastCol; ++col) {
    const std::uint8_t byte = text[static_cast<std::size_t>(col)];
    if (byte == ':') return col;
    if (byte == ' ')
      idEnded = true;
    else if (idEnded || !IsAsciiLetterOrDigit(byte))
      return std::nullopt;
  }
  return std::nullopt;
}

std::uint16_t PairAt(std::string_view bytes) {
  return bytes.size() < 2 ? std::uint16_t{0}
                          : static_cast<std::uint16_t>(static_cast<std::uint8_t>(bytes[0]) |
                                                       static_cast<std::uint8_t>(bytes[1]) << 8);
}

void ReadTail(std::string_view cells, PushLine& line) {
  const int stampCol = EndOfText(cells, line.words.first, kCols) - kStampLength;
  if (stampCol <= line.words.first || cells[static_cast<std::size_t>(stampCol - 1)] != ' ') return;
  const std::string_view stamp = cells.substr(static_cast<std::size_t>(stampCol), kStampForm.size());
  if (!IsStamp(stamp)) return;
  line.stamp = PushStamp{TwoDigits(stamp), TwoDigits(stamp.substr(3)), TwoDigits(stamp.substr(6)),
                         TwoDigits(stamp.substr(9))};
  line.time = {stampCol, stampCol + kStampLength};
  line.words.last = StartOfAddress(cells, line.words.first, stampCol);
  line.address = {line.words.last, EndOfText(cells, line.words.last, stampCol)};
}

}  // namespace

PushLineReader::PushLineReader()
    : marks_{PairAt(ToBig5(u"推")), PairAt(ToBig5(u"噓")), PairAt(ToBig5(u"→"))} {}

std::optional<PushKind> PushLineReader::Kind(const ScreenRow& text) const {
  const auto begin = static_cast<std::uint16_t>(text[0] | text[1] << 8);
  const auto* const mark = std::find(marks_.begin(), marks_.end(), begin);
  if (mark == marks_.end()) return std::nullopt;
  return static_cast<PushKind>(mark - marks_.begin());
}

std::optional<int> PushLineReader::Colon(const ScreenRow& text) const {
  return Kind(text) ? ColonBehindId(text) : std::nullopt;
}

std::optional<PushLine> PushLineReader::Read(const ScreenRow& text) const {
  const std::optional<PushKind> kind = Kind(text);
  if (!kind) return std::nullopt;
  const std::optional<int> colon = ColonBehindId(text);
  if (!colon) return std::nullopt;
  PushLine line;
  line.kind = *kind;
  line.id = {kIdCol, EndOfText(BytesOf(text), kIdCol, *colon)};
  line.words = {*colon + 1, kCols};
  ReadTail(BytesOf(text), line);
  return line;
}

std::u16string PushId(const ScreenRow& text, const PushLine& push) {
  return {text.begin() + push.id.first, text.begin() + push.id.last};
}

}  // namespace quillet
