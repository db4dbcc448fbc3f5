// Answers the BBS's login dialogue from the screen until a settled page is reached. A worker thread's; keeps
// nothing between calls and logs nothing of what it types.
#pragma once

#include <string>

#include "bbs/automation/screen_waits.h"

namespace quillet {

// The numbers are the ones that callers report.
enum class LoginResult {
  kFinished = 0,  // logged in, or nothing to do
  kRefused = 1,   // the BBS does not know the id or the password; the session is being disconnected
  kClosed = 2,    // the session was not connected or has begun to close, or the run was cancelled
};

struct LoginRequest {
  std::u16string account;   // empty: no login
  std::u16string password;  // empty: only the id is typed
  bool kickOthers = false;  // end other logins of the account
  bool continueToMenu = true;
};

// `waits` belongs to the connection to log in on, which the caller has opened to the site that the account is
// stored for; only one for which auto-login is enabled is answered. Types the id and the password only at
// their prompts, each once. After kRefused the connection ends by itself. A main menu may still be drawing
// itself when this returns.
LoginResult AutoLogin(ScreenWaits& waits, const LoginRequest& request);

}  // namespace quillet
