#include "core/endpoints.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr std::size_t kMaxFileSize = 64 * 1024;

std::optional<std::string> ReadText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  std::string text(kMaxFileSize, '\0');
  in.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (in.bad()) return std::nullopt;
  text.resize(static_cast<std::size_t>(in.gcount()));
  return text;
}

bool HasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return (c >= 0 && c < 0x20) || c == 0x7F; });
}

// Takes in the lines of one file, in order.
class LineReader {
 public:
  explicit LineReader(Endpoints& endpoints) : endpoints_(endpoints) {}

  void Read(std::string_view line) {
    line = Trimmed(line);
    if (line.empty() || line[0] == ';' || line[0] == '#') return;
    if (line[0] == '[') {
      ReadSection(line);
    } else {
      ReadValue(line);
    }
  }

 private:
  // A damaged heading ends the section before it, lest its keys land there.
  void ReadSection(std::string_view line) {
    section_.clear();
    if (line.back() == ']') section_ = AsciiLowered(Trimmed(line.substr(1, line.size() - 2)));
  }

  void ReadValue(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (section_.empty() || equals == line.npos) return;
    const std::string_view key = Trimmed(line.substr(0, equals));
    const std::string_view value = Trimmed(line.substr(equals + 1));
    if (key.empty() || HasControlCharacter(key) || HasControlCharacter(value)) return;
    endpoints_.values[section_ + "/" + AsciiLowered(key)] = std::string(value);
  }

  Endpoints& endpoints_;
  std::string section_;
};

}  // namespace

std::string_view Endpoints::Value(std::string_view name) const {
  const auto found = values.find(name);
  return found == values.end() ? std::string_view{} : std::string_view(found->second);
}

std::u16string Endpoints::HostName(std::string_view name) const {
  std::u16string host;
  for (const char c : Value(name)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= 0x20 || byte >= 0x7F) return {};
    host += static_cast<char16_t>(AsciiLower(byte));
  }
  return host;
}

bool LoadEndpoints(const std::filesystem::path& file, Endpoints& endpoints) {
  const std::optional<std::string> text = ReadText(file);
  if (!text) return false;
  std::string_view rest = *text;
  if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
  LineReader reader(endpoints);
  while (!rest.empty()) {
    const std::size_t length = std::min(rest.find('\n'), rest.size());
    reader.Read(rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  endpoints.mainHost = AsciiLowered(endpoints.Value("bbs/main_host"));
  endpoints.secondaryHost = AsciiLowered(endpoints.Value("bbs/secondary_host"));
  endpoints.webSocketHost = AsciiLowered(endpoints.Value("bbs/websocket_host"));
  endpoints.serverNetwork = ParseDottedAddress(endpoints.Value("bbs/server_network"));
  return true;
}

std::uint32_t ParseDottedAddress(std::string_view text) {
  std::uint32_t address = 0;
  for (int group = 0; group < 4; ++group) {
    const std::size_t length = group < 3 ? text.find('.') : text.size();
    if (length > 3) return 0;  // or no dot at all: npos
    unsigned value = 0;
    const char* const end = text.data() + length;
    const std::from_chars_result read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc{} || read.ptr != end || value > 255) return 0;
    address = address << 8 | value;
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return address;
}

}  // namespace quillet
