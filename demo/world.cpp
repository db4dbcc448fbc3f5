#include "demo/world.h"

#include <algorithm>
#include <utility>

#include "core/charset.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"
#include "platform/clock.h"

namespace quillet::demo {
namespace {

constexpr const char* kTwinFlag = "twin";          // seems to be logged in elsewhere
constexpr const char* kResidentFlag = "resident";  // always in the list of users
constexpr const char* kHastyFlag = "hasty";        // must wait between pushes on every board
constexpr int kHastySeconds = 8;
// A client that writes without end must not fill the memory.
constexpr std::size_t kMostPushes = 2000;
constexpr std::size_t kMostArticles = 3000;
constexpr std::size_t kMostMails = 200;
constexpr const char* kResidentAddress = "198.51.100.7";

auto ArticleNamed(const Board& board, std::string_view fileName) {
  return std::find_if(board.articles.begin(), board.articles.end(),
                      [&](const ArticlePtr& article) { return article->fileName == fileName; });
}

}  // namespace

World::World(Content content) : boards_(std::move(content.boards)), users_(std::move(content.users)) {}

Board* World::BoardOf(std::string_view name) {
  return const_cast<Board*>(std::as_const(*this).BoardOf(name));
}

const Board* World::BoardOf(std::string_view name) const {
  const auto found = std::find_if(boards_.begin(), boards_.end(), [&](const Board& board) {
    return EqualsIgnoringCase(board.info.name, name);
  });
  return found == boards_.end() ? nullptr : &*found;
}

const User* World::UserOf(std::string_view id) const {
  const auto found = std::find_if(users_.begin(), users_.end(),
                                  [&](const User& user) { return EqualsIgnoringCase(user.id, id); });
  return found == users_.end() ? nullptr : &*found;
}

User* World::UserOf(std::string_view id) {
  return const_cast<User*>(std::as_const(*this).UserOf(id));
}

std::vector<BoardInfo> World::Boards() const {
  const std::lock_guard lock(mutex_);
  std::vector<BoardInfo> infos;
  for (const Board& board : boards_)
    infos.push_back(board.info);
  return infos;
}

std::optional<BoardInfo> World::FindBoard(std::string_view name) const {
  const std::lock_guard lock(mutex_);
  const Board* board = BoardOf(name);
  return board ? std::optional(board->info) : std::nullopt;
}

std::vector<ArticlePtr> World::Articles(std::string_view board) const {
  const std::lock_guard lock(mutex_);
  const Board* found = BoardOf(board);
  return found ? found->articles : std::vector<ArticlePtr>();
}

ArticlePtr World::FindArticle(std::string_view board, std::string_view fileName) const {
  const std::lock_guard lock(mutex_);
  const Board* found = BoardOf(board);
  if (!found) return nullptr;
  const auto article = ArticleNamed(*found, fileName);
  return article == found->articles.end() ? nullptr : *article;
}

PushResult World::AddPush(std::string_view board, std::string_view fileName, const Push& push) {
  const std::lock_guard lock(mutex_);
  Board* found = BoardOf(board);
  if (!found) return PushResult::kArticleGone;
  const auto at = ArticleNamed(*found, fileName) - found->articles.cbegin();
  if (at == std::ssize(found->articles)) return PushResult::kArticleGone;
  ArticlePtr& article = found->articles[static_cast<std::size_t>(at)];
  if (article->kind == ArticleKind::kDeleted) return PushResult::kArticleGone;
  if (article->pushes.size() >= kMostPushes) return PushResult::kTooLong;
  auto changed = std::make_shared<Article>(*article);
  changed->pushes.push_back(push);
  article = std::move(changed);
  lastPush_[{found->info.name, push.userId}] = SecondsNow();
  return PushResult::kDone;
}

int World::PushPause(std::string_view board, const User& user) const {
  const std::lock_guard lock(mutex_);
  const Board* found = BoardOf(board);
  if (!found) return 0;
  const auto last = lastPush_.find({found->info.name, user.id});
  if (last == lastPush_.end()) return 0;
  const int pause = std::max(found->info.pushPauseSeconds, user.Has(kHastyFlag) ? kHastySeconds : 0);
  return static_cast<int>(std::max<std::int64_t>(0, last->second + pause - SecondsNow()));
}

void World::PostArticle(std::string_view board, Article article) {
  const std::lock_guard lock(mutex_);
  Board* found = BoardOf(board);
  if (!found || found->articles.size() >= kMostArticles) return;
  article.seconds = SecondsNow();
  const unsigned suffix = StableHash(found->info.name) + nextSuffix_++;
  article.fileName = ArticleFileName(article.seconds, suffix);
  article.code = ArticleCode(article.seconds, suffix);
  found->articles.push_back(std::make_shared<Article>(std::move(article)));
}

bool World::DeleteArticle(std::string_view board, std::string_view fileName, std::string_view userId) {
  const std::lock_guard lock(mutex_);
  Board* found = BoardOf(board);
  if (!found) return false;
  const auto at = ArticleNamed(*found, fileName) - found->articles.cbegin();
  if (at == std::ssize(found->articles)) return false;
  ArticlePtr& article = found->articles[static_cast<std::size_t>(at)];
  if (article->authorId != userId) return false;
  auto changed = std::make_shared<Article>(*article);
  changed->kind = ArticleKind::kDeleted;
  article = std::move(changed);
  return true;
}

std::optional<User> World::FindUser(std::string_view id) const {
  const std::lock_guard lock(mutex_);
  const User* user = UserOf(id);
  return user ? std::optional(*user) : std::nullopt;
}

TransferResult World::Transfer(std::string_view fromId, std::string_view toId, long amount) {
  const std::lock_guard lock(mutex_);
  User* from = UserOf(fromId);
  User* to = UserOf(toId);
  if (!from || !to || to->id == kGuestId || to == from) return TransferResult::kNoSuchUser;
  if (amount < 1 || from->money < amount) return TransferResult::kNotEnough;
  from->money -= amount;
  to->money += AfterTax(amount);
  return TransferResult::kDone;
}

std::vector<Mail> World::Mails(std::string_view userId) const {
  const std::lock_guard lock(mutex_);
  const auto found = mails_.find(userId);
  return found == mails_.end() ? std::vector<Mail>() : found->second;
}

void World::MarkMailRead(std::string_view userId, std::size_t index) {
  const std::lock_guard lock(mutex_);
  const auto found = mails_.find(userId);
  if (found != mails_.end() && index < found->second.size()) found->second[index].read = true;
}

bool World::SendMail(std::string_view toId, Mail mail) {
  const std::lock_guard lock(mutex_);
  const User* user = UserOf(toId);
  if (!user || user->id == kGuestId) return false;
  mail.seconds = SecondsNow();
  std::vector<Mail>& box = mails_[user->id];
  if (box.size() >= kMostMails) box.erase(box.begin());
  box.push_back(std::move(mail));
  for (const auto& [session, login] : logins_)
    if (login.id == user->id) login.mailbox->RingBell();
  return true;
}

int World::Enter(const User& user, std::shared_ptr<Mailbox> mailbox) {
  const std::lock_guard lock(mutex_);
  logins_[nextSession_] = {user.id, user.nickname, std::move(mailbox)};
  return nextSession_++;
}

void World::Leave(int session) {
  const std::lock_guard lock(mutex_);
  logins_.erase(session);
}

bool World::HasOtherLogin(const User& user) const {
  if (user.id == kGuestId) return false;
  if (user.Has(kTwinFlag)) return true;
  const std::lock_guard lock(mutex_);
  return std::any_of(logins_.begin(), logins_.end(),
                     [&](const auto& entry) { return entry.second.id == user.id; });
}

void World::KickOtherLogins(std::string_view userId) {
  const std::lock_guard lock(mutex_);
  std::erase_if(logins_, [&](const auto& entry) {
    if (entry.second.id != userId) return false;
    entry.second.mailbox->Close(CloseOrder::kKickedOut);
    return true;
  });
}

std::vector<OnlineUser> World::Online() const {
  const std::lock_guard lock(mutex_);
  std::vector<OnlineUser> online;
  for (const auto& [session, login] : logins_)
    online.push_back({session, login.id, login.nickname, "127.0.0.1"});
  for (const User& user : users_)
    if (user.Has(kResidentFlag)) online.push_back({0, user.id, user.nickname, kResidentAddress});
  return online;
}

bool World::SendMessage(const User& from, std::string_view toId, std::string_view text) {
  const std::lock_guard lock(mutex_);
  const User* to = UserOf(toId);
  if (!to) return false;
  bool sent = false;
  for (const auto& [session, login] : logins_) {
    if (login.id != to->id) continue;
    login.mailbox->PutMessage({from.id, std::string(text)});
    sent = true;
  }
  if (sent || !to->Has(kResidentFlag)) return sent;
  for (const auto& [session, login] : logins_)
    if (login.id == from.id) login.mailbox->PutMessage({to->id, ToBig5(u"我正在看文章，晚點再聊")});
  return true;
}

}  // namespace quillet::demo
