// What is known of a session and of what the client does on it: values, without the words that tell them to a
// person. Any thread.
#pragma once

#include <cstddef>

#include <QString>

#include "bbs/farewell_watch.h"
#include "core/session_state.h"
#include "core/transport/transport.h"

namespace quillet {

// What the document knows of its connection.
struct SessionFacts {
  SessionState state = SessionState::kIdle;
  QString siteName;  // the address as the user gave it, or the site's own name
  QString host;
  QString port;
  bool isRecording = false;
  TransportEnd end;
  Farewell farewell = Farewell::kNone;  // what the site said before the end
  std::size_t unsentBytes = 0;          // of this connection and of lost ones that it is to take the place of
  int retrySeconds = 0;                 // until it is made anew by itself; 0: it is not
};

// How a connection, or an attempt to make one, has ended.
struct ConnectionEnd {
  EndReason reason = EndReason::kNone;
  Farewell farewell = Farewell::kNone;
  bool wasMade = false;      // the site had been reached
  bool isWished = false;     // the user had left, or was on his way out
  bool isLoginOpen = false;  // in the middle of a login that has never succeeded
};

// What the client does for the user by itself.
enum class Activity { kNone, kLogin, kJump, kAskCode, kGiveMoney, kPush, kLogOut };
// How far it is; no total where it does not count.
struct ActivityProgress {
  int done = 0;
  int total = 0;
  int waitSeconds = 0;  // so long the BBS has asked to wait; 0: it has not
};
// How a login ended that the document was asked for.
struct LoginEnd {
  enum class How {
    kFinished,
    kRefused,       // the BBS does not know the id or the password
    kNotConnected,  // the connection was not made, or ended on the way
    kTakenOver      // the user typed, or wanted something else
  } how = How::kFinished;
  QString said;  // the BBS's own words when it refused
};

// How a log-out ended that the document was asked for.
enum class LogOutEnd {
  kDone,      // the BBS has been told, or cannot be; what is left of the connection may be closed
  kTakenOver  // the user typed, or wanted something else
};

// How the wish for a bookmark ended.
enum class BookmarkEnd {
  kAdded,
  kRemoved,
  kNoCode  // the BBS did not tell the article's code
};

}  // namespace quillet
