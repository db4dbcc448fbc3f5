// What leads out of the window: links under the pointer, searches for what is selected, pages of users.
// Articles of the BBS are opened on the BBS itself. User-interface thread.
#pragma once

#include <functional>
#include <string>

#include "app/document/quill_doc.h"
#include "app/messages/session_messages.h"
#include "input/link_finder.h"
#include "input/web_commands.h"

namespace quillet {

class WebController {
 public:
  struct Handlers {
    std::function<void()> beforeJump;            // the client is about to lead the BBS to another article
    std::function<void(const PanelText&)> tell;  // what did not come about
  };
  // `doc` outlives the desk.
  WebController(CQuillDoc& doc, Handlers handlers) : doc_(doc), handlers_(std::move(handlers)) {}

  void Open(const TextLink& link);
  // Nothing for an empty text.
  void Search(SearchEngine engine, std::u16string_view text);
  void OpenUserPage(std::u16string_view id);

  // One is configured.
  bool HasEngine(SearchEngine engine) const;
  // The host that a search asks, for its menu entry; empty while there is none.
  QString EngineName(SearchEngine engine) const;

 private:
  void OpenAddress(std::u16string_view address);

  CQuillDoc& doc_;
  Handlers handlers_;
};

}  // namespace quillet
