// The selection in the window: made with the mouse or with keys, drawn into the picture, given out for the
// clipboard. It stays on its lines when the article moves and goes when the text under it changes.
// User-interface thread.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <QTimer>

#include "app/page/picture_lines.h"
#include "input/pre_translation.h"
#include "input/text/copy_text.h"
#include "input/text/selection.h"
#include "render/page_row.h"

namespace quillet {

class SelectionControl {
 public:
  struct Handlers {
    std::function<void()> changed;           // the picture is different
    std::function<void(int rows)> scrollBy;  // the local article, where the selection grows beyond it
    std::function<void()> finished;          // the user has let go of a selection that holds text
  };
  // `text` outlives the object.
  SelectionControl(const PictureLines& text, Handlers handlers);

  // The boundary, 0 to kCols, that is meant by a point of a row with so many halves of cells left of it.
  int BoundaryAt(int row, int halves) const;
  // `row` of the picture; the slot is the boundary that is meant, for a word the cell that was pressed.
  void Press(int row, int slot, SelectUnit unit, SelectShape shape);
  // From where the selection, or the last press, began. The slot is the boundary that is meant.
  void ExtendTo(int row, int slot);
  // The pointer is so many rows above (negative) or below the page, whose nearest place ExtendTo was told; 0:
  // within again. The local article scrolls until then.
  void DragBeyond(int rows);
  void Release();
  // From a press, or from an ExtendTo, to the release.
  bool IsDragging() const { return dragging_; }

  // Moves the end of the selection; begun at the BBS's cursor, whose row of the picture may be -1: none, and
  // then at the page's first character.
  void Step(SelectStep step, int cursorRow, int cursorCol);
  void SelectAll();
  void Clear();
  // Something is selected.
  bool IsShown() const;
  // Whether the cell of the picture lies in it.
  bool Contains(int row, int col) const;

  // The lines may be different: clears the selection when what is selected reads differently now.
  void OnTextChanged();
  // Lays the selection over the page.
  void Decorate(Page& page) const;

  const Selection& Selected() const { return selection_; }
  std::u16string Text() const;

 private:
  TextPoint PointAt(int row, int slot, SelectShape shape) const;
  void Grow(TextPoint to);
  void FollowPointer();
  TextPoint Stepped(SelectStep step);
  void BringIntoSight(int line);
  // To be called after each change of the selection.
  void Remember();
  std::uint64_t Print() const;
  void StopDragging();
  bool HoldsText() const;

  const PictureLines& text_;
  Handlers handlers_;
  Selection selection_;
  bool begun_ = false;  // there is a point to extend from
  bool dragging_ = false;
  // Of the pointer.
  int row_ = 0;
  int slot_ = 0;
  int beyond_ = 0;
  QTimer follow_;
  std::optional<int> stepCol_;  // that steps up and down keep to
  // Of what the selection was made in.
  bool inArticle_ = false;
  std::uint64_t print_ = 0;
};

}  // namespace quillet
