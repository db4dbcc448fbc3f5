#include "media/scraped_image.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>

#include "media/ascii_case.h"

namespace quillet {
namespace {

constexpr std::u16string_view kNeverInAddress[] = {u"core/", u"paste/", u"png", u"gif", u"data:"};
// Where a forum keeps the large ones.
constexpr std::u16string_view kLargePictures = u"/BigPic/";
constexpr std::u16string_view kEnding = u".jpg";
constexpr std::u16string_view kNeverInName[] = {u"icon", u"menu",  u"logo", u"button", u"code",
                                                u"left", u"right", u"up",   u"down",   u"-sss"};
constexpr std::u16string_view kAdvertisement = u"ad_";
// Width times height; what is smaller is decoration.
constexpr unsigned kSmallestArea = 10000;

template <std::size_t count>
bool HoldsOneOf(std::u16string_view text, const std::u16string_view (&words)[count]) {
  return std::any_of(std::begin(words), std::end(words),
                     [&](std::u16string_view word) { return text.find(word) != text.npos; });
}

// As it is written, without its ending.
std::u16string_view NameOf(std::u16string_view address) {
  std::u16string_view name = address.substr(address.rfind(u'/') + 1);  // npos + 1 is 0
  const std::size_t stem = name.size() - std::min(name.size(), kEnding.size());
  if (LoweredUnits(name.substr(stem)) == kEnding) name = name.substr(0, stem);
  return name;
}

// At most kSmallestArea, which is as good as any larger number.
unsigned NumberOf(std::u16string_view digits) {
  unsigned number = 0;
  for (const char16_t digit : digits)
    number = std::min(number * 10 + (digit - unsigned{u'0'}), kSmallestArea);
  return number;
}

std::size_t DigitsBefore(std::u16string_view name, std::size_t at) {
  std::size_t count = 0;
  while (count < at && IsDigitUnit(name[at - count - 1]))
    ++count;
  return count;
}

std::size_t DigitsFrom(std::u16string_view name, std::size_t at) {
  std::size_t count = 0;
  while (at + count < name.size() && IsDigitUnit(name[at + count]))
    ++count;
  return count;
}

// "88x31": in the name, in lower case, a width and a height that make a small area.
bool TellsSmallSize(std::u16string_view name) {
  for (std::size_t x = name.find(u'x'); x != name.npos; x = name.find(u'x', x + 1)) {
    const std::size_t width = DigitsBefore(name, x);
    const std::size_t height = DigitsFrom(name, x + 1);
    if (width == 0 || height == 0) continue;
    const unsigned area = NumberOf(name.substr(x - width, width)) * NumberOf(name.substr(x + 1, height));
    if (area != 0 && area < kSmallestArea) return true;
  }
  return false;
}

}  // namespace

bool AcceptScrapedImage(std::u16string_view address) {
  if (HoldsOneOf(address, kNeverInAddress)) return false;
  if (address.find(kLargePictures) != address.npos) return true;
  const std::u16string_view written = NameOf(address);
  const std::u16string name = LoweredUnits(written);
  if (HoldsOneOf(name, kNeverInName) || name.starts_with(kAdvertisement) || TellsSmallSize(name))
    return false;
  return std::any_of(written.begin(), written.end(),
                     [](char16_t c) { return IsDigitUnit(c) || IsUpperUnit(c); });
}

}  // namespace quillet
