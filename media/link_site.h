// Whose page a link is: its host, read from the link as a whole, so that a host's name within another name,
// in front of an "@", or later in the link is not taken for it. Pure; any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

class LinkSite {
 public:
  // A link that is no web address, or that names a port, is nobody's page.
  explicit LinkSite(std::u16string_view link);

  // The host is this one; it is in lower case, and an empty one is none.
  bool Is(std::u16string_view host) const { return !host_.empty() && host_ == host; }
  // The host is this one with the prefix in front of it.
  bool Is(std::u16string_view prefix, std::u16string_view host) const;
  bool IsSecure() const;  // by https
  // Where the "/" behind the host stands in the link.
  std::size_t PathBegin() const { return path_; }

 private:
  std::u16string host_;  // in lower case; empty: nobody's
  std::size_t path_ = 0;
};

}  // namespace quillet
