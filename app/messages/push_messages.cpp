#include "app/messages/push_messages.h"

#include <QList>

namespace quillet {
namespace {

// So many characters are named one by one.
constexpr int kMostNamed = 20;

QString Reason(const PushRunResult& result) {
  switch (result.outcome) {
    case PushOutcome::kDone:
      break;
    case PushOutcome::kRefused:
      return result.said.empty() ? u"站台不接受推文。"_qs
                                 : u"站台說：%1"_qs.arg(QString::fromStdU16String(result.said));
    case PushOutcome::kNotOffered:
      return u"這篇文章不能用您選的方式推文。"_qs;
    case PushOutcome::kNoReader:
      return u"站台的畫面上沒有文章，所以還沒有開始。"_qs;
    case PushOutcome::kNoAnswer:
      return u"站台沒有回應，或顯示了不認得的畫面。"_qs;
    case PushOutcome::kTakenOver:
      return u"您中途停下了推文。"_qs;
    case PushOutcome::kClosed:
      return u"連線中斷了。"_qs;
  }
  return {};
}

}  // namespace

QString DescribePushSuccess(const PushRunResult& result) {
  return result.outcome == PushOutcome::kDone ? u"已推出 %1 則推文"_qs.arg(result.pushed) : QString();
}

PanelText DescribePushEnd(const PushRunResult& result) {
  if (result.outcome == PushOutcome::kDone) return {};
  PanelText text{.title = u"推文沒有全部推出"_qs,
                 .lines = {},
                 .hint = u"Enter 關閉"_qs,
                 .tone = PanelTone::kProblem,
                 .onEnter = PanelAction::kDismiss,
                 .onEscape = PanelAction::kDismiss};
  if (result.total > 0) text.lines << u"共 %1 則，已推出 %2 則。"_qs.arg(result.total).arg(result.pushed);
  text.lines << Reason(result);
  if (result.unsure)
    text.lines << u"第 %1 則可能已經推出，請先看過文章，以免重複。"_qs.arg(result.pushed + 1);
  if (!result.rest.empty()) text.lines << u"還沒推出的文字保留著，再開「連續推文」就會看到。"_qs;
  return text;
}

QString DescribeNoPush(NoPushReason reason) {
  switch (reason) {
    case NoPushReason::kNotConnected:
      return u"尚未連線，無法推文"_qs;
    case NoPushReason::kNoArticle:
      return u"請先打開要推文的文章"_qs;
    case NoPushReason::kBusy:
      return u"Quillet 還在忙前一件事，請稍候，或按 Esc 停止它"_qs;
    case NoPushReason::kOtherArticle:
      return u"這篇文章已經關閉，無法推文；文字保留著，再打開文章就能繼續"_qs;
  }
  return {};
}

QString DescribePieces(int pieces, int columns) {
  if (pieces == 0) return u"輸入文字後，這裡會顯示怎麼分成一則一則推文。"_qs;
  return u"分成 %1 則，每則約可容納 %2 欄（全形字佔 2 欄）："_qs.arg(pieces).arg(columns);
}

QString DescribeUnpushable(const QString& characters) {
  if (characters.isEmpty()) return {};
  const QList<uint> all = characters.toUcs4();
  QStringList named;
  for (const uint character : all.first(qMin<qsizetype>(all.size(), kMostNamed)))
    named << QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1);
  const QString more = all.size() > kMostNamed ? u" 等 %1 個"_qs.arg(all.size()) : QString();
  return u"站台無法顯示這些字，推出時會略去：%1%2"_qs.arg(named.join(u' '), more);
}

}  // namespace quillet
