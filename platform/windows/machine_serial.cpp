#include "platform/machine_serial.h"

#include <chrono>
#include <future>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>
#include <windows.h>
// After windows.h, which it needs.
#include <wbemidl.h>

#include "platform/utf8.h"
#include "platform/windows/com_pointer.h"

namespace quillet {
namespace {

// The management service takes a second or two when it has to be started first.
constexpr std::chrono::seconds kPatience(5);

class ComApartment {
 public:
  ComApartment() : result_(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  bool IsOpen() const { return SUCCEEDED(result_); }

 private:
  HRESULT result_;
};

struct FreeText {
  void operator()(BSTR text) const { SysFreeString(text); }
};
using ComText = std::unique_ptr<OLECHAR[], FreeText>;

ComText MakeComText(const wchar_t* text) {
  return ComText(SysAllocString(text));
}

ComPointer<IWbemServices> ConnectToManagement() {
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator, &made)))
    return nullptr;
  const ComPointer<IWbemLocator> locator(static_cast<IWbemLocator*>(made));
  IWbemServices* connected = nullptr;
  if (FAILED(locator->ConnectServer(MakeComText(L"ROOT\\CIMV2").get(), nullptr, nullptr, nullptr,
                                    WBEM_FLAG_CONNECT_USE_MAX_WAIT, nullptr, nullptr, &connected)))
    return nullptr;
  ComPointer<IWbemServices> services(connected);
  // The service acts in the user's name.
  if (FAILED(CoSetProxyBlanket(services.get(), RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                               RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE)))
    return nullptr;
  return services;
}

std::string TextProperty(IWbemClassObject& object, const wchar_t* name) {
  VARIANT value;
  VariantInit(&value);
  std::string text;
  if (SUCCEEDED(object.Get(name, 0, &value, nullptr, nullptr)) && value.vt == VT_BSTR && value.bstrVal) {
    const std::wstring_view wide(value.bstrVal, SysStringLen(value.bstrVal));
    text = Utf8FromUtf16(std::u16string(wide.begin(), wide.end()));
  }
  VariantClear(&value);
  return text;
}

std::string AskForSerial() {
  const ComApartment apartment;
  if (!apartment.IsOpen()) return {};
  const ComPointer<IWbemServices> services = ConnectToManagement();
  if (!services) return {};
  IEnumWbemClassObject* found = nullptr;
  if (FAILED(services->ExecQuery(MakeComText(L"WQL").get(),
                                 MakeComText(L"SELECT * FROM Win32_BaseBoard").get(),
                                 WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &found)))
    return {};
  const ComPointer<IEnumWbemClassObject> boards(found);
  const auto patience = std::chrono::duration_cast<std::chrono::milliseconds>(kPatience);
  IWbemClassObject* first = nullptr;
  ULONG count = 0;
  if (boards->Next(static_cast<long>(patience.count()), 1, &first, &count) != WBEM_S_NO_ERROR || count == 0)
    return {};
  const ComPointer<IWbemClassObject> board(first);
  return TextProperty(*board, L"SerialNumber");
}

}  // namespace

// On a thread of its own: the caller's may belong to an apartment of another kind, and the service may hang.
std::string MachineSerial() {
  try {
    std::promise<std::string> promise;
    std::future<std::string> answer = promise.get_future();
    std::thread([promise = std::move(promise)]() mutable { promise.set_value(AskForSerial()); }).detach();
    if (answer.wait_for(kPatience) != std::future_status::ready) return {};
    return answer.get();
  } catch (const std::system_error&) {
    return {};  // the system gives no thread
  }
}

}  // namespace quillet
