#include "platform/registry_values.h"

#include <algorithm>

namespace quillet {
namespace {

std::u16string UpToNul(std::u16string_view text) {
  return std::u16string(text.substr(0, text.find(u'\0')));
}

std::u16string Folded(std::u16string_view text) {
  std::u16string folded = UpToNul(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), [](char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
  });
  return folded;
}

}  // namespace

std::optional<std::u16string> RegistryValues::Text(std::u16string_view path, std::u16string_view name) const {
  const Data* data = Find(path, name);
  const auto* text = data ? std::get_if<std::u16string>(data) : nullptr;
  return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::uint32_t> RegistryValues::Number(std::u16string_view path,
                                                    std::u16string_view name) const {
  const Data* data = Find(path, name);
  const auto* number = data ? std::get_if<std::uint32_t>(data) : nullptr;
  return number ? std::optional(*number) : std::nullopt;
}

void RegistryValues::Set(std::u16string_view path, std::u16string_view name, Data data) {
  if (auto* text = std::get_if<std::u16string>(&data)) *text = UpToNul(*text);
  values_[{Folded(path), Folded(name)}] = {UpToNul(path), UpToNul(name), std::move(data)};
}

void RegistryValues::Remove(std::u16string_view path, std::u16string_view name) {
  values_.erase({Folded(path), Folded(name)});
}

void RegistryValues::Overlay(const RegistryValues& newer) {
  for (const auto& [key, value] : newer.values_)
    values_[key] = value;
}

const RegistryValues::Data* RegistryValues::Find(std::u16string_view path, std::u16string_view name) const {
  const auto found = values_.find({Folded(path), Folded(name)});
  return found == values_.end() ? nullptr : &found->second.data;
}

}  // namespace quillet
