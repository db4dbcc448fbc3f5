// What a client of the picture server asks for, read from its bytes as they come. Pure; the client's thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillet::demo {

// What a request may be at most, in bytes.
inline constexpr std::size_t kLongestRequest = 8192;

enum class HttpFault : std::uint8_t {
  kNone,
  kMalformed,   // no request, a body, or more than kLongestRequest
  kOtherMethod  // well formed, and not GET
};

struct HttpRequest {
  std::string host;    // in lower case, without a port
  std::string target;  // path and query, from "/" on
  bool staysOpen = false;
};

class HttpRequestReader {
 public:
  void Feed(std::string_view bytes) { pending_ += bytes; }
  // True when there is a request or a fault. After a fault there is nothing more to be read.
  bool Next(HttpRequest& request, HttpFault& fault);

 private:
  std::string pending_;
};

}  // namespace quillet::demo
