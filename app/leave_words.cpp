#include "app/leave_words.h"

#include <QStringList>

namespace quillet {
namespace {

QString QuestionFor(LeaveFor purpose) {
  switch (purpose) {
    case LeaveFor::kClosing:
      return u"要關閉 Quillet 嗎？"_qs;
    case LeaveFor::kDisconnecting:
      return u"要中斷連線嗎？"_qs;
    case LeaveFor::kOtherSite:
      break;
  }
  return u"要離開現在的站台嗎？"_qs;
}

}  // namespace

LeaveWords DescribeLeaving(LeaveFor purpose, const LeaveFacts& facts, const QString& site,
                           const QString& id) {
  LeaveWords words{.title = u"離開站台"_qs,
                   .question = QuestionFor(purpose),
                   .reason = {},
                   .logOut = u"登出並離開"_qs,
                   .leave = u"直接離開"_qs,
                   .stay = u"取消"_qs,
                   .noMore = u"不再詢問"_qs,
                   .noMoreHint = u"以後都照這次選的做；可以在選項的「行為」改回來"_qs};
  QStringList reasons;
  if (!site.isEmpty())
    reasons << (id.isEmpty() ? u"「%1」還在登入中。"_qs.arg(site)
                             : u"「%1」還登入著（%2）。"_qs.arg(site, id));
  if (facts.inEditor)
    reasons << u"正在編輯的文章還沒有存檔，離開後可能就沒有了。要正常登出，請先存檔或放棄。"_qs;
  if (facts.hasDraft && purpose == LeaveFor::kClosing)
    reasons << u"連續推文還有沒推出去的文字，關閉程式後就沒有了。"_qs;
  words.reason = reasons.join(u"\n\n"_qs);
  return words;
}

}  // namespace quillet
