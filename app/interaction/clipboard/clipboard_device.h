// The toolkit's clipboard as a device that takes blocks of data. Made for one use by ClipboardController.
// User-interface thread.
#pragma once

#include <QClipboard>

#include "input/text/clipboard_blocks.h"

namespace quillet {

class QtClipboard : public ClipboardDevice {
 public:
  // `clipboard` outlives the object.
  explicit QtClipboard(QClipboard& clipboard, QClipboard::Mode mode = QClipboard::Clipboard)
      : clipboard_(clipboard), mode_(mode) {}

  // False for a clipboard that the system does not have, or that is open.
  bool Open() override;
  bool Empty() override { return isOpen_; }
  // A block whose size does not fit its format fails with EINVAL. Without data, with EINVAL too.
  bool Set(std::span<const ClipboardBlock> blocks) override;
  void Close() override { isOpen_ = false; }
  int LastError() const override { return lastError_; }

 private:
  bool Fail(int error);

  QClipboard& clipboard_;
  QClipboard::Mode mode_;
  bool isOpen_ = false;
  int lastError_ = 0;
};

}  // namespace quillet
