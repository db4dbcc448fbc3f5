#include "app/document/browser_emulation.h"

namespace quillet {
namespace {

constexpr std::u16string_view kPath =
    u"SOFTWARE\\Microsoft\\Internet Explorer\\Main\\FeatureControl\\FEATURE_BROWSER_EMULATION";
constexpr std::u16string_view kProgram = u"Quillet.exe";
// Version 11 for pages that ask for the current standards.
constexpr std::uint32_t kVersion = 11000;

}  // namespace

bool SetBrowserEmulation(Registry& registry) {
  if (registry.Number(kPath, kProgram) == kVersion) return true;
  return registry.SetNumber(kPath, kProgram, kVersion) && registry.Number(kPath, kProgram) == kVersion;
}

}  // namespace quillet
