#include "platform/link_handler.h"

#include <algorithm>
#include <windows.h>
// After windows.h, which they need.
#include <shellapi.h>
#include <shobjidl.h>

#include "platform/browser_command.h"
#include "platform/folders.h"
#include "platform/web_address.h"
#include "platform/windows/wide_text.h"

namespace quillet {
namespace {

constexpr std::u16string_view kProgId = u"QuilletHTML";
// Tried when the user's own is not known.
constexpr std::u16string_view kOtherProgIds[] = {u"ChromeHTML", u"MSEdgeHTM"};
constexpr std::u16string_view kUserChoice =
    u"SOFTWARE\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\https\\UserChoice";
// What the registry's entries take.
constexpr std::size_t kLongestProgram = 260;

std::u16string CommandOf(std::u16string_view progId) {
  if (progId.empty() || progId == kProgId) return {};
  const std::wstring key = Wide(progId) + L"\\shell\\open\\command";
  std::wstring command(32768, L'\0');
  auto bytes = static_cast<DWORD>(command.size() * sizeof(wchar_t));
  // Where it holds environment variables they are put in, and it counts as a plain text after that.
  if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, command.data(), &bytes) !=
      ERROR_SUCCESS)
    return {};
  return {command.begin(), std::find(command.begin(), command.end(), L'\0')};
}

// As this process was told to show itself.
int ShowCommand() {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  GetStartupInfoW(&start);
  return (start.dwFlags & STARTF_USESHOWWINDOW) != 0 ? start.wShowWindow : SW_SHOWNORMAL;
}

bool Start(const std::wstring& program, const std::wstring& arguments, int show) {
  const HINSTANCE answer = ShellExecuteW(nullptr, L"open", program.c_str(), arguments.c_str(), nullptr, show);
  // The answer is no instance but a number, above 32 when something was started.
  return reinterpret_cast<INT_PTR>(answer) > 32;
}

}  // namespace

std::u16string CommandLineText(int /*argc*/, char** /*argv*/) {
  std::wstring_view line = GetCommandLineW();
  // The program's name is quoted or ends at a blank.
  const bool isQuoted = line.starts_with(L'"');
  const std::size_t end = isQuoted ? line.find(L'"', 1) : line.find_first_of(L" \t");
  if (end == line.npos) return {};
  line.remove_prefix(end + (isQuoted ? 1 : 0));
  line.remove_prefix(std::min(line.find_first_not_of(L" \t"), line.size()));
  return {line.begin(), line.end()};
}

void NameProcess() {
  SetCurrentProcessExplicitAppUserModelID(Wide(kAppId).c_str());
}

void RefreshLinkHandler(Registry& registry, const std::function<void(std::string_view)>& report) {
  const std::u16string program = ProgramFile().u16string().substr(0, kLongestProgram);
  if (!program.empty()) RegisterLinkHandler(registry, program, report);
}

LinkHandling CurrentLinkHandling(const std::stop_token& /*stop*/) {
  const auto chosen = OpenUserRegistry()->Text(kUserChoice, u"ProgId");
  if (!chosen || chosen->empty()) return {};
  if (*chosen == kProgId) return {.owner = LinkOwner::kThisProgram, .other = {}};
  return {.owner = LinkOwner::kOther, .other = *chosen};
}

bool AsksUserForLinkHandler() {
  return true;
}

// Which program has the links only the user himself can say here, on a page of the system's.
LinkChoice ChooseLinkHandler(const std::stop_token& /*stop*/) {
  return Start(L"Rundll32.exe", L"shell32.dll,Control_RunDLL appwiz.cpl,,3", SW_SHOWNORMAL)
             ? LinkChoice::kLeftTo
             : LinkChoice::kFailed;
}

bool OpenInOtherBrowser(std::u16string_view link, const LinkHandlerName& other) {
  const std::string openable = OpenableAddress(link);
  if (openable.empty()) return false;
  std::u16string command = CommandOf(other);
  for (const std::u16string_view progId : kOtherProgIds)
    if (command.empty()) command = CommandOf(progId);
  const BrowserCommand split =
      SplitBrowserCommand(command, std::u16string(openable.begin(), openable.end()));  // ASCII
  return !split.program.empty() && Start(Wide(split.program), Wide(split.arguments), ShowCommand());
}

}  // namespace quillet
