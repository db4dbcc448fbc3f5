// What the BBS asks on a page, and what becomes of the keys that are typed there. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>

#include "bbs/page_kind.h"
#include "core/screen_snapshot.h"

namespace quillet {

// The questions that make a difference to a key.
enum class PageQuestion : std::uint8_t {
  kNone,            // none of these
  kPassword,        // what is typed shows nowhere
  kPushKind,        // with which a push begins
  kLogOutConfirmed  // to leave the BBS, answered with "y" and not sent off yet
};

// What is typed on a page is taken as
enum class Typing : std::uint8_t {
  kCommands,  // keys of the page
  kLetter,    // the letter or digit that answers a question
  kText       // a text
};

class QuestionReader {
 public:
  // The character tables must have been loaded.
  QuestionReader();
  PageQuestion Read(const ScreenSnapshot& screen) const;

 private:
  std::string password_, pushKind_, logOutConfirmed_;
};

// Of a classified screen: a text goes into the editor, the push line and other fields, and onto a page that
// nothing is known of.
Typing TypingOn(const ScreenSnapshot& screen, PageKind kind, PageQuestion question);

}  // namespace quillet
