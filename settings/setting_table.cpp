#include "settings/setting_table.h"

#include <array>

namespace quillet {
namespace {

using Words = std::u16string_view;
using P = OptionPanel;
using C = OptionControl;

constexpr Words kBasic = u"Basic";
constexpr Words kKeyboard = u"Keyboard";
constexpr Words kMouse = u"Mouse";
constexpr Words kGive = u"AutoGiveP";

constexpr std::array<Words, 3> kLeaveModes{u"先詢問", u"登出再離開", u"直接離開"};
constexpr std::array<Words, 2> kDownloadEngines{u"WinInet", u"WinHttp"};
constexpr std::array<Words, 3> kPictureScopes{u"無", u"當前頁面", u"全部頁面"};
constexpr std::array<Words, 4> kPictureSizes{u"不開圖", u"微開圖", u"一般開圖", u"滿版開圖"};
constexpr std::array<Words, 4> kPictureStyles{u"無", u"延展", u"裁剪", u"動態裁剪"};
constexpr std::array<Words, 3> kTitleTreatments{u"無", u"隱藏文字", u"id打碼"};
constexpr std::array<Words, 5> kPushTreatments{u"無", u"不自動開圖", u"隱藏文字", u"id打碼", u"整行移除"};
constexpr std::array<Words, 3> kHotSortModes{u"依看板排序", u"依時間排序", u"依人氣排序"};
constexpr std::array<Words, 3> kLeftButton{u"無作用", u"Up / Down", u"網頁式控制"};
constexpr std::array<Words, 4> kWheel{u"無作用", u"網頁式控制", u"Up / Down", u"PageUp / PageDown"};
constexpr std::array<Words, 9> kButtonWheel{
    u"無作用",         u"還是滾輪",       u"Up / Down",      u"PageUp / PageDown", u"Home / End",
    u"b / f (上下篇)", u"[ / ] (同主題)", u"A / a (同作者)", u"{ / } (已讀)"};
constexpr std::array<Words, 9> kSideButton{
    u"無作用",         u"前篇文章 / 後篇文章", u"Up / Down",      u"PageUp / PageDown", u"Home / End",
    u"b / f (上下篇)", u"[ / ] (同主題)",      u"A / a (同作者)", u"{ / } (已讀)"};

constexpr int kMostInt = 2147483647;
constexpr bool kInMap = true;    // the map starts with the key
constexpr bool kAbsent = false;  // the field keeps its initial value until the key is set

using S = Settings;

// A flag of the dialog; one that the dialog does not show; a choice; a quantity; a text.
constexpr SettingRow Check(Words section, Words key, bool S::*field, Words initial, bool inMap, P panel,
                           Words label) {
  return {section, key, field, SettingKind::kFlag, initial, inMap, 0, 1, panel, C::kCheckBox, label, {}};
}
constexpr SettingRow Hidden(Words section, Words key, bool S::*field, Words initial, bool inMap) {
  return {section, key, field, SettingKind::kFlag, initial, inMap, 0, 1, P::kNone, C::kNone, {}, {}};
}
constexpr SettingRow Choice(Words section, Words key, int S::*field, Words initial, bool inMap, P panel,
                            C control, Words label, std::span<const Words> choices) {
  return {section, key,     field, SettingKind::kChoice,
          initial, inMap,   0,     static_cast<int>(choices.size()) - 1,
          panel,   control, label, choices};
}
constexpr SettingRow Number(Words section, Words key, int S::*field, Words initial, int least, int most,
                            P panel, C control, Words label) {
  return {section, key, field, SettingKind::kNumber, initial, kInMap, least, most, panel, control, label, {}};
}
constexpr SettingRow Text(Words section, Words key, std::u16string S::*field, Words initial, bool inMap,
                          P panel, Words label) {
  return {section, key,
          field,   SettingKind::kText,
          initial, inMap,
          0,       0,
          panel,   panel == P::kNone ? C::kNone : C::kTextBox,
          label,   {}};
}
// Kept and shown, but nothing acts on it.
constexpr SettingRow NotYet(SettingRow row) {
  row.acts = false;
  return row;
}

// clang-format off
constexpr SettingRow kRows[] = {
  Text(kBasic, u"Site", &S::site, u"", kAbsent, P::kNone, u""),
  Choice(kBasic, u"LeaveMode", &S::leaveMode, u"0", kAbsent, P::kBehavior, C::kComboBox, u"登入中離開站台時", kLeaveModes),
  NotYet(Choice(kBasic, u"DownloadEngine", &S::downloadEngine, u"1", kAbsent, P::kBehavior, C::kRadioButtons, u"圖片下載引擎", kDownloadEngines)),
  NotYet(Choice(kBasic, u"ShowPicMode", &S::showPicMode, u"1", kInMap, P::kBehavior, C::kComboBox, u"自動開圖範圍", kPictureScopes)),
  NotYet(Choice(kBasic, u"QuotePic", &S::quotePic, u"0", kAbsent, P::kBehavior, C::kComboBox, u"引言", kPictureSizes)),
  NotYet(Choice(kBasic, u"ContentPic", &S::contentPic, u"3", kInMap, P::kBehavior, C::kComboBox, u"本文", kPictureSizes)),
  NotYet(Choice(kBasic, u"SignPic", &S::signPic, u"1", kInMap, P::kBehavior, C::kComboBox, u"簽名檔", kPictureSizes)),
  NotYet(Choice(kBasic, u"PushPic", &S::pushPic, u"2", kInMap, P::kBehavior, C::kComboBox, u"推文", kPictureSizes)),
  NotYet(Check(kBasic, u"OpenPicAfterDownload", &S::openPicAfterDownload, u"1", kInMap, P::kBehavior, u"下載完成後才顯示圖片")),
  NotYet(Check(kBasic, u"AutoPlayGif", &S::autoPlayGif, u"1", kInMap, P::kBehavior, u"自動播放gif")),
  Check(kBasic, u"WebArticle", &S::webArticle, u"1", kInMap, P::kBehavior, u"網頁式文章 (圖片上按右鍵可存圖)"),
  Check(kBasic, u"AutoRefreshPush", &S::autoRefreshPush, u"1", kInMap, P::kBehavior, u"自動更新推文"),
  Check(kBasic, u"NotifyArticleChanged", &S::notifyArticleChanged, u"1", kInMap, P::kBehavior, u"文章被作者修改時發出通知"),
  NotYet(Check(kBasic, u"AutoCheckUpdate", &S::autoCheckUpdate, u"1", kInMap, P::kBehavior, u"自動檢查版本更新")),
  Check(kBasic, u"MarkAfterPush", &S::markAfterPush, u"0", kAbsent, P::kBehavior, u"推文後自動將文章加入書籤"),
  Check(kBasic, u"CopyWhenSelect", &S::copyWhenSelect, u"0", kAbsent, P::kBehavior, u"選取文字時自動複製文字"),
  Check(kBasic, u"PasteAutoChangeLine", &S::pasteAutoChangeLine, u"1", kInMap, P::kBehavior, u"貼上文字時自動換行"),
  Check(kBasic, u"PlaySound", &S::playSound, u"1", kInMap, P::kBehavior, u"有任何通知時播放音效"),
  Check(kBasic, u"Flash", &S::flash, u"1", kInMap, P::kBehavior, u"有任何通知時在工作列閃爍"),
  Check(kKeyboard, u"PreventUpDownChangeArticle", &S::preventUpDownChangeArticle, u"0", kAbsent, P::kBehavior, u"防止上/下/Enter/Space鍵換文章"),
  Hidden(kBasic, u"KickOthers", &S::kickOthers, u"0", kAbsent),
  Check(kBasic, u"DarkerReadArticle", &S::darkerReadArticle, u"1", kInMap, P::kDisplay, u"無新內容的已讀文章標題變暗"),
  Check(kBasic, u"DarkerUpdatedArticle", &S::darkerUpdatedArticle, u"1", kInMap, P::kDisplay, u"有新內容的已讀文章標題變暗"),
  Check(kBasic, u"LighterPushLine", &S::lighterPushLine, u"1", kInMap, P::kDisplay, u"推文加亮"),
  Check(kBasic, u"LighterDarkBlue", &S::lighterDarkBlue, u"1", kInMap, P::kDisplay, u"深藍色加亮"),
  Check(kBasic, u"SmoothFont", &S::smoothFont, u"1", kAbsent, P::kDisplay, u"平滑字體\n(ANSI圖會有毛邊)"),
  Check(kBasic, u"NoScrollAnimation", &S::noScrollAnimation, u"0", kAbsent, P::kDisplay, u"取消頁面捲動動畫"),
  Check(kBasic, u"ColorMyId", &S::colorMyId, u"1", kInMap, P::kDisplay, u"自己的id變亮藍色"),
  Check(kBasic, u"MergePush", &S::mergePush, u"1", kInMap, P::kDisplay, u"推文合併相同id"),
  Check(kBasic, u"GrayBackgroundPush", &S::grayBackgroundPush, u"1", kInMap, P::kDisplay, u"推文灰底"),
  NotYet(Check(kBasic, u"IpDetectProxy", &S::ipDetectProxy, u"1", kInMap, P::kDisplay, u"推文IP自動偵測跳板")),
  NotYet(Check(kBasic, u"IpToName", &S::ipToName, u"1", kInMap, P::kDisplay, u"推文IP轉地理位置 (快捷鍵 i )")),
  Check(kBasic, u"TitleShowID", &S::titleShowId, u"1", kInMap, P::kDisplay, u"標題列顯示登入id"),
  Check(kBasic, u"Topmost", &S::topmost, u"0", kAbsent, P::kDisplay, u"最上層顯示"),
  Check(kBasic, u"HideTopLeftIcons", &S::hideTopLeftIcons, u"0", kAbsent, P::kDisplay, u"隱藏畫面兩邊的按鈕"),
  Check(kBasic, u"ShowHighlight", &S::showHighlight, u"1", kInMap, P::kDisplay, u"顯示光棒"),
  Check(kBasic, u"DarkColor", &S::darkColor, u"0", kAbsent, P::kDisplay, u"護眼模式"),
  Check(kBasic, u"Work", &S::work, u"0", kAbsent, P::kDisplay, u"上班模式 (Alt+W)"),
  Text(kBasic, u"Font", &S::font, u"細明體", kInMap, P::kDisplay, u"字型"),
  Number(kBasic, u"LineSpacing", &S::lineSpacing, u"0", 0, 20, P::kDisplay, C::kNumberBox, u"一般行距"),
  Number(kBasic, u"PushLineSpacing", &S::pushLineSpacing, u"0", 0, 20, P::kDisplay, C::kNumberBox, u"推文行距"),
  Text(kBasic, u"BackgroundPicture", &S::backgroundPicture, u"", kAbsent, P::kDisplay, u"背景圖片 (亦可貼上網址)"),
  Choice(kBasic, u"BackgroundPictureStyle", &S::backgroundPictureStyle, u"3", kInMap, P::kDisplay, C::kComboBox, u"背景圖片樣式", kPictureStyles),
  Number(kBasic, u"BackPicOpacity", &S::backPicOpacity, u"40", 0, 100, P::kDisplay, C::kSlider, u"透明度"),
  Choice(kBasic, u"BlackTitle", &S::blackTitle, u"0", kAbsent, P::kList, C::kComboBox, u"黑名單文章標題", kTitleTreatments),
  Choice(kBasic, u"SBlackTitle", &S::superBlackTitle, u"0", kAbsent, P::kList, C::kComboBox, u"超黑名單文章標題", kTitleTreatments),
  Choice(kBasic, u"BlackPush", &S::blackPush, u"1", kInMap, P::kList, C::kComboBox, u"黑名單推文", kPushTreatments),
  Choice(kBasic, u"SBlackPush", &S::superBlackPush, u"1", kInMap, P::kList, C::kComboBox, u"超黑名單推文", kPushTreatments),
  Check(kBasic, u"HideCharShowStar", &S::hideCharShowStar, u"1", kInMap, P::kList, u"隱藏文字顯示＊"),
  Check(kBasic, u"AddBlackHotKey", &S::addBlackHotKey, u"0", kAbsent, P::kList, u"啟用id黑白名單快捷鍵"),
  Check(kBasic, u"HotArticle", &S::hotArticle, u"1", kInMap, P::kHotTrack, u"啟用熱門文章功能"),
  Check(kBasic, u"TrackArticle", &S::trackArticle, u"1", kInMap, P::kHotTrack, u"啟用追蹤文章功能"),
  Check(kBasic, u"BookmarkUpdate", &S::bookmarkUpdate, u"1", kInMap, P::kHotTrack, u"書籤文章有更新時提示"),
  Choice(kBasic, u"HotArticleSortMode", &S::hotArticleSortMode, u"0", kAbsent, P::kHotTrack, C::kRadioButtons, u"熱門文章排序", kHotSortModes),
  Text(kBasic, u"Version", &S::version, u"", kAbsent, P::kNone, u""),
  Choice(kMouse, u"LButton", &S::leftButton, u"2", kInMap, P::kControl, C::kComboBox, u"滑鼠左鍵(光標)", kLeftButton),
  Choice(kMouse, u"Wheel", &S::wheel, u"1", kInMap, P::kControl, C::kComboBox, u"滾輪", kWheel),
  Choice(kMouse, u"LButtonWheel", &S::leftButtonWheel, u"6", kInMap, P::kControl, C::kComboBox, u"滑鼠左鍵+滾輪", kButtonWheel),
  Choice(kMouse, u"RButtonWheel", &S::rightButtonWheel, u"1", kInMap, P::kControl, C::kComboBox, u"滑鼠右鍵+滾輪", kButtonWheel),
  Choice(kMouse, u"SButton", &S::sideButton, u"6", kInMap, P::kControl, C::kComboBox, u"滑鼠側鍵", kSideButton),
  Check(kBasic, u"MButtonOpenURL", &S::middleButtonOpensUrl, u"0", kAbsent, P::kControl, u"滑鼠中鍵可開啟網頁"),
  Number(kGive, u"FromFloor", &S::autoGiveFromFloor, u"1", 1, 99999, P::kNone, C::kNone, u""),
  Number(kGive, u"ToFloor", &S::autoGiveToFloor, u"99999", 1, 99999, P::kNone, C::kNone, u""),
  Hidden(kGive, u"Push", &S::autoGivePush, u"1", kInMap),
  Number(kGive, u"FloorInterval", &S::autoGiveFloorInterval, u"1", 1, 99999, P::kNone, C::kNone, u""),
  Number(kGive, u"Number", &S::autoGiveNumber, u"99999", 1, 99999, P::kNone, C::kNone, u""),
  Hidden(kGive, u"NoDupe", &S::autoGiveNoDupe, u"1", kInMap),
  Number(kGive, u"MoneyForEach", &S::autoGiveMoneyForEach, u"100", 1, kMostInt, P::kNone, C::kNone, u""),
  Hidden(kGive, u"Arrow", &S::autoGiveArrow, u"0", kAbsent),
  Hidden(kGive, u"Shi", &S::autoGiveShi, u"0", kAbsent),
  Hidden(kGive, u"MatchCase", &S::autoGiveMatchCase, u"0", kAbsent),
  Hidden(kGive, u"NoBlack", &S::autoGiveNoBlack, u"0", kAbsent),
  Hidden(kGive, u"NoSBlack", &S::autoGiveNoSBlack, u"0", kAbsent),
  Hidden(kGive, u"Random", &S::autoGiveRandom, u"0", kAbsent),
  Hidden(kGive, u"AfterTax", &S::autoGiveAfterTax, u"0", kAbsent),
  NotYet(Hidden(kGive, u"Donate", &S::autoGiveDonate, u"0", kAbsent)),
  Text(kGive, u"ContentInclude", &S::autoGiveContentInclude, u"", kAbsent, P::kNone, u""),
};
// clang-format on

}  // namespace

std::span<const SettingRow> SettingTable() {
  return kRows;
}

const SettingRow* FindSetting(std::u16string_view section, std::u16string_view key) {
  for (const SettingRow& row : kRows)
    if (row.section == section && row.key == key) return &row;
  return nullptr;
}

bool Acts(std::u16string_view section, std::u16string_view key) {
  const SettingRow* const row = FindSetting(section, key);
  return row != nullptr && row->acts;
}

}  // namespace quillet
