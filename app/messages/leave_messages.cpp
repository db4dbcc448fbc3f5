#include "app/messages/leave_messages.h"

#include <QStringList>

namespace quillet {
namespace {

QString QuestionFor(LeaveFor purpose, bool work) {
  switch (purpose) {
    case LeaveFor::kClosing:
      return work ? u"要關閉這個視窗嗎？"_qs : u"要關閉 Quillet 嗎？"_qs;
    case LeaveFor::kDisconnecting:
      return u"要中斷連線嗎？"_qs;
    case LeaveFor::kReconnecting:
      return u"要重新連線嗎？"_qs;
    case LeaveFor::kOtherSite:
      break;
  }
  return work ? u"要離開現在的內容嗎？"_qs : u"要離開現在的站台嗎？"_qs;
}

QString StillLoggedIn(const LoginNames& login, bool work) {
  if (work) return u"還登入著。"_qs;
  if (login.id.isEmpty()) return u"「%1」還在登入中。"_qs.arg(login.site);
  return u"「%1」還登入著（%2）。"_qs.arg(login.site, login.id);
}

}  // namespace

LeaveMessages DescribeLeaving(LeaveFor purpose, const LeaveFacts& facts, const LoginNames& login, bool work) {
  const bool comesBack = purpose == LeaveFor::kReconnecting;
  LeaveMessages words{.title = work        ? u"記事本"_qs
                               : comesBack ? u"重新連線"_qs
                                           : u"離開站台"_qs,
                      .question = QuestionFor(purpose, work),
                      .reason = {},
                      .logOut = comesBack ? u"登出再連線"_qs : u"登出並離開"_qs,
                      .leave = comesBack ? u"直接連線"_qs : u"直接離開"_qs,
                      .stay = u"取消"_qs,
                      .noMore = u"不再詢問"_qs,
                      .noMoreHint = u"以後都照這次選的做；可以在選項的「行為」改回來"_qs};
  QStringList reasons;
  if (!login.site.isEmpty()) reasons << StillLoggedIn(login, work);
  if (facts.inEditor)
    reasons << u"正在編輯的文章還沒有存檔，離開後可能就沒有了。要正常登出，請先存檔或放棄。"_qs;
  if (facts.hasDraft && purpose == LeaveFor::kClosing)
    reasons << (work ? u"還有沒送出去的文字，關閉後就沒有了。"_qs
                     : u"連續推文還有沒推出去的文字，關閉程式後就沒有了。"_qs);
  words.reason = reasons.join(u"\n\n"_qs);
  return words;
}

}  // namespace quillet
