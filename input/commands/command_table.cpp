#include <algorithm>

#include "core/key_sequence.h"
#include "input/commands/commands.h"

namespace quillet {
namespace {

using enum Condition;

constexpr KeyChord Plain(int key) {
  return {key, Modifier::kNone};
}
constexpr KeyChord Shift(int key) {
  return {key, Modifier::kShift};
}
constexpr KeyChord Control(int key) {
  return {key, Modifier::kControl};
}
// The client's own: the BBS has no use for both together.
constexpr KeyChord Both(int key) {
  return {key, Modifier::kControlShift};
}
constexpr KeyChord Alt(int key) {
  return {key, Modifier::kAlt};
}

constexpr PageSet kListed{PageKind::kMenu, PageKind::kList, PageKind::kArticleList};
constexpr PageSet kBrowsed{PageKind::kMenu, PageKind::kList, PageKind::kArticleList, PageKind::kReader};
constexpr PageSet kArticles{PageKind::kArticleList};
constexpr PageSet kReaders{PageKind::kReader};
constexpr PageSet kEditors{PageKind::kEditor};

// In the order of Command.
// clang-format off
constexpr std::array<CommandRow, kCommandCount> kTable{{
    {},

    {.command = Command::kLogin, .menu = CommandMenu::kConnection, .text = u"登入…(&L)", .keys = {Both('L')}},
    {.command = Command::kConnect, .menu = CommandMenu::kConnection, .text = u"連線到…(&N)",
     .keys = {Both('N')}, .holder = KeyHolder::kTerminal},
    // Without keys: nobody needs it often, and pressed by mistake it would leave the site.
    {.command = Command::kDemo, .menu = CommandMenu::kConnection, .text = u"示範站台(&D)"},
    // A dead connection looks as if it were up as long as nothing is sent.
    {.command = Command::kReconnect, .menu = CommandMenu::kConnection, .gap = Gap::kLine,
     .text = u"重新連線(&R)", .keys = {Both('R')}, .needs = {kBegun}, .notWhile = {kConnecting}},
    {.command = Command::kDisconnect, .menu = CommandMenu::kConnection, .text = u"中斷連線(&K)",
     .keys = {Both('D')}, .needs = {kHasLine}},
    // Without keys: a log that nobody knows of is worse than none.
    {.command = Command::kSessionLog, .menu = CommandMenu::kConnection, .gap = Gap::kLine,
     .text = u"記錄連線內容…(&G)", .other = {u"停止記錄連線內容(&G)", kLogging}, .mark = Mark::kTick,
     .markedWhile = kLogging},
    {.command = Command::kQuit, .menu = CommandMenu::kConnection, .gap = Gap::kLine, .text = u"離開(&X)",
     .keys = {Alt(kKeyF4)}},

    // Ctrl+C stays with the BBS (its editor resets colours with it), so copying needs Shift. Ctrl+V pastes,
    // because that is what everybody's hands do; the BBS's own Ctrl+V, a rare editor command, is in the menu.
    {.command = Command::kCopy, .menu = CommandMenu::kEdit, .text = u"複製(&C)",
     .keys = {Both('C'), Control(kKeyInsert)}, .holder = KeyHolder::kTerminal, .picture = 409},
    {.command = Command::kCopyHtml, .menu = CommandMenu::kEdit, .text = u"複製成 HTML（含色彩）(&H)",
     .keys = {Both('W')}},
    {.command = Command::kCopyAnsi, .menu = CommandMenu::kEdit, .text = u"複製成 ANSI 色碼(&N)",
     .keys = {Both('Q')}},
    {.command = Command::kSelectAll, .menu = CommandMenu::kEdit, .text = u"全選(&A)", .keys = {Both('A')},
     .picture = 410},
    {.command = Command::kPaste, .menu = CommandMenu::kEdit, .gap = Gap::kLine, .text = u"貼上(&P)",
     .keys = {Both('V'), Control('V'), Shift(kKeyInsert)}, .holder = KeyHolder::kTerminal, .picture = 411,
     .needs = {kConnected}},
    {.command = Command::kPasteShortLink, .menu = CommandMenu::kEdit, .text = u"貼上短網址(&S)",
     .keys = {Both('K')}, .picture = 412, .needs = {kConnected}},
    {.command = Command::kSearchFirst, .menu = CommandMenu::kEdit, .gap = Gap::kLine,
     .text = u"用 {engine1} 搜尋選取的文字(&1)", .keys = {Both('S')}, .needs = {kSelection},
     .shown = {kFirstEngine}},
    {.command = Command::kSearchSecond, .menu = CommandMenu::kEdit,
     .text = u"用 {engine2} 搜尋選取的文字(&2)", .keys = {Both('E')}, .needs = {kSelection},
     .shown = {kSecondEngine}},
    {.command = Command::kChooseLink, .menu = CommandMenu::kEdit, .text = u"開啟畫面上的連結…(&O)",
     .keys = {Both('U')}},
    {.command = Command::kChooseLinkCopy, .menu = CommandMenu::kEdit, .text = u"複製畫面上的連結…(&L)",
     .keys = {Alt('U')}},
    {.command = Command::kAskUserPage, .menu = CommandMenu::kEdit, .text = u"使用者的網頁…(&U)",
     .keys = {Both('I')}},
    // Where the keys make a character of the keyboard's layout, that is typed.
    {.command = Command::kSendControlV, .menu = CommandMenu::kEdit, .gap = Gap::kLine,
     .text = u"傳送 Ctrl+V 給站台(&V)", .keys = {KeyChord{'V', Modifier::kControlAlt}}, .siteBytes = "\x16",
     .needs = {kConnected}},

    {.command = Command::kFullScreen, .menu = CommandMenu::kLook, .text = u"全螢幕(&F)",
     .keys = {Plain(kKeyF11)}, .holder = KeyHolder::kTerminal, .mark = Mark::kTick,
     .markedWhile = kFullScreen},
    {.command = Command::kWorkMode, .menu = CommandMenu::kLook, .text = u"上班模式(&W)", .keys = {Alt('W')},
     .holder = KeyHolder::kTerminal, .mark = Mark::kTick, .markedWhile = kWorkMode},
    {.command = Command::kOrdinaryLayout, .menu = CommandMenu::kLook, .gap = Gap::kLine,
     .text = u"一般版面(&O)", .keys = {Alt('1')}, .mark = Mark::kOneOf, .markedWhile = kOrdinaryLayout},
    {.command = Command::kFittedLayout, .menu = CommandMenu::kLook, .text = u"填滿視窗(&L)",
     .keys = {Alt('2')}, .mark = Mark::kOneOf, .markedWhile = kFittedLayout},
    {.command = Command::kNarrowLayout, .menu = CommandMenu::kLook, .text = u"迷你視窗(&M)",
     .keys = {Alt('3')}, .mark = Mark::kOneOf, .markedWhile = kNarrowLayout},
    // The plus needs Shift on some keyboards.
    {.command = Command::kZoomIn, .menu = CommandMenu::kLook, .gap = Gap::kLine, .text = u"放大(&Z)",
     .keys = {Control(kKeyPlus), Both(kKeyPlus)}, .holder = KeyHolder::kTerminal, .held = Held::kAgain},
    {.command = Command::kZoomOut, .menu = CommandMenu::kLook, .text = u"縮小(&S)",
     .keys = {Control(kKeyMinus)}, .holder = KeyHolder::kTerminal, .held = Held::kAgain},
    {.command = Command::kZoomUsual, .menu = CommandMenu::kLook, .text = u"原來的大小(&R)",
     .keys = {Control('0')}, .holder = KeyHolder::kTerminal},
    {.command = Command::kReveal, .menu = CommandMenu::kLook, .gap = Gap::kLine, .text = u"顯示名單描述(&D)",
     .keys = {Control(kKeyTab)}},
    {.command = Command::kTogglePlaces, .menu = CommandMenu::kLook, .text = u"推文IP轉地理位置(&I)",
     .keys = {Both('G')}, .articleKey = u'i', .mark = Mark::kTick, .markedWhile = kPlaces},
    {.command = Command::kSideButtons, .menu = CommandMenu::kLook, .gap = Gap::kLine,
     .text = u"移到畫面兩邊的按鈕(&B)", .keys = {Plain(kKeyF6)}, .holder = KeyHolder::kTerminal,
     .needs = {kHasSideButtons}},

    {.command = Command::kJump, .menu = CommandMenu::kArticle, .text = u"跳到文章代碼…(&J)",
     .keys = {Both('J')}, .picture = 404, .needs = {kConnected}, .notWhile = {kAutomation}},
    {.command = Command::kBookmark, .menu = CommandMenu::kArticle, .gap = Gap::kLine,
     .text = u"加入／移除書籤(&M)", .keys = {Both('M')}, .articleKey = u'm',
     .caption = {.text = u"加入書籤", .other = {u"移除書籤", kBookmarked}}, .picture = 405,
     .needs = {kConnected, kArticle}, .notWhile = {kCodeOutOfReach}},
    {.command = Command::kPush, .menu = CommandMenu::kArticle, .text = u"推文(&P)", .keys = {Alt('T')},
     .articleKey = u'p', .caption = {.text = u"推!"}, .picture = 363, .siteBytes = "X",
     .needs = {kConnected, kArticle}},
    {.command = Command::kPushOn, .menu = CommandMenu::kArticle, .text = u"連續推文…(&X)",
     .keys = {Both('X')}, .articleKey = u'x', .caption = {.text = u"連續推文"},
     .needs = {kConnected, kArticle}, .notWhile = {kAutomation}},
    {.command = Command::kGiveMoney, .menu = CommandMenu::kArticle, .text = u"自動發P幣…(&G)",
     .keys = {Alt('G')}, .articleKey = u'g', .caption = {.text = u"自動發P幣"},
     .needs = {kConnected, kArticle}, .notWhile = {kAutomation}},
    {.command = Command::kFirstPush, .menu = CommandMenu::kArticle, .text = u"推文開頭(&F)",
     .keys = {Both('F')}, .caption = {.text = u"推文開頭", .shown = {kHasPushes}},
     .needs = {kLocalArticle, kHasPushes}},
    {.command = Command::kTogglePictures, .menu = CommandMenu::kArticle, .text = u"開／關本頁圖片(&I)",
     .keys = {Both('P')}, .needs = {kHasPictures}},
    {.command = Command::kSearch, .menu = CommandMenu::kArticle, .gap = Gap::kLine,
     .text = u"在文章中尋找…(&S)", .keys = {Control('F')}, .held = Held::kAgain, .needs = {kLocalArticle}},
    {.command = Command::kSearchNext, .menu = CommandMenu::kArticle, .text = u"找下一處(&N)",
     .keys = {Plain(kKeyF3)}, .held = Held::kAgain, .needs = {kLocalArticle}},
    {.command = Command::kSearchPrevious, .menu = CommandMenu::kArticle, .text = u"找上一處(&V)",
     .keys = {Shift(kKeyF3)}, .held = Held::kAgain, .needs = {kLocalArticle}},
    {.command = Command::kSaveArticle, .menu = CommandMenu::kArticle, .gap = Gap::kLine,
     .text = u"儲存文章…(&A)", .keys = {Alt('D')}, .needs = {kLocalArticle}},
    {.command = Command::kPrintArticle, .menu = CommandMenu::kArticle, .text = u"列印文章…(&R)",
     .keys = {Alt('P')}, .needs = {kLocalArticle}},
    {.command = Command::kHotList, .menu = CommandMenu::kArticle, .gap = Gap::kLine, .text = u"熱門文章(&H)",
     .keys = {Both('H')}, .picture = 316},
    {.command = Command::kTrackedList, .menu = CommandMenu::kArticle, .text = u"追蹤文章(&T)",
     .keys = {Both('T')}, .picture = 317},
    {.command = Command::kBookmarkList, .menu = CommandMenu::kArticle, .text = u"書籤(&B)",
     .keys = {Both('B')}, .picture = 318},
    {.command = Command::kCompactLists, .menu = CommandMenu::kArticle, .text = u"清單每篇一行(&1)",
     .keys = {Alt('L')}, .mark = Mark::kTick, .markedWhile = kCompactLists},

    {.command = Command::kOptions, .menu = CommandMenu::kSettings, .text = u"選項…(&O)", .keys = {Both('O')},
     .picture = 319},
    {.command = Command::kAskName, .menu = CommandMenu::kSettings, .text = u"加入名單…(&B)",
     .keys = {Both('Y')}},
    {.command = Command::kKeys, .menu = CommandMenu::kHelp, .text = u"按鍵一覽(&K)",
     .keys = {Plain(kKeyF1), Control(kKeyF1)}, .holder = KeyHolder::kTerminal},
    {.command = Command::kAbout, .menu = CommandMenu::kHelp, .text = u"關於 Quillet(&A)"},

    {.command = Command::kOpenLink, .text = u"開啟連結(&O)", .other = {u"開啟文章(&O)", kArticleLink},
     .needs = {kLink}},
    {.command = Command::kCopyLink, .text = u"複製連結網址(&L)",
     .other = {u"複製文章代碼(&L)", kAddresslessLink}, .needs = {kLink}},
    {.command = Command::kNoteName, .text = u"將 {id} 加入名單…(&B)", .needs = {kUserId}},
    {.command = Command::kUserPage, .text = u"{id} 的網頁(&U)", .needs = {kUserId}},
    {.command = Command::kOpenPicture, .text = u"開啟圖片(&E)", .needs = {kClosedPicture}},
    {.command = Command::kSavePicture, .text = u"另存圖片…(&V)", .needs = {kPictureFile}},
    {.command = Command::kCopyPicture, .text = u"複製圖片(&I)", .needs = {kPictureFile}},
    {.command = Command::kCopyPictureLink, .text = u"複製圖片網址(&D)", .needs = {kPicture}},
    {.command = Command::kBrowsePicture, .text = u"在瀏覽器開啟(&W)", .needs = {kPicture}},
    {.command = Command::kClosePicture, .text = u"關閉圖片(&X)", .needs = {kOpenedPicture}},

    {.command = Command::kBack, .text = u"離開", .picture = 401, .siteVirtualKey = kKeyLeft, .siteKeyName = u"←",
     .needs = {kConnected}, .pages = kBrowsed},
    {.command = Command::kOpenLine, .text = u"打開", .picture = 402, .siteVirtualKey = kKeyRight, .siteKeyName = u"→",
     .needs = {kConnected}, .pages = kListed},
    {.command = Command::kTop, .text = u"到開頭", .picture = 364, .siteVirtualKey = kKeyHome, .siteKeyName = u"Home",
     .pages = kBrowsed},
    {.command = Command::kEnd, .text = u"到結尾", .picture = 365, .siteVirtualKey = kKeyEnd, .siteKeyName = u"End",
     .pages = kBrowsed},
    {.command = Command::kPreviousInThread, .text = u"同主題的上一篇", .picture = 406, .siteBytes = "[",
     .siteKeyName = u"[", .needs = {kConnected, kArticle}, .pages = kReaders},
    {.command = Command::kNextInThread, .text = u"同主題的下一篇", .picture = 407, .siteBytes = "]",
     .siteKeyName = u"]", .needs = {kConnected, kArticle}, .pages = kReaders},
    {.command = Command::kFindTitle, .text = u"找標題", .picture = 403, .siteBytes = "/", .siteKeyName = u"/",
     .needs = {kConnected}, .pages = kArticles},
    {.command = Command::kWrite, .text = u"發表文章", .picture = 408, .siteBytes = "\x10",
     .siteKeyName = u"Ctrl+P", .needs = {kConnected}, .pages = kArticles},
    {.command = Command::kFinishText, .text = u"存檔或放棄", .picture = 413, .siteBytes = "\x18",
     .siteKeyName = u"Ctrl+X", .needs = {kConnected}, .pages = kEditors},
}};
// clang-format on

constexpr bool IsInOrder() {
  for (std::size_t i = 0; i < kTable.size(); ++i)
    if (static_cast<std::size_t>(kTable[i].command) != i) return false;
  return true;
}
static_assert(IsInOrder());

// ---- Where they stand besides the menus of their own

constexpr std::array kEditorFile{
    MenuEntry{.command = Command::kSaveArticle, .text = u"另存新檔…(&S)"},
    MenuEntry{.command = Command::kPrintArticle, .text = u"列印…(&P)"},
    MenuEntry{.command = Command::kQuit, .gap = Gap::kLine},
};
constexpr std::array kEditorEdit{
    MenuEntry{.command = Command::kCopy},
    MenuEntry{.command = Command::kPaste},
    MenuEntry{.command = Command::kSelectAll, .gap = Gap::kLine},
};
constexpr std::array kEditorLook{
    MenuEntry{.command = Command::kFullScreen},
    // For whoever has forgotten the keys.
    MenuEntry{.command = Command::kWorkMode, .text = u"一般檢視(&N)"},
};
constexpr std::array kEditorHelp{
    MenuEntry{.command = Command::kAbout, .text = u"關於記事本(&A)", .keys = EntryKeys::kUntold},
};
constexpr std::array kContext{
    MenuEntry{.command = Command::kOpenPicture, .shown = {kClosedPicture}},
    MenuEntry{.command = Command::kSavePicture, .shown = {kPicture}},
    MenuEntry{.command = Command::kCopyPicture, .shown = {kPicture}},
    MenuEntry{.command = Command::kCopyPictureLink, .shown = {kPicture}},
    MenuEntry{.command = Command::kBrowsePicture, .shown = {kPicture}},
    MenuEntry{.command = Command::kClosePicture, .shown = {kOpenedPicture}},
    MenuEntry{.command = Command::kOpenLink, .shown = {kLink}},
    MenuEntry{.command = Command::kCopyLink, .shown = {kLink}},
    MenuEntry{.command = Command::kNoteName, .gap = Gap::kLine, .shown = {kUserId}},
    MenuEntry{.command = Command::kUserPage, .shown = {kUserId}},
    MenuEntry{.command = Command::kCopy, .gap = Gap::kLine, .shown = {kSelection}},
    MenuEntry{.command = Command::kCopyHtml, .shown = {kSelection}},
    MenuEntry{.command = Command::kCopyAnsi, .shown = {kSelection}},
    MenuEntry{.command = Command::kSearchFirst,
              .gap = Gap::kLine,
              .text = u"用 {engine1} 搜尋「{selection}」(&1)",
              .shown = {kSelection}},
    MenuEntry{.command = Command::kSearchSecond,
              .text = u"用 {engine2} 搜尋「{selection}」(&2)",
              .shown = {kSelection}},
    MenuEntry{.command = Command::kPaste, .gap = Gap::kLine},
    MenuEntry{.command = Command::kPasteShortLink},
    MenuEntry{.command = Command::kSelectAll, .gap = Gap::kLine},
};

constexpr std::array kPictureMenu{
    MenuEntry{.command = Command::kSavePicture},
    MenuEntry{.command = Command::kCopyPicture},
    MenuEntry{.command = Command::kCopyPictureLink, .gap = Gap::kLine},
    MenuEntry{.command = Command::kBrowsePicture},
    MenuEntry{.command = Command::kClosePicture, .gap = Gap::kLine},
};

constexpr std::array kCaptions{Command::kBookmark, Command::kPush, Command::kPushOn, Command::kFirstPush,
                               Command::kGiveMoney};

constexpr std::array kBesideAnyPage{Command::kHotList, Command::kTrackedList, Command::kBookmarkList,
                                    Command::kOptions};
constexpr std::array kBesideList{Command::kBack, Command::kOpenLine, Command::kTop, Command::kEnd,
                                 Command::kJump};
constexpr std::array kBesideArticles{Command::kBack,      Command::kOpenLine, Command::kTop,  Command::kEnd,
                                     Command::kFindTitle, Command::kJump,     Command::kWrite};
constexpr std::array kBesideReader{Command::kBack,        Command::kTop,      Command::kEnd,
                                   Command::kPush,        Command::kBookmark, Command::kPreviousInThread,
                                   Command::kNextInThread};
constexpr std::array kBesideEditor{Command::kFinishText, Command::kSelectAll, Command::kCopy, Command::kPaste,
                                   Command::kPasteShortLink};
static_assert(std::max({kBesideList.size(), kBesideArticles.size(), kBesideReader.size(),
                        kBesideEditor.size()}) == kMostBesidePage);

std::vector<MenuEntry> OfMenuBar(CommandMenu menu) {
  std::vector<MenuEntry> entries;
  for (const CommandRow& row : kTable)
    if (row.menu == menu) entries.push_back({.command = row.command, .gap = row.gap});
  return entries;
}

template <std::size_t count>
std::vector<MenuEntry> Copy(const std::array<MenuEntry, count>& entries) {
  return {entries.begin(), entries.end()};
}

}  // namespace

std::span<const CommandRow> AllCommands() {
  return std::span(kTable).subspan(1);
}

const CommandRow& RowOf(Command command) {
  return kTable[static_cast<std::size_t>(command)];
}

std::string_view SiteKeyOf(Command command) {
  const CommandRow& row = RowOf(command);
  return row.siteBytes.empty() ? KeySequence(row.siteVirtualKey) : row.siteBytes;
}

std::vector<MenuEntry> EntriesOf(CommandMenu menu) {
  switch (menu) {
    case CommandMenu::kNone:
      return {};
    case CommandMenu::kEditorFile:
      return Copy(kEditorFile);
    case CommandMenu::kEditorEdit:
      return Copy(kEditorEdit);
    case CommandMenu::kEditorLook:
      return Copy(kEditorLook);
    case CommandMenu::kEditorHelp:
      return Copy(kEditorHelp);
    case CommandMenu::kContext:
      return Copy(kContext);
    case CommandMenu::kPicture:
      return Copy(kPictureMenu);
    default:
      return OfMenuBar(menu);
  }
}

std::u16string_view TitleOf(CommandMenu menu) {
  switch (menu) {
    case CommandMenu::kConnection:
      return u"連線(&C)";
    case CommandMenu::kEdit:
    case CommandMenu::kEditorEdit:
      return u"編輯(&E)";
    case CommandMenu::kLook:
    case CommandMenu::kEditorLook:
      return u"檢視(&V)";
    case CommandMenu::kArticle:
      return u"文章(&A)";
    case CommandMenu::kSettings:
      return u"設定(&S)";
    case CommandMenu::kHelp:
    case CommandMenu::kEditorHelp:
      return u"說明(&H)";
    case CommandMenu::kEditorFile:
      return u"檔案(&F)";
    case CommandMenu::kNone:
    case CommandMenu::kContext:
    case CommandMenu::kPicture:
      break;
  }
  return {};
}

std::span<const Command> CaptionsOfArticle() {
  return kCaptions;
}

std::span<const Command> CommandsBesideAnyPage() {
  return kBesideAnyPage;
}

std::span<const Command> CommandsBeside(PageKind page) {
  switch (page) {
    case PageKind::kMenu:
    case PageKind::kList:
      return kBesideList;
    case PageKind::kArticleList:
      return kBesideArticles;
    case PageKind::kReader:
      return kBesideReader;
    case PageKind::kEditor:
      return kBesideEditor;
    case PageKind::kOther:
    case PageKind::kTyping:
    case PageKind::kPause:
      break;
  }
  return {};
}

}  // namespace quillet
