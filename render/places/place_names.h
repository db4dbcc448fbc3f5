// What "geoname_translation.txt" says: the names of places by their numbers. Pure; hostile input is expected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillet {

using PlaceNames = std::unordered_map<std::int32_t, std::u16string>;

struct PlaceNamesRead {
  PlaceNames names;
  std::size_t firstBadLine = 0;  // the first whose name is no UTF-8, from 1; 0 when there is none
};

// A line is the number, a comma and the name, perhaps a comma and more, which is not read. What has no digits
// in front has the number 0, numbers too large for the map are its largest. The last line of a number counts;
// a line without a name names nothing, and one whose name is no UTF-8 is left out.
PlaceNamesRead ReadPlaceNames(std::string_view bytes);

}  // namespace quillet
