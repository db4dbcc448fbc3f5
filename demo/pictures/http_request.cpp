#include "demo/pictures/http_request.h"

#include <algorithm>

#include "core/ascii.h"

namespace quillet::demo {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeadEnd = "\r\n\r\n";
constexpr std::string_view kGet = "GET";
constexpr std::string_view kOldVersion = "HTTP/1.0";  // whose clients ask once
constexpr std::string_view kVersion = "HTTP/1.1";

// What stands before `end`, and the rest behind it; all of it where there is no `end`.
std::string_view TakeUntil(std::string_view& text, std::string_view end) {
  const std::size_t at = text.find(end);
  const std::string_view part = text.substr(0, at);
  text.remove_prefix(at == text.npos ? text.size() : at + end.size());
  return part;
}

bool IsVisible(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < '\x7F'; });
}

struct Head {
  std::string_view method;
  std::string_view target;
  std::string_view version;
  std::string_view host;
  int hosts = 0;
  std::string connection;  // in lower case
  bool hasBody = false;
};

// False for a line that is no "Name: value".
bool ReadField(std::string_view line, Head& head) {
  const std::size_t colon = line.find(':');
  if (colon == line.npos || !IsVisible(line.substr(0, colon))) return false;
  const std::string name = AsciiLowered(line.substr(0, colon));
  const std::string_view value = Trimmed(line.substr(colon + 1));
  if (name == "host") {
    head.host = value;
    ++head.hosts;
  } else if (name == "connection") {
    head.connection = AsciiLowered(value);
  } else if (name == "transfer-encoding" || (name == "content-length" && value != "0")) {
    head.hasBody = true;
  }
  return true;
}

bool ReadHead(std::string_view text, Head& head) {
  std::string_view line = TakeUntil(text, kLineEnd);
  head.method = TakeUntil(line, " ");
  head.target = TakeUntil(line, " ");
  head.version = line;
  while (!text.empty())
    if (!ReadField(TakeUntil(text, kLineEnd), head)) return false;
  return IsVisible(head.method) && IsVisible(head.target) && head.target.starts_with('/') &&
         (head.version == kVersion || head.version == kOldVersion) && head.hosts == 1 &&
         IsVisible(head.host) && !head.hasBody;
}

}  // namespace

bool HttpRequestReader::Next(HttpRequest& request, HttpFault& fault) {
  const std::size_t end = pending_.find(kHeadEnd);
  if (end == pending_.npos && pending_.size() <= kLongestRequest) return false;
  Head head;
  if (std::min(end, pending_.size()) > kLongestRequest ||
      !ReadHead(std::string_view(pending_).substr(0, end), head)) {
    fault = HttpFault::kMalformed;
    return true;
  }
  fault = head.method == kGet ? HttpFault::kNone : HttpFault::kOtherMethod;
  request = {.host = AsciiLowered(head.host.substr(0, head.host.find(':'))),
             .target = std::string(head.target),
             .staysOpen = head.version == kVersion && head.connection.find("close") == std::string::npos};
  pending_.erase(0, end + kHeadEnd.size());
  return true;
}

}  // namespace quillet::demo
