#include "platform/taskbar_badge.h"

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>
#include <windows.h>
// After windows.h, which it needs.
#include <shobjidl.h>

#include "platform/windows/com_pointer.h"
#include "platform/windows/wide_text.h"

namespace quillet {
namespace {

struct DestroyPicture {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};
using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, DestroyPicture>;

Icon MakeIcon(std::span<const std::uint32_t> pixels, int side) {
  const auto height = static_cast<std::size_t>(side);
  if (height == 0 || pixels.size() != height * height) return nullptr;
  // Lines of whole words; what shines through is in the pixels already.
  const std::vector<BYTE> mask((height + 15) / 16 * 2 * height);
  return Icon(
      CreateIcon(nullptr, side, side, 1, 32, mask.data(), reinterpret_cast<const BYTE*>(pixels.data())));
}

}  // namespace

bool SetTaskbarBadge(std::uintptr_t window, std::span<const std::uint32_t> pixels, int side,
                     const std::u16string& meaning) {
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &made)))
    return false;
  const ComPointer<ITaskbarList3> taskbar(static_cast<ITaskbarList3*>(made));
  const Icon icon = MakeIcon(pixels, side);
  // The task bar makes a copy of its own.
  return SUCCEEDED(taskbar->HrInit()) &&
         SUCCEEDED(
             taskbar->SetOverlayIcon(reinterpret_cast<HWND>(window), icon.get(), Wide(meaning).c_str())) &&
         (icon != nullptr || pixels.empty());
}

}  // namespace quillet
