#include "app/interaction/command_runner.h"

#include <cassert>
#include <utility>

namespace quillet {

void CommandRunner::On(Command command, Action action) {
  assert(!Has(command));
  actions_[static_cast<std::size_t>(command)] = std::move(action);
}

void CommandRunner::On(Command command, std::function<void()> action) {
  On(command, [action = std::move(action)](const CommandTarget&) { action(); });
}

CommandState CommandRunner::State(const CommandTarget& target) const {
  CommandState state;
  for (const auto& add : states_)
    add(state);
  state.holds.AddIf(target.link.has_value(), Condition::kLink)
      .AddIf(target.link && target.link->article, Condition::kArticleLink)
      .AddIf(target.link && target.link->address.empty(), Condition::kAddresslessLink)
      .AddIf(!target.id.empty(), Condition::kUserId);
  if (!target.picture) return state;
  const PictureTarget& picture = *target.picture;
  const bool isClosed = picture.where == PictureTarget::Where::kClosedLink;
  state.holds.AddIf(isClosed, Condition::kClosedPicture)
      .AddIf(!isClosed, Condition::kOpenedPicture)
      .AddIf(picture.IsPicture(), Condition::kPicture)
      .AddIf(picture.IsPicture() && picture.hasFile, Condition::kPictureFile);
  return state;
}

void CommandRunner::Run(Command command, const CommandTarget& target) const {
  if (const Refusal refusal = WhyNot(command, State(target)); refusal != Refusal::kNone)
    return Refuse(command, refusal);
  ActionOf(command)(target);
}

}  // namespace quillet
