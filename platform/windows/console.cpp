#include "platform/console.h"

#include <cstdio>
#include <windows.h>

namespace quillet {
namespace {

bool IsTaken(DWORD stream) {
  const HANDLE handle = GetStdHandle(stream);
  return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

}  // namespace

void JoinConsole() {
  const bool outputIsTaken = IsTaken(STD_OUTPUT_HANDLE);
  const bool errorsAreTaken = IsTaken(STD_ERROR_HANDLE);
  if ((outputIsTaken && errorsAreTaken) || !AttachConsole(ATTACH_PARENT_PROCESS)) return;
  // Where this fails the text is lost, as it was before.
  if (!outputIsTaken && std::freopen("CONOUT$", "w", stdout) == nullptr) return;
  if (!errorsAreTaken && std::freopen("CONOUT$", "w", stderr) == nullptr) return;
}

}  // namespace quillet
