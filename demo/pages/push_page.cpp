#include "demo/pages/push_page.h"

#include "core/charset.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"
#include "demo/pages/article_text.h"
#include "demo/pages/prompts.h"
#include "platform/clock.h"

namespace quillet::demo {
namespace {

constexpr std::u16string_view kKindPrompt = u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]? ";
constexpr std::u16string_view kOwnArticle = u"作者本人, 使用 → 加註方式 ";
constexpr std::u16string_view kConfirm = u" 確定[y/N]:";

void Say(PageHost& host, std::u16string_view text) {
  host.Open(std::make_unique<MessagePage>(host, text));
}

}  // namespace

void StartPush(PageHost& host, const std::string& board, const Article& article) {
  const User& user = host.CurrentUser();
  if (user.id == kGuestId || user.Has("silent")) return Say(host, u"無法推文: 使用者不可發言");
  if (article.kind == ArticleKind::kDeleted) return Say(host, u"本文已刪除");
  if (article.kind == ArticleKind::kEmpty) return Say(host, u"抱歉, 禁止推薦");
  if (const int wait = host.TheWorld().PushPause(board, user); wait > 0)
    return Say(host, u"本板禁止快速連續推文，請再等 " + FromBig5(std::to_string(wait)) + u" 秒");
  const auto author =
      article.authorId == user.id ? PushPage::Author::kThisUser : PushPage::Author::kSomebodyElse;
  host.Open(std::make_unique<PushPage>(host, board, article.fileName, author));
}

PushPage::PushPage(PageHost& host, std::string board, std::string fileName, Author author)
    : host_(host),
      board_(std::move(board)),
      fileName_(std::move(fileName)),
      author_(author),
      step_(author == Author::kThisUser ? Step::kText : Step::kKind),
      kind_(author == Author::kThisUser ? PushKind::kNote : PushKind::kGood),
      text_(PushColumns(host.CurrentUser().id)),
      answer_(2) {}

void PushPage::Draw(Canvas& canvas) {
  canvas.ClearRow(kBottomRow);
  if (step_ == Step::kKind) {
    LineField(1).Draw(canvas, kBottomRow, canvas.Put(kBottomRow, 0, kKindPrompt));
    return;
  }
  if (author_ == Author::kThisUser) {
    canvas.ClearRow(kBottomRow - 1);
    canvas.Put(kBottomRow - 1, 0, kOwnArticle);
  }
  int col = canvas.Put(kBottomRow, 0, PushMark(kind_), Attr(kWhite, kBlack, Weight::kBold));
  col = canvas.Put(kBottomRow, col + 1, host_.CurrentUser().id, Attr(kYellow, kBlack, Weight::kBold));
  col = canvas.Put(kBottomRow, col, std::string(": "), Attr(kYellow));
  if (step_ == Step::kText) {
    text_.Draw(canvas, kBottomRow, col);
    return;
  }
  canvas.Put(kBottomRow, col, text_.Text(), Attr(kYellow));
  answer_.Draw(canvas, kBottomRow,
               canvas.Put(kBottomRow, col + PushColumns(host_.CurrentUser().id) + 1, kConfirm));
}

void PushPage::OnKey(const Key& key) {
  if (key.Is(KeyKind::kEscape) || key.IsControl('C')) {
    host_.CloseTop();
  } else if (step_ == Step::kKind) {
    OnKind(key);
  } else if (!key.Is(KeyKind::kEnter)) {
    (step_ == Step::kText ? text_ : answer_).OnKey(key);
  } else if (step_ == Step::kText) {
    step_ = Step::kConfirm;
    if (Trimmed(text_.Text()).empty()) host_.CloseTop();
  } else {
    host_.CloseTop();
    if (answer_.Text() == "y" || answer_.Text() == "Y") Publish();
  }
}

void PushPage::OnKind(const Key& key) {
  if (key.Is('1') || key.Is(KeyKind::kEnter))
    kind_ = PushKind::kGood;
  else if (key.Is('2'))
    kind_ = PushKind::kBad;
  else if (key.Is('3'))
    kind_ = PushKind::kNote;
  else if (key.Is('q') || key.Is(KeyKind::kLeft))
    return host_.CloseTop();
  else
    return;
  step_ = Step::kText;
}

void PushPage::Publish() {
  const Push push{kind_, host_.CurrentUser().id, std::string(Trimmed(text_.Text())), host_.Address(),
                  PushTime(SecondsNow())};
  switch (host_.TheWorld().AddPush(board_, fileName_, push)) {
    case PushResult::kDone:
      return;
    case PushResult::kTooLong:
      return Say(host_, u"本文已過長, 禁止快速連續推文, 請再等 60 秒");
    case PushResult::kArticleGone:
      return Say(host_, u"本文已刪除");
  }
}

}  // namespace quillet::demo
