// Any text as a link and as the address of an image: what is rewritten, and how, and whose link it was then.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "media/picture_link.h"
#include "media/scraped_image.h"
#include "media/video_link.h"

namespace quillet {
namespace {

constexpr std::size_t kLongest = 65536;

void Require(bool holds) {
  if (!holds) std::abort();
}

const MediaHosts& Hosts() {
  static const MediaHosts hosts{.shorteners = {u"one.example", u"two.example", u"", u"four.example"},
                                .photoShort = u"photo.example",
                                .pageShort = u"page.example",
                                .imageShortener = u"at.example",
                                .images = u"main.example",
                                .pagedImages = u"paged.example",
                                .blogImages = u"blog.example",
                                .video = {u"video.example", u"vid.example", {}, {}}};
  return hosts;
}

std::u16string LowerAscii(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& unit : lower)
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
  return lower;
}

// What stands between the scheme and the next slash, read in the plainest way.
std::u16string PlainHost(std::u16string_view link) {
  const std::u16string lower = LowerAscii(link);
  const std::size_t begin = lower.starts_with(u"https://") ? 8 : lower.starts_with(u"http://") ? 7 : 0;
  const std::size_t end = lower.find(u'/', begin);
  return begin == 0 || end == lower.npos ? std::u16string() : lower.substr(begin, end - begin);
}

bool IsOneOf(std::u16string_view host, std::initializer_list<std::u16string_view> hosts) {
  return !host.empty() && std::find(hosts.begin(), hosts.end(), host) != hosts.end();
}

void RequireWhose(LinkMedia media, const std::u16string& link, const std::u16string& rewritten) {
  const MediaHosts& hosts = Hosts();
  const std::u16string host = PlainHost(link);
  const bool isMain =
      IsOneOf(host, {hosts.images, std::u16string(u"i.main.example"), std::u16string(u"m.main.example")});
  if (media == LinkMedia::kShortened)
    Require(IsOneOf(host, {hosts.shorteners[0], hosts.shorteners[1], hosts.shorteners[3]}));
  if (media == LinkMedia::kPicturePage) Require(isMain || IsOneOf(host, {hosts.photoShort, hosts.pageShort}));
  if (media != LinkMedia::kPicture || rewritten == link) return;
  const bool isShorter = rewritten.size() < link.size();
  Require(isShorter ? rewritten + link.back() == link && LowerAscii(link).ends_with(u".gifv")
          : rewritten.size() == link.size() + 2
              ? rewritten == std::u16string(link).insert(8, u"i.") && host == hosts.pagedImages
          : rewritten.size() == link.size() + 4
              ? rewritten == link + u".jpg" && isMain
              : rewritten == link + u"@.jpg" && host == hosts.imageShortener);
}

void CheckVideo(std::u16string_view link) {
  const std::u16string_view id = VideoId(link, Hosts().video);
  if (id.empty()) return;
  Require(id.size() == kVideoIdLength && id.data() >= link.data() &&
          id.data() + id.size() <= link.data() + link.size());
  constexpr std::u16string_view kUnits = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  Require(id.find_first_not_of(kUnits) == id.npos);
  Require(
      IsOneOf(PlainHost(link), {u"video.example", u"www.video.example", u"m.video.example", u"vid.example"}));
}

void CheckLink(const std::u16string& link) {
  std::u16string rewritten = link;
  const LinkMedia media = ClassifyLink(rewritten, Hosts());
  Require(rewritten.size() <= link.size() + 5);
  if (media != LinkMedia::kPicture) Require(rewritten == link);
  if (media == LinkMedia::kVideo) Require(!VideoId(link, Hosts().video).empty());
  RequireWhose(media, link, rewritten);
  CheckVideo(link);
  if (media == LinkMedia::kNone) return;
  // The form that is fetched is what it was classified as; only a film's still has a second way to be had.
  std::u16string again = rewritten;
  Require(ClassifyLink(again, Hosts()) == media);
  Require(again == rewritten || rewritten.size() < link.size());
  std::u16string withoutHosts = link;
  if (ClassifyLink(withoutHosts, {}) != LinkMedia::kNone) Require(media == LinkMedia::kPicture);
}

// Any size that an accepted name tells, as numbers without a limit.
void RequireLargeSizes(std::u16string_view name) {
  const auto isDigit = [&](std::size_t at) {
    return at < name.size() && name[at] >= u'0' && name[at] <= u'9';
  };
  for (std::size_t x = 1; x < name.size(); ++x) {
    if ((name[x] != u'x' && name[x] != u'X') || !isDigit(x - 1) || !isDigit(x + 1)) continue;
    double width = 0, height = 0, weight = 1;
    for (std::size_t at = x; at > 0 && isDigit(at - 1); --at, weight *= 10)
      width += (name[at - 1] - u'0') * std::min(weight, 1e9);
    for (std::size_t at = x + 1; isDigit(at); ++at)
      height = std::min(height * 10 + (name[at] - u'0'), 1e9);
    Require(width * height < 1 || width * height >= 10000);
  }
}

void CheckImage(const std::u16string& address) {
  const bool accepts = AcceptScrapedImage(address);
  if (address.find(u"BigPic/") != address.npos) return;
  Require(AcceptScrapedImage(u"https://a.example/" + address) == accepts);
  if (!accepts) return;
  Require(address.find(u"png") == address.npos && address.find(u"data:") == address.npos);
  const std::u16string name = address.substr(address.rfind(u'/') + 1);
  Require(std::any_of(name.begin(), name.end(), [](char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z');
  }));
  RequireLargeSizes(name);
}

void Check(const std::u16string& text) {
  CheckLink(text);
  CheckLink(u"https://" + text);
  CheckImage(text);
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  // A byte is a unit; those that ASCII has no use for stand for Chinese ones.
  std::u16string text;
  for (std::size_t at = 0; at < std::min(size, kLongest); ++at)
    text += static_cast<char16_t>(data[at] < 0x80 ? data[at] : 0x4E00 + data[at]);
  Check(text);
  // As long as a hostile one could be: what took the square of its length would not come back.
  if (text.empty() || size % 16 != 0) return 0;
  const std::size_t times = kLongest / text.size();
  std::u16string repeated;
  for (std::size_t time = 0; time < times; ++time)
    repeated += text;
  Check(repeated);
  return 0;
}
