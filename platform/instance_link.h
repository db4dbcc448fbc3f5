// The way from a run of the program that was started for a link to the one that has a window: a message that
// is taken or refused at once. Only programs of the same user reach it. Several windows may listen; the one
// that was used last is asked first where the system tells (the topmost one on Windows).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillet {

class InstanceLink {
 public:
  // Whether the command line is one to be taken. It is valid UTF-16, and all else about it is to be doubted.
  // Called on a thread of the link's own on Linux, on the user-interface thread on Windows; must not wait.
  using Take = std::function<bool(const std::u16string& commandLine)>;

  InstanceLink() = default;
  InstanceLink(const InstanceLink&) = delete;
  InstanceLink& operator=(const InstanceLink&) = delete;
  // `take` is called no more. Waits for a call that goes on, some milliseconds at most besides.
  virtual ~InstanceLink() = default;

  // The user uses this window now.
  virtual void NoteUserHere() {}
};

// Listens until the object goes. Null where the system gives no place for it. User-interface thread.
std::unique_ptr<InstanceLink> ListenForLinks(InstanceLink::Take take);

// Hands the command line to a running program and waits for its answer, some seconds at most. True when it
// has taken it; false when there is none that does.
bool SendToInstance(std::u16string_view commandLine);

}  // namespace quillet
