// What keys and mouse do on the pages of the BBS and of the client, in words, for the help page: what is no
// command of the table. Constant; any thread.
#pragma once

#include <span>
#include <string_view>

namespace quillet {

struct PageHelpLine {
  std::u16string_view name;
  std::u16string_view keys;
};
struct PageHelp {
  std::u16string_view title;
  std::span<const PageHelpLine> lines;
};

std::span<const PageHelp> HelpOfPages();

}  // namespace quillet
