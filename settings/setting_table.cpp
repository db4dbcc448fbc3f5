#include "settings/setting_table.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

using Words = std::u16string_view;
using S = Settings;
using By = ActedOnBy;
using P = OptionPanel;
using C = OptionControl;
using M = MouseScheme;

constexpr Words kBasic = u"Basic";
constexpr Words kKeyboard = u"Keyboard";
constexpr Words kGestures = u"Mouse";
constexpr Words kGive = u"AutoGiveP";

template <typename Enum>
constexpr SettingChoice Offer(Enum value, Words label) {
  return {label, static_cast<int>(value)};
}

constexpr std::array kLeaveModes{Offer(LeaveMode::kAsk, u"先詢問"), Offer(LeaveMode::kLogOut, u"登出再離開"),
                                 Offer(LeaveMode::kDirectly, u"直接離開")};
constexpr std::array kDownloadEngines{Offer(DownloadEngine::kWinInet, u"WinInet"),
                                      Offer(DownloadEngine::kWinHttp, u"WinHttp")};
constexpr std::array kPictureScopes{Offer(PictureScope::kNone, u"無"),
                                    Offer(PictureScope::kCurrentPage, u"當前頁面"),
                                    Offer(PictureScope::kAllPages, u"全部頁面")};
constexpr std::array kPictureSizes{
    Offer(PictureSize::kNone, u"不開圖"), Offer(PictureSize::kThumbnail, u"微開圖"),
    Offer(PictureSize::kNormal, u"一般開圖"), Offer(PictureSize::kFullWidth, u"滿版開圖")};
constexpr std::array kPictureStyles{
    Offer(BackdropStyle::kNone, u"無"), Offer(BackdropStyle::kStretch, u"延展"),
    Offer(BackdropStyle::kCrop, u"裁剪"), Offer(BackdropStyle::kMovingCrop, u"動態裁剪")};
constexpr std::array kTitleTreatments{Offer(TitleTreatment::kNone, u"無"),
                                      Offer(TitleTreatment::kHideText, u"隱藏文字"),
                                      Offer(TitleTreatment::kMaskId, u"id打碼")};
constexpr std::array kPushTreatments{
    Offer(PushTreatment::kNone, u"無"), Offer(PushTreatment::kNoPictures, u"不自動開圖"),
    Offer(PushTreatment::kHideText, u"隱藏文字"), Offer(PushTreatment::kMaskId, u"id打碼"),
    Offer(PushTreatment::kRemove, u"整行移除")};
constexpr std::array kHotSortModes{Offer(HotSortMode::kByBoard, u"依看板排序"),
                                   Offer(HotSortMode::kNewestFirst, u"依時間排序"),
                                   Offer(HotSortMode::kByPopularity, u"依人氣排序")};

constexpr Words WordsOf(M scheme) {
  switch (scheme) {
    case M::kNothing:
      return u"無作用";
    case M::kWeb:
      return u"網頁式控制";
    case M::kWheel:
      return u"還是滾輪";
    case M::kNeighbour:
      return u"前篇文章 / 後篇文章";
    case M::kUpDown:
      return u"Up / Down";
    case M::kPages:
      return u"PageUp / PageDown";
    case M::kEnds:
      return u"Home / End";
    case M::kBF:
      return u"b / f (上下篇)";
    case M::kThread:
      return u"[ / ] (同主題)";
    case M::kAuthor:
      return u"A / a (同作者)";
    case M::kRead:
      return u"{ / } (已讀)";
  }
  return {};
}

template <typename... Schemes>
constexpr std::array<SettingChoice, sizeof...(Schemes)> Gesture(Schemes... schemes) {
  return {Offer(schemes, WordsOf(schemes))...};
}

constexpr auto kLeftButton = Gesture(M::kNothing, M::kUpDown, M::kWeb);
constexpr auto kWheel = Gesture(M::kNothing, M::kWeb, M::kUpDown, M::kPages);
constexpr auto kButtonWheel = Gesture(M::kNothing, M::kWheel, M::kUpDown, M::kPages, M::kEnds, M::kBF,
                                      M::kThread, M::kAuthor, M::kRead);
constexpr auto kSideButton = Gesture(M::kNothing, M::kNeighbour, M::kUpDown, M::kPages, M::kEnds, M::kBF,
                                     M::kThread, M::kAuthor, M::kRead);

constexpr int kMostInt = 2147483647;
constexpr bool kInMap = true;    // the map starts with the key
constexpr bool kAbsent = false;  // the field keeps its initial value until the key is set

constexpr int NumberIn(std::span<const SettingChoice> choices, int value, int otherwise) {
  for (std::size_t number = 0; number < choices.size(); ++number)
    if (choices[number].value == value) return static_cast<int>(number);
  return otherwise;
}

// A flag of the dialog; one that the dialog does not show; a choice; a quantity; a text.
constexpr SettingRow Check(Words section, Words key, bool S::*field, bool initial, bool inMap, By by, P panel,
                           Words label) {
  return {section, key, field, SettingKind::kFlag, initial, {}, inMap, 0,
          1,       by,  panel, C::kCheckBox,       label,   {}};
}
constexpr SettingRow Hidden(Words section, Words key, bool S::*field, bool initial, bool inMap, By by) {
  return {section, key, field, SettingKind::kFlag, initial, {}, inMap, 0, 1, by, P::kNone, C::kNone, {}, {}};
}
template <typename Enum>
constexpr SettingRow Choice(Words section, Words key, Enum S::*field, Enum initial, bool inMap, By by,
                            P panel, C control, Words label, std::span<const SettingChoice> choices) {
  return {section,
          key,
          field,
          SettingKind::kChoice,
          NumberIn(choices, static_cast<int>(initial), -1),
          {},
          inMap,
          0,
          static_cast<int>(choices.size()) - 1,
          by,
          panel,
          control,
          label,
          choices};
}
constexpr SettingRow Number(Words section, Words key, int S::*field, int initial, int least, int most, By by,
                            P panel, C control, Words label) {
  return {section, key,   field, SettingKind::kNumber, initial, {}, kInMap, least, most, by, panel,
          control, label, {}};
}
constexpr SettingRow Text(Words section, Words key, std::u16string S::*field, Words initial, bool inMap,
                          By by, P panel, Words label) {
  const C control = panel == P::kNone ? C::kNone : C::kTextBox;
  return {section, key, field, SettingKind::kText, 0, initial, inMap, 0, 0, by, panel, control, label, {}};
}

// clang-format off
constexpr SettingRow kRows[] = {
  Text(kBasic, u"Site", &S::site, u"", kAbsent, By::kWindow, P::kNone, u""),
  Choice(kBasic, u"LeaveMode", &S::leaveMode, LeaveMode::kAsk, kAbsent, By::kWindow, P::kBehavior, C::kComboBox, u"登入中離開站台時", kLeaveModes),
  Check(kBasic, u"AutoReconnect", &S::autoReconnect, false, kAbsent, By::kWindow, P::kBehavior, u"斷線時自動重新連線"),
  Check(kBasic, u"KeepAwake", &S::keepAwake, false, kAbsent, By::kWindow, P::kBehavior, u"閒置時保持連線"),
  Check(kBasic, u"KnowHosts", &S::knowHosts, true, kAbsent, By::kWindow, P::kBehavior, u"SSH站台金鑰改變時警告"),
  Choice(kBasic, u"DownloadEngine", &S::downloadEngine, DownloadEngine::kWinHttp, kAbsent, By::kWindow, P::kBehavior, C::kRadioButtons, u"圖片下載引擎", kDownloadEngines),
  Choice(kBasic, u"ShowPicMode", &S::showPicMode, PictureScope::kCurrentPage, kInMap, By::kWindow, P::kBehavior, C::kComboBox, u"自動開圖範圍", kPictureScopes),
  Choice(kBasic, u"QuotePic", &S::quotePic, PictureSize::kNone, kAbsent, By::kPictures, P::kBehavior, C::kComboBox, u"引言", kPictureSizes),
  Choice(kBasic, u"ContentPic", &S::contentPic, PictureSize::kFullWidth, kInMap, By::kPictures, P::kBehavior, C::kComboBox, u"本文", kPictureSizes),
  Choice(kBasic, u"SignPic", &S::signPic, PictureSize::kThumbnail, kInMap, By::kPictures, P::kBehavior, C::kComboBox, u"簽名檔", kPictureSizes),
  Choice(kBasic, u"PushPic", &S::pushPic, PictureSize::kNormal, kInMap, By::kPictures, P::kBehavior, C::kComboBox, u"推文", kPictureSizes),
  Check(kBasic, u"OpenPicAfterDownload", &S::openPicAfterDownload, true, kInMap, By::kWindow, P::kBehavior, u"下載完成後才顯示圖片"),
  Check(kBasic, u"AutoPlayGif", &S::autoPlayGif, true, kInMap, By::kWindow, P::kBehavior, u"自動播放gif"),
  Check(kBasic, u"WebArticle", &S::webArticle, true, kInMap, By::kWindow, P::kBehavior, u"網頁式文章 (圖片上按右鍵可存圖)"),
  Check(kBasic, u"AutoRefreshPush", &S::autoRefreshPush, true, kInMap, By::kWindow, P::kBehavior, u"自動更新推文"),
  Check(kBasic, u"NotifyArticleChanged", &S::notifyArticleChanged, true, kInMap, By::kWindow, P::kBehavior, u"文章被作者修改時發出通知"),
  Check(kBasic, u"AutoCheckUpdate", &S::autoCheckUpdate, true, kInMap, By::kNobody, P::kBehavior, u"自動檢查版本更新"),
  Check(kBasic, u"MarkAfterPush", &S::markAfterPush, false, kAbsent, By::kWindow, P::kBehavior, u"推文後自動將文章加入書籤"),
  Check(kBasic, u"CopyWhenSelect", &S::copyWhenSelect, false, kAbsent, By::kWindow, P::kBehavior, u"選取文字時自動複製文字"),
  Check(kBasic, u"PasteAutoChangeLine", &S::pasteAutoChangeLine, true, kInMap, By::kWindow, P::kBehavior, u"貼上文字時自動換行"),
  Check(kBasic, u"PlaySound", &S::playSound, true, kInMap, By::kWindow, P::kBehavior, u"有任何通知時播放音效"),
  Check(kBasic, u"Flash", &S::flash, true, kInMap, By::kWindow, P::kBehavior, u"有任何通知時在工作列閃爍"),
  Check(kKeyboard, u"PreventUpDownChangeArticle", &S::preventUpDownChangeArticle, false, kAbsent, By::kWindow, P::kBehavior, u"防止上/下/Enter/Space鍵換文章"),
  Hidden(kBasic, u"KickOthers", &S::kickOthers, false, kAbsent, By::kWindow),
  Check(kBasic, u"DarkerReadArticle", &S::darkerReadArticle, true, kInMap, By::kStyling, P::kDisplay, u"無新內容的已讀文章標題變暗"),
  Check(kBasic, u"DarkerUpdatedArticle", &S::darkerUpdatedArticle, true, kInMap, By::kStyling, P::kDisplay, u"有新內容的已讀文章標題變暗"),
  Check(kBasic, u"LighterPushLine", &S::lighterPushLine, true, kInMap, By::kStyling, P::kDisplay, u"推文加亮"),
  Check(kBasic, u"LighterDarkBlue", &S::lighterDarkBlue, true, kInMap, By::kDrawing, P::kDisplay, u"深藍色加亮"),
  Check(kBasic, u"SmoothFont", &S::smoothFont, true, kAbsent, By::kDrawing, P::kDisplay, u"平滑字體\n(ANSI圖會有毛邊)"),
  Check(kBasic, u"NoScrollAnimation", &S::noScrollAnimation, false, kAbsent, By::kWindow, P::kDisplay, u"取消頁面捲動動畫"),
  Check(kBasic, u"ColorMyId", &S::colorMyId, true, kInMap, By::kStyling, P::kDisplay, u"自己的id變亮藍色"),
  Check(kBasic, u"MergePush", &S::mergePush, true, kInMap, By::kStyling, P::kDisplay, u"推文合併相同id"),
  Check(kBasic, u"GrayBackgroundPush", &S::grayBackgroundPush, true, kInMap, By::kStyling, P::kDisplay, u"推文灰底"),
  Check(kBasic, u"IpDetectProxy", &S::ipDetectProxy, true, kInMap, By::kWindow, P::kDisplay, u"推文IP自動偵測跳板"),
  Check(kBasic, u"IpToName", &S::ipToName, true, kInMap, By::kWindow, P::kDisplay, u"推文IP轉地理位置 (快捷鍵 i )"),
  Check(kBasic, u"TitleShowID", &S::titleShowId, true, kInMap, By::kWindow, P::kDisplay, u"標題列顯示登入id"),
  Check(kBasic, u"Topmost", &S::topmost, false, kAbsent, By::kWindow, P::kDisplay, u"最上層顯示"),
  Check(kBasic, u"HideTopLeftIcons", &S::hideTopLeftIcons, false, kAbsent, By::kWindow, P::kDisplay, u"隱藏畫面兩邊的按鈕"),
  Check(kBasic, u"ShowHighlight", &S::showHighlight, true, kInMap, By::kStyling, P::kDisplay, u"顯示光棒"),
  Check(kBasic, u"DarkColor", &S::darkColor, false, kAbsent, By::kDrawing, P::kDisplay, u"護眼模式"),
  Check(kBasic, u"Work", &S::work, false, kAbsent, By::kDrawing, P::kDisplay, u"上班模式 (Alt+W)"),
  Text(kBasic, u"Font", &S::font, u"細明體", kInMap, By::kDrawing, P::kDisplay, u"字型"),
  Number(kBasic, u"Zoom", &S::zoom, 100, kLeastZoom, kMostZoom, By::kDrawing, P::kNone, C::kNone, u""),
  Number(kBasic, u"LineSpacing", &S::lineSpacing, 0, 0, 20, By::kDrawing, P::kDisplay, C::kNumberBox, u"一般行距"),
  Number(kBasic, u"PushLineSpacing", &S::pushLineSpacing, 0, 0, 20, By::kDrawing, P::kDisplay, C::kNumberBox, u"推文行距"),
  Text(kBasic, u"BackgroundPicture", &S::backgroundPicture, u"", kAbsent, By::kWindow, P::kDisplay, u"背景圖片 (亦可貼上網址)"),
  Choice(kBasic, u"BackgroundPictureStyle", &S::backgroundPictureStyle, BackdropStyle::kMovingCrop, kInMap, By::kWindow, P::kDisplay, C::kComboBox, u"背景圖片樣式", kPictureStyles),
  Number(kBasic, u"BackPicOpacity", &S::backPicOpacity, 40, 0, 100, By::kWindow, P::kDisplay, C::kSlider, u"透明度"),
  Choice(kBasic, u"BlackTitle", &S::blackTitle, TitleTreatment::kNone, kAbsent, By::kStyling, P::kList, C::kComboBox, u"黑名單文章標題", kTitleTreatments),
  Choice(kBasic, u"SBlackTitle", &S::superBlackTitle, TitleTreatment::kNone, kAbsent, By::kStyling, P::kList, C::kComboBox, u"超黑名單文章標題", kTitleTreatments),
  Choice(kBasic, u"BlackPush", &S::blackPush, PushTreatment::kNoPictures, kInMap, By::kStyling, P::kList, C::kComboBox, u"黑名單推文", kPushTreatments),
  Choice(kBasic, u"SBlackPush", &S::superBlackPush, PushTreatment::kNoPictures, kInMap, By::kStyling, P::kList, C::kComboBox, u"超黑名單推文", kPushTreatments),
  Check(kBasic, u"HideCharShowStar", &S::hideCharShowStar, true, kInMap, By::kStyling, P::kList, u"隱藏文字顯示＊"),
  Check(kBasic, u"AddBlackHotKey", &S::addBlackHotKey, false, kAbsent, By::kWindow, P::kList, u"啟用id黑白名單快捷鍵"),
  Check(kBasic, u"HotArticle", &S::hotArticle, true, kInMap, By::kWindow, P::kHotTrack, u"啟用熱門文章功能"),
  Check(kBasic, u"TrackArticle", &S::trackArticle, true, kInMap, By::kWindow, P::kHotTrack, u"啟用追蹤文章功能"),
  Check(kBasic, u"BookmarkUpdate", &S::bookmarkUpdate, true, kInMap, By::kWindow, P::kHotTrack, u"書籤文章有更新時提示"),
  Choice(kBasic, u"HotArticleSortMode", &S::hotArticleSortMode, HotSortMode::kByBoard, kAbsent, By::kWindow, P::kHotTrack, C::kRadioButtons, u"熱門文章排序", kHotSortModes),
  Text(kBasic, u"Version", &S::version, u"", kAbsent, By::kLater, P::kNone, u""),
  Choice(kGestures, u"LButton", &S::leftButton, M::kWeb, kInMap, By::kMouse, P::kControl, C::kComboBox, u"滑鼠左鍵(光標)", kLeftButton),
  Choice(kGestures, u"Wheel", &S::wheel, M::kWeb, kInMap, By::kMouse, P::kControl, C::kComboBox, u"滾輪", kWheel),
  Choice(kGestures, u"LButtonWheel", &S::leftButtonWheel, M::kThread, kInMap, By::kMouse, P::kControl, C::kComboBox, u"滑鼠左鍵+滾輪", kButtonWheel),
  Choice(kGestures, u"RButtonWheel", &S::rightButtonWheel, M::kWheel, kInMap, By::kMouse, P::kControl, C::kComboBox, u"滑鼠右鍵+滾輪", kButtonWheel),
  Choice(kGestures, u"SButton", &S::sideButton, M::kThread, kInMap, By::kMouse, P::kControl, C::kComboBox, u"滑鼠側鍵", kSideButton),
  Check(kBasic, u"MButtonOpenURL", &S::middleButtonOpensUrl, false, kAbsent, By::kWindow, P::kControl, u"滑鼠中鍵可開啟網頁"),
  Number(kGive, u"FromFloor", &S::autoGiveFromFloor, 1, 1, 99999, By::kWindow, P::kNone, C::kNone, u""),
  Number(kGive, u"ToFloor", &S::autoGiveToFloor, 99999, 1, 99999, By::kWindow, P::kNone, C::kNone, u""),
  Hidden(kGive, u"Push", &S::autoGivePush, true, kInMap, By::kWindow),
  Number(kGive, u"FloorInterval", &S::autoGiveFloorInterval, 1, 1, 99999, By::kWindow, P::kNone, C::kNone, u""),
  Number(kGive, u"Number", &S::autoGiveNumber, 99999, 1, 99999, By::kWindow, P::kNone, C::kNone, u""),
  Hidden(kGive, u"NoDupe", &S::autoGiveNoDupe, true, kInMap, By::kWindow),
  Number(kGive, u"MoneyForEach", &S::autoGiveMoneyForEach, 100, 1, kMostInt, By::kWindow, P::kNone, C::kNone, u""),
  Hidden(kGive, u"Arrow", &S::autoGiveArrow, false, kAbsent, By::kWindow),
  Hidden(kGive, u"Shi", &S::autoGiveShi, false, kAbsent, By::kWindow),
  Hidden(kGive, u"MatchCase", &S::autoGiveMatchCase, false, kAbsent, By::kWindow),
  Hidden(kGive, u"NoBlack", &S::autoGiveNoBlack, false, kAbsent, By::kWindow),
  Hidden(kGive, u"NoSBlack", &S::autoGiveNoSBlack, false, kAbsent, By::kWindow),
  Hidden(kGive, u"Random", &S::autoGiveRandom, false, kAbsent, By::kWindow),
  Hidden(kGive, u"AfterTax", &S::autoGiveAfterTax, false, kAbsent, By::kWindow),
  Hidden(kGive, u"Donate", &S::autoGiveDonate, false, kAbsent, By::kNobody),
  Text(kGive, u"ContentInclude", &S::autoGiveContentInclude, u"", kAbsent, By::kWindow, P::kNone, u""),
};
// clang-format on

int ValueFor(const SettingRow& row, int number) {
  if (row.kind == SettingKind::kNumber) return std::clamp(number, row.least, row.most);
  if (row.kind == SettingKind::kFlag) return number != 0 ? 1 : 0;
  const bool isOffered = number >= row.least && number <= row.most;
  return row.choices[static_cast<std::size_t>(isOffered ? number : row.initial)].value;
}

}  // namespace

std::span<const SettingRow> SettingTable() {
  return kRows;
}

const SettingRow& RowOf(const SettingField& field) {
  for (const SettingRow& row : kRows)
    if (row.field == field) return row;
  std::abort();
}

std::u16string InitialText(const SettingRow& row) {
  return row.kind == SettingKind::kText ? std::u16string(row.initialText) : ToText(row.initial);
}

int NumberFor(const SettingRow& row, int value) {
  return row.kind == SettingKind::kChoice ? NumberIn(row.choices, value, row.initial) : value;
}

int NumberOf(const SettingRow& row, const Settings& fields) {
  const auto number = [&](auto field) {
    if constexpr (std::is_same_v<decltype(field), std::u16string Settings::*>)
      return 0;
    else
      return NumberFor(row, static_cast<int>(fields.*field));
  };
  return std::visit(number, row.field);
}

std::u16string TextOf(const SettingRow& row, const Settings& fields) {
  const auto* const text = std::get_if<std::u16string Settings::*>(&row.field);
  return text != nullptr ? fields.*(*text) : ToText(NumberOf(row, fields));
}

void ApplyRow(const SettingRow& row, std::u16string_view text, Settings& fields) {
  const auto apply = [&](auto field) {
    auto& target = fields.*field;
    using Target = std::remove_reference_t<decltype(target)>;
    if constexpr (std::is_same_v<Target, std::u16string>)
      target = text;
    else
      target = static_cast<Target>(ValueFor(row, ToNumber(text)));
  };
  std::visit(apply, row.field);
}

std::u16string SettingChange::NumberText(int value) const {
  return ToText(NumberFor(*row, value));
}

void Put(SettingsMap& map, const SettingChange& change) {
  map.Set(change.row->section, change.row->key, change.text);
}

}  // namespace quillet
