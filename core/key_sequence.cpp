#include "core/key_sequence.h"

#include <array>

namespace quillet {
namespace {

struct KeyRow {
  int virtualKey;
  std::string_view bytes;
  std::u16string_view wide;
};

// VT220 sequences: cursor keys, and the numbered editing keys.
constexpr std::array<KeyRow, 10> kKeys{{
    {kKeyPageUp, "\x1b[5~", u"\x1b[5~"},
    {kKeyPageDown, "\x1b[6~", u"\x1b[6~"},
    {kKeyEnd, "\x1b[4~", u"\x1b[4~"},
    {kKeyHome, "\x1b[1~", u"\x1b[1~"},
    {kKeyLeft, "\x1b[D", u"\x1b[D"},
    {kKeyUp, "\x1b[A", u"\x1b[A"},
    {kKeyRight, "\x1b[C", u"\x1b[C"},
    {kKeyDown, "\x1b[B", u"\x1b[B"},
    {kKeyInsert, "\x1b[2~", u"\x1b[2~"},
    {kKeyDelete, "\x1b[3~", u"\x1b[3~"},
}};

const KeyRow* FindKey(int virtualKey) {
  for (const KeyRow& row : kKeys)
    if (row.virtualKey == virtualKey) return &row;
  return nullptr;
}

}  // namespace

std::string_view KeySequence(int virtualKey) {
  const KeyRow* row = FindKey(virtualKey);
  return row ? row->bytes : std::string_view{};
}

std::u16string_view WideKeySequence(int virtualKey) {
  const KeyRow* row = FindKey(virtualKey);
  return row ? row->wide : std::u16string_view{};
}

}  // namespace quillet
