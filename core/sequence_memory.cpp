#include "core/sequence_memory.h"

namespace quillet {

const ControlSequence* SequenceMemory::Learn(const Key& key) {
  std::array<std::uint8_t, 8> bytes;
  StoreWord(bytes.data(), key.bytes);
  const std::optional<ControlSequence> sequence = DecodeSequence(std::span(bytes).first(key.length));
  if (!sequence) return nullptr;

  const std::size_t slot = SlotOf(key);
  const bool yields = entries_[slot].key != kFree && entries_[slot ^ 1].key == kFree;
  Entry& entry = entries_[yields ? slot ^ 1 : slot];
  entry = {key.bytes, *sequence};
  return &entry.sequence;
}

}  // namespace quillet
