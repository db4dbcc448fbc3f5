// Texts as the system's calls take them. Platform folder only; any thread.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace quillet {

// Up to the first NUL, where the system ends a text.
inline std::wstring Wide(std::u16string_view text) {
  return {text.begin(), std::find(text.begin(), text.end(), u'\0')};
}

}  // namespace quillet
