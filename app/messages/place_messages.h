// What the window says of the place that an address belongs to. Pure.
#pragma once

#include <string_view>

#include <QString>

namespace quillet {

// `place` as a look-up gives it: its name, and what its marks mean.
QString DescribePlace(std::u16string_view place);

}  // namespace quillet
