// The pages on the way of a push, recognised and read. Pure functions of a snapshot; the character tables
// must be loaded before one is made. Any thread.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "bbs/page_tests.h"
#include "bbs/push_line.h"

namespace quillet {

class PushPages {
 public:
  // `pages` outlives the object.
  explicit PushPages(const PageTests& pages);

  // Whether the article is worth it: the question, complete.
  bool IsKindQuestion(const ScreenSnapshot& screen) const;
  // The key that gives this answer to it; 0 when it is none of the choices.
  char KeyFor(const ScreenSnapshot& screen, PushKind kind) const;

  // The field for the words has the cursor, with something typed or nothing.
  bool IsTextField(const ScreenSnapshot& screen) const;
  // Nothing is typed yet.
  bool IsEmptyTextField(const ScreenSnapshot& screen) const;
  // Columns that can be typed from the cursor on: the last cell of a field is the cursor's.
  static int FieldColumns(const ScreenSnapshot& screen);
  // The kind that the field is for.
  std::optional<PushKind> KindOfField(const ScreenSnapshot& screen) const;

  // The question whether to push, unanswered,
  bool IsConfirmation(const ScreenSnapshot& screen) const;
  // and with "y" typed.
  bool IsConfirmed(const ScreenSnapshot& screen) const;

  // " ◆ ..." with the cursor at its end, waiting for a key.
  bool IsMessage(const ScreenSnapshot& screen) const;
  // Its words, without the mark and the hint at its end.
  static std::u16string WordsOf(const ScreenSnapshot& screen);
  // The seconds after which the BBS will take a push that it says to refuse for now; nothing when it does not
  // say that it ever will. Where it names no time, kUsualWait.
  static std::optional<int> SecondsToWait(std::u16string_view words);
  // The message says that a push was not taken, rather than something unknown.
  bool IsRefusal(const ScreenSnapshot& screen) const {
    return IsMessage(screen) && pages_.IsPushLine(screen);
  }

  static constexpr int kUsualWait = 15;

 private:
  const PageTests& pages_;
  std::string question_, confirmation_, message_;
  std::array<std::string, kPushKinds> marks_;
};

}  // namespace quillet
