#include "render/places/place_names.h"

#include <charconv>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

#include "render/places/place_lines.h"

namespace quillet {
namespace {

constexpr std::string_view kComma = ",";

std::int32_t PlaceNumber(std::string_view token) {
  std::int32_t number = 0;
  const auto read = std::from_chars(token.data(), token.data() + token.size(), number);
  return read.ec == std::errc::result_out_of_range ? std::numeric_limits<std::int32_t>::max() : number;
}

}  // namespace

PlaceNamesRead ReadPlaceNames(std::string_view bytes) {
  PlaceNamesRead read;
  PlaceLines lines(bytes);
  while (std::optional<std::string_view> line = lines.Next()) {
    const std::int32_t number = PlaceNumber(TakeToken(*line, kComma));
    const std::string_view token = TakeToken(*line, kComma);
    if (token.empty()) continue;
    if (std::optional<std::u16string> name = ShownName(token))
      read.names.insert_or_assign(number, std::move(*name));
    else if (read.firstBadLine == 0)
      read.firstBadLine = lines.Number();
  }
  return read;
}

}  // namespace quillet
