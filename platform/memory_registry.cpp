#include "platform/registry.h"

namespace quillet {

std::optional<std::u16string> MemoryRegistry::Text(std::u16string_view path, std::u16string_view name) const {
  return values_.Text(path, name);
}

std::optional<std::uint32_t> MemoryRegistry::Number(std::u16string_view path,
                                                    std::u16string_view name) const {
  return values_.Number(path, name);
}

bool MemoryRegistry::SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) {
  values_.Set(path, name, std::u16string(value));
  return true;
}

bool MemoryRegistry::SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) {
  values_.Set(path, name, value);
  return true;
}

}  // namespace quillet
