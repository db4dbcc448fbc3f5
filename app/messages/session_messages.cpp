#include "app/messages/session_messages.h"

#include <algorithm>

#include <QDir>
#include <QStringDecoder>

#include "core/session_state.h"
#include "core/site_address.h"

namespace quillet {
namespace {

enum class Detail { kNone, kShown, kFingerprint };

// One row per way in which a connection ends. {site} is the address as given, {limit} the longest allowed.
struct EndWords {
  EndReason reason;
  PanelTone tone;
  PanelAction onEnter;
  Detail detail;  // whether the system's own text helps
  const char16_t* title;
  const char16_t* line;
};

constexpr EndWords kEndWords[] = {
    {EndReason::kUnknownScheme, PanelTone::kProblem, PanelAction::kAskAddress, Detail::kNone,
     u"不認得這個位址", u"「{site}」的開頭不是 telnet://、ssh:// 或 wss://。"},
    {EndReason::kAddressTooLong, PanelTone::kProblem, PanelAction::kAskAddress, Detail::kNone, u"位址太長了",
     u"站台位址最多 {limit} 個字元。"},
    {EndReason::kResolveFailed, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown, u"找不到站台",
     u"查不到「{host}」的網路位址，請檢查拼字與網路連線。"},
    {EndReason::kConnectFailed, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown, u"連不上站台",
     u"「{host}」的 {port} 埠沒有回應，或拒絕了連線。"},
    {EndReason::kCancelled, PanelTone::kCalm, PanelAction::kReconnect, Detail::kNone, u"已取消連線",
     u"{site}"},
    {EndReason::kClosedByPeer, PanelTone::kEnded, PanelAction::kReconnect, Detail::kNone, u"站台結束了連線",
     u"{site}"},
    {EndReason::kClosedByUser, PanelTone::kCalm, PanelAction::kReconnect, Detail::kNone, u"已離開站台",
     u"{site}"},
    {EndReason::kReadFailed, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown, u"連線中斷了",
     u"與「{site}」之間的網路發生錯誤。"},
    {EndReason::kLoginRefused, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown,
     u"站台不讓訪客登入", u"「{host}」不接受 SSH 連線用的公用帳號，請改用其他連線方式。"},
    {EndReason::kTerminalRefused, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown,
     u"站台不開終端機", u"「{host}」接受了連線，卻不提供終端機，可能已經客滿。"},
    {EndReason::kHostKeyChanged, PanelTone::kProblem, PanelAction::kAcceptHostKey, Detail::kFingerprint,
     u"站台的金鑰變了", u"「{host}」和上次連線時不是同一把金鑰，可能有人冒充。什麼都還沒有送出。"},
    {EndReason::kBadAddress, PanelTone::kProblem, PanelAction::kAskAddress, Detail::kNone, u"位址寫得不對",
     u"「{site}」不是可以連線的 WebSocket 位址，請檢查拼字。"},
    {EndReason::kGatewayUnreachable, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown,
     u"連不上 WebSocket 站台", u"「{site}」沒有回應，或拒絕了連線。"},
    {EndReason::kGatewaySilent, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown, u"站台沒有回應",
     u"「{site}」接了連線，卻一直沒有回答。"},
    {EndReason::kGatewayRefused, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown,
     u"站台拒絕了連線", u"「{site}」沒有接受 WebSocket 連線，請檢查位址與路徑。"},
    {EndReason::kNotSecure, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown, u"無法建立加密連線",
     u"「{site}」沒有用雙方都懂的加密方式回答。"},
    {EndReason::kCertificateUntrusted, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown,
     u"站台的憑證不可信任", u"簽發「{site}」憑證的機構不受這台電腦信任，為了安全沒有連線。"},
    {EndReason::kCertificateWrongName, PanelTone::kProblem, PanelAction::kReconnect, Detail::kNone,
     u"站台的憑證不是它的", u"憑證不屬於「{site}」，對方可能是別人假冒的，為了安全沒有連線。"},
    {EndReason::kCertificateExpired, PanelTone::kProblem, PanelAction::kReconnect, Detail::kShown,
     u"站台的憑證不在有效期內",
     u"「{site}」的憑證已過期或尚未生效，為了安全沒有連線；請檢查這台電腦的日期。"},
    {EndReason::kEndOfRecording, PanelTone::kCalm, PanelAction::kReconnect, Detail::kNone, u"錄影播放完畢",
     u"{site}"},
};

constexpr EndWords kNoRecording = {EndReason::kConnectFailed, PanelTone::kProblem,
                                   PanelAction::kReconnect,   Detail::kShown,
                                   u"無法播放錄影",           u"打不開「{site}」。"};

const EndWords* WordsOf(EndReason reason) {
  for (const EndWords& words : kEndWords)
    if (words.reason == reason) return &words;
  return nullptr;
}

QString Filled(const char16_t* pattern, const SessionFacts& facts) {
  // A long address must not push the panel out of the window.
  const auto shortened = [](const QString& text) {
    constexpr qsizetype kLongest = 60;
    return text.size() <= kLongest ? text : text.left(kLongest - 1) + QChar(u'…');
  };
  return QString::fromUtf16(pattern)
      .replace("{port}", facts.port)
      .replace("{limit}", QString::number(kMaxAddressLength))
      .replace("{host}", shortened(facts.host))
      .replace("{site}", shortened(facts.siteName));
}

QString UnsentLine(std::size_t bytes) {
  return u"您輸入的內容有 %1 位元組尚未送出。"_qs.arg(bytes);
}

bool IsUnwished(EndReason reason) {
  return reason == EndReason::kClosedByPeer || reason == EndReason::kReadFailed;
}

QString EnterHint(PanelAction action, EndReason reason) {
  if (IsUnwished(reason)) return u"Enter 或任意鍵重新連線　　Esc 看畫面"_qs;
  if (action == PanelAction::kAcceptHostKey) return u"Enter 信任新的金鑰並連線，不自動登入　　Esc 不連線"_qs;
  if (action == PanelAction::kAskAddress) return u"Enter 改用其他位址　　Esc 看畫面"_qs;
  return reason == EndReason::kEndOfRecording ? u"Enter 重新播放　　Esc 看畫面"_qs
                                              : u"Enter 重新連線　　Esc 看畫面"_qs;
}

void AddCountdown(int seconds, PanelText& text) {
  text.lines << u"%1 秒後自動重新連線。"_qs.arg(seconds);
  text.hint = u"Enter 或任意鍵現在就連　　Esc 停止自動連線"_qs;
  text.onEnter = PanelAction::kReconnect;
  text.onEscape = PanelAction::kStopRetrying;
  text.takesAnyKey = true;
}

PanelText DescribeEnd(const SessionFacts& facts) {
  const EndWords* words = WordsOf(facts.end.reason);
  if (words == nullptr) words = WordsOf(EndReason::kReadFailed);
  if (facts.isRecording && facts.end.reason == EndReason::kConnectFailed) words = &kNoRecording;
  PanelText text;
  text.title = QString::fromUtf16(words->title);
  text.lines << Filled(words->line, facts);
  if (words->detail == Detail::kShown && !facts.end.detail.empty())
    text.lines << u"系統訊息：%1"_qs.arg(SystemText(facts.end.detail));
  if (words->detail == Detail::kFingerprint)
    text.lines << u"新的金鑰：%1"_qs.arg(QString::fromStdString(facts.end.detail));
  if (facts.farewell == Farewell::kReplaced) text.lines << u"這個帳號在別處登入，這裡的連線因此結束。"_qs;
  if (facts.unsentBytes > 0) text.lines << UnsentLine(facts.unsentBytes);
  text.tone = words->tone;
  text.onEnter = words->onEnter;
  text.onEscape = PanelAction::kDismiss;
  text.hint = EnterHint(words->onEnter, facts.end.reason);
  text.takesAnyKey = IsUnwished(facts.end.reason);
  if (facts.retrySeconds > 0) AddCountdown(facts.retrySeconds, text);
  return text;
}

}  // namespace

PanelText DescribeSession(const SessionFacts& facts) {
  switch (facts.state) {
    case SessionState::kConnected:
      return {};
    case SessionState::kConnecting:
      return {.title = u"連線中"_qs,
              .lines = facts.unsentBytes == 0
                           ? QStringList{Filled(u"{site}", facts)}
                           : QStringList{Filled(u"{site}", facts), UnsentLine(facts.unsentBytes)},
              .hint = u"Esc 取消"_qs,
              .tone = PanelTone::kBusy,
              .onEscape = PanelAction::kCancel};
    case SessionState::kClosed:
      return DescribeEnd(facts);
    default:
      return {.title = u"尚未連線"_qs,
              .lines = {u"歡迎使用 Quillet"_qs},
              .hint = u"Enter 登入"_qs,
              .onEnter = PanelAction::kAskLogin};
  }
}

PanelText DescribeUnsentLost(std::size_t bytes) {
  return {.title = u"已重新連線"_qs,
          .lines = {u"連線中斷前，"_qs + UnsentLine(bytes)},
          .hint = u"Enter 關閉"_qs,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

PanelText DescribeTables(const CharsetLoad& load, const std::filesystem::path& folder) {
  if (load.Complete()) return {};
  PanelText text;
  text.title = u"缺少字元對照表"_qs;
  const auto add = [&](const QString& file, std::size_t bytes) {
    if (bytes == kCharsetFileSize) return;
    text.lines << (bytes == 0
                       ? u"找不到 %1"_qs.arg(file)
                       : u"%1 不完整：只有 %2 位元組，應為 %3"_qs.arg(file).arg(bytes).arg(kCharsetFileSize));
  };
  add(u"b2u2.bin"_qs, load.big5Bytes);
  add(u"u2b2.bin"_qs, load.unicodeBytes);
  text.lines << u"資料夾：%1"_qs.arg(QDir::toNativeSeparators(QString::fromStdU16String(folder.u16string())));
  text.lines << u"沒有這些檔案就無法顯示與輸入中文，請重新安裝 Quillet。"_qs;
  text.hint = u"Enter 仍要繼續"_qs;
  text.tone = PanelTone::kProblem;
  text.onEnter = PanelAction::kDismiss;
  text.onEscape = PanelAction::kDismiss;
  return text;
}

QString SystemText(const std::string& text) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString decoded = utf8(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
  return utf8.hasError() ? QString::fromLocal8Bit(text.c_str()) : decoded;
}

LoginComplaint DescribeRefusal(const QString& said) {
  const QString words = said.simplified();
  // Behind the password's prompt, which may still stand there, nothing is said.
  const bool isPrompt = words.startsWith(u"請輸入"_qs);
  return {.title = u"站台不接受這個帳號或密碼"_qs, .detail = isPrompt ? QString() : words};
}

LoginComplaint DescribeBrokenLogin(const SessionFacts& facts) {
  if (facts.end.reason == EndReason::kCancelled) return {};
  const PanelText words = DescribeEnd(facts);
  if (facts.end.reason == EndReason::kClosedByPeer || facts.end.reason == EndReason::kReadFailed)
    return {.title = u"登入還沒完成，連線就結束了"_qs, .detail = words.title};
  return {.title = words.title, .detail = words.lines.value(0)};
}

LoginComplaint DescribeUnsealable(std::size_t longest) {
  return {.title = u"這個密碼不能記住"_qs,
          .detail =
              u"只能記住 %1 個字元以內的英文、數字與符號，而且要認得這台電腦。再按一次登入，就不記住密碼。"_qs
                  .arg(longest)};
}

namespace {

// The piece that is on its way counts.
QString DescribePushing(const ActivityProgress& progress) {
  const int piece = std::min(progress.done + 1, progress.total);
  const QString wait =
      progress.waitSeconds > 0 ? u"　站台要求等 %1 秒"_qs.arg(progress.waitSeconds) : QString();
  return u"連續推文 %1/%2%3　按 Esc 停止"_qs.arg(piece).arg(progress.total).arg(wait);
}

}  // namespace

QString DescribeActivity(Activity activity, ActivityProgress progress) {
  switch (activity) {
    case Activity::kLogin:
      return u"登入中　按 Esc 或直接輸入就自己來"_qs;
    case Activity::kJump:
      return u"前往文章　按 Esc 停止"_qs;
    case Activity::kAskCode:
      return u"查詢文章代碼"_qs;
    case Activity::kGiveMoney:
      return u"發P幣 %1/%2　按 Esc 停止"_qs.arg(progress.done).arg(progress.total);
    case Activity::kPush:
      return DescribePushing(progress);
    case Activity::kLogOut:
      return u"登出中　按 Esc 停止"_qs;
    case Activity::kNone:
      break;
  }
  return {};
}

QString DescribeSilence(AnswerWait::State state) {
  switch (state) {
    case AnswerWait::State::kSlow:
      return u"等待站台回應…"_qs;
    case AnswerWait::State::kStalled:
      return u"站台沒有回應　按這裡或 Ctrl+Shift+R 重新連線"_qs;
    case AnswerWait::State::kNone:
      break;
  }
  return {};
}

PanelText DescribeJump(const ArticleReference& article, JumpResult result) {
  PanelText text{.title = {},
                 .lines = {},
                 .hint = u"Enter 關閉"_qs,
                 .tone = PanelTone::kProblem,
                 .onEnter = PanelAction::kDismiss,
                 .onEscape = PanelAction::kDismiss};
  const QString board = QString::fromStdU16String(article.board);
  const QString code = QString::fromStdU16String(article.code);
  switch (result) {
    case JumpResult::kFound:
    case JumpResult::kClosed:
      return {};
    case JumpResult::kNotFound:
      text.title = u"找不到這篇文章"_qs;
      text.lines << u"「%1」看板沒有代碼 #%2 的文章，可能已經刪除了。"_qs.arg(board, code);
      break;
    case JumpResult::kNoBoard:
      text.title = u"沒有這個看板"_qs;
      text.lines << u"站台沒有「%1」看板，或您不能進入。"_qs.arg(board);
      break;
    case JumpResult::kBusy:
      text.title = u"現在不能跳到文章"_qs;
      text.lines << u"站台正在等您輸入，請先完成或取消，回到選單或列表再試。"_qs;
      break;
  }
  return text;
}

PanelText DescribeNoJump(bool connected) {
  return {.title = u"現在不能跳到文章"_qs,
          .lines = {connected ? u"Quillet 還在忙前一件事，請稍候，或按 Esc 停止它。"_qs
                              : u"請先連線並登入站台。"_qs},
          .hint = u"Enter 關閉"_qs,
          .tone = PanelTone::kProblem,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

PanelText DescribeDemoFailure(const QString& error) {
  return {.title = u"示範站台無法啟動"_qs,
          .lines = {error},
          .hint = u"Enter 關閉"_qs,
          .tone = PanelTone::kProblem,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

}  // namespace quillet
