// The picture that a web page is about: the one that the page names for those who show it elsewhere, else the
// first in it that looks like a picture of its own. The page is anybody's. Pure; any thread, which is held
// for as long as reading takes: some milliseconds for a page of kMostPageBytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

// What lies behind is not read.
inline constexpr std::size_t kMostPageBytes = std::size_t{2} << 20;

// `page` is the HTML as it came; `charset` what the answer's header says of it, or empty: the page's own word
// counts then. The picture's address is made whole by the page's: `address`, or what the page says to be its
// base. UTF-8, http or https, at most kLongestWebAddress bytes; empty where there is no picture.
std::string PictureOfPage(std::string_view page, const std::string& charset, const std::string& address);

}  // namespace quillet
