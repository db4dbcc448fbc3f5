#include "app/messages/article_messages.h"

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

namespace SearchMessages {

QString Label() {
  return u"尋找"_qs;
}

QString Hint() {
  return u"文章中的文字"_qs;
}

QString Previous() {
  return u"上一處（Shift+F3）"_qs;
}

QString Next() {
  return u"下一處（F3）"_qs;
}

QString Tally(const SearchTally& tally) {
  const QString more = tally.stillReading ? u"…"_qs : QString();
  if (tally.count == 0) return tally.stillReading ? u"還沒找到…"_qs : u"找不到"_qs;
  if (tally.here < 0) return u"共 %1 處"_qs.arg(tally.count) + more;
  return u"第 %1 / %2 處"_qs.arg(tally.here + 1).arg(tally.count) + more;
}

QString FromTop() {
  return u"後面沒有了，從開頭找起：%1"_qs;
}

QString FromEnd() {
  return u"前面沒有了，從結尾找起：%1"_qs;
}

QString NoMoreYet() {
  return u"文章還在讀取，後面還沒有找到"_qs;
}

}  // namespace SearchMessages

QString DescribeNoCommand(bool connected) {
  return connected ? u"現在無法使用這個功能"_qs : u"尚未連線"_qs;
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
