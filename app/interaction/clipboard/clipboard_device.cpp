#include "app/interaction/clipboard/clipboard_device.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include <QMimeData>
#include <QPointer>

namespace quillet {
namespace {

QString TextIn(const ClipboardBlock& block) {
  std::u16string text(block.size / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), block.data, block.size);
  return QString::fromStdU16String(text.substr(0, text.find(u'\0')));
}

QString HtmlIn(const ClipboardBlock& block) {
  const std::string_view bytes(static_cast<const char*>(block.data), block.size);
  const std::string_view html = bytes.substr(0, bytes.find('\0'));
  return QString::fromUtf8(html.data(), static_cast<qsizetype>(html.size()));
}

bool IsSound(const ClipboardBlock& block) {
  if (block.data == nullptr && block.size > 0) return false;
  return block.format == ClipboardFormat::kHtml || block.size % sizeof(char16_t) == 0;
}

bool Owns(const QClipboard& clipboard, QClipboard::Mode mode) {
  return mode == QClipboard::Selection ? clipboard.ownsSelection() : clipboard.ownsClipboard();
}

}  // namespace

bool QtClipboard::Open() {
  if (isOpen_ || (mode_ == QClipboard::Selection && !clipboard_.supportsSelection())) return false;
  isOpen_ = true;
  return true;
}

// The toolkit replaces the old data by the new in one step. Emptying the clipboard first would show every
// program that watches it an empty one, and would lose the old data when the new is refused.
bool QtClipboard::Set(std::span<const ClipboardBlock> blocks) {
  if (!isOpen_ || blocks.empty()) return Fail(EINVAL);
  auto data = std::make_unique<QMimeData>();
  for (const ClipboardBlock& block : blocks) {
    if (!IsSound(block)) return Fail(EINVAL);
    if (block.format == ClipboardFormat::kHtml)
      data->setHtml(block.size == 0 ? QString() : HtmlIn(block));
    else
      data->setText(block.size == 0 ? QString() : TextIn(block));
  }
  const QPointer<QMimeData> given(data.release());
  clipboard_.setMimeData(given, mode_);
  // The toolkit does not say that the system refused. Where it cannot tell whose the data are either, they
  // are at least there.
  if (Owns(clipboard_, mode_) || (given != nullptr && clipboard_.mimeData(mode_) == given)) return true;
  return Fail(EBUSY);  // nearly always another program that keeps the clipboard open
}

bool QtClipboard::Fail(int error) {
  lastError_ = error;
  return false;
}

}  // namespace quillet
