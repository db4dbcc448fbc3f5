// Whether the tests for Windows run on a Windows or on what is none, for what the latter lacks.
#pragma once

#ifdef _WIN32
#include <windows.h>
#endif

namespace quillet {

inline bool IsWine() {
#ifdef _WIN32
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
#else
  return false;
#endif
}

}  // namespace quillet
