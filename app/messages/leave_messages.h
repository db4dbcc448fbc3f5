// What the window asks before a login is given up, and the words on the buttons. Pure.
#pragma once

#include <QString>

namespace quillet {

// What the user is about to do.
enum class LeaveFor {
  kClosing,        // the program ends
  kDisconnecting,  //
  kReconnecting,   // to the same site
  kOtherSite       // this connection makes room for another one
};

// What would be lost or left behind.
struct LeaveFacts {
  bool inEditor = false;  // the BBS's, with a text that it does not have yet
  bool hasDraft = false;  // of a long push, which is kept until the program ends
};

struct LeaveMessages {
  QString title;
  QString question;
  QString reason;
  QString logOut;
  QString leave;
  QString stay;
  QString noMore;  // to ask
  QString noMoreHint;
};
// Where, and as whom.
struct LoginNames {
  QString site;  // empty where no login is given up
  QString id;    // may be empty
};
// `work`: the words name neither the program nor the site.
LeaveMessages DescribeLeaving(LeaveFor purpose, const LeaveFacts& facts, const LoginNames& login, bool work);

}  // namespace quillet
