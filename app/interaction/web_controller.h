// What leads out of the window: links under the pointer, searches for what is selected, pages of users.
// Articles of the BBS are opened on the BBS itself. User-interface thread.
#pragma once

#include <functional>
#include <string>

#include <QString>

#include "app/messages/session_messages.h"
#include "app/session/automations.h"
#include "app/session/connection.h"
#include "core/endpoints.h"
#include "input/text/text_link.h"
#include "input/text/web_commands.h"
#include "platform/opener.h"

namespace quillet {

class WebController {
 public:
  // All outlive the object.
  struct Parts {
    const Connection& connection;
    Automations& automations;
    const Endpoints& hosts;
    Opener& opener;
  };
  struct Handlers {
    std::function<void()> beforeJump;            // the client is about to lead the BBS to another article
    std::function<void(const PanelText&)> tell;  // what did not come about
  };
  WebController(const Parts& parts, Handlers handlers);

  void Open(const TextLink& link);
  // On the BBS, whether or not there is a connection.
  void OpenArticle(const ArticleReference& article);
  // Nothing for an empty text.
  void Search(SearchEngine engine, std::u16string_view text);
  void OpenUserPage(std::u16string_view id);

  // One is configured.
  bool HasEngine(SearchEngine engine) const { return !EngineName(engine).isEmpty(); }
  // The host that a search asks, for its menu entry; empty while there is none.
  const QString& EngineName(SearchEngine engine) const {
    return engine == SearchEngine::kFirst ? firstEngine_ : secondEngine_;
  }

 private:
  void OpenAddress(std::u16string_view address);

  const Parts parts_;
  Handlers handlers_;
  // Asked for with every frame.
  const QString firstEngine_, secondEngine_;
};

}  // namespace quillet
