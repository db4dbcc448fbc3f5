#include "demo/pages/farewell.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/content_loader.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kLeaveRow = 22;

class FarewellPage : public Page {
 public:
  FarewellPage(PageHost& host, std::u16string_view line)
      : lines_(LoadScreen(host.TheHouse().contentFolder, "farewell.txt")), line_(line) {}
  void Draw(Canvas& canvas) override {
    int row = 2;
    for (const std::string& text : lines_)
      canvas.Put(row++, 0, CellsOf(text));
    canvas.Put(kLeaveRow, 10, line_, Attr(kWhite, kBlack, Weight::kBold));
    canvas.MoveCursor(kRows - 1, 0);
  }
  void OnKey(const Key&) override {}

 private:
  std::vector<std::string> lines_;
  std::u16string line_;
};

}  // namespace

void ShowFarewell(PageHost& host, std::u16string_view line) {
  host.Open(std::make_unique<FarewellPage>(host, line));
  host.HangUp();
}

void AskToLeave(PageHost& host) {
  LinePrompt::Place place{kLeaveRow, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] ", 2, {}};
  host.Open(std::make_unique<LinePrompt>(host, std::move(place), [&host](const std::string& answer) {
    if (answer == "y" || answer == "Y") ShowFarewell(host, u"謝謝光臨，下次再見！");
  }));
}

}  // namespace quillet::demo
