// What can be done with selected text, links, ids and the clipboard: the commands of the edit menu and of the
// right mouse button's. User-interface thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/document/user_settings.h"
#include "app/interaction/clipboard_controller.h"
#include "app/interaction/selection_control.h"
#include "app/interaction/web_controller.h"
#include "app/page/shown_text.h"
#include "input/text_link.h"

namespace quillet {

enum class EditCommand {
  kCopy,
  kCopyHtml,
  kCopyAnsi,
  kSearchFirst,
  kSearchSecond,
  kOpenLink,
  kCopyLink,
  kAddToNames,
  kUserPage,
  kPaste,
  kPasteShortLink,
  kSelectAll
};

bool IsAboutSelection(EditCommand command);

// What the command is about, where it is not the selection.
struct EditTarget {
  std::optional<TextLink> link;
  std::u16string id;  // of a user; empty: none
};

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
    std::function<void(const QString&)> tell;            // in a line, what has been done
    std::function<void(const QString& id)> askForNames;  // opens the dialog for the lists
  };
  EditCommands(const Parts& parts, Handlers handlers) : parts_(parts), handlers_(std::move(handlers)) {}

  // Copying without a selection takes what is in sight. Commands without their target do nothing.
  void Perform(EditCommand command, const EditTarget& target);
  // The user has let go of a selection.
  void OnSelected();

 private:
  enum class Form { kText, kHtml, kAnsi };
  void Copy(Form form);
  void SearchSelection(SearchEngine engine);
  Selection SelectedOrInSight() const;

  Parts parts_;
  Handlers handlers_;
};

}  // namespace quillet
