// UTF-8 and UTF-16, for texts that go to files and system calls. Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// Nothing when the bytes are no UTF-8: cut or overlong sequences, surrogates, values above U+10FFFF.
std::optional<std::u16string> Utf16FromUtf8(std::string_view bytes);

// Unpaired surrogates become U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);

}  // namespace quillet
