// Keeps what the client's screen shows and turns the next frame into the fewest bytes that lead there:
// cursor positions, erase to end of line, colours and runs of text. One per client, on the client's thread.
#pragma once

#include <string>

#include "demo/canvas.h"

namespace quillet::demo {

class TerminalWriter {
 public:
  // The bytes from the frame before to this one; empty when nothing differs. The first frame clears the
  // screen. Every frame ends with plain attributes and the cursor in its place.
  std::string Frame(const Canvas& next);

  // The next frame clears the screen and draws everything.
  void Forget() { known_ = false; }
  // The next frame draws the whole of this row, whatever stands there.
  void ForgetRow(int row) { forgottenRow_ = row; }

 private:
  void Start();
  void WriteRow(const Canvas& next, int row);
  void WriteRun(const Canvas::Row& cells, int row, int from, int to);
  void MoveTo(int row, int col);
  void SetAttr(std::uint8_t attr);

  Canvas shown_;
  std::string out_;
  bool known_ = false;
  int forgottenRow_ = -1;
  std::uint8_t attr_ = kAttrBlank;
  int row_ = 0;
  int col_ = 0;  // -1: the client's cursor is behind column 79, wherever that is
};

}  // namespace quillet::demo
