// A set of the values of a small enumeration, as a plain value. Any thread.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace quillet {

// `Flag` is an enumeration of at most 32 values that count up from 0.
template <typename Flag>
class FlagSet {
 public:
  constexpr FlagSet() = default;
  constexpr FlagSet(std::initializer_list<Flag> flags) {
    for (const Flag flag : flags)
      bits_ |= BitOf(flag);
  }

  constexpr bool IsEmpty() const { return bits_ == 0; }
  constexpr bool Has(Flag flag) const { return (bits_ & BitOf(flag)) != 0; }
  constexpr bool HasAny(FlagSet others) const { return (bits_ & others.bits_) != 0; }
  constexpr bool HasAll(FlagSet others) const { return others.Without(*this).IsEmpty(); }
  constexpr FlagSet Without(FlagSet others) const {
    FlagSet rest;
    rest.bits_ = bits_ & ~others.bits_;
    return rest;
  }
  // Adds the flag where `holds`.
  constexpr FlagSet& AddIf(bool holds, Flag flag) {
    if (holds) bits_ |= BitOf(flag);
    return *this;
  }

  constexpr bool operator==(const FlagSet&) const = default;

 private:
  static constexpr std::uint32_t BitOf(Flag flag) { return std::uint32_t{1} << static_cast<unsigned>(flag); }

  std::uint32_t bits_ = 0;
};

}  // namespace quillet
