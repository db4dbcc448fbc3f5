#include "platform/composition_font.h"

namespace quillet {

// Input methods here draw in their own letters, and ask the toolkit for the place.
bool SetCompositionFont(std::uintptr_t /*window*/, const std::u16string& /*face*/, int /*height*/) {
  return false;
}

}  // namespace quillet
