// What every stream of a terminal is set to, so that a key leaves as soon as it is pressed and a peer that is
// gone without a word is noticed. Socket does it for its own connections; whoever has a stream of a library's
// gives its handle. Any thread.
#pragma once

#include <span>

#include "platform/socket.h"

namespace quillet {

// Of a connected TCP stream: sends at once, asks a silent peer whether it is there, and gives up one that has
// answered nothing for less than two minutes, whether something is on its way to it or not: reading then ends
// with an error.
void TuneStream(NativeSocket stream);

// The same for every stream of this process that is connected to one of these: for a library that shows
// nobody its own. Returns how many there were; 0 on a system that lets no program see its own streams.
int TuneStreamsTo(std::span<const ResolvedAddress> peers);

}  // namespace quillet
