// Opens a web address with the program that the user has for such. Never through a shell, and never anything
// but http and https. User-interface thread; returns at once.
#pragma once

#include <string_view>

namespace quillet {

class Opener {
 public:
  virtual ~Opener() = default;
  // False when the address is none that may be opened, or no program could be started. What addresses cannot
  // hold, such as blanks or Chinese in a search, is percent-encoded on the way.
  virtual bool Open(std::u16string_view address) = 0;
};

// The system's own.
class SystemOpener : public Opener {
 public:
  bool Open(std::u16string_view address) override;
};

}  // namespace quillet
