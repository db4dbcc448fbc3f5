// Passwords leave memory when they are no longer needed. Any thread.
#pragma once

#include <memory>
#include <string>

#include "bbs/automation/auto_login.h"

namespace quillet {

// Overwrites the characters before it empties the text.
void Wipe(std::u16string& text);

// A login request whose password is overwritten when the last owner lets go of it.
using LoginOrder = std::shared_ptr<const LoginRequest>;
LoginOrder MakeLoginOrder(LoginRequest request);

}  // namespace quillet
