// A password as it is remembered: one AES block under a key of the program, with the machine's tag inside, as
// 32 hexadecimal digits. It keeps a password from being read off a file by eye and from working on another
// machine; it is no safe. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

// As many characters of a password as a seal holds.
inline constexpr std::size_t kSealedPasswordLength = 9;

// Each character is cut to one byte; those after the ninth are lost. Empty for an empty tag, or when the
// system's cryptography refuses. `tag` has 7 bytes.
std::u16string SealPassword(std::u16string_view password, std::string_view tag);

// Empty unless `sealed` is 32 digits 0-9 a-f sealed under the same tag.
std::u16string UnsealPassword(std::u16string_view sealed, std::string_view tag);

}  // namespace quillet
