// The web addresses of what the user looks up: a search for a text, a user's page. Pure; any thread.
#pragma once

#include <string>
#include <string_view>

#include "core/endpoints.h"

namespace quillet {

enum class SearchEngine { kFirst, kSecond };

// "&", "#" and "+" become "%26", "%23" and "%2B"; everything else stays.
std::u16string EscapeQuery(std::u16string_view text);
// The text is escaped; between its lines stands a blank, and so it does for control characters. What is too
// long for an address is cut off. Empty for an empty text or an engine that is not configured.
std::u16string SearchAddress(SearchEngine engine, std::u16string_view text, const Endpoints& endpoints);
// Empty for an empty id or without a mirror.
std::u16string UserPageAddress(std::u16string_view id, const Endpoints& endpoints);
// What asks the shortener for a link: the text follows as it is. Empty without a shortener.
std::u16string ShortenerRequest(std::u16string_view text, const Endpoints& endpoints);

}  // namespace quillet
