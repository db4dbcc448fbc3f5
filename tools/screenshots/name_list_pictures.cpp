#include "tools/screenshots/name_list_pictures.h"

#include "settings/list_entry.h"

namespace quillet {
namespace {

struct Listed {
  const char16_t* id;
  const char16_t* entry;
};

// Who pushes in the article that is shown, and authors of the board's list.
constexpr Listed kListed[] = {
    {u"beanstalk", u"整晚不睡，每篇都推"},
    {u"looseleaf", u"C:只會啊啊啊"},
    {u"quietroom", u"_W26:原PO，三花「算數」的主人"},
    {u"chaircat", u"W5:板主，講話算話"},
    {u"cicada17", u"_1347:問題很多"},
    {u"radish21", u"_B2:驚嘆號大戶"},
    {u"alleycat2", u"B:什麼都要直播"},
    {u"kumquat", u"C1:倉庫"},
};

void FillLists(DemoRun& run) {
  SettingsStore& store = run.Doc().Store();
  for (const Listed& listed : kListed)
    store.Names().Set(listed.id, ParseEntryText(listed.entry));
  run.Doc().ApplySettings();
}

void Treat(DemoRun& run, std::u16string_view key, std::u16string_view superKey, char16_t level) {
  const std::u16string value(1, level);
  run.Set(key, value);
  run.Set(superKey, value);
}

void RevealAndTake(DemoRun& run, const QString& name) {
  run.View().Commands().Run(Command::kReveal);
  run.Save(name + "-tab");
  run.View().Commands().Run(Command::kReveal);
  run.Save(name + "-tab-twice");
  run.View().Commands().Run(Command::kReveal);
}

void ShootPushes(DemoRun& run) {
  struct Level {
    char16_t value;
    const char* name;
  };
  constexpr Level kLevels[] = {{u'1', "open"}, {u'2', "hide"}, {u'3', "mask"}, {u'4', "remove"}};
  for (const Level level : kLevels) {
    Treat(run, u"BlackPush", u"SBlackPush", level.value);
    run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
    run.Save(QStringLiteral("names-push-%1").arg(level.name));
  }
  Treat(run, u"BlackPush", u"SBlackPush", u'3');
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  RevealAndTake(run, "names-push-mask");
  run.Set(u"HideCharShowStar", u"0");
  run.Save("names-push-mask-no-stars");
  run.Set(u"HideCharShowStar", u"1");
}

void ShootTitles(DemoRun& run) {
  run.Save("names-titles");
  run.Doc().Store().TitleWords() = {u"戒指", u"[送養]"};
  run.Doc().Store().Map().SetTrackLines({u"board=Cats && title=最奇怪", u"title=剪指甲"});
  run.Doc().ApplySettings();
  run.Save("names-title-words");
  Treat(run, u"BlackTitle", u"SBlackTitle", u'1');
  run.Save("names-titles-hide");
  Treat(run, u"BlackTitle", u"SBlackTitle", u'2');
  run.Save("names-titles-mask");
  RevealAndTake(run, "names-titles-mask");
}

}  // namespace

void ShootNameListPictures(DemoRun& run) {
  run.LogIn();
  run.GoToBoard("Cats");
  FillLists(run);
  ShootTitles(run);
  run.Read(u"最奇怪"_qs);
  run.Save("names-article");
  ShootPushes(run);
  run.Set(u"DarkColor", u"1");
  run.Save("names-push-mask-dim");
  run.Set(u"DarkColor", u"0");
  run.Set(u"Work", u"1");
  run.Save("names-push-mask-work");
}

}  // namespace quillet
