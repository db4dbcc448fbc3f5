// Carries the commands of the table out: whoever can do one registers what it does, whoever gives one asks
// here, whatever it was given by. A command that cannot act is refused with a word. User-interface thread.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "input/commands/commands.h"
#include "input/text/text_link.h"

namespace quillet {

// A picture, or a link that shows one.
struct PictureTarget {
  enum class Where {
    kClosedLink,  // that could be opened
    kOpenLink,    // its picture stands below its line
    kArticle,     // that picture itself
    kViewer       // the picture that is looked at
  };
  QString link;
  Where where = Where::kClosedLink;
  bool hasFile = false;  // its file has come
  int line = -1;         // of the article's that are shown, in which the link stands; -1: in none
  int firstCol = 0;      // where it begins there

  bool IsPicture() const { return where == Where::kArticle || where == Where::kViewer; }
};

// What a command is about, where it is not the selection or the page.
struct CommandTarget {
  std::optional<TextLink> link{};
  std::u16string id{};  // of a user; empty: none
  std::optional<PictureTarget> picture{};
};

class CommandRunner {
 public:
  struct Handlers {
    std::function<CommandTarget()> target;  // of now: under the pointer, or at the BBS's cursor
    std::function<void(Command, Refusal)> refused;
  };
  explicit CommandRunner(Handlers handlers) : handlers_(std::move(handlers)) {}

  using Action = std::function<void(const CommandTarget&)>;
  // What carries it out, once for each command.
  void On(Command command, Action action);
  void On(Command command, std::function<void()> action);
  bool Has(Command command) const { return ActionOf(command) != nullptr; }

  // Adds what one of the window's parts knows of the moment.
  void AddState(std::function<void(CommandState&)> add) { states_.push_back(std::move(add)); }
  CommandState State() const { return State(handlers_.target()); }
  CommandState State(const CommandTarget& target) const;

  void Run(Command command) const { Run(command, handlers_.target()); }
  void Run(Command command, const CommandTarget& target) const;
  void Refuse(Command command, Refusal refusal) const { handlers_.refused(command, refusal); }

 private:
  const Action& ActionOf(Command command) const { return actions_[static_cast<std::size_t>(command)]; }

  Handlers handlers_;
  std::array<Action, kCommandCount> actions_;
  std::vector<std::function<void(CommandState&)>> states_;
};

}  // namespace quillet
