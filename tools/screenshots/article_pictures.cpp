#include "tools/screenshots/article_pictures.h"

#include "bbs/page_flags.h"

namespace quillet {
namespace {

struct Value {
  const char16_t* key;
  const char16_t* value;
  const char16_t* usual;
};

struct Look {
  const char* name;
  std::vector<Value> values;
};

const std::vector<Look> kLooks = {
    {"push-spacing-3", {{u"PushLineSpacing", u"3", u"0"}}},
    {"line-spacing-5", {{u"LineSpacing", u"5", u"0"}}},
    {"push-not-merged", {{u"MergePush", u"0", u"1"}}},
    {"push-no-ground", {{u"GrayBackgroundPush", u"0", u"1"}}},
    {"push-not-lighter", {{u"LighterPushLine", u"0", u"1"}}},
    {"push-plain",
     {{u"MergePush", u"0", u"1"},
      {u"GrayBackgroundPush", u"0", u"1"},
      {u"LighterPushLine", u"0", u"1"},
      {u"ColorMyId", u"0", u"1"},
      {u"ShowHighlight", u"0", u"1"}}},
};

void ShootLook(DemoRun& run, const Look& look) {
  for (const Value& value : look.values)
    run.Set(value.key, value.value);
  run.Press({NamedKey(Qt::Key_Home)}, ArticleRests(0, 1));
  run.Save(QStringLiteral("%1-top").arg(look.name));
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  run.Save(QStringLiteral("%1-end").arg(look.name));
  for (const Value& value : look.values)
    run.Set(value.key, value.usual);
}

void ShootLongArticle(DemoRun& run) {
  constexpr int kPagesToMiddle = 12;
  run.GoToBoard("Typing");
  run.Read(u"手指上的"_qs);
  run.Save("long-top");
  for (int page = 0; page < kPagesToMiddle; ++page) {
    const int from = run.View().Article().TopLine();
    run.Press({NamedKey(Qt::Key_PageDown)}, ArticleRests(from + 1, from + kRows));
  }
  run.Save("long-middle");
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  run.Save("long-end");
  run.LeaveArticle();
}

// The titles of articles that have been read, and their list's cursor bar.
void ShootReadTitles(DemoRun& run) {
  run.LeaveArticle();
  run.Press({NamedKey(Qt::Key_Up)}, Is(PF_ARTICLE_LIST_CURSOR));
  run.Save("list-read-darker");
  run.Set(u"DarkerReadArticle", u"0");
  run.Set(u"DarkerUpdatedArticle", u"0");
  run.Set(u"ShowHighlight", u"0");
  run.Save("list-plain");
}

}  // namespace

void ShootArticlePictures(DemoRun& run) {
  run.LogIn();
  ShootLongArticle(run);
  run.GoToBoard("Cats");
  run.Read(u"最奇怪"_qs);
  for (const Look& look : kLooks)
    ShootLook(run, look);
  ShootReadTitles(run);
}

}  // namespace quillet
