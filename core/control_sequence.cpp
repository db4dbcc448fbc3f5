#include "core/control_sequence.h"

#include <algorithm>
#include <array>

namespace quillet {
namespace {

constexpr std::uint8_t kBackgroundMask = 0xE0;

std::uint8_t ZeroIsOne(std::uint8_t param) {
  return param == 0 ? std::uint8_t{1} : param;
}

}  // namespace

void AttrChange::Then(std::uint8_t param) {
  const auto replace = [this](std::uint8_t mask, int value) {
    keep = static_cast<std::uint8_t>(keep & ~mask);
    set = static_cast<std::uint8_t>((set & ~mask) | value);
  };
  if (param == 0) {
    *this = {false, 0, kAttrBlank};
  } else if (param == 1) {
    replace(kAttrBold, kAttrBold);
  } else if (param == 3 || param == 7) {
    reverse = !reverse;
    keep = ReversedAttr(keep);
    set = ReversedAttr(set);
  } else if (param == 5 || param == 6) {
    replace(kAttrBlink, kAttrBlink);
  } else if (param == 22) {
    replace(kAttrBold, 0);
  } else if (param >= 30 && param <= 37) {
    replace(kAttrForeground, param - 30);
  } else if (param == 39) {
    replace(kAttrForeground, kAttrForeground);
  } else if (param >= 40 && param <= 47) {
    replace(kBackgroundMask, (param - 40) << kAttrBackgroundShift);
  } else if (param == 49) {
    replace(kBackgroundMask, 0);
  }
}

bool CollectParam(SequenceParams& params, std::int8_t& count, std::uint8_t byte) {
  constexpr auto kMax = static_cast<std::int8_t>(std::tuple_size_v<SequenceParams>);
  if (byte == ';') {
    if (count < kMax) params[static_cast<std::size_t>(count)] = 0;
    if (count <= kMax) ++count;
    return true;
  }
  if (byte < '0' || byte > '9') return false;
  if (count >= 1 && count <= kMax) {
    std::uint8_t& param = params[static_cast<std::size_t>(count - 1)];
    param = static_cast<std::uint8_t>(param * 10 + (byte - '0'));
  }
  return true;
}

ControlSequence DecodeSequence(const SequenceParams& params, std::int8_t count, std::uint8_t finalByte) {
  using Kind = ControlSequence::Kind;
  const std::size_t used = std::clamp<std::size_t>(static_cast<std::size_t>(count), 1, params.size());
  ControlSequence sequence;
  switch (finalByte) {
    case 'm':
      sequence.kind = used == 1 && params[0] == 0 ? Kind::kReset : Kind::kRendition;
      for (std::size_t i = 0; i < used; ++i)
        sequence.change.Then(params[i]);
      break;
    case 'H':
      sequence.kind = Kind::kPlace;
      sequence.row = ZeroIsOne(params[0]);
      sequence.col = used < 2 ? std::uint8_t{1} : ZeroIsOne(params[1]);
      break;
    case 'K':
      sequence.kind = Kind::kEraseLine;
      break;
    case 'J':
      sequence.kind = Kind::kEraseAll;
      break;
    case 'L':
      sequence.kind = Kind::kInsert;
      sequence.row = ZeroIsOne(params[0]);
      break;
    default:
      break;
  }
  return sequence;
}

std::optional<ControlSequence> DecodeSequence(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return std::nullopt;
  SequenceParams params{};
  std::int8_t count = 1;
  for (const std::uint8_t byte : bytes.first(bytes.size() - 1))
    if (!CollectParam(params, count, byte)) return std::nullopt;
  if (CollectParam(params, count, bytes.back())) return std::nullopt;
  return DecodeSequence(params, count, bytes.back());
}

}  // namespace quillet
