// What the panel over the screen says about the connection and about start-up problems, and what Enter and
// Esc do while it does. Pure; one place for all of the window's words about connections.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include <QString>

#include "app/messages/panel_text.h"
#include "app/session/session_facts.h"
#include "bbs/answer_wait.h"
#include "bbs/article_code.h"
#include "bbs/automation/article_jump.h"
#include "core/charset.h"

namespace quillet {

PanelText DescribeSession(const SessionFacts& facts);

// The connection is there again, which was lost before so many bytes that the user had typed were sent.
PanelText DescribeUnsentLost(std::size_t bytes);

// Which tables are missing or damaged, and in which folder they were looked for. No title when both are
// whole.
PanelText DescribeTables(const CharsetLoad& load, const std::filesystem::path& folder);

// A text of the system's as it is shown: UTF-8 nearly everywhere, else the system's own encoding.
QString SystemText(const std::string& text);

// What stands over the login form when a login did not come about: the reason, and the BBS's own words.
struct LoginComplaint {
  QString title;  // empty: nothing to complain about
  QString detail;

  bool operator==(const LoginComplaint&) const = default;
};
// `said` is the row in which the BBS gives its reason; empty, or something else, when it gives none.
LoginComplaint DescribeRefusal(const QString& said);
// The connection was not made, or ended on the way.
LoginComplaint DescribeBrokenLogin(const SessionFacts& facts);
// The password cannot be sealed, and is not remembered.
LoginComplaint DescribeUnsealable(std::size_t longest);

QString DescribeActivity(Activity activity, ActivityProgress progress = {});  // empty for none

// What the corner says while the BBS leaves what the user typed without an answer; empty when it does not.
QString DescribeSilence(AnswerWait::State state);

// Why a jump did not come about; no title when it did, or when the connection's own words say it.
PanelText DescribeJump(const ArticleReference& article, JumpResult result);
// The client is at work for the user already, or there is no connection.
PanelText DescribeNoJump(bool connected);

// The demo BBS could not start; `error` is its own text.
PanelText DescribeDemoFailure(const QString& error);

}  // namespace quillet
