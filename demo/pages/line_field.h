// A text being typed into a field of a row. Part of a page; the client's thread.
#pragma once

#include <string>

#include "demo/canvas.h"
#include "demo/key_decoder.h"

namespace quillet::demo {

enum class Echo { kText, kNothing };

class LineField {
 public:
  // Holds at most `columns` columns; the field is drawn one wider, for the cursor.
  explicit LineField(int columns, std::string text = {}, Echo echo = Echo::kText)
      : columns_(columns), text_(std::move(text)), echo_(echo), at_(text_.size()) {}

  // Draws the field at a place, leaves the cursor in it.
  void Draw(Canvas& canvas, int row, int col) const;
  // True when the key was for the text: characters, Backspace and the moves within the line.
  bool OnKey(const Key& key);

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);

 private:
  int columns_;
  std::string text_;
  Echo echo_;
  std::size_t at_;
};

}  // namespace quillet::demo
