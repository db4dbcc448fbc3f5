#include "app/messages/keeping_messages.h"

#include <QDir>

#include "app/messages/file_messages.h"
#include "app/messages/session_messages.h"

namespace quillet {
namespace {

QStringList WhereAndWhy(const std::filesystem::path& file, const std::string& reason) {
  QStringList lines{ShownPath(file.filename()), u"資料夾：%1"_qs.arg(ShownPath(file.parent_path()))};
  if (!reason.empty()) lines << u"系統訊息：%1"_qs.arg(SystemText(reason));
  return lines;
}

}  // namespace

PanelText ProblemNotice(const QString& title, const QStringList& lines) {
  return {.title = title,
          .lines = lines,
          .hint = u"Enter 繼續"_qs,
          .tone = PanelTone::kProblem,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

QString DescribeSaved(const std::filesystem::path& file) {
  return u"已儲存：%1"_qs.arg(ShownPath(file.filename()));
}

QString DescribeSavedSoFar(int lines) {
  return u"文章還在讀取，先存了前 %1 行，讀完時補上其餘的"_qs.arg(lines);
}

PanelText DescribeNotSaved(const std::filesystem::path& file, const std::string& reason) {
  return ProblemNotice(u"文章沒有儲存"_qs, WhereAndWhy(file, reason));
}

PanelText DescribeSavedPart(const std::filesystem::path& file, int lines) {
  QStringList text{u"文章還沒讀完就離開了，檔案裡只有前 %1 行。"_qs.arg(lines)};
  return ProblemNotice(u"文章只儲存了一部分"_qs, text + WhereAndWhy(file, {}));
}

PanelText DescribeNothingToSave() {
  return ProblemNotice(u"文章沒有儲存"_qs, {u"選好檔案時，文章已經不在畫面上。"_qs});
}

QString DescribePrinted(const QString& where) {
  return u"已列印到 %1"_qs.arg(QDir::toNativeSeparators(where));
}

QString DescribePrintWaits() {
  return u"文章還在讀取，讀完就列印"_qs;
}

PanelText DescribeNotPrinted(const QString& where) {
  return ProblemNotice(u"文章沒有印出來"_qs, {u"印到：%1"_qs.arg(QDir::toNativeSeparators(where))});
}

PanelText DescribeNothingToPrint() {
  return ProblemNotice(u"文章沒有列印"_qs, {u"文章還沒讀完就離開了。"_qs});
}

PanelText DescribeNoPrinter() {
  return ProblemNotice(u"文章沒有列印"_qs, {u"這台電腦沒有印表機。"_qs});
}

QString DescribeLogBegun(const std::filesystem::path& file) {
  return u"開始記錄連線內容：%1"_qs.arg(ShownPath(file.filename()));
}

QString DescribeLogEnded(const std::filesystem::path& file) {
  return u"連線內容已記錄在 %1"_qs.arg(ShownPath(file.filename()));
}

PanelText DescribeLogFailed(const std::filesystem::path& file, const std::string& reason) {
  QStringList lines = WhereAndWhy(file, reason);
  if (reason.empty()) lines << u"磁碟跟不上連線的速度。"_qs;
  return ProblemNotice(u"連線內容的記錄已停止"_qs, lines);
}

}  // namespace quillet
