// Any bytes as a web page: what is found in it is an address that may leave the program, or nothing, and it
// does not depend on what lies behind the most that is read.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "media/page/page_picture.h"
#include "platform/utf8.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void RequireFit(const std::string& picture) {
  if (picture.empty()) return;
  Require(picture.size() <= kLongestWebAddress);
  const std::optional<std::u16string> address = Utf16FromUtf8(picture);
  Require(address && IsWebAddress(*address) && OpenableAddress(*address) == picture);
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view kCharsets[] = {"", "big5", "utf-8", "utf-16", "utf-7", "x"};
  if (size == 0) return 0;
  const std::string_view page(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::string charset(kCharsets[data[0] % std::size(kCharsets)]);
  for (const char* const address : {"https://x.example/a/b.html?c#d", "http://x.example", ""})
    quillet::RequireFit(quillet::PictureOfPage(page, charset, address));
  return 0;
}
