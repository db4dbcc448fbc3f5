#include "platform/registry.h"

#include <algorithm>
#include <utility>
#include <windows.h>

#include "platform/windows/wide_text.h"
#include "platform/windows/winsock.h"

namespace quillet {
namespace {

// What lies under it is a profile's; its folder names the key.
constexpr std::u16string_view kProfiles = u"SOFTWARE\\Quillet\\Profiles\\";

class SystemRegistry : public Registry {
 public:
  // All keys lie under this one, which ends with a backslash or is empty.
  explicit SystemRegistry(std::u16string under = {}) : under_(std::move(under)) {}

  std::optional<std::u16string> Text(std::u16string_view path, std::u16string_view name) const override {
    if (auto text = refused_.Text(path, name)) return text;
    const std::wstring key = Key(path);
    const std::wstring value = Wide(name);
    std::u16string text(128, u'\0');
    for (;;) {
      auto bytes = static_cast<DWORD>(text.size() * sizeof(char16_t));
      // Adds the NUL that other programs may have left out.
      const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, key.c_str(), value.c_str(), RRF_RT_REG_SZ,
                                          nullptr, text.data(), &bytes);
      if (status == ERROR_SUCCESS) {
        text.resize(bytes / sizeof(char16_t));
        return text.substr(0, text.find(u'\0'));
      }
      if (status != ERROR_MORE_DATA) return std::nullopt;
      // What the system asks for is not always enough: another program may write a longer text meanwhile.
      text.resize(std::max(text.size() * 2, bytes / sizeof(char16_t) + 1));
    }
  }

  std::optional<std::uint32_t> Number(std::u16string_view path, std::u16string_view name) const override {
    if (auto number = refused_.Number(path, name)) return number;
    DWORD number = 0;
    DWORD bytes = sizeof number;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, Key(path).c_str(), Wide(name).c_str(),
                                        RRF_RT_REG_DWORD, nullptr, &number, &bytes);
    return status == ERROR_SUCCESS ? std::optional<std::uint32_t>(number) : std::nullopt;
  }

  bool SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) override {
    const std::wstring text = Wide(value);
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const LSTATUS status = bytes <= MAXDWORD
                               ? Write(path, name, REG_SZ, text.c_str(), static_cast<DWORD>(bytes))
                               : ERROR_INVALID_PARAMETER;
    return Remember(status, path, name, std::u16string(value));
  }

  bool SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) override {
    const DWORD number = value;
    return Remember(Write(path, name, REG_DWORD, &number, sizeof number), path, name, value);
  }

  bool MakeKey(std::u16string_view path) override {
    HKEY key = nullptr;
    if (Open(path, key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
  }

  std::optional<FileProblem> Problem() const override { return problem_; }

 private:
  std::wstring Key(std::u16string_view path) const { return Wide(under_) + Wide(path); }

  // Made when it is missing.
  LSTATUS Open(std::u16string_view path, HKEY& key) const {
    return RegCreateKeyExW(HKEY_CURRENT_USER, Key(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                           KEY_WRITE, nullptr, &key, nullptr);
  }

  LSTATUS Write(std::u16string_view path, std::u16string_view name, DWORD type, const void* data,
                DWORD bytes) const {
    HKEY key = nullptr;
    LSTATUS status = Open(path, key);
    if (status != ERROR_SUCCESS) return status;
    status = RegSetValueExW(key, Wide(name).c_str(), 0, type, static_cast<const BYTE*>(data), bytes);
    RegCloseKey(key);
    return status;
  }

  bool Remember(LSTATUS status, std::u16string_view path, std::u16string_view name,
                RegistryValues::Data data) {
    if (status == ERROR_SUCCESS)
      refused_.Remove(path, name);
    else
      refused_.Set(path, name, std::move(data));
    NoteProblem(status, path);
    return status == ERROR_SUCCESS;
  }

  static bool IsOwn(std::u16string_view path) {
    return path.starts_with(kRegistryPath) &&
           (path.size() == kRegistryPath.size() || path[kRegistryPath.size()] == u'\\');
  }

  // Of what is kept for the user. Other programs' keys are tried, and may well be refused.
  void NoteProblem(LSTATUS status, std::u16string_view path) {
    const auto& refused = refused_.All();
    if (!IsOwn(path)) return;
    if (std::none_of(refused.begin(), refused.end(),
                     [](const auto& value) { return IsOwn(value.second.path); }))
      problem_.reset();
    if (status == ERROR_SUCCESS) return;
    problem_ = FileProblem{FileProblem::Kind::kNotWritten,
                           std::filesystem::path(L"HKEY_CURRENT_USER") / Key(path),
                           SystemErrorText(static_cast<int>(status)),
                           0,
                           {}};
  }

  const std::u16string under_;
  RegistryValues refused_;  // what the system would not take
  std::optional<FileProblem> problem_;
};

}  // namespace

std::unique_ptr<Registry> OpenUserRegistry() {
  return std::make_unique<SystemRegistry>();
}

std::unique_ptr<Registry> OpenProfileRegistry(const std::filesystem::path& folder) {
  std::u16string name = std::filesystem::absolute(folder).generic_u16string();
  // What the system takes for the name of a key.
  constexpr std::size_t kLongestName = 255;
  if (name.size() > kLongestName) name.erase(0, name.size() - kLongestName);
  return std::make_unique<SystemRegistry>(std::u16string(kProfiles) + name + u'\\');
}

}  // namespace quillet
