#include "demo/key_decoder.h"

#include <array>
#include <optional>
#include <utility>

namespace quillet::demo {
namespace {

constexpr std::uint8_t kIac = 0xFF;
constexpr std::uint8_t kSubBegin = 0xFA;
constexpr std::uint8_t kSubEnd = 0xF0;
constexpr std::uint8_t kWill = 0xFB;  // WILL, WONT, DO and DONT carry an option byte
constexpr std::uint8_t kDont = 0xFE;
constexpr std::uint8_t kFirstTrail = 0x40;
constexpr int kLargestNumber = 99;

std::optional<KeyKind> ByLetter(std::uint8_t letter) {
  switch (letter) {
    case 'A':
      return KeyKind::kUp;
    case 'B':
      return KeyKind::kDown;
    case 'C':
      return KeyKind::kRight;
    case 'D':
      return KeyKind::kLeft;
    case 'H':
      return KeyKind::kHome;
    case 'F':
      return KeyKind::kEnd;
    default:
      return std::nullopt;
  }
}

std::optional<KeyKind> ByNumber(int number) {
  switch (number) {
    case 1:
    case 7:
      return KeyKind::kHome;
    case 2:
      return KeyKind::kInsert;
    case 3:
      return KeyKind::kDelete;
    case 4:
    case 8:
      return KeyKind::kEnd;
    case 5:
      return KeyKind::kPageUp;
    case 6:
      return KeyKind::kPageDown;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::vector<Key> KeyDecoder::Feed(std::string_view bytes) {
  keys_.clear();
  for (const char byte : bytes)
    Decode(static_cast<std::uint8_t>(byte));
  return std::move(keys_);
}

void KeyDecoder::Decode(std::uint8_t byte) {
  if (DecodeTelnet(byte)) return;
  switch (state_) {
    case State::kEscape:
      if (byte == '[' || byte == 'O') {
        state_ = byte == '[' ? State::kSequence : State::kApplication;
        number_ = 0;
        return;
      }
      state_ = State::kGround;
      Emit(KeyKind::kEscape);
      break;
    case State::kSequence:
    case State::kApplication:
      DecodeSequence(byte);
      return;
    case State::kPair:
      state_ = State::kGround;
      if (byte >= kFirstTrail && byte != 0x7F) {
        Emit(KeyKind::kText, {lead_, static_cast<char>(byte)});
        return;
      }
      break;  // no pair after all; the byte counts for itself
    default:
      break;
  }
  DecodeGround(byte);
}

void KeyDecoder::DecodeGround(std::uint8_t byte) {
  if (byte == 0x1B) {
    state_ = State::kEscape;
  } else if (byte == '\r') {
    Emit(KeyKind::kEnter);
  } else if (byte == '\n') {
    Emit(KeyKind::kLineFeed);
  } else if (byte == 0x08 || byte == 0x7F) {
    Emit(KeyKind::kBackspace);
  } else if (byte == 0) {
    return;  // the second half of a telnet line end
  } else if (byte < 0x20) {
    Emit(KeyKind::kControl, {static_cast<char>(byte + 0x40)});
  } else if (byte < 0x7F) {
    Emit(KeyKind::kText, {static_cast<char>(byte)});
  } else if (byte > 0x80) {
    lead_ = static_cast<char>(byte);
    state_ = State::kPair;
  }
}

void KeyDecoder::DecodeSequence(std::uint8_t byte) {
  if (byte >= '0' && byte <= '9') {
    if (number_ <= kLargestNumber) number_ = number_ * 10 + (byte - '0');
    return;
  }
  if (byte == ';') {
    number_ = 0;
    return;
  }
  state_ = State::kGround;
  const auto key = byte == '~' ? ByNumber(number_) : ByLetter(byte);
  if (key) Emit(*key);
}

bool KeyDecoder::DecodeTelnet(std::uint8_t byte) {
  switch (state_) {
    case State::kTelnet:
      if (byte == kSubBegin)
        state_ = State::kSubnegotiation;
      else
        state_ = byte >= kWill && byte <= kDont ? State::kTelnetOption : State::kGround;
      return true;
    case State::kTelnetOption:
      state_ = State::kGround;
      return true;
    case State::kSubnegotiation:
      if (byte == kIac) state_ = State::kSubTelnet;
      return true;
    case State::kSubTelnet:
      state_ = byte == kSubEnd ? State::kGround : State::kSubnegotiation;
      return true;
    default:
      if (byte != kIac) return false;
      state_ = State::kTelnet;
      return true;
  }
}

}  // namespace quillet::demo
