#include "tools/screenshots/name_list_pictures.h"

#include "settings/files/list_entry.h"

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
  SettingsStore& store = run.Doc().GetSettings().Store();
  for (const Listed& listed : kListed)
    store.Names().Set(listed.id, ParseEntryText(listed.entry));
  run.Doc().GetSettings().Apply();
}

void TreatPushes(DemoRun& run, PushTreatment level) {
  run.Set(&Settings::blackPush, level);
  run.Set(&Settings::superBlackPush, level);
}

void TreatTitles(DemoRun& run, TitleTreatment level) {
  run.Set(&Settings::blackTitle, level);
  run.Set(&Settings::superBlackTitle, level);
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
    PushTreatment value;
    const char* name;
  };
  constexpr Level kLevels[] = {{PushTreatment::kNoPictures, "open"},
                               {PushTreatment::kHideText, "hide"},
                               {PushTreatment::kMaskId, "mask"},
                               {PushTreatment::kRemove, "remove"}};
  for (const Level level : kLevels) {
    TreatPushes(run, level.value);
    run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
    run.Save(QStringLiteral("names-push-%1").arg(level.name));
  }
  TreatPushes(run, PushTreatment::kMaskId);
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  RevealAndTake(run, "names-push-mask");
  run.Set(&Settings::hideCharShowStar, false);
  run.Save("names-push-mask-no-stars");
  run.Set(&Settings::hideCharShowStar, true);
}

void ShootTitles(DemoRun& run) {
  run.Save("names-titles");
  run.Doc().GetSettings().Store().TitleWords() = {u"戒指", u"[送養]"};
  run.Doc().GetSettings().Store().Map().SetTrackLines({u"board=Cats && title=最奇怪", u"title=剪指甲"});
  run.Doc().GetSettings().Apply();
  run.Save("names-title-words");
  TreatTitles(run, TitleTreatment::kHideText);
  run.Save("names-titles-hide");
  TreatTitles(run, TitleTreatment::kMaskId);
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
  run.Set(&Settings::darkColor, true);
  run.Save("names-push-mask-dim");
  run.Set(&Settings::darkColor, false);
  run.Set(&Settings::work, true);
  run.Save("names-push-mask-work");
}

}  // namespace quillet
