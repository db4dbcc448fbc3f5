// Bytes from a client to keys. Sequences and Big5 pairs may arrive in pieces; telnet commands are skipped;
// any bytes whatever are accepted. One per client, on the client's thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::demo {

enum class KeyKind {
  kText,      // `text` is one ASCII character or one Big5 pair
  kControl,   // `text` is the letter: "X" for Ctrl-X
  kEnter,     // CR
  kLineFeed,  // LF: clears messages and pauses, opens nothing
  kBackspace,
  kEscape,
  kUp,
  kDown,
  kLeft,
  kRight,
  kHome,
  kEnd,
  kPageUp,
  kPageDown,
  kInsert,
  kDelete
};

struct Key {
  KeyKind kind = KeyKind::kText;
  std::string text;
  bool atOnce = false;  // it came together with the key before it

  bool Is(KeyKind other) const { return kind == other; }
  bool Is(char c) const { return kind == KeyKind::kText && text.size() == 1 && text[0] == c; }
  bool IsControl(char letter) const { return kind == KeyKind::kControl && text[0] == letter; }
  bool IsDigit() const {
    return kind == KeyKind::kText && text.size() == 1 && text[0] >= '0' && text[0] <= '9';
  }
};

class KeyDecoder {
 public:
  std::vector<Key> Feed(std::string_view bytes);

 private:
  enum class State {
    kGround,
    kEscape,
    kSequence,
    kApplication,
    kPair,
    kTelnet,
    kTelnetOption,
    kSubnegotiation,
    kSubTelnet
  };
  void Decode(std::uint8_t byte);
  void DecodeGround(std::uint8_t byte);
  void DecodeSequence(std::uint8_t byte);
  bool DecodeTelnet(std::uint8_t byte);
  void Emit(KeyKind kind, std::string text = {}) { keys_.push_back({kind, std::move(text), !keys_.empty()}); }

  State state_ = State::kGround;
  char lead_ = 0;
  int number_ = 0;  // of a sequence ESC "[" number "~"
  std::vector<Key> keys_;
};

}  // namespace quillet::demo
