// Puts blocks of data on the clipboard, step by step, and says which step failed. The clipboard itself is
// behind an interface, the system's or a test's. User-interface thread.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace quillet {

// Text is UTF-16 in the machine's byte order, HTML is UTF-8. Both end at the first NUL or at the block's end.
enum class ClipboardFormat { kUnicodeText = 13, kHtml = 0xC001 };

struct ClipboardBlock {
  ClipboardFormat format = ClipboardFormat::kUnicodeText;
  const void* data = nullptr;
  std::size_t size = 0;  // bytes
};

class ClipboardDevice {
 public:
  virtual ~ClipboardDevice() = default;
  virtual bool Open() = 0;
  virtual bool Empty() = 0;
  // Takes a copy of the blocks, which say the same thing in different formats. All or none.
  virtual bool Set(std::span<const ClipboardBlock> blocks) = 0;
  virtual void Close() = 0;
  // Of the last Set that failed.
  virtual int LastError() const = 0;
};

// True on success. Otherwise `tell` gets the message for the user's message box. The clipboard is closed
// again before this returns and before `tell` is called, so that a box that waits keeps no other program from
// it.
bool SetClipboard(ClipboardDevice& device, std::span<const ClipboardBlock> blocks,
                  const std::function<void(const std::u16string&)>& tell);
bool SetClipboard(ClipboardDevice& device, ClipboardFormat format, const void* data, std::size_t size,
                  const std::function<void(const std::u16string&)>& tell);

}  // namespace quillet
