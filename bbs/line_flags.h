// One byte of flags for each row of a page: what the drawing and the lists want to know of a line. Constants;
// any thread.
#pragma once

#include <cstdint>

namespace quillet {

enum LineFlag : std::uint8_t {
  LF_PUSH = 0x01,       // a push line, or a row of the push prompt
  LF_KEYWORD = 0x08,    // holds one of the user's keywords
  LF_MARK_MASK = 0x30,  // a list line: LF_DELETED, LF_LIST_READ or LF_LIST_NEWS; 0 another mark
  LF_DELETED = 0x10,
  LF_LIST_READ = 0x20,  // status mark " ", "m" or "s"
  LF_LIST_NEWS = 0x30,  // status mark "~" or "="
};

}  // namespace quillet
