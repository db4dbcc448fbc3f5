// Every row of the setting table that is said to be acted on makes something different that the program uses.
#include <set>

#include "app/dialogs/money_controller.h"
#include "bbs/page_flags.h"
#include "bbs/screen_classifier.h"
#include "input/mouse_scheme.h"
#include "input/pre_translation.h"
#include "input/side_list.h"
#include "render/style/styled_screen.h"
#include "settings/setting_table.h"
#include "tests/app/window_fixture.h"
#include "tests/support/article_pages.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

// Their effect needs a gesture, or an article that moves: it is tried where those are.
const std::set<std::u16string_view> kTriedElsewhere = {
    u"AutoReconnect",        // ReconnectWindowTest
    u"KeepAwake",            // ReconnectWindowTest
    u"NoScrollAnimation",    // ArticleViewTest, SideListViewTest
    u"CopyWhenSelect",       // HandsTest
    u"IpToName",             // HandsTest
    u"IpDetectProxy",        // HandsTest
    u"PasteAutoChangeLine",  // HandsTest, ClipboardControllerTest
    u"MButtonOpenURL",       // PointerControlTest
    u"DownloadEngine",       // the store of pictures' own tests
    u"OpenPicAfterDownload",
    u"ShowPicMode",  // ArticlePicturesTest
    u"AutoPlayGif",
    u"QuotePic",  // ArticlePartsTest
    u"ContentPic",
    u"SignPic",
    u"PushPic",
};

ScreenSnapshot OfTheBbs(ScreenSnapshot screen) {
  screen.sessionState = SessionState::kConnected;
  screen.isBbsSite = 1;
  ClassifyScreen(PageTests(), screen, ScreenReason::kUpdated);
  return screen;
}

ScreenSnapshot ListPage() {
  ScreenBuilder page;
  page.Put(0, 0, u"【板主:kagami】").Put(1, 0, u"[←]離開").Put(2, 0, u"   編號    日 期 作  者");
  int row = 3;
  for (const std::u16string_view line :
       {u"1234    11/06 kagami", u"1234 ~  11/06 kagami", u"1234 +  11/06 troll", u"1234 +  11/06 worse"}) {
    page.Put(row, 3, line).Put(row, 30, u"□ [問題] 鏡子裡是誰");
    ++row;
  }
  page.Put(5, 0, u"●").Cursor(5, 1).Put(23, 0, u" 文章選讀 ");
  return OfTheBbs(page.screen);
}

ScreenSnapshot ReaderPage() {
  constexpr std::uint8_t kIdAttr = 3 | kAttrBold, kWordsAttr = 3;
  ScreenBuilder page;
  int row = 5;
  for (const std::u16string_view id : {u"alice", u"miko", u"miko", u"troll", u"worse"}) {
    page.Put(row, 0, u"推", 1 | kAttrBold).Put(row, 3, id, kIdAttr).Fill(row, 8, 50, kWordsAttr);
    page.Put(row, 3 + static_cast<int>(id.size()), u": 一", kWordsAttr);
    page.Put(row, 55, u"140.112.8.8 11/06 10:00");
    ++row;
  }
  ScreenSnapshot screen = OfTheBbs(WithReaderFooter(page.screen));
  screen.pageFlags |= PF_READ_END;
  return screen;
}

class SettingEffectsTest : public WindowTest {
 protected:
  // Whether what the program uses is different from what it was at first.
  using Probe = std::function<bool()>;
  template <typename Use>
  void Watch(Use use) {
    probes.push_back([use, usual = use()] { return use() != usual; });
  }
  // Null when nothing is.
  const Probe* Different() {
    const auto found = std::find_if(probes.begin(), probes.end(), [](const Probe& probe) { return probe(); });
    return found == probes.end() ? nullptr : &*found;
  }
  UserSettings& Kept() { return doc->GetSettings(); }

  // What else the row can be set to.
  static std::vector<std::u16string> Others(const SettingRow& row, const std::u16string& usual) {
    if (row.kind == SettingKind::kText) return {u"other.example"};
    std::vector<std::u16string> others;
    const int most = std::min(row.most, row.least + 20);
    for (int number = row.least; number <= most; ++number)
      if (std::u16string text = QString::number(number).toStdU16String(); text != usual)
        others.push_back(std::move(text));
    return others;
  }

  void SetBackground() {
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString file = QString::fromStdString((home.Path() / "ground.png").string());
    ASSERT_TRUE(image.save(file));
    const QRgb ground = Ground();
    Kept().Set({{&Settings::backgroundPicture, file.toStdU16String()},
                {&Settings::superBlackTitle, TitleTreatment::kHideText}});
    ASSERT_TRUE(Until([&] { return Ground() != ground; }));
  }
  QRgb Ground() { return View().Surface().Picture().pixel(2, 2); }

  std::vector<Page> Styled() {
    NameList names;
    ListEntry entry;
    names.Set(u"troll", entry);
    entry.kind = ListKind::kSuperBlack;
    names.Set(u"worse", entry);
    const std::vector<std::u16string> noWords;
    const StyleRules rules{.settings = &Fields(),
                           .names = &names,
                           .titleWords = &noWords,
                           .keywords = Keywords(noWords),
                           .myId = u"alice"};
    return {StyleScreen(list, Understand(list), rules, 0).page,
            StyleScreen(reader, Understand(reader), rules, 0).page};
  }
  std::vector<MouseAction> Hands() {
    const Settings& now = Fields();
    const UnderstoodPage page = Understand(list);
    std::vector<MouseAction> actions{DecideClick({.row = 4, .col = 40}, list, page, now)};
    for (const HeldButton held : {HeldButton::kNone, HeldButton::kLeft, HeldButton::kRight})
      actions.push_back(DecideWheel({.notches = 1, .lines = 3}, held, Picture::kScreen, list, page, now));
    actions.push_back(DecideSideButton(SideButtonPressed::kBack, Picture::kScreen, list, page, now));
    return actions;
  }
  std::vector<KeyDecision> Keys() {
    const WindowState window{.articleOpen = true,
                             .idUnderPointer = true,
                             .addBlackHotKey = Fields().addBlackHotKey,
                             .preventArticleChange = Fields().preventUpDownChangeArticle};
    std::vector<KeyDecision> decisions;
    for (const KeyPress& press :
         {KeyPress{.virtualKey = kKeyEnter, .text = u"\r"}, KeyPress{.virtualKey = 'U', .text = u"u"}})
      for (const ScreenSnapshot* screen : {&list, &reader})
        decisions.push_back(DecideKeyMessage(press, KeyPhase::kFirst, Understand(*screen), window));
    return decisions;
  }
  // Of each list alone.
  std::vector<bool> News() {
    constexpr ArticleListKind kKinds[] = {ArticleListKind::kHot, ArticleListKind::kTracked,
                                          ArticleListKind::kBookmarks};
    std::vector<bool> news;
    for (const ArticleListKind kind : kKinds) {
      Bookmarks& lists = doc->GetBookmarks();
      lists.Change(kind, [](auto& root) { root.children = {Item(u"Cats", 1, 1)}; });
      news.push_back(lists.HoldNews());
      lists.Change(kind, [](auto& root) { root.children.clear(); });
    }
    return news;
  }
  static ArticleItem Item(const std::u16string& board, std::int64_t time, int score) {
    ArticleItem item;
    item.board = board;
    item.code = u"1a2B3c4_";
    item.postTime = time;
    item.score = score;
    return item;
  }
  std::vector<bool> HotOrder() {
    const BoardWeights weights{{u"A", 1}, {u"B", 2}};
    const ArticleOrder order = HotArticleOrder(Fields().hotArticleSortMode, weights);
    const ArticleItem newest = Item(u"A", 9, 1), weighty = Item(u"B", 1, 1), popular = Item(u"A", 1, 9);
    return {order(newest, weighty), order(weighty, popular), order(popular, newest)};
  }
  std::pair<int, int> Signals() {
    const std::pair before{signaller.flashes, signaller.beeps};
    doc->Driver().Signal(SignalSound::kBeep);
    return {signaller.flashes - before.first, signaller.beeps - before.second};
  }
  std::pair<QString, bool> LoginFormSays() {
    View().AskLogin();
    const std::pair says{View().Login().Form()->Address(), View().Login().Form()->Entry().kickOthers};
    Escape();
    EXPECT_TRUE(Until([&] { return View().Login().Form() == nullptr; }));
    return says;
  }

  ScreenSnapshot list = ListPage(), reader = ReaderPage();
  std::vector<Probe> probes;
};

TEST_F(SettingEffectsTest, EachRowThatIsActedOnChangesSomethingThatTheProgramUses) {
  frame->resize(1400, 700);
  OpenScript();
  doc->GetConnection().NoteLogin(u"alice");
  SetBackground();
  const Settings& now = Fields();
  Watch([&] { return Kept().Display(); });
  Watch([&] { return MoneyChoicesOf(now); });
  Watch([&] { return PlanLeaving(LeaveFor::kOtherSite, {}, now.leaveMode); });
  Watch([&] { return frame->windowTitle(); });
  Watch([&] { return frame->windowFlags(); });
  Watch([&] { return View().Commands().State({}).holds.Has(Condition::kHasSideButtons); });
  Watch([&] {
    return doc->GetBookmarks().WantsCodeOf({.board = u"Cats", .author = u"kagami", .title = u"t"});
  });
  Watch([&] {
    const ArticleReadingOptions options = ReadingOptionsOf(now);
    return std::array{options.fetchAll, options.refreshPush, options.tellChanges};
  });
  Watch([&] { return Hands(); });
  Watch([&] { return Keys(); });
  Watch([&] { return Styled(); });
  Watch([&] { return HotOrder(); });
  Watch([&] { return Signals(); });
  Watch([&] { return Ground(); });
  Watch([&] { return News(); });
  Watch([&] { return LoginFormSays(); });
  Watch([&] { return doc->GetHostKeys().QuestionFor("bbs.example") != nullptr; });
  ASSERT_EQ(Different(), nullptr) << "of itself";

  for (const SettingRow& row : SettingTable()) {
    if (!row.Acts() || row.actedOnBy == ActedOnBy::kLater || kTriedElsewhere.contains(row.key)) continue;
    SCOPED_TRACE(QStringView(row.key).toString().toStdString());
    const std::u16string usual = TextOf(row, now);
    const Probe* acts = nullptr;
    for (const std::u16string& other : Others(row, usual)) {
      Kept().Set({SettingChange(row, other)});
      acts = Different();
      Kept().Set({SettingChange(row, usual)});
      if (acts != nullptr) break;
    }
    EXPECT_TRUE(acts != nullptr) << "nothing is different";
    ASSERT_TRUE(Until([&] { return acts == nullptr || !(*acts)(); })) << "it stays different";
  }
}

}  // namespace
}  // namespace quillet
