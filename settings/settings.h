// The settings as typed fields, each with its built-in value: what the rest of the program reads. A plain
// value; the document owns one and hands copies or references to the view's objects. The rows of
// setting_table.cpp say which key each field comes from, its range and its words in the options dialog.
#pragma once

#include <string>

#include "settings/display_settings.h"

namespace quillet {

struct Settings {
  std::u16string site;  // address connected to; its default names the BBS's own host

  // Behaviour.
  int leaveMode = 0;       // while logged in: 0 ask before leaving a site, 1 log out first, 2 just leave
  int downloadEngine = 1;  // which engine fetches pictures: 0 WinInet, 1 WinHttp
  int showPicMode = 1;
  int quotePic = 0;
  int contentPic = 3;
  int signPic = 1;
  int pushPic = 2;
  bool openPicAfterDownload = true;
  bool autoPlayGif = true;
  bool webArticle = true;
  bool autoRefreshPush = true;
  bool notifyArticleChanged = true;
  bool autoCheckUpdate = true;
  bool markAfterPush = false;
  bool copyWhenSelect = false;
  bool pasteAutoChangeLine = true;
  bool playSound = true;
  bool flash = true;
  bool preventUpDownChangeArticle = false;
  bool kickOthers = false;  // delete other logins of the account when logging in

  // Display.
  bool darkerReadArticle = true;
  bool darkerUpdatedArticle = true;
  bool lighterPushLine = true;
  bool lighterDarkBlue = true;
  bool smoothFont = true;
  bool noScrollAnimation = false;
  bool colorMyId = true;
  bool mergePush = true;
  bool grayBackgroundPush = true;
  bool ipDetectProxy = true;
  bool ipToName = true;
  bool titleShowId = true;
  bool topmost = false;
  bool hideTopLeftIcons = false;
  bool showHighlight = true;
  bool darkColor = false;
  bool work = false;
  std::u16string font = u"細明體";
  int lineSpacing = 0;               // each step takes 4% of the row height from the glyphs
  int pushLineSpacing = 0;           // the same for push lines
  std::u16string backgroundPicture;  // a file or an address
  int backgroundPictureStyle = 3;
  int backPicOpacity = 40;  // percent

  // Black and white lists.
  int blackTitle = 0;
  int superBlackTitle = 0;
  int blackPush = 1;
  int superBlackPush = 1;
  bool hideCharShowStar = true;
  bool addBlackHotKey = false;

  // Hot and tracked articles.
  bool hotArticle = true;
  bool trackArticle = true;
  bool bookmarkUpdate = true;
  int hotArticleSortMode = 0;
  std::u16string version;  // of the program that ran last

  // Mouse: the index of the choice that setting_table.cpp lists for the gesture.
  int leftButton = 2;
  int wheel = 1;
  int leftButtonWheel = 6;
  int rightButtonWheel = 1;
  int sideButton = 6;
  bool middleButtonOpensUrl = false;

  // Giving money along the push lines.
  int autoGiveFromFloor = 1;
  int autoGiveToFloor = 99999;
  bool autoGivePush = true;
  int autoGiveFloorInterval = 1;
  int autoGiveNumber = 99999;
  bool autoGiveNoDupe = true;
  int autoGiveMoneyForEach = 100;
  bool autoGiveArrow = false;
  bool autoGiveShi = false;
  bool autoGiveMatchCase = false;
  bool autoGiveNoBlack = false;
  bool autoGiveNoSBlack = false;
  bool autoGiveRandom = false;
  bool autoGiveAfterTax = false;
  bool autoGiveDonate = false;
  std::u16string autoGiveContentInclude;

  bool operator==(const Settings&) const = default;
};

// What the drawing of the screen needs of them.
DisplaySettings DisplayOf(const Settings& settings);

}  // namespace quillet
