#include "core/sequence_memory.h"

namespace quillet {

// Not in its own slot: in the other one, or not known yet.
const ControlSequence* SequenceMemory::FindElsewhere(Key key) {
  const std::size_t slot = SlotOf(key);
  if (entries_[slot ^ 1].key == key.bytes) return &entries_[slot ^ 1].sequence;

  std::array<std::uint8_t, 8> bytes;
  StoreWord(bytes.data(), key.bytes);
  const std::optional<ControlSequence> sequence = DecodeSequence(std::span(bytes).first(key.length));
  if (!sequence) return nullptr;

  const bool yields = entries_[slot].key != kFree && entries_[slot ^ 1].key == kFree;
  Entry& entry = entries_[yields ? slot ^ 1 : slot];
  entry = {key.bytes, *sequence};
  return &entry.sequence;
}

}  // namespace quillet
