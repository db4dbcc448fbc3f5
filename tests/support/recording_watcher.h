// A watcher and a notify target that write down what reaches them, in order. Its pages are simple marks on
// the screen, so that a test, or a fuzzer, can put any page up with a few bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/notify_target.h"
#include "core/screen_snapshot.h"
#include "core/screen_watcher.h"

namespace quillet {

// All that a batch may leave behind; parameters count only while they are being collected.
inline bool SameScreen(const ScreenSnapshot& a, const ScreenSnapshot& b) {
  if (a.text != b.text || a.attr != b.attr || a.cursorRow != b.cursorRow || a.cursorCol != b.cursorCol ||
      a.curAttr != b.curAttr || a.pageFlags != b.pageFlags || a.msgCount != b.msgCount ||
      a.bottomJump != b.bottomJump || a.inBatch != b.inBatch || a.escState != b.escState)
    return false;
  if (a.escState != '[') return true;
  if (a.paramCount != b.paramCount) return false;
  for (int i = 0; i < a.paramCount && i < 16; ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (a.params[index] != b.params[index]) return false;
  }
  return true;
}

class RecordingWatcher : public ScreenWatcher, public NotifyTarget {
 public:
  struct Event {
    bool isBell = false;
    ScreenSnapshot screen;  // of a bell: undefined
  };

  // The reader has 'R' at the start of the bottom line, an article list has 'A'; the other tests look for
  // their mark at the top left.
  bool IsReader(const ScreenSnapshot& screen) const override { return screen.TextAt(23, 0) == 'R'; }
  bool IsReaderSettled(const ScreenSnapshot& screen) const override {
    return IsReader(screen) && screen.CursorInside() && screen.cursorRow == 23 && screen.cursorCol >= 69 &&
           screen.TextAt(23, screen.cursorCol - 1) == ' ' &&
           screen.AttrAt(23, screen.cursorCol - 1) >= 0x20 && screen.TextAt(23, screen.cursorCol) == ' ' &&
           screen.AttrAt(23, screen.cursorCol) == 7 && screen.curAttr == 7;
  }
  bool IsArticleList(const ScreenSnapshot& screen) const override {
    return screen.TextAt(1, 0) == 'A' || screen.TextAt(23, 0) == 'A';
  }
  bool IsStarLine(const ScreenSnapshot& screen) const override { return screen.TextAt(0, 0) == 'S'; }
  bool IsListCursor(const ScreenSnapshot& screen) const override { return screen.TextAt(0, 0) == 'C'; }
  bool IsInputField(const ScreenSnapshot& screen) const override { return screen.TextAt(0, 0) == 'I'; }

  void ProcessScreen(ScreenSnapshot& screen, ScreenReason /*reason*/) override {
    screen.pageFlags = IsReader(screen) ? 1 : 0;
    events.push_back({false, screen});
  }
  bool Post(unsigned message, std::uintptr_t first, std::uintptr_t second) override {
    if (message == kMessageBell && first == 0 && second == 0) events.push_back({true, {}});
    return true;
  }

  std::size_t Bells() const { return Count(true); }
  std::size_t Screens() const { return Count(false); }

  std::vector<Event> events;

 private:
  std::size_t Count(bool bells) const {
    std::size_t count = 0;
    for (const Event& event : events)
      count += event.isBell == bells ? 1 : 0;
    return count;
  }
};

inline bool SameEvents(const RecordingWatcher& a, const RecordingWatcher& b) {
  if (a.events.size() != b.events.size()) return false;
  for (std::size_t i = 0; i < a.events.size(); ++i) {
    if (a.events[i].isBell != b.events[i].isBell) return false;
    if (!a.events[i].isBell && !SameScreen(a.events[i].screen, b.events[i].screen)) return false;
  }
  return true;
}

}  // namespace quillet
