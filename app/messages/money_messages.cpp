#include "app/messages/money_messages.h"

namespace quillet {
namespace {

// The panel must not grow out of the window.
constexpr int kMostNames = 16;
constexpr int kNamesPerLine = 4;
constexpr qsizetype kLongestWords = 36;

QString Shortened(const std::u16string& text) {
  const QString words = QString::fromStdU16String(text).simplified();
  return words.size() <= kLongestWords ? words : words.left(kLongestWords - 1) + u'…';
}

// The names of those in a state, a few on each line; the BBS's words behind the names that it refused.
QStringList NamesOf(const MoneyRunResult& result, GiftState state) {
  QStringList lines;
  QStringList line;
  int named = 0;
  const auto end = [&] {
    if (!line.isEmpty()) lines << u"　"_qs + line.join(u"、"_qs);
    line.clear();
  };
  for (const GiftRecord& record : result.gifts) {
    if (record.state != state || ++named > kMostNames) continue;
    const QString id = QString::fromStdU16String(record.gift.id);
    const bool hasWords = !record.words.empty();
    if (hasWords) end();
    line << (hasWords ? u"%1：%2"_qs.arg(id, Shortened(record.words)) : id);
    if (hasWords || line.size() == kNamesPerLine) end();
  }
  end();
  if (named > kMostNames) lines << u"　…還有 %1 份"_qs.arg(named - kMostNames);
  return lines;
}

void AddGroup(PanelText& text, const MoneyRunResult& result, GiftState state, const QString& heading) {
  const int count = result.Count(state);
  if (count == 0) return;
  text.lines << heading.arg(count) << NamesOf(result, state);
}

QString ReasonOf(const MoneyRunResult& result, std::int64_t wanted) {
  switch (result.end) {
    case MoneyRunEnd::kFinished:
      break;
    case MoneyRunEnd::kNotEnough:
      return result.money == kNoMoney
                 ? u"您的錢不夠。"_qs
                 : u"您的錢不夠：有 $%1，還要送出 $%2。"_qs.arg(result.money).arg(wanted);
    case MoneyRunEnd::kRefused:
      return u"站台不讓您送錢：%1"_qs.arg(Shortened(result.said));
    case MoneyRunEnd::kBusy:
      return u"站台正在等您輸入，請先完成或取消再試。"_qs;
    case MoneyRunEnd::kNoWay:
      return u"站台沒有回應，或找不到送錢的畫面。"_qs;
    case MoneyRunEnd::kUnclear:
      return u"看不懂站台的回答，已經停下來。"_qs;
    case MoneyRunEnd::kTakenOver:
      return u"您停止了送錢。"_qs;
    case MoneyRunEnd::kClosed:
      return u"連線在送錢途中結束了。"_qs;
  }
  return {};
}

QString TitleOf(const MoneyRunResult& result, int given) {
  const bool all = given == static_cast<int>(result.gifts.size());
  if (given == 0 && result.Count(GiftState::kAsked) == 0) return u"沒有發出P幣"_qs;
  return all ? u"P幣發完了"_qs : u"只發出一部分P幣"_qs;
}

PanelText Notice(const QString& title, PanelTone tone) {
  return {.title = title,
          .lines = {},
          .hint = u"Enter 關閉"_qs,
          .tone = tone,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

}  // namespace

PanelText DescribeMoneyEnd(const MoneyRunResult& result) {
  const int given = result.Count(GiftState::kGiven);
  const bool all = given == static_cast<int>(result.gifts.size());
  PanelText text = Notice(TitleOf(result, given), all ? PanelTone::kCalm : PanelTone::kProblem);
  const QString reason = ReasonOf(result, result.Sum(GiftState::kNotYet) + result.Sum(GiftState::kRefused));
  if (!reason.isEmpty() && !all) text.lines << reason;
  if (given > 0) {
    text.lines << u"已送出 %1 份，共 $%2。"_qs.arg(given).arg(result.Sum(GiftState::kGiven));
    if (!all) text.lines << NamesOf(result, GiftState::kGiven);
  }
  AddGroup(text, result, GiftState::kAsked, u"不能確定有沒有送到的 %1 份，請查看您的餘額："_qs);
  AddGroup(text, result, GiftState::kRefused, u"沒有送成的 %1 份："_qs);
  AddGroup(text, result, GiftState::kNotYet, u"還沒有送的 %1 份："_qs);
  return text;
}

PanelText DescribeNoMoney(NoMoneyReason reason) {
  PanelText text = Notice(u"現在不能發P幣"_qs, PanelTone::kProblem);
  switch (reason) {
    case NoMoneyReason::kNotConnected:
      text.lines << u"請先連線並登入站台。"_qs;
      break;
    case NoMoneyReason::kNoArticle:
      text.lines << u"請先打開要發P幣的文章。"_qs;
      break;
    case NoMoneyReason::kBusy:
      text.lines << u"Quillet 還在忙前一件事，請稍候，或按 Esc 停止它。"_qs;
      break;
  }
  return text;
}

}  // namespace quillet
