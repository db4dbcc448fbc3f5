#include "demo/ansi_line.h"

#include <algorithm>
#include <string>

#include "demo/big5_text.h"

namespace quillet::demo {
namespace {

constexpr int kLargestParameter = 255;

std::uint8_t WithParameter(std::uint8_t attr, int parameter) {
  const auto foreground = [&](int colour) {
    return static_cast<std::uint8_t>((attr & ~kAttrForeground) | colour);
  };
  const auto background = [&](int colour) {
    return static_cast<std::uint8_t>((attr & 0x1F) | colour << kAttrBackgroundShift);
  };
  if (parameter == 0) return kAttrBlank;
  if (parameter == 1) return attr | kAttrBold;
  if (parameter == 5) return attr | kAttrBlink;
  if (parameter == 22) return static_cast<std::uint8_t>(attr & ~kAttrBold);
  if (parameter == 7) {
    const int swapped = BackgroundOf(attr) | (attr & kAttrForeground) << kAttrBackgroundShift;
    return static_cast<std::uint8_t>((attr & (kAttrBold | kAttrBlink)) | swapped);
  }
  if (parameter >= 30 && parameter <= 37) return foreground(parameter - 30);
  if (parameter >= 40 && parameter <= 47) return background(parameter - 40);
  return attr;
}

// Applies the sequence behind ESC "[" at `at`; leaves `at` behind its final byte.
std::uint8_t DecodeSequence(std::string_view line, std::size_t& at, std::uint8_t attr) {
  std::uint8_t changed = attr;
  int parameter = 0;
  for (; at < line.size(); ++at) {
    const char c = line[at];
    if (c >= '0' && c <= '9') {
      parameter = std::min(parameter * 10 + (c - '0'), kLargestParameter);
    } else {
      changed = WithParameter(changed, parameter);
      parameter = 0;
      if (c != ';') break;
    }
  }
  if (at >= line.size()) return attr;
  return line[at++] == 'm' ? changed : attr;
}

}  // namespace

std::vector<Cell> CellsOf(std::string_view line, std::uint8_t attr, int columns) {
  std::vector<Cell> cells;
  bool half = false;  // the last cell is the first half of a character
  for (std::size_t at = 0; at < line.size();) {
    if (line[at] == '\x1b') {
      ++at;
      if (at < line.size() && line[at] == '[') attr = DecodeSequence(line, ++at, attr);
      continue;
    }
    const char byte = line[at++];
    const bool lead = !half && IsLead(byte) && at < line.size();
    if (half || lead || (byte >= ' ' && byte < 0x7F)) {
      if (std::ssize(cells) + (lead ? 2 : 1) > columns) break;
      cells.push_back({static_cast<std::uint8_t>(byte), attr});
    }
    half = lead;
  }
  if (half) cells.pop_back();
  return cells;
}

std::string PlainText(std::string_view line) {
  std::string text;
  for (const Cell& cell : CellsOf(line, kAttrBlank, 1 << 16))
    text += static_cast<char>(cell.byte);
  return text;
}

}  // namespace quillet::demo
