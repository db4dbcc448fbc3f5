// The keys over a user id, carried out: the entry in the black and white lists changes and is saved, and the
// user is told. User-interface thread.
#pragma once

#include <optional>
#include <string>

#include <QString>

#include "app/document/user_settings.h"
#include "input/list_hot_keys.h"

namespace quillet {

class NameKeys {
 public:
  // `settings` outlives the object.
  explicit NameKeys(UserSettings& settings) : settings_(settings) {}

  // Returns what has changed, in words; empty when nothing has.
  QString Press(const std::u16string& id, NameKey key, int colour);
  // An entry made elsewhere, in the dialog, is the last one added too.
  void NoteAdded(const std::u16string& id);

 private:
  UserSettings& settings_;
  std::optional<ListEntry> last_;
};

}  // namespace quillet
