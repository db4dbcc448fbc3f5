// Puts together what the picture shows: the BBS's screen styled by the user's settings and lists, or the
// page of the local article, with the captions of the commands that a click gives. User-interface thread.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "app/page/article_captions.h"
#include "app/page/article_view.h"
#include "bbs/understood_page.h"
#include "input/narrow_sight.h"
#include "render/article_bar.h"
#include "render/paint/frame_painter.h"
#include "render/style/reveal_state.h"
#include "render/style/style_rules.h"

namespace quillet {

class PageComposer {
 public:
  // All outlive the composer.
  struct Parts {
    ArticleView& article;
    const Bookmarks& bookmarks;
    const SettingsStore& settings;
    const Sightings& seen;
  };
  explicit PageComposer(const Parts& parts);

  // Settings, lists or the login are different.
  void RefreshRules();
  // The Tab key. `now` in milliseconds.
  void PressReveal(std::int64_t now);
  bool IsRevealing() const { return reveal_.Shown() != Reveal::kNothing; }
  // Whether anything was revealed.
  bool EndReveal();

  // Before the next Compose: another screen has come, or the rules are others. `page` is what stands on it.
  void MarkKeywords(const ScreenSnapshot& screen, UnderstoodPage& page) {
    keywordMarks_.Mark(screen, rules_.keywords, page);
  }
  // Before the next Compose: another screen has come. Returns what is to be sent so that the next page of a
  // list is seen from its first line on, in a small window.
  std::string OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page);
  // Fills everything of `frame` that the screen or the article decides; the caret too where `caretShown`.
  // `page` is marked with the keywords.
  void Compose(const ScreenSnapshot& screen, const UnderstoodPage& page, bool caretShown, FrameState& frame);
  // The caret alone, in a frame that Compose has filled.
  void PlaceCaret(const ScreenSnapshot& screen, const UnderstoodPage& page, bool caretShown,
                  FrameState& frame) const;

  // Its caption stands in the picture.
  bool Offers(Command command) const;
  // What a click on the cell does.
  Command CommandAt(int row, int col) const;
  // Returns whether the picture is different.
  bool SetHovered(Command command);
  // The row of the picture that shows the screen's row; -1: none.
  int PageRowOf(int screenRow) const;
  // The screen's row that a row of the picture shows; -1: none, as where the local article is.
  int ScreenRowAt(int pageRow) const { return rowOf_[static_cast<std::size_t>(pageRow)]; }
  // The BBS asks something on its last rows and has left the article's page above them as it was: the local
  // article stays in the picture above the question, if it shows that same page.
  bool IsPromptOverArticle(const ScreenSnapshot& screen) const;
  bool ShowsArticle() const { return article_.IsShown(); }
  // What a key that is the BBS's does in a small window; see NarrowSight.
  std::optional<std::string> OnKey(const KeyPress& press, const ScreenSnapshot& screen,
                                   const UnderstoodPage& page) {
    return sight_.OnKey(press, screen, page);
  }
  // Rows of the picture that the window shows, the lowest ones. Returns whether they are others.
  bool SetRowsInSight(int rows);

 private:
  void ComposeScreen(const ScreenSnapshot& screen, const UnderstoodPage& page, FrameState& frame);
  void KeepArticleAbovePrompt(const ScreenSnapshot& screen, FrameState& frame);
  void LaySigns(const UnderstoodPage& understood, Page& page) const;
  void MoveIntoSight(int cursorRow, Page& page);
  bool OffersCommands(const UnderstoodPage& page) const;

  const Parts parts_;
  ArticleView& article_;
  StyleRules rules_;
  KeywordMarks keywordMarks_;
  RevealState reveal_;
  NarrowSight sight_;
  std::array<int, kRows> rowOf_{};
  std::vector<CaptionArea> captions_;
  Command hovered_ = Command::kNone;
  std::uint32_t pageKind_ = 0;
  // What the BBS showed last of the article that is shown in its place.
  struct Covered {
    ScreenSnapshot screen;
    UnderstoodPage page;
  };
  std::optional<Covered> covered_;
};

}  // namespace quillet
