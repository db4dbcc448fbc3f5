// The keys over a user id, carried out: the entry in the black and white lists changes and is saved, and the
// user is told. User-interface thread.
#pragma once

#include <optional>
#include <string>

#include <QString>

#include "app/document/quill_doc.h"
#include "input/list_hot_keys.h"

namespace quillet {

class NameKeys {
 public:
  // `doc` outlives the object.
  explicit NameKeys(CQuillDoc& doc) : doc_(doc) {}

  // Returns what has changed, in words; empty when nothing has.
  QString Press(const std::u16string& id, NameKey key, int colour);
  // An entry made elsewhere, in the dialog, is the last one added too.
  void NoteAdded(const std::u16string& id);

 private:
  CQuillDoc& doc_;
  std::optional<ListEntry> last_;
};

}  // namespace quillet
