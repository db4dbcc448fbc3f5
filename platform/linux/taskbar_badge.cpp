// None: what a desktop here shows over its buttons is each desktop's own.
#include "platform/taskbar_badge.h"

namespace quillet {

bool SetTaskbarBadge(std::uintptr_t /*window*/, std::span<const std::uint32_t> /*pixels*/, int /*side*/,
                     const std::u16string& /*meaning*/) {
  return false;
}

}  // namespace quillet
