#include "platform/opener.h"

#include <system_error>
#include <thread>
#include <windows.h>
// After windows.h, which they need.
#include <objbase.h>
#include <shellapi.h>

#include "platform/link_handler.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

bool OpenWithShell(const std::wstring& address) {
  // Parts of the shell are objects that want a thread of this kind.
  const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  SHELLEXECUTEINFOW order{};
  order.cbSize = sizeof order;
  // The thread ends with this function, so the shell has to be done by then.
  order.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  order.lpVerb = L"open";
  order.lpFile = address.c_str();
  order.nShow = SW_SHOW;
  const bool opened = ShellExecuteExW(&order) != FALSE;
  if (SUCCEEDED(apartment)) CoUninitialize();
  return opened;
}

}  // namespace

bool SystemOpener::Open(std::u16string_view address) {
  const std::string openable = OpenableAddress(address);
  if (openable.empty()) return false;
  try {
    std::thread([wide = std::u16string(openable.begin(), openable.end()),  // ASCII
                 other = otherBrowser_ ? otherBrowser_() : std::u16string(), failures = failures_] {
      // What the system would hand back to this program goes straight on.
      const bool isOurs = CurrentLinkHandling().owner == LinkOwner::kThisProgram;
      const bool opened =
          isOurs ? OpenInOtherBrowser(wide, other) : OpenWithShell(std::wstring(wide.begin(), wide.end()));
      if (!opened) failures->Tell(wide);
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

}  // namespace quillet
