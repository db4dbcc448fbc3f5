#include "app/messages/file_messages.h"

#include <algorithm>
#include <utility>

#include <QDir>

#include "app/messages/session_messages.h"

namespace quillet {
namespace {

// One row per way in which a file fails. {file} is its name; a line is added where there is more to tell.
struct ProblemWords {
  FileProblem::Kind kind;
  const char16_t* line;
};

constexpr ProblemWords kWords[] = {
    {FileProblem::Kind::kUnreadable, u"讀不了 {file}，這次不會改動它；相關的更動只保留到程式結束。"},
    {FileProblem::Kind::kTooLarge, u"{file} 太大了，不像是設定檔，沒有讀取。"},
    {FileProblem::Kind::kDamaged, u"{file} 有些內容不是文字，已略過，其餘照常使用。"},
    {FileProblem::Kind::kConverted, u"{file} 是舊版的格式，已照新的格式讀取。"},
    {FileProblem::Kind::kNotWritten, u"{file} 寫不進去，目前的設定只保留到程式結束。"},
};

QString FirstLine(const FileProblem& problem) {
  const auto* const words = std::find_if(std::begin(kWords), std::end(kWords),
                                         [&](const ProblemWords& row) { return row.kind == problem.kind; });
  QString line = QString::fromUtf16(words->line).replace("{file}", ShownPath(problem.file.filename()));
  if (problem.kind == FileProblem::Kind::kDamaged && problem.line > 0)
    line += u"（第 %1 行起）"_qs.arg(problem.line);
  return line;
}

void AddLines(const FileProblem& problem, QStringList& lines) {
  lines << FirstLine(problem);
  const bool isLeftAsItIs =
      problem.kind == FileProblem::Kind::kUnreadable || problem.kind == FileProblem::Kind::kNotWritten;
  if (!isLeftAsItIs && problem.keptAs.empty())
    lines << u"無法另存原來的檔案，所以這次不會改動它；相關的更動只保留到程式結束。"_qs;
  if (!problem.keptAs.empty()) lines << u"原來的檔案另存為 %1"_qs.arg(ShownPath(problem.keptAs.filename()));
  if (!problem.reason.empty()) lines << u"系統訊息：%1"_qs.arg(SystemText(problem.reason));
}

bool SameMatter(const FileProblem& one, const FileProblem& other) {
  return one.kind == other.kind && one.file == other.file;
}

}  // namespace

QString ShownPath(const std::filesystem::path& path) {
  return QDir::toNativeSeparators(QString::fromStdU16String(path.u16string()));
}

PanelText DescribeFileProblems(const std::vector<FileProblem>& problems) {
  if (problems.empty()) return {};
  PanelText text;
  const auto areAll = [&](FileProblem::Kind kind) {
    return std::all_of(problems.begin(), problems.end(),
                       [kind](const FileProblem& problem) { return problem.kind == kind; });
  };
  const bool isNews = areAll(FileProblem::Kind::kConverted);
  text.title = u"有檔案讀取不完整"_qs;
  if (areAll(FileProblem::Kind::kNotWritten)) text.title = u"設定無法存檔"_qs;
  if (isNews) text.title = u"舊版的設定已轉換"_qs;
  for (std::size_t i = 0; i < problems.size(); ++i) {
    AddLines(problems[i], text.lines);
    // Below the last of the files that lie in it.
    const std::filesystem::path folder = problems[i].file.parent_path();
    if (i + 1 == problems.size() || problems[i + 1].file.parent_path() != folder)
      text.lines << u"資料夾：%1"_qs.arg(ShownPath(folder));
  }
  text.hint = u"Enter 繼續"_qs;
  text.tone = isNews ? PanelTone::kCalm : PanelTone::kProblem;
  text.onEnter = PanelAction::kDismiss;
  text.onEscape = PanelAction::kDismiss;
  return text;
}

std::vector<FileProblem> ToldProblems::New(std::vector<FileProblem> current) {
  std::vector<FileProblem> fresh;
  for (const FileProblem& problem : current) {
    const auto isThis = [&](const FileProblem& told) { return SameMatter(told, problem); };
    if (std::none_of(told_.begin(), told_.end(), isThis)) fresh.push_back(problem);
  }
  told_ = std::move(current);
  return fresh;
}

}  // namespace quillet
