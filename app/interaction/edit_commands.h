// What the commands on selected text, links, ids and the clipboard do: those of the edit menu and of the
// right mouse button's. User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include "app/document/user_settings.h"
#include "app/interaction/clipboard/clipboard_controller.h"
#include "app/interaction/command_runner.h"
#include "app/interaction/pointer/selection_control.h"
#include "app/interaction/web_controller.h"
#include "app/page/shown_text.h"
#include "input/text/text_link.h"

namespace quillet {

class EditCommands {
 public:
  // All outlive the object.
  struct Parts {
    const UserSettings& settings;
    const ShownText& text;
    SelectionControl& selection;
    ClipboardController& clipboard;
    WebController& web;
  };
  struct Handlers {
    std::function<void(const QString&)> tell;  // in a line, what has been done
  };
  EditCommands(const Parts& parts, Handlers handlers) : parts_(parts), handlers_(std::move(handlers)) {}

  // The object outlives the runner's last command. Copying without a selection takes what is in sight.
  void Offer(CommandRunner& runner);
  // The user has let go of a selection.
  void OnSelected();

 private:
  enum class Form { kText, kHtml, kAnsi };
  void Copy(Form form);
  void CopyLink(const TextLink& link);
  Selection SelectedOrInSight() const;

  Parts parts_;
  Handlers handlers_;
};

}  // namespace quillet
