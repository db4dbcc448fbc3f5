// Whose login this is, read off the screen while somebody logs in by hand: the id stands behind its prompt
// and counts once the BBS has let its user in. Any one thread.
#pragma once

#include <string>
#include <utility>

#include "core/screen_snapshot.h"

namespace quillet {

class LoginIdWatch {
 public:
  // The character tables must have been loaded.
  LoginIdWatch();

  // The next screen, classified. Returns whether the id is another than before.
  bool Look(const ScreenSnapshot& screen);
  // It was typed unseen, and counts if the BBS lets its user in.
  void Expect(std::u16string id) { typed_ = std::move(id); }
  // It is known without looking. The screens that follow may still change it.
  void Set(std::u16string id);
  // For a connection that begins or ends.
  void Clear() { Set({}); }

  // Empty while nobody is logged in.
  const std::u16string& Id() const { return id_; }

 private:
  const std::string prompt_;
  std::u16string typed_;
  std::u16string id_;
};

}  // namespace quillet
