#include "tools/screenshots/side_list_pictures.h"

#include <QDateTime>

namespace quillet {
namespace {

constexpr std::int64_t kMinute = 60, kHour = 60 * kMinute, kDay = 24 * kHour, kYear = 365 * kDay;

struct Card {
  std::int64_t age;  // seconds; negative: the time is not known
  std::int32_t score;
  const char16_t* board;
  const char16_t* code;
  const char16_t* title;
};

constexpr std::int32_t kDeleted = 0;

constexpr Card kHot[] = {
    {12 * kMinute, 1823, u"Baseball", u"1aHot001", u"[Live] 總冠軍賽七戰 黑熊 vs 鯨鯊"},
    {70 * kMinute, 812, u"ChitChat", u"1aHot002", u"[討論] 芋頭到底可不可以放進火鍋裡"},
    {95 * kMinute, 301, u"Cats", u"1aHot003", u"[討論] 你家的貓做過最奇怪的一件事"},
    {5 * kHour, 42, u"Food", u"1aHot004",
     u"[食記] 公司尾牙備選六家，評分表，從停車到甜點一次寫完，文長慎入，最後一家請務必看完再決定"},
    {23 * kHour, 7, u"Typing", u"1aHot005", u"[長文] 手指上的三十七個符號"},
    {26 * kHour, -350, u"ChitChat", u"1aHot006", u"Re: [討論] 芋頭到底可不可以放進火鍋裡"},
    {2 * kDay, kDeleted, u"Cats", u"1aHot007", u"[送養] 倉庫裡的四隻小虎斑，個性分析"},
    {-1, kNoScore, u"Music", u"1aHot008", u""},
    {40 * kDay, 299, u"Photo", u"1aHot009", u"[教學] 過曝不是錯，是另一種天氣"},
    {400 * kDay, -12, u"Travel", u"1aHot010", u"[遊記] 一個人的環島，Day 1: Taipei → Hualien"},
    {9 * kYear + 200 * kDay, 1500, u"Novel", u"1aHot011", u"[短篇] 末班渡輪（五章加間章）"},
    {3 * kMinute, 1, u"Coding", u"1aHot012", u"[請益] 迴圈多跑一次，找了三小時 off-by-one"},
    {8 * kHour, 99, u"NightSky", u"1aHot013", u"[星圖] 冬天的東南方，半夜以後"},
    {4 * kDay, 800, u"Hometown", u"1aHot014", u"[日常] 燈塔的一天其實都在掃地"},
};

ArticleItem ItemOf(const Card& card) {
  const std::int64_t now = QDateTime::currentSecsSinceEpoch();
  return {.postTime = card.age < 0 ? 0 : now - card.age,
          .score = card.score,
          .board = card.board,
          .code = card.code,
          .extra = {},
          .title = card.title};
}

void FillHot(ArticleFolder& root) {
  for (const Card& card : kHot)
    root.children.push_back(ItemOf(card));
}

// Folders with folders in them.
void FillBookmarks(ArticleFolder& root) {
  ArticleFolder stories{u"睡前讀的", {ItemOf(kHot[10]), ItemOf(kHot[4])}};
  ArticleFolder cats{u"貓", {ItemOf(kHot[2]), ItemOf(kHot[6])}};
  cats.children.push_back(ArticleFolder{u"送養", {ItemOf(kHot[7])}});
  root.children = {std::move(stories), std::move(cats), ItemOf(kHot[3]), ItemOf(kHot[8]), ItemOf(kHot[9])};
}

void ShootList(DemoRun& run, ArticleListKind kind, const QString& name) {
  run.View().SideList().Open(kind);
  run.Save(name);
  run.View().SideList().Close();
}

bool StandsStill(SideListView& list) {
  return list.Top() == list.State().first;
}

void ShootScrolled(DemoRun& run, const QString& name) {
  SideListView& list = run.View().SideList();
  list.Open(ArticleListKind::kHot);
  PressKey(run.Frame(), NamedKey(Qt::Key_End));
  run.Await("the end of the side list", [&] { return StandsStill(list); });
  run.Save(name);
  list.Close();
}

void ShootCards(DemoRun& run, const QString& suffix) {
  ShootList(run, ArticleListKind::kHot, "side-hot" + suffix);
  ShootScrolled(run, "side-hot-end" + suffix);
  ShootList(run, ArticleListKind::kBookmarks, "side-bookmarks" + suffix);
}

}  // namespace

void ShootSideListPictures(DemoRun& run) {
  run.LogIn();
  run.GoToBoard("Cats");
  ShootList(run, ArticleListKind::kTracked, "side-empty");
  run.Doc().GetBookmarks().Change(ArticleListKind::kHot, FillHot);
  run.Doc().GetBookmarks().Change(ArticleListKind::kBookmarks, FillBookmarks);
  ShootCards(run, {});
  run.View().SideList().SetCompact(true);
  ShootCards(run, "-compact");
  run.View().SideList().SetCompact(false);
  run.Set(&Settings::darkColor, true);
  ShootList(run, ArticleListKind::kHot, "side-hot-dim");
  run.Set(&Settings::darkColor, false);
  run.Set(&Settings::work, true);
  ShootCards(run, "-work");
  run.View().SideList().SetCompact(true);
  ShootList(run, ArticleListKind::kHot, "side-hot-compact-work");
  run.View().SideList().SetCompact(false);
  run.Set(&Settings::work, false);
  run.Resize({640, 400});
  ShootCards(run, "-small");
}

}  // namespace quillet
