#include "app/messages/picture_messages.h"

namespace quillet {

namespace {

// Why, as part of a sentence.
QString ReasonOf(PictureFault fault) {
  switch (fault) {
    case PictureFault::kNone:
      break;
    case PictureFault::kBadAddress:
      return u"網址不正確"_qs;
    case PictureFault::kNotAPicture:
      return u"這個連結不是圖片"_qs;
    case PictureFault::kPrivateAddress:
      return u"網址在這台電腦或區域網路裡，不下載"_qs;
    case PictureFault::kHostNotFound:
      return u"找不到這個網站"_qs;
    case PictureFault::kRefused:
      return u"網站不接受連線"_qs;
    case PictureFault::kNotSecure:
      return u"無法建立安全連線"_qs;
    case PictureFault::kLessSecure:
      return u"網站轉到不安全的網址"_qs;
    case PictureFault::kTooManyRedirects:
      return u"網站一再轉址"_qs;
    case PictureFault::kTooSlow:
      return u"網站太久沒有回應"_qs;
    case PictureFault::kCutShort:
      return u"下載到一半就斷線了"_qs;
    case PictureFault::kNetwork:
      return u"網路連線失敗"_qs;
    case PictureFault::kAnsweredWithError:
      return u"網站上沒有這張圖，或不開放下載"_qs;
    case PictureFault::kEmpty:
      return u"網站給的檔案是空的"_qs;
    case PictureFault::kTooManyBytes:
      return u"檔案太大"_qs;
    case PictureFault::kNoPictureInPage:
      return u"網頁裡找不到圖片"_qs;
    case PictureFault::kUnknownFormat:
      return u"不是能顯示的圖片格式"_qs;
    case PictureFault::kTooManyPixels:
      return u"圖片的長寬太大"_qs;
    case PictureFault::kDamaged:
      return u"圖片檔案損壞"_qs;
    case PictureFault::kOutOfMemory:
      return u"記憶體不足"_qs;
  }
  return {};
}

QString WordsWhileItComes(const PictureNow& now) {
  QString words = u"圖片載入中…"_qs;
  if (!now.size.isEmpty()) words += u" %1 × %2"_qs.arg(now.size.width()).arg(now.size.height());
  if (now.expected > 0) words += u" %1%"_qs.arg(100 * qMin(now.received, now.expected) / now.expected);
  return words;
}

}  // namespace

QString DescribePictureWithoutImage(const PictureNow& now) {
  if (now.stage != PictureStage::kFailed) return WordsWhileItComes(now);
  return u"無法顯示圖片：%1，按一下再試"_qs.arg(ReasonOf(now.fault));
}

}  // namespace quillet
