#include "app/messages/window_title.h"

#include "core/session_state.h"

namespace quillet {

QString DescribeTitle(const SessionFacts& session, const TitleFacts& facts) {
  if (facts.work) return u"新文字文件.txt - 記事本"_qs;
  QString plain = facts.logging ? u"Quillet（記錄中）"_qs : u"Quillet"_qs;
  switch (session.state) {
    case SessionState::kConnecting:
      return u"%1（連線中）- %2"_qs.arg(session.siteName, plain);
    case SessionState::kConnected: {
      const QString id = facts.id.isEmpty() ? QString() : u"（%1）"_qs.arg(facts.id);
      return u"%1%2%3 - %4"_qs.arg(facts.news ? u"● "_qs : QString(), session.siteName, id, plain);
    }
    case SessionState::kClosed:
      return u"%1（未連線）- %2"_qs.arg(session.siteName, plain);
    default:
      return plain;
  }
}

}  // namespace quillet
