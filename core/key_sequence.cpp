#include "core/key_sequence.h"

#include <array>

namespace quillet {
namespace {

struct KeyRow {
  int virtualKey;
  std::string_view bytes;
};

// VT220 sequences: cursor keys, and the numbered editing keys.
constexpr std::array<KeyRow, 10> kKeys{{
    {kKeyPageUp, "\x1b[5~"},
    {kKeyPageDown, "\x1b[6~"},
    {kKeyEnd, "\x1b[4~"},
    {kKeyHome, "\x1b[1~"},
    {kKeyLeft, "\x1b[D"},
    {kKeyUp, "\x1b[A"},
    {kKeyRight, "\x1b[C"},
    {kKeyDown, "\x1b[B"},
    {kKeyInsert, "\x1b[2~"},
    {kKeyDelete, "\x1b[3~"},
}};

}  // namespace

std::string_view KeySequence(int virtualKey) {
  for (const KeyRow& row : kKeys)
    if (row.virtualKey == virtualKey) return row.bytes;
  return {};
}

}  // namespace quillet
