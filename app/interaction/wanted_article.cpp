#include "app/interaction/wanted_article.h"

#include <utility>

namespace quillet {

WantedArticle::WantedArticle(const Parts& parts, Handlers handlers)
    : parts_(parts), handlers_(std::move(handlers)) {
  // Later, since what was done is yet to be told to whoever has asked for it.
  connect(&parts_.automations, &Automations::Changed, this, &WantedArticle::OnScreen, Qt::QueuedConnection);
}

void WantedArticle::Want(const ArticleReference& article) {
  waiting_.reset();
  const std::optional<ArticleWaitsFor> obstacle = Obstacle();
  if (!obstacle) return handlers_.open(article);
  waiting_ = article;
  handlers_.waits(article, *obstacle);
}

void WantedArticle::OnScreen() {
  if (!waiting_ || Obstacle() || !handlers_.isAtRest()) return;
  const ArticleReference article = *std::exchange(waiting_, std::nullopt);
  handlers_.open(article);
}

std::optional<ArticleWaitsFor> WantedArticle::Obstacle() const {
  const Connection& connection = parts_.connection;
  const bool isInside = connection.IsConnected() && !connection.Seen().loginId.empty();
  if (!isInside || parts_.automations.Current() == Activity::kLogin) return ArticleWaitsFor::kLogin;
  // What has ended may not have told so yet.
  const bool isBusy = parts_.automations.IsBusy() || parts_.automations.Current() != Activity::kNone;
  return isBusy ? std::optional(ArticleWaitsFor::kAutomation) : std::nullopt;
}

}  // namespace quillet
