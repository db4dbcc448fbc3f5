// An article that another program asks for: opened at once where that can be done, else as soon as the user
// is logged in and nothing else is done for him. Only the newest one is kept. User-interface thread.
#pragma once

#include <functional>
#include <optional>

#include <QObject>

#include "app/messages/link_messages.h"
#include "app/session/automations.h"
#include "app/session/connection.h"

namespace quillet {

class WantedArticle : public QObject {
 public:
  // Both outlive the object.
  struct Parts {
    const Connection& connection;
    const Automations& automations;
  };
  struct Handlers {
    std::function<void(const ArticleReference&)> open;
    // It has to wait; for a login there is perhaps no connection yet.
    std::function<void(const ArticleReference&, ArticleWaitsFor)> waits;
    // The page is a list, a menu or an article: nobody is in the middle of something there.
    std::function<bool()> isAtRest;
  };
  WantedArticle(const Parts& parts, Handlers handlers);

  void Want(const ArticleReference& article);
  // The view has taken a screen over.
  void OnScreen();
  bool IsWaiting() const { return waiting_.has_value(); }

 private:
  // What it has to wait for; nothing: it can be opened.
  std::optional<ArticleWaitsFor> Obstacle() const;

  const Parts parts_;
  const Handlers handlers_;
  std::optional<ArticleReference> waiting_;
};

}  // namespace quillet
