#include "app/session/wiped_text.h"

#include <utility>

namespace quillet {

void Wipe(std::u16string& text) {
  // Volatile: writes that nobody reads would be left out.
  volatile char16_t* const units = text.data();
  for (std::size_t i = 0; i < text.capacity(); ++i)
    units[i] = u'\0';
  text.clear();
}

LoginOrder MakeLoginOrder(LoginRequest request) {
  auto order = std::shared_ptr<LoginRequest>(new LoginRequest(request), [](LoginRequest* ended) {
    Wipe(ended->password);
    delete ended;
  });
  Wipe(request.password);
  return order;
}

}  // namespace quillet
