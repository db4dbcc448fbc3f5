// Any bytes as screens, any lists and settings: what is shown of them keeps the characters where the BBS has
// them or hides them in their places, and the hands find only what is there.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "bbs/page_understanding.h"
#include "bbs/screen_classifier.h"
#include "core/charset.h"
#include "input/text/id_at.h"
#include "render/article_bar.h"
#include "render/row_cells.h"
#include "render/style/styled_screen.h"
#include "settings/files/text_lines.h"
#include "settings/settings_store.h"

#include "fuzz/drawing.h"

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1794000000;
constexpr std::u16string_view kIds[] = {u"kagami", u"tsukasa", u"a", u"abcdefghijkl", u"鏡", u""};

// What StyleRules points to, by the first bytes of the input.
struct Wishes {
  explicit Wishes(Input& input) {
    SettingsMap map;
    for (const std::u16string_view key :
         {u"Work", u"MergePush", u"GrayBackgroundPush", u"LighterPushLine", u"ColorMyId",
          u"DarkerReadArticle", u"HideCharShowStar", u"ShowHighlight", u"BlackPush", u"SBlackPush",
          u"BlackTitle", u"SBlackTitle"})
      map.SetNumber(u"Basic", key, input.Byte() % 6);
    ApplySettings(map, settings);
    for (const std::u16string_view id : kIds) {
      const std::uint8_t kind = input.Byte();
      if (kind >= 128) continue;
      names.Set(
          id, {static_cast<ListKind>(kind % 4), kind % 8 >= 4, input.Byte(), kind % 16 >= 8 ? u"好人" : u""});
    }
    const std::uint8_t rest = input.Byte();
    rules = {.settings = &settings,
             .names = &names,
             .titleWords = &titleWords,
             .keywords = Keywords({u"鏡", u"oon"}),
             .myId = std::u16string(kIds[rest % std::size(kIds)]),
             .reveal = static_cast<Reveal>(rest % 3),
             .now = rest < 8 ? 0 : kNow};
    postTime = rest % 2 == 0 ? 0 : kNow - (std::int64_t{input.Byte()} << 20);
  }

  Settings settings;
  NameList names;
  std::vector<std::u16string> titleWords{u"Moon"};
  StyleRules rules;
  std::int64_t postTime = 0;
};

void CheckRow(const PageRow& shown, const PageRow& plain) {
  const RowCells before = DecodeRow(plain.cells, Charset());
  const RowCells after = DecodeRow(shown.cells, Charset());
  for (std::size_t col = 0; col < kCols; ++col) {
    Require(shown.cells[col].fore < 48 && shown.cells[col].back < 48);
    const bool lead = after[col].part == CellPart::kLead;
    Require(lead == (col + 1 < kCols && after[col + 1].part == CellPart::kTrail));
    Require(!lead || after[col].unit == after[col + 1].unit);
    if (after[col] == before[col]) continue;
    const bool star = after[col].unit == u'＊' || after[col].unit == u'*';
    Require(star ? after[col].part == before[col].part : after[col].unit == u' ');
  }
  Require(shown.tagCol < kCols && after[shown.tagCol].part != CellPart::kTrail);
}

void CheckLook(const ScreenSnapshot& screen, UnderstoodPage page, const Wishes& wishes) {
  KeywordMarks().Mark(screen, wishes.rules.keywords, page);
  const StyledScreen styled = StyleScreen(screen, page, wishes.rules, wishes.postTime);
  int last = -1;
  for (std::size_t row = 0; row < kRows; ++row) {
    const int origin = styled.rowOf[row];
    if (origin < 0) {
      Require(styled.page[row] == PageRow());
      continue;
    }
    Require(origin > last);
    last = origin;
    const auto from = static_cast<std::size_t>(origin);
    CheckRow(styled.page[row], PlainRow(screen.text[from], screen.attr[from]));
  }
  Require(last == kRows - 1);
}

void CheckBar(const PageRow& statusLine, int choice) {
  ArticleBarInput input;
  input.line = choice * 40 - 20;
  input.lines = choice * 9999;
  input.controlCodes = choice % 3 == 0;
  for (int command = 0; command < choice % 20; ++command)
    input.offers.push_back({.command = 1 + command,
                            .key = static_cast<char16_t>(command % 3 == 0 ? 0 : u'a' + command),
                            .words = std::u16string(static_cast<std::size_t>(command * choice % 9), u'字')});
  for (const ArticleBar& bar : {MakeArticleBar(input), MakeArticleBarOver(statusLine, input)}) {
    int last = 0;
    for (const CaptionArea& area : bar.areas) {
      Require(area.first >= last && area.last > area.first);
      last = area.last;
    }
    Require(last <= kCols);
  }
}

void CheckHands(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  Require(static_cast<int>(page.kind) < kPageKinds);
  for (int row = -1; row <= kRows; ++row)
    for (int col = -1; col <= kCols; ++col) {
      const auto placed = PlacedIdAt(screen, page, row, col);
      Require(IdAt(screen, page, row, col) == (placed ? placed->id : std::u16string()));
      Require(!placed || (col >= placed->first && col < placed->last && placed->last <= kCols));
    }
}

void RunInput(std::string_view bytes) {
  static const PageTests pages;
  Input input(bytes);
  const Wishes wishes(input);
  Drawing drawing;
  PageUnderstanding understanding;
  bool more = true;
  for (int screens = 0; more && screens < 4; ++screens) {
    more = drawing.Draw(input);
    ScreenSnapshot& screen = drawing.screen;
    if (drawing.classify) ClassifyScreen(pages, screen, ScreenReason::kUpdated);
    const UnderstoodPage& page = understanding.Look(screen);
    CheckLook(screen, page, wishes);
    CheckBar(PlainRow(screen.text[kRows - 1], screen.attr[kRows - 1]), screen.text[0][0]);
    CheckHands(screen, page);
  }
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  quillet::Require(quillet::LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillet::RunInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
