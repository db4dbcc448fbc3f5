// Any bytes as what other programs hand to this one: a message between two runs of it, a browser's command, a
// desktop entry and a cache of entries.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include "bbs/article_code.h"
#include "platform/browser_command.h"
#include "platform/instance_message.h"
#include "platform/linux/desktop_entry.h"

namespace quillet {
namespace {

constexpr std::size_t kLongest = 16384;

void Require(bool holds) {
  if (!holds) std::abort();
}

void ReadMessage(std::span<const std::byte> bytes) {
  const auto text = TextOfMessage(bytes);
  if (!text) return;
  const auto again = MessageOf(*text);
  Require(std::equal(again.begin(), again.end(), bytes.begin(), bytes.end()));
  ArticleReference article;
  const bool isOurs = ParseArticleUrl(
      *text, {.host = u"a.example", .mirror1 = u"b.example", .mirror2 = u"c.example"}, article);
  Require(isOurs || article == ArticleReference{});
  Require(article.code.empty() || article.code.size() == kAidLength);
  const BrowserCommand split = SplitBrowserCommand(*text, u"");
  Require(split.program.size() + split.arguments.size() <= text->size());
  Require(!split.program.starts_with(u'"'));
}

void ReadEntry(const std::string& text) {
  for (const std::string& entry : {text, "[Desktop Entry]\nExec=" + text}) {
    const auto command = CommandForLink(entry, "L");
    Require(command.empty() || !command.front().empty());
    IsLinkHandlerOfOurs(entry);
  }
  EntriesFor("x-scheme-handler/https", text);
  const std::string path = "/" + text.substr(0, text.find_first_of(std::string_view("\0\n\r", 3)));
  const auto own = CommandForLink(LinkHandlerEntry(path), "L");
  Require(own.size() == 3 && own[0] == path && own[2] == "L");
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > quillet::kLongest) return 0;
  quillet::ReadMessage(std::as_bytes(std::span(data, size)));
  quillet::ReadEntry({reinterpret_cast<const char*>(data), size});
  return 0;
}
