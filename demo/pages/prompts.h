// Small pages drawn over the bottom of another one: a question with a field, a message that waits for a key,
// the any-key banner below a full screen. The client's thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/page.h"
#include "demo/pages/line_field.h"

namespace quillet::demo {

// A label and a field on one row. Enter hands the text on after the prompt is closed; Ctrl-C and ESC hand
// on nothing.
class LinePrompt : public Page {
 public:
  struct Place {
    int row = kRows - 1;
    std::u16string label;
    int columns = 20;
    std::string text;
  };
  using Done = std::function<void(const std::string& text)>;
  LinePrompt(PageHost& host, Place place, Done done);

  bool CoversScreen() const override { return false; }
  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  PageHost& host_;
  Place place_;
  LineField field_;
  Done done_;
};

// " ◆ text" on the bottom row; any key closes it.
class MessagePage : public Page {
 public:
  MessagePage(PageHost& host, std::u16string_view text, std::function<void()> done = {});
  bool CoversScreen() const override { return false; }
  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  PageHost& host_;
  std::u16string text_;
  std::function<void()> done_;
};

// The banner "請按任意鍵繼續" on the bottom row with the cursor behind it.
void DrawAnyKeyBanner(Canvas& canvas);

// Big5 lines from some row on and the banner below; any key goes on. Over the page below unless it covers.
class AnyKeyPage : public Page {
 public:
  enum class Covers { kScreen, kOwnRows };
  AnyKeyPage(PageHost& host, int firstRow, std::vector<std::string> lines, Covers covers,
             std::function<void()> done = {});
  bool CoversScreen() const override { return covers_ == Covers::kScreen; }
  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  PageHost& host_;
  int firstRow_;
  std::vector<std::string> lines_;
  Covers covers_;
  std::function<void()> done_;
};

}  // namespace quillet::demo
