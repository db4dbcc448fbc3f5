// What the user's settings and lists ask of the picture of a line. The view makes one whenever settings,
// lists or the Tab key's state change; the styling functions only read it. User-interface thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bbs/keywords.h"
#include "settings/files/name_list.h"
#include "settings/settings.h"

namespace quillet {

// What the Tab key shows for the moment: the descriptions of listed ids; also what the lists hide.
enum class Reveal { kNothing, kDescriptions, kHidden };

struct StyleRules {
  const Settings* settings = nullptr;                       // never null
  const NameList* names = nullptr;                          // never null
  const std::vector<std::u16string>* titleWords = nullptr;  // never null
  Keywords keywords;
  std::u16string myId;  // empty while nobody is known to be logged in
  Reveal reveal = Reveal::kNothing;
  std::int64_t now = 0;  // seconds since 1970
};

}  // namespace quillet
