// What older versions kept differently, turned into what this one keeps. Pure; called by the settings store
// while it loads.
#pragma once

#include "settings/files/name_list.h"
#include "settings/settings_map.h"

namespace quillet {

// Sections "Black" and "White" become entries of the list. They stay in the map until the list is on disk.
// Returns whether there were any.
bool ConvertOldLists(const SettingsMap& map, NameList& names);
// Takes the sections out of the map. Returns whether there were any.
bool DropOldLists(SettingsMap& map);
// Takes out of these sections what `base` has as well, value and all, and a section with nothing else.
void DropOldLists(SettingsMap& map, const SettingsMap& base);

// A site written as "host:ssh" becomes "ssh://host".
void ConvertOldSite(SettingsMap& map);

// The single switches of "Basic" for quotes, signatures, pushes and the black list become today's choices,
// one after the other, so that a later one wins; each leaves the map.
void ConvertOldKeys(SettingsMap& map);

}  // namespace quillet
