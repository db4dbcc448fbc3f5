#include "app/messages/link_messages.h"

namespace quillet {

PanelText DescribeNoBrowser(std::u16string_view address) {
  return {.title = u"無法開啟網頁"_qs,
          .lines = {QStringView(address).toString(), u"系統沒有開啟網頁的程式，或它沒有回應"_qs},
          .hint = u"Enter 關閉這個訊息"_qs,
          .tone = PanelTone::kProblem,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

QString DescribeWaitingArticle(const ArticleReference& article, ArticleWaitsFor what) {
  const QString when = what == ArticleWaitsFor::kLogin ? u"登入後"_qs : u"目前的動作完成後"_qs;
  return u"%1開啟 %2 看板的文章 #%3"_qs.arg(when, QString::fromStdU16String(article.board),
                                            QString::fromStdU16String(article.code));
}

QString DescribeLinkHandlerButton(bool asksUser) {
  return asksUser ? u"按下按鈕後將開啟系統設定頁面，\n請將下方的網頁瀏覽器設為Quillet"_qs
                  : u"按下按鈕後，看板文章的連結在這裡開啟，\n其他連結仍交給原來的瀏覽器"_qs;
}

QString DescribeLinkChoice(LinkChoice choice) {
  switch (choice) {
    case LinkChoice::kMade:
      return u"網頁連結現在先交給Quillet：看板文章在這裡開啟，其他連結仍交給原來的瀏覽器。\n"
             u"要改回來，請到系統設定裡選擇預設的瀏覽器。"_qs;
    case LinkChoice::kLeftTo:
      return {};
    case LinkChoice::kFailed:
      break;
  }
  return u"系統沒有接受這個設定，預設瀏覽器維持不變。"_qs;
}

}  // namespace quillet
