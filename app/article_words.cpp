#include "app/article_words.h"

#include "settings/setting_table.h"

namespace quillet {

QString DescribeNews(const ArticleNews& news) {
  if (news.edited && news.newPushes > 0)
    return u"作者修改了這篇文章，並有 %1 則新推文"_qs.arg(news.newPushes);
  if (news.edited) return u"作者修改了這篇文章"_qs;
  if (news.newPushes > 0) return u"有 %1 則新推文"_qs.arg(news.newPushes);
  return {};
}

QString DescribeBookmarkEnd(BookmarkEnd end) {
  switch (end) {
    case BookmarkEnd::kAdded:
      return u"已加入書籤"_qs;
    case BookmarkEnd::kRemoved:
      return u"已移除書籤"_qs;
    case BookmarkEnd::kNoCode:
      return u"站台沒有告知這篇文章的代碼，無法加入書籤"_qs;
  }
  return {};
}

QString DescribeNoCommand(bool connected) {
  return connected ? u"現在無法使用這個功能"_qs : u"尚未連線"_qs;
}

QString DescribeActsNotYet(const QString& name) {
  return u"%1：%2"_qs.arg(name, QStringView(kActsNotYet));
}

PanelText DescribeNoBackground(const QString& source, const QString& reason) {
  return {.title = u"背景圖片無法顯示"_qs,
          .lines = {source, reason},
          .hint = u"Enter 關閉這個訊息"_qs,
          .tone = PanelTone::kProblem,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

}  // namespace quillet
