#include "platform/opener.h"

#include <string>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include "platform/web_address.h"

namespace quillet {

bool SystemOpener::Open(std::u16string_view address) {
  const std::string openable = OpenableAddress(address);
  if (openable.empty()) return false;
  const std::wstring wide(openable.begin(), openable.end());  // ASCII
  const HINSTANCE answer = ShellExecuteW(nullptr, L"open", wide.c_str(), nullptr, nullptr, SW_SHOW);
  // The answer is no instance but a number, above 32 when something was started.
  return reinterpret_cast<INT_PTR>(answer) > 32;
}

}  // namespace quillet
