// A BBS played from a list of turns: each page is shown once all that a client has to type before it has
// come.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/charset.h"
#include "tests/support/scripted_transport.h"

namespace quillet {

struct Turn {
  std::string typed;
  std::string page;  // the bytes that show it; none: the BBS says nothing
};

inline std::string TypedIn(const std::vector<Turn>& turns) {
  std::string all;
  for (const Turn& turn : turns)
    all += turn.typed;
  return all;
}

inline constexpr const char* kClearScreen = "\x1b[m\x1b[1;1H\x1b[J";

// The bytes that put the cursor, and a text, at a place.
inline std::string At(int row, int col, std::u16string_view text = {}) {
  return "\x1b[" + std::to_string(row + 1) + ";" + std::to_string(col + 1) + "H" + ToBig5(text);
}
// An input field of three columns with the cursor in it.
inline std::string FieldAt(int row, int col) {
  return At(row, col) + "\x1b[30;47m   \x1b[m" + At(row, col);
}

// Plays the turns, then stays until it is stopped. Before each page so many milliseconds pass: a client that
// takes the old page for the new one has time to do it.
inline std::shared_ptr<TransportScript> PlayTurns(std::vector<Turn> turns, int thinking = 0) {
  auto script = std::make_shared<TransportScript>();
  TransportScript& played = *script;  // which outlives the transport that runs it
  script->run = [&played, turns = std::move(turns), thinking](TransportEvents& events,
                                                              const StopSignal& stop) {
    events.OnConnected({});
    std::size_t typed = 0;
    for (const Turn& turn : turns) {
      typed += turn.typed.size();
      while (played.Written().size() < typed)
        if (stop.WaitFor(1)) return TransportEnd{};
      if (thinking > 0 && stop.WaitFor(thinking)) return TransportEnd{};
      if (turn.page.empty()) continue;
      events.OnReceived({reinterpret_cast<const std::uint8_t*>(turn.page.data()), turn.page.size()});
    }
    while (!stop.WaitFor(1000)) {
    }
    return TransportEnd{EndReason::kClosedByUser, {}};
  };
  return script;
}

}  // namespace quillet
