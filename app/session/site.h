// A site to connect to. A value; any thread.
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "core/transport.h"

namespace quillet {

struct Site {
  QString address;
  QString name;  // shown instead of the address when not empty
  // Makes the transport when the address does not: a recording, a test's script.
  std::function<std::unique_ptr<Transport>()> makeTransport{};
  bool isBbs = false;  // the demo's: the BBS, whatever its host is called, and gone with this run

  const QString& ShownName() const { return name.isEmpty() ? address : name; }
  // Its address leads there tomorrow as well.
  bool Lasts() const { return !makeTransport && !isBbs; }
};

}  // namespace quillet
