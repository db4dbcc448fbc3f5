#include "demo/pages/post_flow.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/big5_text.h"
#include "demo/pages/article_list_page.h"
#include "demo/pages/editor_page.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kPromptRow = 22;
constexpr int kTitleColumns = 60;
constexpr std::size_t kMostQuotedLines = 12;

enum class Target { kBoard, kMail, kBoth };

using Lines = std::vector<std::string>;

bool MayWrite(PageHost& host) {
  if (host.CurrentUser().id != kGuestId) return true;
  host.Open(std::make_unique<MessagePage>(host, u"訪客不能發表文章，請用自己的代號進站"));
  return false;
}

void Ask(PageHost& host, LinePrompt::Place place, LinePrompt::Done done) {
  host.Open(std::make_unique<LinePrompt>(host, std::move(place), std::move(done)));
}

void Publish(PageHost& host, const std::string& board, const std::string& title, Lines lines) {
  Article article;
  article.authorId = host.CurrentUser().id;
  article.nickname = host.CurrentUser().nickname;
  article.title = title;
  article.address = host.Address();
  article.body = std::move(lines);
  host.TheWorld().PostArticle(board, std::move(article));
  host.Open(std::make_unique<AnyKeyPage>(
      host, 10, Lines{ToBig5(u"          順利貼出文章，") + board + ToBig5(u" 板多了一篇。")},
      AnyKeyPage::Covers::kScreen));
}

void Deliver(PageHost& host, const std::string& to, const std::string& title, const Lines& lines) {
  const bool sent = host.TheWorld().SendMail(to, {host.CurrentUser().id, title, 0, lines, false});
  host.Open(std::make_unique<MessagePage>(host, sent ? u"信件已經寄出" : u"找不到收信人，信沒有寄出"));
}

// The words of the article, each line with ": " before it.
Lines Quoted(const Article& article) {
  Lines lines{ToBig5(u"※ 引述《") + article.authorId + " (" + article.nickname + ToBig5(u")》之銘言：")};
  for (const std::string& line : article.body) {
    if (lines.size() > kMostQuotedLines || line == "--") break;
    const std::string text = PlainText(line);
    if (!Trimmed(text).empty()) lines.push_back(": " + text);
  }
  lines.emplace_back();
  return lines;
}

void EditReply(PageHost& host, const std::string& board, const std::string& to, Target target,
               const std::string& title, Lines start) {
  host.Open(std::make_unique<EditorPage>(host, std::move(start),
                                         [&host, board, to, target, title](const Lines& lines) {
                                           if (target != Target::kBoard) Deliver(host, to, title, lines);
                                           if (target != Target::kMail) Publish(host, board, title, lines);
                                         }));
}

void AskReplyTitle(PageHost& host, const std::string& board, const Article& article, Target target) {
  const std::string proposal = "Re: " + std::string(ThreadTitle(article.title));
  const std::string to = article.authorId;
  const Lines quoted = Quoted(article);
  Ask(host, {kPromptRow, u"標題：", kTitleColumns, proposal},
      [&host, board, to, quoted, target](const std::string& title) {
        if (Trimmed(title).empty()) return;
        Ask(host, {kRows - 1, u"請問要引用原文嗎(Y/N)？[Y] ", 2, {}},
            [&host, board, to, quoted, target, title](const std::string& answer) {
              const bool quote = answer != "n" && answer != "N";
              EditReply(host, board, to, target, title, quote ? quoted : Lines{});
            });
      });
}

}  // namespace

void StartPost(PageHost& host, const std::string& board) {
  if (!MayWrite(host)) return;
  Ask(host, {kPromptRow, u"標題：", kTitleColumns, {}}, [&host, board](const std::string& title) {
    if (Trimmed(title).empty()) return;
    host.Open(std::make_unique<EditorPage>(host, Lines{}, [&host, board, title](Lines lines) {
      Publish(host, board, title, std::move(lines));
    }));
  });
}

void StartReply(PageHost& host, const std::string& board, const Article& article) {
  if (!MayWrite(host)) return;
  Ask(host, {kPromptRow, u"▲ 回應至 (F)看板 (M)作者信箱 (B)二者皆是 (Q)取消？[F] ", 2, {}},
      [&host, board, article](const std::string& answer) {
        const char choice = answer.empty() ? 'f' : static_cast<char>(answer[0] | 0x20);
        if (choice == 'f') AskReplyTitle(host, board, article, Target::kBoard);
        if (choice == 'm') AskReplyTitle(host, board, article, Target::kMail);
        if (choice == 'b') AskReplyTitle(host, board, article, Target::kBoth);
      });
}

void StartMail(PageHost& host) {
  if (!MayWrite(host)) return;
  Ask(host, {kPromptRow, u"收信人代號：", 12, {}}, [&host](const std::string& to) {
    if (Trimmed(to).empty()) return;
    Ask(host, {kPromptRow, u"標題：", kTitleColumns, {}}, [&host, to](const std::string& title) {
      if (Trimmed(title).empty()) return;
      host.Open(std::make_unique<EditorPage>(
          host, Lines{}, [&host, to, title](const Lines& lines) { Deliver(host, to, title, lines); }));
    });
  });
}

}  // namespace quillet::demo
