// One push from the open article and back, page by page:
//
//   reader --X--> kind? --1/2/3--> text field --text, Enter--> confirmation --y, Enter--> reader
//
// A BBS may skip the question for the kind, may answer with a message instead of any of these pages, and may
// come back to the article's list. No key is sent but to a page that has been recognised. Used by the push
// run, on its worker thread.
#pragma once

#include <string>

#include "bbs/automation/dialogue.h"
#include "bbs/automation/push_ledger.h"
#include "bbs/automation/push_pages.h"
#include "bbs/automation/push_pieces.h"
#include "bbs/automation/screen_waits.h"

namespace quillet {

enum class PushAnswer {
  kGoOn,        // the page that was asked for is there
  kTaken,       // the BBS has taken the push
  kCancelled,   // it has not, and the article is back
  kMessage,     // Message() says what the BBS has said
  kNotOffered,  // the BBS offers neither the wanted kind nor a note
  kNoAnswer
};

struct PushMessage {
  std::u16string words;
  bool isRefusal = false;  // the push has not been taken
  bool isHome = false;     // the article is back
};

class PushDialogue {
 public:
  // `order` outlives the object.
  PushDialogue(ScreenWaits& waits, const PushOrder& order);
  PushDialogue(const PushDialogue&) = delete;
  PushDialogue& operator=(const PushDialogue&) = delete;

  // An article shows, or will do so beneath an instant message.
  bool AwaitArticle();
  // From the article to the empty field for the words.
  PushAnswer AskForField();
  // Columns that can be typed into the field that shows.
  int FieldColumns() const { return PushPages::FieldColumns(waits_.Seen()); }
  // Into the field.
  PushAnswer Type(const PushPiece& piece);
  // From the field, with the words in it.
  PushAnswer Confirm();
  // Leaves the field or a question: nothing has been pushed.
  PushAnswer Cancel();
  // Where the BBS came back to the article's list.
  void ReturnToArticle();
  const PushMessage& Message() const { return message_; }

 private:
  using Condition = Dialogue::Condition;
  PushAnswer AnswerKind();
  PushAnswer TakeMessage();
  // False when the BBS has not `answered`.
  bool Press(std::string_view key, const Condition& answered, const Condition& stillAsking) {
    return dialogue_.Press(key, answered, stillAsking) != Dialogue::Answer::kNone;
  }
  bool IsReader(const ScreenSnapshot& screen) const {
    return pages_.IsReader(screen, PageTests::ReaderForm::kStrict);
  }
  // The reader, or the article's line in its list.
  bool IsHome(const ScreenSnapshot& screen) const;

  ScreenWaits& waits_;
  const PageTests& pages_;
  const PushPages push_;
  const PushOrder& order_;
  Dialogue dialogue_;
  PushMessage message_;
  const Condition isHome_ = [this](const ScreenSnapshot& screen) { return IsHome(screen); };
  const Condition isReader_ = [this](const ScreenSnapshot& screen) { return IsReader(screen); };
  const Condition asksKind_ = [this](const ScreenSnapshot& screen) { return push_.IsKindQuestion(screen); };
};

}  // namespace quillet
