// What stands in the picture as lines of text: the BBS's screen, row by row, or the whole local article; and
// which row of the picture shows which line. What is selected and where links are is told in these lines.
// They read as the BBS has sent them, also where the picture merges something; what the user's lists hide is
// not in them. User-interface thread.
#pragma once

#include <array>

#include "app/page/page_composer.h"
#include "app/page/picture_lines.h"

namespace quillet {

class ShownText : public PictureLines {
 public:
  // All outlive the object. `understood` is what stands on the screen, `page` the picture that `composer` has
  // composed last; the rows of the BBS's screen are those that it shows.
  ShownText(const ScreenSnapshot& screen, const UnderstoodPage& understood, const Page& page,
            const PageComposer& composer, const ArticleView& article);

  int Count() const override;
  const ArticleLine& Line(int index) const override;
  // By the picture that was composed last. None in the bottom row of the local article, and in the rows of a
  // prompt below it.
  int LineAtRow(int row) const override;
  int LineDrawnAtRow(int row) const override;
  int RowOfLine(int line) const override;
  int RowsBetween(int from, int to) const override;
  bool IsArticle() const override;
  LinkPlaces Links(int index) const override;
  AddressInLine Address(int index) const override;
  // How a line is shown, or would be; what is laid over the page may be in it.
  PageRow Look(int index) const;

 private:
  const ArticleLine& Keep(int index, const ArticleLine& line) const;

  const ScreenSnapshot& screen_;
  const UnderstoodPage& understood_;
  const Page& page_;
  const PageComposer& composer_;
  const ArticleView& article_;
  // Lines that are kept nowhere as they read here. A page of them is more than anybody holds at once.
  mutable std::array<ArticleLine, kRows> kept_{};
};

}  // namespace quillet
