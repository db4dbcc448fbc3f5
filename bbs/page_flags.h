// One bit per kind of page that the classifier recognises; several can hold at once. Read by the view and by
// every automation from a snapshot's `pageFlags`.
#pragma once

#include <cstdint>

namespace quillet {

enum PageFlags : std::uint32_t {
  PF_READING = 0x1,                // the article reader
  PF_READ_TOP = 0x2,               // at the top of the article
  PF_READ_END = 0x4,               // on its last page
  PF_READ_FOOTER_RED = 0x8,        // the footer's right part is red
  PF_PUSH_LINE = 0x10,             // a push prompt, push echo or push refusal on the bottom row
  PF_PUSH_CONFIRM = 0x20,          // the push asks to be confirmed
  PF_LIST_CURSOR = 0x40,           // a list with its cursor mark
  PF_MAIL_MENU = 0x80,             //
  PF_BROWSABLE = 0x100,            // connected to the BBS, and a reader or a list is showing
  PF_ARTICLE_LIST = 0x200,         //
  PF_ARTICLE_LIST_CURSOR = 0x400,  // the article list, drawn completely
  PF_ANIMATION_PROMPT = 0x800,     //
  PF_PAUSE = 0x1000,               // a press-any-key pause or a playing animation
  PF_INPUT_FIELD = 0x2000,         //
  PF_STAR_LINE = 0x4000,           // an instant message lies over the bottom rows
  PF_EDITOR = 0x8000,              //
  PF_ANYKEY_BANNER = 0x10000,      //
  PF_DISPUTED_NOTICE = 0x20000,    // the notice in front of a disputed article
  PF_PUSH_OVER_READER = 0x40000    // the push prompt over an open article; set by the view's handler
};

}  // namespace quillet
