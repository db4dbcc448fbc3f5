#include "platform/windows/winsock.h"

#include <windows.h>

namespace quillet {
namespace {

struct Winsock {
  Winsock() {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
  }
  ~Winsock() { WSACleanup(); }
};

std::string Utf8(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace

void NeedWinsock() {
  static const Winsock winsock;
}

std::string SystemErrorText(int code) {
  wchar_t text[512] = L"";
  const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  DWORD length = FormatMessageW(flags, nullptr, static_cast<DWORD>(code), 0, text, 512, nullptr);
  while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.'))
    --length;
  if (length == 0) return "error " + std::to_string(code);
  return Utf8(std::wstring(text, length));
}

}  // namespace quillet
