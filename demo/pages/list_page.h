// A list that fills rows 3 to 22, with a cursor mark, paging, and a jump by number. Base of the lists of
// boards, articles, letters and users. The client's thread.
#pragma once

#include <string>

#include "demo/page.h"

namespace quillet::demo {

class ListPage : public Page {
 public:
  explicit ListPage(PageHost& host) : host_(host) {}

  void Draw(Canvas& canvas) final;
  void OnKey(const Key& key) final;
  bool HasGlobalKeys() const override { return true; }

 protected:
  static constexpr int kFirstRow = 3;
  static constexpr int kRowsShown = 20;
  // Bars leave the last column alone.
  static constexpr int kBarEnd = kCols - 1;

  virtual int Count() const = 0;
  // Reads again what is listed; before each frame.
  virtual void Update() {}
  // Rows 0 to 2 and 23.
  virtual void DrawFrame(Canvas& canvas) = 0;
  virtual void DrawItem(Canvas& canvas, int row, int index) = 0;
  virtual void OpenItem(int index) = 0;
  // Keys that are no move and do not open or leave.
  virtual void OnOtherKey(const Key& key) = 0;

  int Selected() const { return selected_; }
  void Select(int index);

  PageHost& host_;

 private:
  bool Move(const Key& key);
  void AskNumber(const Key& firstDigit);

  int selected_ = 0;
};

}  // namespace quillet::demo
