#include "platform/link_handler.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/folders.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/desktop_folders.h"
#include "platform/linux/run_program.h"
#include "platform/user_file.h"
#include "platform/utf8.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// Beside the entry by which the menus of the desktop know the program, should it have one.
constexpr const char* kEntryName = "quillet-links.desktop";
constexpr const char* kSchemes[] = {"http", "https"};
constexpr std::size_t kLargestEntry = 1U << 20;
constexpr const char* kCacheName = "mimeinfo.cache";
constexpr const char* kLinkType = "x-scheme-handler/https";
// What Debian keeps for programs that ask for any browser.
constexpr const char* kAnyBrowser = "x-www-browser";

fs::path OurEntry() {
  return DesktopDataFolder() / "applications" / kEntryName;
}

bool IsEntryName(std::string_view name) {
  return name.size() > std::string_view(".desktop").size() && name.ends_with(".desktop") &&
         name.find('/') == name.npos && !name.starts_with('.') && !name.starts_with('-');
}

// The file of that name that counts most; a dash in it may stand for a folder. Empty when there is none.
std::string ReadEntry(const std::string& name) {
  if (!IsEntryName(name)) return {};
  for (const fs::path& folder : ApplicationFolders()) {
    std::string path = name;
    for (std::size_t dash = 0;; path[dash] = '/') {
      const FileBytes read = ReadUserFile(folder / path, kLargestEntry);
      if (read.state == FileBytes::State::kRead) return read.bytes;
      dash = path.find('-');
      if (dash == path.npos) break;
    }
  }
  return {};
}

// Browsers of the system's, the one that it would take first.
std::vector<std::string> OtherEntries() {
  std::vector<std::string> names;
  for (const fs::path& folder : ApplicationFolders()) {
    const FileBytes cache = ReadUserFile(folder / kCacheName, kLargestEntry);
    for (std::string& name : EntriesFor(kLinkType, cache.bytes))
      names.push_back(std::move(name));
  }
  return names;
}

// What is left of it must not become a zombie of a window that runs on.
bool StartAndForget(const ProgramCall& call) {
  const pid_t process = StartProgram(call);
  if (process == 0) return false;
  try {
    std::thread([process] { WaitForProgram(process); }).detach();
  } catch (const std::system_error&) {
    // Then it does, until the window closes.
  }
  return true;
}

bool StartEntry(const std::string& name, const std::string& link) {
  const std::string entry = ReadEntry(name);
  if (entry.empty() || IsLinkHandlerOfOurs(entry)) return false;
  const std::vector<std::string> command = CommandForLink(entry, link);
  return !command.empty() && StartAndForget(command);
}

// Empty when it was written, else why not.
std::string WriteOurEntry() {
  const fs::path program = ProgramFile();
  if (program.empty()) return "the program's file is not known";
  std::error_code error;
  fs::create_directories(OurEntry().parent_path(), error);
  const std::string text = LinkHandlerEntry(program.string());
  const FileBytes old = ReadUserFile(OurEntry(), kLargestEntry);
  return old.state == FileBytes::State::kRead && old.bytes == text ? std::string()
                                                                   : ReplaceFile(OurEntry(), text);
}

bool HasThem(const std::stop_token& stop) {
  return CurrentLinkHandling(stop).owner == LinkOwner::kThisProgram;
}

}  // namespace

std::u16string CommandLineText(int argc, char** argv) {
  std::string line;
  for (int i = 1; i < argc; ++i)
    line.append(i > 1 ? " " : "").append(argv[i]);
  if (auto text = Utf16FromUtf8(line)) return *std::move(text);
  std::u16string text;
  for (const char byte : line)
    text += static_cast<unsigned char>(byte) < 0x80 ? static_cast<char16_t>(byte) : u'\uFFFD';
  return text;
}

void NameProcess() {}

void RefreshLinkHandler(Registry& /*registry*/, const std::function<void(std::string_view)>& report) {
  std::error_code error;
  if (!fs::exists(OurEntry(), error)) return;
  const std::string why = WriteOurEntry();
  if (!why.empty()) report(OurEntry().string() + ": " + why + '\n');
}

LinkHandling CurrentLinkHandling(const std::stop_token& stop) {
  std::string name;
  for (const ProgramCall& question :
       {ProgramCall{"xdg-settings", "get", "default-url-scheme-handler", "https"},
        ProgramCall{"xdg-mime", "query", "default", kLinkType}}) {
    const auto answer = AskProgram(question, stop);
    if (!answer) continue;
    name = answer->said.substr(0, answer->said.find('\n'));
    if (answer->status == 0 && IsEntryName(name)) break;
    name.clear();
  }
  if (name.empty()) return {};
  if (name == kEntryName || IsLinkHandlerOfOurs(ReadEntry(name)))
    return {.owner = LinkOwner::kThisProgram, .other = {}};
  return {.owner = LinkOwner::kOther, .other = Utf16FromUtf8(name).value_or(std::u16string())};
}

bool AsksUserForLinkHandler() {
  return false;
}

LinkChoice ChooseLinkHandler(const std::stop_token& stop) {
  if (!WriteOurEntry().empty()) return LinkChoice::kFailed;
  const std::string folder = OurEntry().parent_path().string();
  AskProgram({"update-desktop-database", folder}, stop);  // for those that have it
  // Under some desktops the other program takes local web pages along, which are none of this one's.
  AskProgram({"xdg-mime", "default", kEntryName, "x-scheme-handler/http", kLinkType}, stop);
  if (HasThem(stop)) return LinkChoice::kMade;
  for (const char* const scheme : kSchemes)
    AskProgram({"xdg-settings", "set", "default-url-scheme-handler", scheme, kEntryName}, stop);
  return HasThem(stop) ? LinkChoice::kMade : LinkChoice::kFailed;
}

bool OpenInOtherBrowser(std::u16string_view link, const LinkHandlerName& other) {
  const std::string openable = OpenableAddress(link);
  if (openable.empty()) return false;
  if (StartEntry(Utf8FromUtf16(other), openable)) return true;
  for (const std::string& name : OtherEntries())
    if (StartEntry(name, openable)) return true;
  return StartAndForget({kAnyBrowser, openable});
}

}  // namespace quillet
