#include "platform/instance_link.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>
#include <windows.h>

#include "platform/instance_message.h"
#include "platform/link_handler.h"
#include "platform/windows/window_user.h"

namespace quillet {
namespace {

// Of the data that the program's message carries.
constexpr ULONG_PTR kCommandLine = 0;
constexpr UINT kPatienceMs = 5000;

// A window that nobody sees, because the class of the one that is seen is the toolkit's.
class WindowLink : public InstanceLink {
 public:
  explicit WindowLink(Take take) : take_(std::move(take)) {
    const std::wstring name(kAppId.begin(), kAppId.end());
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &WindowLink::OnMessage;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = name.c_str();
    // Refused where the class is there already, which is as good.
    RegisterClassExW(&description);
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW, name.c_str(), L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                              description.hInstance, nullptr);
    if (window_ != nullptr) SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~WindowLink() override {
    if (window_ != nullptr) DestroyWindow(window_);
  }
  bool IsOpen() const { return window_ != nullptr; }

  // The topmost window is found first.
  void NoteUserHere() override {
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }

 private:
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    const auto* const link = reinterpret_cast<const WindowLink*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != WM_COPYDATA || link == nullptr) return DefWindowProcW(window, message, first, second);
    const auto* const data = reinterpret_cast<const COPYDATASTRUCT*>(second);
    return data != nullptr && link->Takes(*data) ? TRUE : FALSE;
  }

  bool Takes(const COPYDATASTRUCT& data) const {
    if (data.dwData != kCommandLine || data.lpData == nullptr) return false;
    const auto text = TextOfMessage({static_cast<const std::byte*>(data.lpData), data.cbData});
    return text && take_(*text);
  }

  const Take take_;
  HWND window_ = nullptr;
};

}  // namespace

std::unique_ptr<InstanceLink> ListenForLinks(InstanceLink::Take take) {
  auto link = std::make_unique<WindowLink>(std::move(take));
  if (!link->IsOpen()) return nullptr;
  return link;
}

bool SendToInstance(std::u16string_view commandLine) {
  std::vector<std::byte> message = MessageOf(commandLine);
  const std::wstring name(kAppId.begin(), kAppId.end());
  HWND window = FindWindowW(name.c_str(), nullptr);
  while (window != nullptr && !IsOfThisUser(window))
    window = FindWindowExW(nullptr, window, name.c_str(), nullptr);
  if (window == nullptr || message.empty()) return false;
  // The user has just clicked on something, and this process may pass on that it comes to the front.
  DWORD process = 0;
  if (GetWindowThreadProcessId(window, &process) != 0) AllowSetForegroundWindow(process);
  COPYDATASTRUCT data{};
  data.dwData = kCommandLine;
  data.cbData = static_cast<DWORD>(message.size());
  data.lpData = message.data();
  DWORD_PTR answer = FALSE;
  const LRESULT sent = SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                                           SMTO_BLOCK | SMTO_ABORTIFHUNG, kPatienceMs, &answer);
  return sent != 0 && answer != FALSE;
}

}  // namespace quillet
