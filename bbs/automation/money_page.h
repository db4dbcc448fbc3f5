// The BBS's page for giving money: its prompts, what stands in them, and the words with which it answers.
// Pure functions of a snapshot; the character tables must be loaded before one is made. Any thread.
#pragma once

#include <string>
#include <string_view>

#include "bbs/page_tests.h"

namespace quillet {

// One of the page's prompts: its label, and the field behind it.
class MoneyPrompt {
 public:
  MoneyPrompt(int row, std::u16string_view label);

  // The cursor stands in its row.
  bool Asks(const ScreenSnapshot& screen) const { return screen.cursorRow == row_ && Stands(screen); }
  bool Holds(const ScreenSnapshot& screen, std::u16string_view text) const;

 private:
  static constexpr int kLabelCol = 4;
  bool Stands(const ScreenSnapshot& screen) const;

  int row_;
  std::string label_;
};

class MoneyPage {
 public:
  // `pages` outlives the object.
  explicit MoneyPage(const PageTests& pages) : pages_(pages) {}

  // The page, whatever stands in its fields.
  bool IsShown(const ScreenSnapshot& screen) const;
  // It asks for the receiver, and nothing is typed yet.
  bool IsFresh(const ScreenSnapshot& screen) const;

  // The words of a message on the bottom row or above a banner, without what asks for a key; empty when none
  // waits for one.
  std::u16string MessageOn(const ScreenSnapshot& screen) const;

  enum class Verdict { kGiven, kNotEnough, kNoSuchUser, kUnknown };
  static Verdict VerdictOf(std::u16string_view words);

  const MoneyPrompt receiver{3, u"要送給誰: "};
  const MoneyPrompt amount{5, u"送多少: "};
  const MoneyPrompt confirmation{7, u"確定要送嗎[y/N]: "};

 private:
  const PageTests& pages_;
};

}  // namespace quillet
