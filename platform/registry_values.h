// A table of registry values in memory: what the in-memory registry is, what the file registry reads and
// writes, and where the system's registry keeps what it was not allowed to write. One thread at a time.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace quillet {

class RegistryValues {
 public:
  using Data = std::variant<std::u16string, std::uint32_t>;
  struct Value {
    std::u16string path, name;  // as they were written
    Data data;
    bool operator==(const Value&) const = default;
  };
  // Path and name with A-Z folded to lower case.
  using Key = std::pair<std::u16string, std::u16string>;

  std::optional<std::u16string> Text(std::u16string_view path, std::u16string_view name) const;
  std::optional<std::uint32_t> Number(std::u16string_view path, std::u16string_view name) const;

  // A path, a name and a text end at their first NUL, as the system's do.
  void Set(std::u16string_view path, std::u16string_view name, Data data);
  void Remove(std::u16string_view path, std::u16string_view name);
  // Takes over all of `newer`, which wins where both have a value.
  void Overlay(const RegistryValues& newer);
  void Clear() { values_.clear(); }

  // Values of one path stand together.
  const std::map<Key, Value>& All() const { return values_; }
  bool operator==(const RegistryValues&) const = default;

 private:
  const Data* Find(std::u16string_view path, std::u16string_view name) const;

  std::map<Key, Value> values_;
};

}  // namespace quillet
