// None: the libraries here know all character sets by iconv.
#include "platform/code_page.h"

namespace quillet {

std::span<const CodePage> CodePages() {
  return {};
}

}  // namespace quillet
