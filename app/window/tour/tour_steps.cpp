#include "app/window/tour/tour_steps.h"

#include "bbs/page_flags.h"
#include "input/text/screen_text.h"

namespace quillet {
namespace {

using Keys = std::vector<TourKey>;

// A visitor who may do everything; see demo/content/users.txt.
constexpr char16_t kAccount[] = u"reader";
constexpr char16_t kPassword[] = u"quillet";

const TourKey kEnter{Qt::Key_Return, QStringLiteral("\r"), {}};
const TourKey kRight = NamedKey(Qt::Key_Right);
const TourKey kLeftKey = NamedKey(Qt::Key_Left);
const TourKey kPageDown = NamedKey(Qt::Key_PageDown);
const TourKey kEnd = NamedKey(Qt::Key_End);
const TourKey kControlP{Qt::Key_P, QStringLiteral("\x10"), Qt::ControlModifier};
const TourKey kControlX{Qt::Key_X, QStringLiteral("\x18"), Qt::ControlModifier};

Keys operator+(Keys keys, const Keys& more) {
  keys.insert(keys.end(), more.begin(), more.end());
  return keys;
}

Keys operator+(Keys keys, const TourKey& more) {
  keys.push_back(more);
  return keys;
}

Arrived operator&&(Arrived first, Arrived second) {
  return [first = std::move(first), second = std::move(second)](const CQuillView& view) {
    return first(view) && second(view);
  };
}

// The list's cursor stands on the line that holds `text`.
Arrived CursorOn(const QString& text) {
  return [text](const CQuillView& view) {
    const ScreenSnapshot& screen = view.Screen();
    return screen.CursorInside() &&
           QString::fromStdU16String(RowAsText(screen, screen.cursorRow)).contains(text);
  };
}

bool HasLeft(const CQuillView& view) {
  return view.Panel().IsShown() && view.Panel().Text().onEnter == PanelAction::kReconnect;
}

std::vector<TourStep> ToBoardList() {
  return {{"board-list", Typed(u"b") + kRight, Is(PF_LIST_CURSOR) && Shows(u"【看板列表】"_qs), {}}};
}

std::vector<TourStep> ToCats() {
  return {{"board-prompt", Typed(u"sCa"), Shows(u"請輸入看板名稱"_qs) && CursorOn("Ca"), {}},
          {{}, Typed(u"ts") + kEnter, Is(PF_LIST_CURSOR) && CursorOn("Cats"), {}},
          {"article-list", {kRight}, Is(PF_ARTICLE_LIST_CURSOR) && Shows(u"看板《Cats》"_qs), kEnter}};
}

std::vector<TourStep> Reading() {
  return {{"article-page-2", {kPageDown}, ArticleRests(20, 26), {}},
          {"article-page-3", {kPageDown}, ArticleRests(40, 50), {}},
          {"article-end", {kEnd}, ArticleRestsAtEnd, {}}};
}

std::vector<TourStep> Pushing() {
  const QString words = u"我家那隻也會，而且嗯得很小聲"_qs;
  return {{"push-prompt", Typed(u"X"), Is(PF_PUSH_LINE) && Shows(u"您覺得這篇文章"_qs), {}},
          {"push-text", Typed(u"1"_qs + words), Shows(words), {}},
          {"push-confirm", Keys{kEnter} + Typed(u"y"), Is(PF_PUSH_CONFIRM), {}},
          {{}, {kEnter}, Is(PF_READING), {}},
          {"article-pushed", {kEnd}, Arrived(ArticleRestsAtEnd) && Shows(words), {}}};
}

std::vector<TourStep> Writing() {
  const QString words = u"雨下得很有耐心，我也是。"_qs;
  return {{{}, {kControlP}, Shows(u"標題："_qs), {}},
          {{}, Typed(u"[創作] 窗外") + kEnter, Is(PF_EDITOR), {}},
          {"editor",
           Typed(words) + kEnter + Typed(u"Typed in Quillet.") + kEnter,
           Is(PF_EDITOR) && Shows(words),
           {}},
          {{}, {kControlX}, Shows(u"檔案處理"_qs), {}},
          {{}, Typed(u"a") + kEnter, Is(PF_ARTICLE_LIST_CURSOR), kEnter}};
}

std::vector<TourStep> Leaving() {
  return {{{}, {kLeftKey}, Shows(u"【主功能表】"_qs), kLeftKey},
          {"log-out",
           Typed(u"g") + kEnter + Typed(u"y"),
           Shows(u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y"_qs),
           {}},
          {"farewell", {kEnter}, HasLeft, {}}};
}

}  // namespace

TourKey NamedKey(Qt::Key key) {
  return {key, {}, {}};
}

std::vector<TourKey> Typed(QStringView text) {
  Keys keys;
  for (const QChar character : text)
    keys.push_back({character.unicode() < 0x80 ? character.toUpper().unicode() : 0, QString(character), {}});
  return keys;
}

std::vector<TourKey> TypedLine(QStringView text) {
  return Typed(text) + kEnter;
}

Arrived Shows(const QString& text) {
  return [text](const CQuillView& view) {
    return QString::fromStdU16String(ScreenAsText(view.Screen())).contains(text);
  };
}

Arrived Is(std::uint32_t flags, std::uint32_t without) {
  return [=](const CQuillView& view) { return (view.Screen().pageFlags & (flags | without)) == flags; };
}

Arrived ArticleRests(int first, int end) {
  return [=](const CQuillView& view) {
    const ArticleView& article = view.Article();
    return article.IsShown() && article.Reading().Lines().IsComplete() &&
           article.TopRow() == article.TargetRow() && article.TopRow() >= first && article.TopRow() < end;
  };
}

bool ArticleRestsAtEnd(const CQuillView& view) {
  const ArticleView& article = view.Article();
  const int top = article.LastTopRow();
  return top > 0 && ArticleRests(top, top + 1)(view);
}

std::vector<TourStep> StepsToMainMenu() {
  return {{"login", {}, Shows(u"請輸入代號"_qs), {}},
          {{}, TypedLine(kAccount), Shows(u"請輸入您的密碼"_qs), {}},
          {"welcome", TypedLine(kPassword), Is(PF_ANYKEY_BANNER), {}},
          {"main-menu", {kEnter}, Shows(u"【主功能表】"_qs), kEnter}};
}

std::vector<TourStep> StepsToBoard(const QString& board) {
  return {{{},
           TypedLine(QString(u's' + board)),
           Is(PF_ARTICLE_LIST_CURSOR) && Shows(u"看板《%1》"_qs.arg(board)),
           kEnter}};
}

std::vector<TourStep> StepsToArticle(const QString& words, const QString& name) {
  return {{{}, TypedLine(QString(u'/' + words)), Is(PF_ARTICLE_LIST_CURSOR) && CursorOn(words), {}},
          {name, {kRight}, ArticleRests(0, 1), {}}};
}

std::vector<TourStep> StepsOutOfArticle() {
  return {{{}, {kLeftKey}, Is(PF_ARTICLE_LIST_CURSOR), {}}};
}

std::vector<TourStep> DemoTour() {
  std::vector<TourStep> steps;
  for (const auto& part :
       {StepsToMainMenu(), ToBoardList(), ToCats(), StepsToArticle(u"最奇怪"_qs, "article"), Reading(),
        Pushing(), StepsOutOfArticle(), StepsToBoard("AsciiArt"), StepsToArticle(u"夜景"_qs, "ansi-art"),
        StepsOutOfArticle(), Writing(), Leaving()})
    steps.insert(steps.end(), part.begin(), part.end());
  return steps;
}

}  // namespace quillet
