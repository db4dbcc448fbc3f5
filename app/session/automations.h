// What the client does on the BBS for the user, one thing at a time: begins it, stops it, says how far it is,
// and tells what came of it. The user takes over whenever he types. What an order needs to know of settings
// and lists its giver puts into it. The document owns it. User-interface thread.
#pragma once

#include <functional>

#include <QObject>

#include "app/session/automation.h"
#include "app/session/connection.h"
#include "app/session/message_target.h"
#include "bbs/article_code.h"
#include "bbs/automation/article_jump.h"
#include "bbs/automation/money_run.h"
#include "bbs/automation/push_run.h"

namespace quillet {

enum class PushedBy { kHand, kOrder };

class Automations : public QObject {
  Q_OBJECT

 public:
  // All outlive the object.
  Automations(Connection& connection, MessageTarget& messages, const PageTests& pages);
  ~Automations() override;

  // Each of these is false, and nothing happens, without a connection or while another one is at work. A
  // login is given to the connection, and LoginEnded follows in any case.

  // Goes to an article and opens it; JumpEnded follows unless the user takes over.
  bool JumpTo(const ArticleReference& article);
  // Asks the BBS for the code of the article, which is open; CodeAsked follows unless the user takes over.
  bool AskCode(const ArticleInfo& article);
  // Gives money to one user after another, then goes back to the article; MoneyEnded follows in any case.
  bool GiveMoney(MoneyOrder order);
  // Pushes a longer text piece by piece onto the open article, whose author the order need not name;
  // PushesEnded follows in any case. False without an open article, too.
  bool PushOn(PushOrder order);
  // Says goodbye to the BBS in its main menu, whatever else is at work; LogOutEnded follows in any case. The
  // connection is left for the caller to close.
  bool LogOut();

  // What is done for the user now.
  Activity Current() const { return worker_.IsRunning() ? task_.activity : Activity::kNone; }
  // How far it is, where it counts.
  ActivityProgress Progress() const;
  // Something has not ended, even if the user has taken over.
  bool IsBusy() const { return worker_.IsBusy(); }
  // The user takes over. False when there was nothing to take over.
  bool Stop();
  // Nothing of it is left when this returns; the connection is ended where nothing else helps.
  void End();

 signals:
  // Another activity than before.
  void Changed();
  void LoginEnded(const LoginEnd& end);
  void LogOutEnded(quillet::LogOutEnd end);
  void JumpEnded(const ArticleReference& article, JumpResult result);
  // With its code, or without when the BBS did not tell it.
  void CodeAsked(const ArticleInfo& article);
  void MoneyEnded(const quillet::MoneyRunResult& result);
  void PushesEnded(const quillet::PushRunResult& result);
  // With its code if that is known. Before PushesEnded.
  void ArticlePushed(const ArticleInfo& article, quillet::PushedBy by);

 private:
  struct Task {
    Activity activity = Activity::kNone;
    std::function<void()> takenOver{};  // called when the user has stopped it; may be empty
    std::function<ActivityProgress()> progress{};
  };
  // False like the functions above.
  template <typename Work, typename Done>
  bool Start(Task task, Work work, Done done);
  void LogIn(const LoginOrder& order);
  void OnLoginDone(const LoginOrder& order, LoginResult result, const std::u16string& said);
  void OnPushesDone(const PushRunResult& result, ArticleInfo article);
  void OnPushSeen(const ArticleInfo& article);

  Connection& connection_;
  MessageTarget& messages_;
  Automation worker_;
  Task task_;  // the last one
};

}  // namespace quillet
