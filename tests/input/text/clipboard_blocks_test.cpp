#include "input/text/clipboard_blocks.h"

#include <gtest/gtest.h>
#include <vector>

namespace quillet {
namespace {

// A clipboard that refuses a step on demand.
class FakeClipboard : public ClipboardDevice {
 public:
  enum class Fault { kOpen, kEmpty, kSet };
  explicit FakeClipboard(Fault fault) : fault_(fault) {}

  bool Open() override {
    open = fault_ != Fault::kOpen;
    return open;
  }
  bool Empty() override {
    EXPECT_TRUE(open);
    return fault_ != Fault::kEmpty;
  }
  bool Set(std::span<const ClipboardBlock>) override {
    EXPECT_TRUE(open);
    return fault_ != Fault::kSet;
  }
  void Close() override {
    EXPECT_TRUE(open);
    open = false;
  }
  // The system's last error is another one as soon as the clipboard is closed.
  int LastError() const override { return open ? 1418 : 0; }

  bool open = false;

 private:
  Fault fault_;
};

using Fault = FakeClipboard::Fault;

TEST(ClipboardBlocksTest, EveryFailureIsToldAndLeavesTheClipboardClosed) {
  const std::pair<Fault, std::u16string> cases[] = {
      {Fault::kOpen, u"Cannot open the Clipboard"},
      {Fault::kEmpty, u"Cannot empty the Clipboard"},
      {Fault::kSet, u"Unable to set Clipboard data, error: 1418"}};
  for (const auto& [fault, message] : cases) {
    FakeClipboard clipboard(fault);
    std::vector<std::u16string> told;
    const bool done =
        SetClipboard(clipboard, ClipboardFormat::kUnicodeText, u"x", 2, [&](const std::u16string& text) {
          EXPECT_FALSE(clipboard.open) << "a message box would keep other programs from it";
          told.push_back(text);
        });
    EXPECT_FALSE(done);
    EXPECT_EQ(told, std::vector{message});
    EXPECT_FALSE(clipboard.open);
    EXPECT_FALSE(SetClipboard(clipboard, ClipboardFormat::kUnicodeText, u"x", 2, {}));
  }
}

}  // namespace
}  // namespace quillet
