// The settings as typed fields: what the rest of the program reads. A plain value; the document owns one and
// hands copies or references to the view's objects. The rows of setting_table.cpp say which key each field
// comes from, what it is at first, its range and its words in the options dialog.
#pragma once

#include <string>

#include "settings/display_settings.h"
#include "settings/setting_choices.h"

namespace quillet {

struct Settings {
  // As the table has it.
  Settings();

  std::u16string site;  // address connected to; its default names the BBS's own host

  // Behaviour.
  LeaveMode leaveMode{};
  bool autoReconnect{};
  bool keepAwake{};  // send a key without effect before the site takes the user for gone
  bool knowHosts{};  // keep the keys of SSH hosts, and stop where one has changed
  DownloadEngine downloadEngine{};
  PictureScope showPicMode{};
  PictureSize quotePic{};
  PictureSize contentPic{};
  PictureSize signPic{};
  PictureSize pushPic{};
  bool openPicAfterDownload{};
  bool autoPlayGif{};
  bool webArticle{};
  bool autoRefreshPush{};
  bool notifyArticleChanged{};
  bool autoCheckUpdate{};
  bool markAfterPush{};
  bool copyWhenSelect{};
  bool pasteAutoChangeLine{};
  bool playSound{};
  bool flash{};
  bool preventUpDownChangeArticle{};
  bool kickOthers{};  // delete other logins of the account when logging in

  // Display.
  bool darkerReadArticle{};
  bool darkerUpdatedArticle{};
  bool lighterPushLine{};
  bool lighterDarkBlue{};
  bool smoothFont{};
  bool noScrollAnimation{};
  bool colorMyId{};
  bool mergePush{};
  bool grayBackgroundPush{};
  bool ipDetectProxy{};
  bool ipToName{};
  bool titleShowId{};
  bool topmost{};
  bool hideTopLeftIcons{};
  bool showHighlight{};
  bool darkColor{};
  bool work{};
  std::u16string font;
  int lineSpacing{};                 // each step takes 4% of the row height from the glyphs
  int pushLineSpacing{};             // the same for push lines
  int zoom{};                        // percent of the largest grid that the window has room for
  std::u16string backgroundPicture;  // a file or an address
  BackdropStyle backgroundPictureStyle{};
  int backPicOpacity{};  // percent

  // Black and white lists.
  TitleTreatment blackTitle{};
  TitleTreatment superBlackTitle{};
  PushTreatment blackPush{};
  PushTreatment superBlackPush{};
  bool hideCharShowStar{};
  bool addBlackHotKey{};

  // Hot and tracked articles.
  bool hotArticle{};
  bool trackArticle{};
  bool bookmarkUpdate{};
  HotSortMode hotArticleSortMode{};
  std::u16string version;  // of the program that ran last

  // Mouse.
  MouseScheme leftButton{};
  MouseScheme wheel{};
  MouseScheme leftButtonWheel{};
  MouseScheme rightButtonWheel{};
  MouseScheme sideButton{};
  bool middleButtonOpensUrl{};

  // Giving money along the push lines.
  int autoGiveFromFloor{};
  int autoGiveToFloor{};
  bool autoGivePush{};
  int autoGiveFloorInterval{};
  int autoGiveNumber{};
  bool autoGiveNoDupe{};
  int autoGiveMoneyForEach{};
  bool autoGiveArrow{};
  bool autoGiveShi{};
  bool autoGiveMatchCase{};
  bool autoGiveNoBlack{};
  bool autoGiveNoSBlack{};
  bool autoGiveRandom{};
  bool autoGiveAfterTax{};
  bool autoGiveDonate{};
  std::u16string autoGiveContentInclude;

  bool operator==(const Settings&) const = default;
};

// What the drawing of the screen needs of them.
DisplaySettings DisplayOf(const Settings& settings);

}  // namespace quillet
