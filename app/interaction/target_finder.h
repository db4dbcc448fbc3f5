// What a command is about that names nothing itself: the link and the user id at a place of the picture,
// under the pointer, or where the BBS's cursor stands. User-interface thread.
#pragma once

#include <string>

#include "app/interaction/command_runner.h"
#include "app/interaction/pointer/link_hover.h"
#include "app/interaction/pointer/pointer_control.h"
#include "app/page/article_view.h"
#include "app/page/page_composer.h"
#include "app/page/shown_text.h"
#include "core/cell_position.h"

namespace quillet {

class TargetFinder {
 public:
  // All outlive the object.
  struct Parts {
    const Sightings& seen;
    const ScreenSnapshot& screen;
    const UnderstoodPage& page;  // what stands on it
    const PageComposer& composer;
    const ArticleView& article;
    const ShownText& shown;
    const LinkHover& links;
    const PointerControl& pointer;
  };
  explicit TargetFinder(const Parts& parts) : parts_(parts) {}

  // A cell is one of the picture. Ids are as the BBS has sent them; empty: there is none.
  CommandTarget At(CellPosition cell) const;
  std::u16string IdUnderPointer() const;
  // The one under the pointer, else the one at the BBS's cursor.
  std::u16string IdInQuestion() const;
  // The link under the pointer, and the id in question.
  CommandTarget Current() const;

 private:
  std::u16string IdAtCell(CellPosition cell) const;

  Parts parts_;
};

}  // namespace quillet
