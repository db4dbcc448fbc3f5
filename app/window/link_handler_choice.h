// The wish that the system open web links with this program: notes who has had them, so that they can be
// passed on, and asks the system. Both take programs of the desktop, which are waited for on a thread of the
// object's own; its end is waited for some milliseconds. User-interface thread.
#pragma once

#include <functional>
#include <thread>

#include <QObject>

#include "platform/link_handler.h"

namespace quillet {

class LinkHandlerChoice : public QObject {
 public:
  // `registry` outlives the object; `ended` is called once for each wish.
  LinkHandlerChoice(Registry& registry, std::function<void(LinkChoice)> ended);

  // Nothing while an earlier wish is being seen to.
  void Wish();

 private:
  // The worker's result goes to `done`, on this thread.
  template <typename Work, typename Done>
  void Run(Work work, Done done);

  Registry& registry_;
  const std::function<void(LinkChoice)> ended_;
  bool isBusy_ = false;
  std::jthread worker_;
};

}  // namespace quillet
