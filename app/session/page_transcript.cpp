#include "app/session/page_transcript.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/charset.h"

namespace quillet {
namespace {

std::string_view Trimmed(const ScreenRow& row) {
  const std::string_view bytes = BytesOf(row);
  const std::size_t last = bytes.find_last_not_of(std::string_view(" \0", 2));
  return bytes.substr(0, last + 1);  // npos + 1 is 0
}

// Half of the lines that stood there are gone: what is added to a line leaves it there.
bool IsAnotherPage(const ScreenRows& before, const ScreenRows& now) {
  int stood = 0;
  int gone = 0;
  for (std::size_t row = 0; row < kRows; ++row) {
    const std::string_view text = Trimmed(before[row]);
    if (text.empty()) continue;
    ++stood;
    if (!BytesOf(now[row]).starts_with(text)) ++gone;
  }
  return gone > 0 && 2 * gone >= stood;
}

std::u16string TextOf(const ScreenRow& row) {
  std::u16string text = FromBig5(Trimmed(row));
  for (char16_t& unit : text)
    if (unit < u' ' || unit == 0x7F) unit = u' ';
  return text + u'\n';
}

}  // namespace

std::u16string PageTranscript::Take(const ScreenRows& screen, std::int64_t now) {
  if (waiting_ ? *waiting_ == screen : written_ == screen) return {};
  std::u16string gone;
  if (waiting_ && now - changedAt_ >= kHalfDrawnMs && IsAnotherPage(*waiting_, screen)) gone = Write();
  waiting_ = screen;
  changedAt_ = now;
  return gone;
}

std::optional<std::int64_t> PageTranscript::SettlesAt() const {
  return waiting_ ? std::optional(changedAt_ + kSettleMs) : std::nullopt;
}

std::u16string PageTranscript::Settle(std::int64_t now) {
  const std::optional<std::int64_t> at = SettlesAt();
  return at && now >= *at ? Write() : std::u16string();
}

std::u16string PageTranscript::Finish() {
  return waiting_ ? Write() : std::u16string();
}

std::u16string PageTranscript::Write() {
  const ScreenRows page = *std::exchange(waiting_, std::nullopt);
  const bool isWhole = !written_ || IsAnotherPage(*written_, page);
  std::u16string text;
  std::u16string blank;  // lines without text, in case one with some follows
  for (std::size_t row = 0; row < kRows; ++row) {
    const bool isBlank = Trimmed(page[row]).empty();
    if (!isWhole && (isBlank || page[row] == (*written_)[row])) continue;
    if (isBlank) {
      blank += u'\n';
      continue;
    }
    text += std::exchange(blank, {}) + TextOf(page[row]);
  }
  written_ = page;
  if (text.empty()) return {};
  return (isWhole ? u"──── " : u"── ") + stamp_() + u'\n' + text;
}

}  // namespace quillet
