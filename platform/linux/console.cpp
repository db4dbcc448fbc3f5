#include "platform/console.h"

namespace quillet {

void JoinConsole() {}

}  // namespace quillet
