// What the window says of pictures: those that are not shown, those that are looked at or kept, and of
// videos. Pure.
#pragma once

#include <filesystem>
#include <string>

#include <QString>

#include "app/messages/panel_text.h"
#include "media/fetch/picture_wish.h"

namespace quillet {

// What stands in the place of a picture without an image: how far it has come, or why there is none.
QString DescribePictureWithoutImage(const PictureNow& now);
// The same where a button beside the words tries again.
QString DescribePictureToCome(const PictureNow& now);
QString PictureAgainWord();

// "34 KB", as people read it; of less than nothing as of nothing.
QString ByteCountText(qint64 bytes);

// The picture that is looked at.
struct LookedAt {
  int number = 1;  // from 1
  int count = 1;
  int percent = 100;  // device pixels of a hundred of its own
  QString link;
};
// In a line, as much as is known.
QString DescribeLookedAt(const LookedAt& picture, const PictureNow& now);

// Length, where it is known, and link.
QString DescribeVideo(int seconds, const QString& link);

struct VideoMessages {
  static QString Title() { return u"影片"_qs; }
  static QString Browse() { return u"在瀏覽器開啟(&O)"_qs; }
  static QString Close() { return u"關閉(&C)"_qs; }
};

QString PictureSaveTitle();
// Of a file, by the ending of its name without the dot.
QString PictureKindName(const QString& ending);
// A notice where there is room for a line only.
QString AsOneLine(const PanelText& notice);
QString DescribePictureCopied();
// The file of a picture that was to be kept is gone.
PanelText DescribeNoPictureFile();
// Nothing was changed in the file; `reason` is the system's own.
PanelText DescribePictureNotSaved(const std::filesystem::path& file, const std::string& reason);

// The first start asks which pictures open by themselves.
struct PictureQuestionMessages {
  static QString Words() {
    return u"文章裡的圖片會自動開啟；放圖片的網站會知道你的 IP 位址。自動開圖範圍："_qs;
  }
  static QString Later() { return u"之後可在選項的「行為」裡更改；Esc 維持現在的設定"_qs; }
};

}  // namespace quillet
