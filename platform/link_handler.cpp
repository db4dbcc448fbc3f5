#include "platform/link_handler.h"

namespace quillet {
namespace {

constexpr std::u16string_view kAlternateProgId = u"AlternateProgId";

// Where a text of the table stands for what only the running program knows.
constexpr std::u16string_view kIcon = u"<icon>";
constexpr std::u16string_view kCommand = u"<command>";

struct HandlerEntry {
  std::u16string_view key;
  std::u16string_view name;  // empty: the key's default value
  std::u16string_view value;
  bool isKeyOnly = false;
};

#define QUILLET_CLIENT u"SOFTWARE\\Clients\\StartMenuInternet\\Quillet"
#define QUILLET_PROG_ID u"SOFTWARE\\Classes\\QuilletHTML"
constexpr HandlerEntry kEntries[] = {
    {QUILLET_CLIENT, u"", u"Quillet"},
    {u"SOFTWARE\\Classes\\StartMenuInternet\\Quillet", u"", u"Quillet"},
    {QUILLET_CLIENT u"\\Capabilities", u"ApplicationName", u"Quillet"},
    {QUILLET_CLIENT u"\\Capabilities", u"ApplicationDescription", u"A good Qor browser"},
    {QUILLET_CLIENT u"\\Capabilities", u"ApplicationIcon", kIcon},
    {QUILLET_CLIENT u"\\Capabilities\\Startmenu", u"StartMenuInternet", u"Quillet"},
    {QUILLET_CLIENT u"\\Capabilities\\URLAssociations", u"http", u"QuilletHTML"},
    {QUILLET_CLIENT u"\\Capabilities\\URLAssociations", u"https", u"QuilletHTML"},
    {u"SOFTWARE\\RegisteredApplications", u"Quillet", QUILLET_CLIENT u"\\Capabilities"},
    {QUILLET_PROG_ID, u"", u"Quillet HTML Document"},
    {QUILLET_PROG_ID, u"AppUserModelId", u"Quillet"},
    {QUILLET_PROG_ID u"\\Application", u"AppUserModelId", u"Quillet"},
    {QUILLET_PROG_ID u"\\Application", u"ApplicationName", u"Quillet"},
    {QUILLET_PROG_ID u"\\Application", u"ApplicationDescription", u"A good Qor browser"},
    {QUILLET_PROG_ID u"\\Application", u"ApplicationIcon", kIcon},
    {QUILLET_PROG_ID u"\\DefaultIcon", u"", kIcon},
    {QUILLET_PROG_ID u"\\shell", u"", u"", true},
    {QUILLET_PROG_ID u"\\shell\\open", u"", u"", true},
    {QUILLET_PROG_ID u"\\shell\\open\\command", u"", kCommand},
};
#undef QUILLET_CLIENT
#undef QUILLET_PROG_ID

std::u16string ValueOf(const HandlerEntry& entry, std::u16string_view program) {
  if (entry.value == kIcon) return std::u16string(program) + u",0";
  if (entry.value == kCommand)
    return u'"' + std::u16string(program) + u"\" " + std::u16string(kLinkMarker) + u"%1";
  return std::u16string(entry.value);
}

}  // namespace

void RegisterLinkHandler(Registry& registry, std::u16string_view program,
                         const std::function<void(std::string_view)>& report) {
  for (const HandlerEntry& entry : kEntries) {
    const bool written = entry.isKeyOnly ? registry.MakeKey(entry.key)
                                         : registry.SetText(entry.key, entry.name, ValueOf(entry, program));
    if (!written) report("Error opening or creating new key\n");
  }
}

LinkHandlerName OtherBrowser(const Registry& registry) {
  return registry.Text(kRegistryPath, kAlternateProgId).value_or(std::u16string());
}

void RememberOtherBrowser(Registry& registry, const LinkHandlerName& handler) {
  if (!handler.empty()) registry.SetText(kRegistryPath, kAlternateProgId, handler);
}

}  // namespace quillet
