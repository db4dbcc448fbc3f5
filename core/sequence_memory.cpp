#include "core/sequence_memory.h"

namespace quillet {

const SequenceMemory::Known* SequenceMemory::Learn(std::uint64_t key) {
  std::array<std::uint8_t, 8> bytes;
  StoreWord(bytes.data(), key);
  std::size_t length = bytes.size();
  while (length > 0 && bytes[length - 1] == 0)
    --length;
  const std::optional<ControlSequence> sequence = DecodeSequence(std::span(bytes).first(length));
  if (!sequence) return nullptr;

  const std::size_t slot = SlotOf(key);
  const bool yields = entries_[slot].key != kFree && entries_[slot ^ 1].key == kFree;
  Entry& entry = entries_[yields ? slot ^ 1 : slot];
  entry = {key, {*sequence, static_cast<std::uint8_t>(length)}};
  return &entry.known;
}

}  // namespace quillet
