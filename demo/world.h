// The one BBS that all clients share: boards, articles, users, mail, and who is online. Every function may be
// called from any thread; what is returned is a copy or an article that never changes.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/article.h"
#include "demo/content_loader.h"
#include "demo/mailbox.h"

namespace quillet::demo {

struct OnlineUser {
  int session = 0;  // 0: one of the residents, who are always online
  std::string id;
  std::string nickname;
  std::string address;
};

enum class PushResult { kDone, kTooLong, kArticleGone };

enum class TransferResult { kDone, kNoSuchUser, kNotEnough };

// The BBS keeps a tenth of what one user gives to another.
constexpr long AfterTax(long amount) {
  return amount - amount / 10;
}

class World {
 public:
  explicit World(Content content);

  std::vector<BoardInfo> Boards() const;
  // Case does not matter; the name in its proper spelling.
  std::optional<BoardInfo> FindBoard(std::string_view name) const;
  std::vector<ArticlePtr> Articles(std::string_view board) const;
  // The article as it now is; null when it is gone.
  ArticlePtr FindArticle(std::string_view board, std::string_view fileName) const;

  PushResult AddPush(std::string_view board, std::string_view fileName, const Push& push);
  // Whole seconds until this user may push on this board again; 0: now.
  int PushPause(std::string_view board, const User& user) const;
  // Gives the article its date, file name and code, and puts it at the end of the board.
  void PostArticle(std::string_view board, Article article);
  // The author's own articles only; false otherwise.
  bool DeleteArticle(std::string_view board, std::string_view fileName, std::string_view userId);

  std::optional<User> FindUser(std::string_view id) const;
  // Takes `amount`, at least 1, from one user and gives another what is left of it after the tax.
  TransferResult Transfer(std::string_view fromId, std::string_view toId, long amount);
  std::vector<Mail> Mails(std::string_view userId) const;
  void MarkMailRead(std::string_view userId, std::size_t index);
  bool SendMail(std::string_view toId, Mail mail);

  // From now on the user is online; the number names this login.
  int Enter(const User& user, std::shared_ptr<Mailbox> mailbox);
  void Leave(int session);
  bool HasOtherLogin(const User& user) const;
  void KickOtherLogins(std::string_view userId);
  std::vector<OnlineUser> Online() const;
  // Residents answer on their own. False when nobody of that name is online.
  bool SendMessage(const User& from, std::string_view toId, std::string_view text);

 private:
  struct Login {
    std::string id;
    std::string nickname;
    std::shared_ptr<Mailbox> mailbox;
  };
  Board* BoardOf(std::string_view name);
  const Board* BoardOf(std::string_view name) const;
  const User* UserOf(std::string_view id) const;
  User* UserOf(std::string_view id);

  mutable std::mutex mutex_;
  std::vector<Board> boards_;
  std::vector<User> users_;
  std::map<std::string, std::vector<Mail>, std::less<>> mails_;
  std::map<int, Login> logins_;
  std::map<std::pair<std::string, std::string>, std::int64_t> lastPush_;  // by board and user
  int nextSession_ = 1;
  unsigned nextSuffix_ = 1;
};

}  // namespace quillet::demo
