// Registry values as a text file that a person can read and mend:
//
//   ; Values that Quillet keeps for its user
//   [SOFTWARE\\Quillet]
//   "Account"="mossgrov"
//   "Colours"=dword:00000010
//   ; end of the values
//
// Names and texts have a backslash before each backslash and closing mark, and \uXXXX for what is no
// printable character. The closing line tells a whole file from one that was cut. Pure; hostile input is
// expected.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/registry_values.h"

namespace quillet {

struct RegistryText {
  RegistryValues values;         // of the lines that could be read
  std::size_t firstBadLine = 0;  // from 1; 0 when every line could be read
  bool closed = false;           // the last line that is not blank is the closing one
  bool IsWhole() const { return closed && firstBadLine == 0; }
};

// UTF-8, with or without a byte-order mark; lines end with LF or CR LF. Of values given twice the last
// counts.
RegistryText ParseRegistryText(std::string_view bytes);

std::string FormatRegistryText(const RegistryValues& values);

}  // namespace quillet
