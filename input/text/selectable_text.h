// Lines of text that can be selected: those of the BBS's screen or of the local article. Implemented where
// the lines are kept. User-interface thread.
#pragma once

#include "bbs/article/article_lines.h"

namespace quillet {

class SelectableText {
 public:
  virtual ~SelectableText() = default;
  virtual int Count() const = 0;
  // 0 to Count() - 1. Valid until the text changes.
  virtual const ArticleLine& Line(int index) const = 0;
};

}  // namespace quillet
