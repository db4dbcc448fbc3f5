#include "bbs/page_tests.h"

#include <algorithm>
#include <cstring>

#include "core/byte_words.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::uint8_t kBrightYellowOnCyan = 0xCB;
constexpr std::uint8_t kBrightWhiteOnMagenta = 0xAF;
constexpr std::uint8_t kFirstColouredBackground = 0x20;  // an attribute below it has a black background
constexpr std::uint8_t kLowFiveBits = 0x1F;
constexpr int kBlue = 4;
constexpr int kMagenta = 5;
constexpr int kRed = 1;

bool IsBlank(const ScreenSnapshot& screen, int row, int col) {
  return screen.TextAt(row, col) == ' ';
}

// The first column at or behind `col` whose attribute is another one.
int EndOfRun(const ScreenSnapshot& screen, int row, int col, std::uint8_t attr) {
  while (col < kCols && screen.AttrAt(row, col) == attr)
    ++col;
  return col;
}

// For places inside the screen. Most texts differ in their first byte; asking for it here spares them the
// call. No text (there are no tables) stands nowhere.
bool StandsAt(const ScreenSnapshot& screen, int row, int col, const std::string& big5) {
  const std::uint8_t* cells = screen.text[static_cast<std::size_t>(row)].data() + col;
  return static_cast<char>(*cells) == *big5.data() && col + static_cast<int>(big5.size()) <= kCols &&
         std::memcmp(cells, big5.data(), big5.size()) == 0;
}

}  // namespace

bool RowStartsWith(const ScreenSnapshot& screen, int row, int col, std::string_view big5) {
  if (row < 0 || row >= kRows || col < 0 || col > kCols) return false;
  const std::string_view rest = screen.RowText(row).substr(static_cast<std::size_t>(col));
  return rest.substr(0, big5.size()) == big5;
}

bool RowStartsWith(const ScreenSnapshot& screen, int row, int col, std::u16string_view text,
                   std::size_t length) {
  return RowStartsWith(screen, row, col, std::string_view(ToBig5(text.substr(0, length))));
}

PageTests::PageTests() {
  const auto probe = [](int row, int col, std::u16string_view text) { return Probe{row, col, ToBig5(text)}; };
  const auto bottom = [&probe](std::initializer_list<std::u16string_view> texts) {
    std::vector<Probe> probes;
    for (const auto text : texts)
      probes.push_back(probe(kBottomRow, 0, text));
    return probes;
  };

  reader_ = probe(kBottomRow, 2, u"瀏覽");
  readerHelp_ = probe(kBottomRow, 58, u"  (h)說明 (←/q)離開 ");
  lineRangeStart_ = probe(kBottomRow, 37, u" 01~");
  pageOne_ = probe(kBottomRow, 9, u" 1/");
  promptsOverReader_ = {
      probe(1, 0, u"請輸入看板名稱(按空白鍵自動搜尋):"),
      probe(22, 0, u"標題："),
      probe(22, 0, u"[搜尋]關鍵字:"),
      probe(22, 0, u"區分大小寫(Y/N/Q)? [N]"),
      probe(22, 0, u" 要把範例加入到文章內嗎?[y/N]"),
      probe(22, 0, u"▲ 回應至 (F)看板 (M)作者信箱 (B)二者皆是 (Q)取消？[F]"),
      probe(22, 0, u"把這篇文章收入到暫存檔？[y/N]"),
      probe(22, 0, u" 確定要選這篇嗎?[y/N]"),
  };
  helpLine_ = probe(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ");
  selectPrompt_ = probe(kBottomRow, 0, u" 文章選讀 ");
  mailMenu_ = probe(0, 0, u"【郵件選單】");
  editor_ = probe(kBottomRow, 0, u" 編輯文章");
  anyKey_ = probe(kBottomRow, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ");
  pushLines_ = bottom({u"您覺得這篇文章", u"推 ", u"噓 ", u"→ ", u" ◆ 本板禁止快速連續推文，請再等",
                       u" ◆ 本文已過長, 禁止快速連續推文, 請再等", u" ◆ 系統禁止短時間內大量推文",
                       u" ◆ 抱歉, 禁止推薦", u" ◆ 對不起，您的文章或推文間隔太近囉！", u" ◆ 本文已刪除",
                       u" ◆ 無法推文: 使用者不可發言"});
  pushEchoes_ = bottom({u"推 ", u"噓 ", u"→ "});
  disputed_ = {
      probe(kBottomRow, 0, u"  瀏覽 第 1/1 頁"),
      probe(11, 0, u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，"),
      probe(12, 0, u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。"),
  };
  pauseExceptions_ = {
      probe(0, 0, u"請選擇簽名檔 (1-9, 0=不加 x=隨機)[1]: "),
      probe(0, 0, u" 奧拉拉文藝坊 "),
      probe(20, 0, u"│ 文章"),
  };
  bracketTitle_ = probe(0, 0, u"【");
  animations_ = bottom({u" >>> 動畫播放中... 可按 q, Ctrl-C 或其它任意鍵停止 ",
                        u" >>> 互動式動畫播放中... 可按 q 或 Ctrl-C 停止 ",
                        u" ◆  >>> 暫停播放動畫，請按任意鍵繼續或 q 中斷。 <<< "});
  animationPrompts_ =
      bottom({u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]", u" ◆ 已強制中斷互動式系統"});
  pushConfirm_ = ToBig5(u" 確定[y/N]:y");
  bullet_ = ToBig5(u"●");
  star_ = ToBig5(u"★");
}

bool PageTests::Matches(const ScreenSnapshot& screen, const Probe& probe) {
  return StandsAt(screen, probe.row, probe.col, probe.big5);
}

bool PageTests::AnyMatches(const ScreenSnapshot& screen, const std::vector<Probe>& probes) {
  return std::any_of(probes.begin(), probes.end(),
                     [&](const Probe& probe) { return Matches(screen, probe); });
}

bool PageTests::IsInputField(const ScreenSnapshot& screen) const {
  if (!screen.CursorInside() || screen.cursorCol < 1) return false;
  const std::uint8_t* const first = screen.attr[static_cast<std::size_t>(screen.cursorRow)].data();
  const std::uint8_t* cell = first + screen.cursorCol;
  if (*cell != kAttrInputField) return false;
  // Fields are wide: whole words first.
  constexpr std::uint64_t kWordOfField = RepeatByte(kAttrInputField);
  while (cell - first >= 8 && LoadWord(cell - 8) == kWordOfField)
    cell -= 8;
  while (cell != first && cell[-1] == kAttrInputField)
    --cell;
  if (cell == first) return false;
  const std::uint8_t prompt = cell[-1];
  return prompt < kFirstColouredBackground && (prompt & kLowFiveBits) != 0;
}

bool PageTests::IsListCursor(const ScreenSnapshot& screen) const {
  if (!screen.CursorInside() || screen.cursorRow < 2 || screen.cursorRow > 22) return false;
  const int row = screen.cursorRow;
  const int col = screen.cursorCol;
  if (screen.AttrAt(row, col) != kAttrBlank) return false;
  const bool mark = screen.TextAt(row, col) == '>' || (col >= 1 && StandsAt(screen, row, col - 1, bullet_));
  return mark && !IsEditor(screen);
}

bool PageTests::IsParkedBehindReader(const ScreenSnapshot& screen) {
  if (screen.cursorRow != kBottomRow || !screen.CursorInside() || screen.cursorCol < kReaderCursorCol ||
      screen.curAttr != kAttrBlank)
    return false;
  const int col = screen.cursorCol;
  return IsBlank(screen, kBottomRow, col - 1) &&
         screen.AttrAt(kBottomRow, col - 1) >= kFirstColouredBackground && IsBlank(screen, kBottomRow, col) &&
         screen.AttrAt(kBottomRow, col) == kAttrBlank;
}

bool PageTests::IsReader(const ScreenSnapshot& screen, ReaderForm form) const {
  if (form == ReaderForm::kStrict && !IsParkedBehindReader(screen)) return false;
  if (!Matches(screen, reader_)) return false;
  if (IsInputField(screen) && AnyMatches(screen, promptsOverReader_)) return false;
  return !IsDisputedNotice(screen);
}

bool PageTests::IsReaderWithHelpFooter(const ScreenSnapshot& screen) const {
  return IsReader(screen, ReaderForm::kPlain) && Matches(screen, readerHelp_);
}

bool PageTests::IsReaderTop(const ScreenSnapshot& screen) const {
  const int left = BackgroundOf(screen.AttrAt(kBottomRow, 2));
  if (left == kMagenta) return true;
  if (left == kBlue && Matches(screen, lineRangeStart_)) return true;
  return BackgroundOf(screen.AttrAt(kBottomRow, 60)) == kRed && Matches(screen, pageOne_);
}

bool PageTests::IsArticleList(const ScreenSnapshot& screen) const {
  return Matches(screen, selectPrompt_) || Matches(screen, helpLine_);
}

bool PageTests::IsArticleListStrict(const ScreenSnapshot& screen) const {
  return IsListCursor(screen) && Matches(screen, selectPrompt_) && Matches(screen, helpLine_);
}

bool PageTests::IsPushLine(const ScreenSnapshot& screen) const {
  return AnyMatches(screen, pushLines_);
}

bool PageTests::IsPushConfirm(const ScreenSnapshot& screen) const {
  return AnyMatches(screen, pushEchoes_) &&
         RowStartsWith(screen, kBottomRow, screen.cursorCol - 12, std::string_view(pushConfirm_));
}

bool PageTests::IsMailMenu(const ScreenSnapshot& screen) const {
  return Matches(screen, mailMenu_);
}

bool PageTests::IsEditor(const ScreenSnapshot& screen) const {
  return Matches(screen, editor_);
}

bool PageTests::IsStarLine(const ScreenSnapshot& screen) const {
  const int row = screen.cursorRow;
  if ((row != 22 && row != kBottomRow) || !StandsAt(screen, row, 0, star_)) return false;
  const int sender = EndOfRun(screen, row, 0, kBrightYellowOnCyan);
  const int message = EndOfRun(screen, row, sender, kBrightWhiteOnMagenta);
  if (sender < 4 || message - sender < 3 || message >= kCols) return false;
  return screen.AttrAt(row, message) == kAttrBlank && IsBlank(screen, row, message) &&
         screen.cursorCol == message;
}

bool PageTests::IsAnyKeyBanner(const ScreenSnapshot& screen) const {
  return screen.cursorRow == kBottomRow && screen.cursorCol == kCols - 1 && Matches(screen, anyKey_);
}

bool PageTests::IsPause(const ScreenSnapshot& screen) const {
  if (AnyMatches(screen, animations_)) return true;
  if (!IsAnyKeyBanner(screen) || AnyMatches(screen, pauseExceptions_)) return false;
  return !(Matches(screen, bracketTitle_) && BackgroundOf(screen.AttrAt(22, 0)) == 0);
}

bool PageTests::IsAnimationPrompt(const ScreenSnapshot& screen) const {
  return AnyMatches(screen, animationPrompts_);
}

bool PageTests::IsDisputedNotice(const ScreenSnapshot& screen) const {
  return std::all_of(disputed_.begin(), disputed_.end(),
                     [&](const Probe& probe) { return Matches(screen, probe); });
}

}  // namespace quillet
