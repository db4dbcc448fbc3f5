#include "demo/pages/article_list_page.h"

#include <algorithm>

#include "core/charset.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"
#include "demo/pages/article_info.h"
#include "demo/pages/board_prompt.h"
#include "demo/pages/digest_page.h"
#include "demo/pages/open_article.h"
#include "demo/pages/post_flow.h"
#include "demo/pages/prompts.h"
#include "demo/pages/push_page.h"

namespace quillet::demo {
namespace {

constexpr int kModeratorColumns = 15;
constexpr int kBoardTitleCol = 27;
constexpr int kNumberCol = 1;
constexpr int kMarkCol = 8;
constexpr int kScoreCol = 9;
constexpr int kDateCol = 11;
constexpr int kAuthorCol = 17;
constexpr int kAuthorColumns = 12;
constexpr int kTitleCol = 30;
constexpr int kManyPushes = 100;
constexpr int kCodeColumns = 8;

// Compared by clients over the whole row, the three blanks included.
constexpr std::u16string_view kHelpLine =
    u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ";

// Two columns: how the pushes stand.
void DrawScore(Canvas& canvas, int row, int score) {
  if (score >= kManyPushes)
    canvas.Put(row, kScoreCol, u"爆", Attr(kRed, kBlack, Weight::kBold));
  else if (score > 0)
    canvas.Put(row, kScoreCol, PadLeft(std::to_string(score), 2),
               Attr(score >= 10 ? kYellow : kGreen, kBlack, Weight::kBold));
  else if (score <= -kManyPushes)
    canvas.Put(row, kScoreCol, u"XX", Attr(kBlack, kBlack, Weight::kBold));
  else if (score <= -10)
    canvas.Put(row, kScoreCol, "X" + std::to_string(-score / 10), Attr(kBlack, kBlack, Weight::kBold));
}

}  // namespace

std::string_view ThreadTitle(std::string_view title) {
  while (StartsWithIgnoringCase(title, "re:") || StartsWithIgnoringCase(title, "fw:"))
    title = Trimmed(title.substr(3));
  return title;
}

std::string ListTitle(const std::string& title) {
  const std::string rest(ThreadTitle(title));
  if (StartsWithIgnoringCase(title, "re:")) return "R: " + rest;
  if (StartsWithIgnoringCase(title, "fw:")) return ToBig5(u"轉 ") + rest;
  return ToBig5(u"□ ") + rest;
}

ArticleListPage::ArticleListPage(PageHost& host, BoardInfo board) : ListPage(host), board_(std::move(board)) {
  Update();
  Select(Count() - 1);
}

void ArticleListPage::Update() {
  articles_ = host_.TheWorld().Articles(board_.name);
}

void ArticleListPage::DrawFrame(Canvas& canvas) {
  constexpr std::uint8_t kBar = Attr(kWhite, kBlue, Weight::kBold);
  canvas.Fill(0, 0, kBarEnd, kBar);
  canvas.Put(
      0, 0,
      ToBig5(u"【板主:") + std::string(CutColumns(board_.moderators, kModeratorColumns)) + ToBig5(u"】"),
      kBar);
  const std::string name = ToBig5(u"看板《") + board_.name + ToBig5(u"》");
  const int nameCol = kBarEnd - static_cast<int>(name.size());
  canvas.Put(0, nameCol, name, kBar);
  const std::string_view title = CutColumns(board_.title, nameCol - kBoardTitleCol - 1);
  const int middle = (kBarEnd - static_cast<int>(title.size())) / 2;
  canvas.Put(0, std::clamp(middle, kBoardTitleCol, nameCol - 1 - static_cast<int>(title.size())), title,
             Attr(kYellow, kBlue, Weight::kBold));
  canvas.Put(1, 0, kHelpLine);
  canvas.Fill(2, 0, kBarEnd, kHeads);
  canvas.Put(2, 0, u"   編號    日 期 作  者       文  章  標  題", kHeads);
  const std::string popularity = ToBig5(u"人氣:") + std::to_string(board_.popularity) + " ";
  canvas.Put(2, kBarEnd - static_cast<int>(popularity.size()), popularity, kHeads);
  canvas.Put(kBottomRow, 0, u" 文章選讀 ", Attr(kWhite, kCyan, Weight::kBold));
  canvas.Fill(kBottomRow, 10, kBarEnd, kHeads);
  int col = 11;
  for (const auto& [keys, label] : {std::pair{u"(y)", u"回應"},
                                    {u"(X)", u"推文"},
                                    {u"(Q)", u"資訊"},
                                    {u"(=[])", u"相關主題"},
                                    {u"(/)", u"找標題"},
                                    {u"(#)", u"文章代碼"}}) {
    col = canvas.Put(kBottomRow, col, keys, Attr(kRed, kWhite));
    col = canvas.Put(kBottomRow, col, label, kHeads) + 1;
  }
}

void ArticleListPage::DrawItem(Canvas& canvas, int row, int index) {
  const Article& article = At(index);
  const bool selected = index == Selected();
  const BbsTime time = TimeOf(article.seconds);
  const bool deleted = article.kind == ArticleKind::kDeleted;
  const bool unread = host_.ReadArticles().count(article.fileName) == 0;
  canvas.Put(row, kNumberCol, PadLeft(std::to_string(index + 1), 6));
  const char mark = article.mark != ' ' ? article.mark : unread && !deleted ? '+' : ' ';
  canvas.Put(row, kMarkCol, std::string(1, mark));
  if (!deleted) DrawScore(canvas, row, article.Score());
  const std::string date =
      std::to_string(time.month) + (time.day < 10 ? "/0" : "/") + std::to_string(time.day);
  canvas.Put(row, kDateCol, PadLeft(date, 5));
  const std::string title =
      deleted ? ToBig5(u"(本文已被刪除) [") + article.authorId + "]" : ListTitle(article.title);
  canvas.Put(row, kAuthorCol, PadRight(deleted ? "-" : article.authorId, kAuthorColumns));
  canvas.Put(row, kTitleCol, CutColumns(title, kBarEnd - kTitleCol),
             selected ? Attr(kYellow, kBlack, Weight::kBold) : kAttrBlank);
}

void ArticleListPage::OpenItem(int index) {
  const ArticlePtr article = articles_[static_cast<std::size_t>(index)];
  if (article->kind == ArticleKind::kDeleted) return;
  OpenArticle(host_, board_.name, article, [this](ArticleStep step) { return Step(step); });
}

void ArticleListPage::OnOtherKey(const Key& key) {
  if (key.Is('s')) {
    OpenBoardPrompt(host_);
  } else if (key.IsControl('P')) {
    StartPost(host_, board_.name);
  } else if (key.Is('i') || key.Is('b')) {
    OpenBoardInfo(host_, board_);
  } else if (key.Is('z')) {
    host_.Open(std::make_unique<DigestPage>(host_, board_));
  } else if (key.Is('h')) {
    OpenHelp(host_);
  } else if (key.Is('#')) {
    AskCode();
  } else if (key.Is('/')) {
    AskTitle();
  } else if (Count() > 0) {
    OnArticleKey(key);
  }
}

bool ArticleListPage::OnArticleKey(const Key& key) {
  const Article& article = At(Selected());
  if (key.Is('X') || key.Is('%'))
    StartPush(host_, board_.name, article);
  else if (key.Is('y'))
    StartReply(host_, board_.name, article);
  else if (key.Is('Q'))
    OpenArticleInfo(host_, board_.name, article);
  else if (key.Is('='))
    GoToThread(ArticleStep::kFirstOfThread);
  else if (key.Is('['))
    GoToThread(ArticleStep::kPreviousOfThread);
  else if (key.Is(']'))
    GoToThread(ArticleStep::kNextOfThread);
  else if (key.Is('a'))
    GoToThread(ArticleStep::kNextOfAuthor);
  else if (key.Is('A'))
    GoToThread(ArticleStep::kPreviousOfAuthor);
  else if (key.Is('d'))
    Delete();
  else
    return false;
  return true;
}

void ArticleListPage::AskCode() {
  host_.Open(std::make_unique<LinePrompt>(
      host_, LinePrompt::Place{kBottomRow, u"搜尋文章代碼(AID): #", kCodeColumns + 1, {}},
      [this](const std::string& code) {
        if (!code.empty()) GoToCode(code);
      }));
}

void ArticleListPage::GoToCode(const std::string& code) {
  const auto found = std::find_if(articles_.begin(), articles_.end(), [&](const ArticlePtr& article) {
    return article->code == code && article->kind != ArticleKind::kDeleted;
  });
  if (found != articles_.end()) {
    Select(static_cast<int>(found - articles_.begin()));
    return;
  }
  host_.Open(std::make_unique<AnyKeyPage>(
      host_, kBottomRow - 1,
      std::vector<std::string>{ToBig5(u"找不到這個文章代碼(AID)，可能是文章已被刪除，或不在這個看板")},
      AnyKeyPage::Covers::kOwnRows));
}

void ArticleListPage::AskTitle() {
  host_.Open(std::make_unique<LinePrompt>(
      host_, LinePrompt::Place{kBottomRow, u"搜尋標題: ", 30, {}}, [this](const std::string& text) {
        if (text.empty()) return;
        for (int step = 1; step <= Count(); ++step) {
          const int index = (Selected() + step) % Count();
          if (!ContainsIgnoringCase(At(index).title, text)) continue;
          Select(index);
          return;
        }
        host_.Open(std::make_unique<MessagePage>(host_, u"沒有符合的文章"));
      }));
}

void ArticleListPage::GoToThread(ArticleStep step) {
  if (!Step(step)) host_.Open(std::make_unique<MessagePage>(host_, u"沒有其他相關的文章"));
}

ArticlePtr ArticleListPage::Step(ArticleStep step) {
  Update();
  if (Count() == 0) return nullptr;
  const bool backwards = step == ArticleStep::kPrevious || step == ArticleStep::kPreviousOfThread ||
                         step == ArticleStep::kPreviousOfAuthor;
  const bool first = step == ArticleStep::kFirstOfThread;
  const Article from = At(Selected());
  const auto wanted = [&](const Article& article) {
    if (article.kind == ArticleKind::kDeleted) return false;
    switch (step) {
      case ArticleStep::kNext:
      case ArticleStep::kPrevious:
        return true;
      case ArticleStep::kNextOfAuthor:
      case ArticleStep::kPreviousOfAuthor:
        return article.authorId == from.authorId;
      default:
        return ThreadTitle(article.title) == ThreadTitle(from.title);
    }
  };
  const int direction = backwards ? -1 : 1;
  for (int index = first ? 0 : Selected() + direction; index >= 0 && index < Count(); index += direction) {
    if (!wanted(At(index))) continue;
    Select(index);
    return articles_[static_cast<std::size_t>(index)];
  }
  return nullptr;
}

void ArticleListPage::Delete() {
  const std::string fileName = At(Selected()).fileName;
  if (At(Selected()).authorId != host_.CurrentUser().id || host_.CurrentUser().id == kGuestId) {
    host_.Open(std::make_unique<MessagePage>(host_, u"只能刪除自己的文章"));
    return;
  }
  host_.Open(std::make_unique<LinePrompt>(
      host_, LinePrompt::Place{kBottomRow, u"請確定刪除(Y/N)?[N] ", 2, {}},
      [this, fileName](const std::string& answer) {
        if (answer == "y" || answer == "Y")
          host_.TheWorld().DeleteArticle(board_.name, fileName, host_.CurrentUser().id);
      }));
}

}  // namespace quillet::demo
