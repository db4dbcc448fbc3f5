#include "app/window/link_handler_choice.h"

#include <system_error>
#include <utility>

namespace quillet {

LinkHandlerChoice::LinkHandlerChoice(Registry& registry, std::function<void(LinkChoice)> ended)
    : registry_(registry), ended_(std::move(ended)) {}

template <typename Work, typename Done>
void LinkHandlerChoice::Run(Work work, Done done) {
  try {
    worker_ = std::jthread([this, work, done](const std::stop_token& stop) {
      QMetaObject::invokeMethod(
          this, [done, result = work(stop)] { done(result); }, Qt::QueuedConnection);
    });
  } catch (const std::system_error&) {
    isBusy_ = false;
    ended_(LinkChoice::kFailed);
  }
}

void LinkHandlerChoice::Wish() {
  if (std::exchange(isBusy_, true)) return;
  Run(CurrentLinkHandling, [this](const LinkHandling& before) {
    RememberOtherBrowser(registry_, before.other);
    Run(ChooseLinkHandler, [this](LinkChoice choice) {
      isBusy_ = false;
      ended_(choice);
    });
  });
}

}  // namespace quillet
