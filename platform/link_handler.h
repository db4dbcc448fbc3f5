// This program as one that the system may open web links with: how it is started for a link, what the system
// is told about it, and the browser that had the links before, to which goes what is not ours. The functions
// that say so may wait for programs of the desktop: never on the user-interface thread of a window.
#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace quillet {

// A command line that begins with this is a start for the link behind it.
inline constexpr std::u16string_view kLinkMarker = u"--single-argument ";
// The class of the window, or the name of the socket, that a running program is found by; on Windows also
// what its windows are one program for the taskbar by.
inline constexpr std::u16string_view kAppId = u"Quill.AppID.NoVersion";

// A handler of links as the system names it: on Windows its ProgId, elsewhere its desktop entry
// ("name.desktop"). Empty: none is known.
using LinkHandlerName = std::u16string;

// ---- The same on every system

// The registry values that make the program in the file `program` selectable as a browser. Each failure is
// told to `report` in English, with a line end, and the rest is written all the same.
void RegisterLinkHandler(Registry& registry, std::u16string_view program,
                         const std::function<void(std::string_view)>& report);

// The one that had the links before this program, as the user's registry keeps it.
LinkHandlerName OtherBrowser(const Registry& registry);
// Keeps it, unless it is empty.
void RememberOtherBrowser(Registry& registry, const LinkHandlerName& handler);

// ---- As each system does it

// What main was given, without the program's name. What is no text becomes U+FFFD.
std::u16string CommandLineText(int argc, char** argv);

// Before any window: the process is part of the program that kAppId names.
void NameProcess();

// At each normal start: the system's entries for this program name the file that runs. Where they are made
// only when the user asks for it (Linux) none is made here. `report` as above.
void RefreshLinkHandler(Registry& registry, const std::function<void(std::string_view)>& report);

// Who opens https links now. May wait.
enum class LinkOwner { kThisProgram, kOther, kUnknown };
struct LinkHandling {
  LinkOwner owner = LinkOwner::kUnknown;
  LinkHandlerName other;  // kOther only
};
LinkHandling CurrentLinkHandling(const std::stop_token& stop = {});

// The system leaves it to a page of its own, on which the user chooses.
bool AsksUserForLinkHandler();
// The user wants this program to have them. May wait.
enum class LinkChoice {
  kMade,    // it has them
  kLeftTo,  // the system asks the user
  kFailed
};
LinkChoice ChooseLinkHandler(const std::stop_token& stop);

// Opens the link, which OpenableAddress must take, with `other`, or where that is not there with another
// browser of the system's, but never with this program. False when none could be started. Waits for no
// browser.
bool OpenInOtherBrowser(std::u16string_view link, const LinkHandlerName& other);

}  // namespace quillet
