#include "input/text/clipboard_blocks.h"

namespace quillet {
namespace {

std::u16string WithNumber(std::u16string_view text, int number) {
  const std::string digits = std::to_string(number);
  std::u16string result(text);
  result.append(digits.begin(), digits.end());
  return result;
}

// Between Open and Close. Empty when all went well, else the message.
std::u16string Replace(ClipboardDevice& device, std::span<const ClipboardBlock> blocks) {
  if (!device.Empty()) return u"Cannot empty the Clipboard";
  if (!device.Set(blocks)) return WithNumber(u"Unable to set Clipboard data, error: ", device.LastError());
  return {};
}

}  // namespace

bool SetClipboard(ClipboardDevice& device, std::span<const ClipboardBlock> blocks,
                  const std::function<void(const std::u16string&)>& tell) {
  std::u16string problem = u"Cannot open the Clipboard";
  if (device.Open()) {
    problem = Replace(device, blocks);
    device.Close();
  }
  if (problem.empty()) return true;
  if (tell) tell(problem);
  return false;
}

bool SetClipboard(ClipboardDevice& device, ClipboardFormat format, const void* data, std::size_t size,
                  const std::function<void(const std::u16string&)>& tell) {
  const ClipboardBlock block{format, data, size};
  return SetClipboard(device, {&block, 1}, tell);
}

}  // namespace quillet
