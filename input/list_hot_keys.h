// What the keys over a user id do to its entry in the black and white lists. Pure.
#pragma once

#include <optional>

#include "input/key_control.h"
#include "settings/files/list_entry.h"

namespace quillet {

enum class NameKey {
  kNone,
  kBlack,      // back quote: on and off the black list
  kColour,     // 0 to 7: a flag of that colour on and off; 0 takes all away
  kUnderline,  // u: on and off
  kAgain       // ~: marks the id as the one that was added last
};

// `colour` gets 0 to 7 for kColour and stays as it is for all others.
NameKey NameKeyOf(const KeyPress& press, int& colour);

// The entry that the key makes of `entry` (nothing: the id is not listed). Nothing: the id is to leave the
// list, for the entry would say nothing. `last`: what was added last, for kAgain, which gives the id its kind
// and marks; a description of the id's own stays. Where the key changes nothing, `entry` comes back as it is.
std::optional<ListEntry> ChangedEntry(const std::optional<ListEntry>& entry, NameKey key, int colour,
                                      const std::optional<ListEntry>& last);

}  // namespace quillet
