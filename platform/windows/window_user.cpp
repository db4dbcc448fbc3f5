#include "platform/windows/window_user.h"

#include <cstddef>
#include <vector>

#include "platform/windows/handle.h"

namespace quillet {
namespace {

// A TOKEN_USER with the identifier that it points to; empty where that may not be asked.
std::vector<std::byte> UserOf(HANDLE process) {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(process, TOKEN_QUERY, &opened)) return {};
  const Handle token(opened);
  std::vector<std::byte> user(sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE);
  DWORD size = 0;
  if (!GetTokenInformation(opened, TokenUser, user.data(), static_cast<DWORD>(user.size()), &size)) return {};
  return user;
}

}  // namespace

bool IsOfThisUser(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
  if (!process.IsOpen()) return false;
  const std::vector<std::byte> theirs = UserOf(process.Get()), ours = UserOf(GetCurrentProcess());
  const auto identifier = [](const std::vector<std::byte>& user) {
    return reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid;
  };
  return !theirs.empty() && !ours.empty() && EqualSid(identifier(theirs), identifier(ours));
}

}  // namespace quillet
