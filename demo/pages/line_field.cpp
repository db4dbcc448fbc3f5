#include "demo/pages/line_field.h"

#include "demo/big5_text.h"

namespace quillet::demo {

void LineField::Draw(Canvas& canvas, int row, int col) const {
  canvas.Fill(row, col, col + columns_ + 1, kAttrInputField);
  if (echo_ == Echo::kText) canvas.Put(row, col, text_, kAttrInputField);
  canvas.MoveCursor(row, col + (echo_ == Echo::kText ? static_cast<int>(at_) : 0));
}

bool LineField::OnKey(const Key& key) {
  switch (key.kind) {
    case KeyKind::kText:
      if (text_.size() + key.text.size() <= static_cast<std::size_t>(columns_)) {
        text_.insert(at_, key.text);
        at_ += key.text.size();
      }
      return true;
    case KeyKind::kBackspace:
      if (at_ > 0) {
        const std::size_t start = PreviousCharacter(text_, at_);
        text_.erase(start, at_ - start);
        at_ = start;
      }
      return true;
    case KeyKind::kDelete:
      if (at_ < text_.size()) text_.erase(at_, CharacterLength(text_, at_));
      return true;
    case KeyKind::kLeft:
      at_ = PreviousCharacter(text_, at_);
      return true;
    case KeyKind::kRight:
      if (at_ < text_.size()) at_ += CharacterLength(text_, at_);
      return true;
    case KeyKind::kHome:
      at_ = 0;
      return true;
    case KeyKind::kEnd:
      at_ = text_.size();
      return true;
    default:
      return false;
  }
}

void LineField::SetText(std::string_view text) {
  text_ = std::string(CutColumns(text, columns_));
  at_ = text_.size();
}

}  // namespace quillet::demo
