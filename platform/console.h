// Where a program that somebody has started in a console says what it is asked for. Main thread.
#pragma once

namespace quillet {

// Before the first text. A program with windows is given no console on Windows: it takes that of whoever
// started it, unless its texts go to a file or another program. Elsewhere it has one.
void JoinConsole();

}  // namespace quillet
