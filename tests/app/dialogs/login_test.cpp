// Logging in through the form, as a user does with the keyboard, at the demo BBS and at servers that fail.
#include <map>
#include <random>

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QUrl>

#include "demo/demo_server.h"
#include "input/screen_text.h"
#include "settings/files/data_files.h"
#include "settings/password_seal.h"
#include "tests/app/dialogs/dialog_answers.h"
#include "tests/app/window_fixture.h"
#include "tests/support/loopback_server.h"

namespace quillet {
namespace {

constexpr const char* kIdPrompt = "\x1b[21;1H";
constexpr char16_t kIdQuestion[] = u"請輸入代號，或以 guest 參觀，或以 new 註冊: ";

class LoginTest : public WindowTest {
 protected:
  void TearDown() override {
    frame.reset();
    doc.reset();
  }

  void StartDemo() {
    DemoOptions options;
    options.contentFolder = QUILLET_SOURCE_DIR "/tests/demo/data";
    demo = std::make_unique<DemoServer>(options);
    ASSERT_EQ(demo->Error(), "");
    UseSite(demo->Address());
  }
  void UseSite(const std::string& address) {
    doc->GetSettings().Set(&Settings::site, QString::fromStdString(address).toStdU16String());
  }

  LoginForm* Form() { return View().Login().Form(); }
  template <typename Control>
  Control& Field(const QString& name) {
    return Find<Control>(*Form(), name);
  }
  QString Text(const QString& field) { return Field<QLineEdit>(field).text(); }
  QString Complaint() { return Form() == nullptr ? QString() : Field<QLabel>("complaint").text(); }
  void Tab() { Press(Qt::Key_Tab, "\t"); }
  void Fill(const QString& account, const QString& password) {
    View().AskLogin();
    Field<QLineEdit>("account").setFocus();
    Field<QLineEdit>("account").selectAll();
    TypeText(account);
    Tab();
    TypeText(password);
  }
  void LogIn(const QString& account, const QString& password) {
    Fill(account, password);
    Enter();
  }
  void LogInByScript() {
    script = std::make_shared<Script>();
    BeginScript(MakeLoginOrder({.account = u"alice", .password = u"wonder"}));
    ASSERT_TRUE(Until([&] { return doc->GetAutomations().Current() == Activity::kLogin; }));
  }
  bool Shows(const QString& text) {
    return Until([&] { return QString::fromStdU16String(ScreenAsText(View().Screen())).contains(text); });
  }
  bool IsBack() {
    return Until([&] { return Form() != nullptr && IsIdle(); });
  }
  bool IsIn() {
    return Until([&] { return !Seen().loginId.empty(); }) && Shows(u"【主功能表】"_qs);
  }

  std::unique_ptr<DemoServer> demo;
};

TEST_F(LoginTest, ByTheKeyboardAloneTheReaderGetsToTheMenu) {
  StartDemo();
  View().AskLogin();
  EXPECT_EQ(Text("account"), "");
  TypeText("alice");
  Tab();
  TypeText("wonder");
  EXPECT_EQ(Field<QLineEdit>("password").echoMode(), QLineEdit::Password);
  Enter();
  ASSERT_TRUE(IsIn()) << PanelLines().toStdString();
  EXPECT_EQ(Form(), nullptr);
  EXPECT_EQ(frame->focusWidget(), &View());
  EXPECT_TRUE(frame->windowTitle().contains(u"（alice）"_qs)) << frame->windowTitle().toStdString();
  EXPECT_FALSE(frame->windowTitle().contains("wonder"));
  EXPECT_EQ(doc->Account().Account(), u"") << "nothing was to be remembered";
  doc->GetSettings().Set(&Settings::titleShowId, false);
  EXPECT_FALSE(frame->windowTitle().contains("alice"));
  doc->GetSettings().Set(&Settings::titleShowId, true);
  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_FALSE(frame->windowTitle().contains("alice"));
}

TEST_F(LoginTest, ARefusalBringsTheFormBackWithTheReason) {
  StartDemo();
  LogIn("alice", "wrong");
  ASSERT_TRUE(IsBack());
  EXPECT_TRUE(Complaint().contains(u"不接受"_qs)) << Complaint().toStdString();
  EXPECT_TRUE(Field<QLabel>("detail").text().contains(u"密碼不對"_qs));
  EXPECT_EQ(Text("account"), "alice");
  EXPECT_EQ(Text("password"), "");
  EXPECT_EQ(frame->focusWidget(), &Field<QLineEdit>("password"));
  EXPECT_FALSE(frame->windowTitle().contains("alice"));

  LogIn("nobody", "x");
  ASSERT_TRUE(IsBack());
  EXPECT_TRUE(Field<QLabel>("detail").text().contains(u"這裡沒有"_qs))
      << Field<QLabel>("detail").text().toStdString();

  LogIn("alice", "wonder");
  EXPECT_TRUE(IsIn());
}

TEST_F(LoginTest, WhatIsRememberedLogsInAtOnceAndIsForItsAccountAlone) {
  StartDemo();
  doc->Account().Remember(u"127.0.0.1", u"keeper", u"k-1");
  View().AskLogin();
  EXPECT_FALSE(Field<QPushButton>("showPassword").isEnabled()) << "who sits here need not be who typed it";
  Enter();
  ASSERT_TRUE(IsIn());
  View().AskLogin();
  EXPECT_EQ(Text("password"), "k-1");
  Field<QLineEdit>("account").setFocus();
  TypeText("x");
  EXPECT_EQ(Text("password"), "");
}

TEST_F(LoginTest, AnAccountOfAnOlderVersionBelongsToTheSiteThatWasSetUp) {
  UseSite("telnet://old.example");
  registry.SetText(kRegistryPath, u"Account", u"keeper");
  registry.SetText(kRegistryPath, u"AutoLogin", SealPassword(u"k-1", "TEST-01"));
  Start();
  UseSite("telnet://127.0.0.1");
  View().AskLogin();
  EXPECT_EQ(Text("account"), "");
  EXPECT_EQ(Text("password"), "") << "the site was changed since";
  Escape();
  ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
  UseSite("telnet://old.example:2323");
  View().AskLogin();
  EXPECT_EQ(Text("password"), "k-1");
}

TEST_F(LoginTest, APasswordThatCannotBeSealedIsToldBeforeTheLogin) {
  StartDemo();
  Fill("alice", "ten letters");
  Field<QCheckBox>("rememberPassword").setChecked(true);
  Enter();
  ASSERT_TRUE(Until([&] { return !Complaint().isEmpty(); }));
  EXPECT_TRUE(Complaint().contains(u"不能記住"_qs));
  EXPECT_FALSE(Field<QCheckBox>("rememberPassword").isChecked());
  EXPECT_EQ(doc->GetConnection().Session().state, SessionState::kIdle) << "the user decides first";
  Enter();
  ASSERT_TRUE(Until([&] { return Complaint().contains(u"不接受"_qs); }));
}

// Three names of the demo, which are three sites to the client, and a port where nobody listens.
TEST_F(LoginTest, WhateverHappensASiteKeepsWhatItsLastSuccessOrUntickingSaid) {
  StartDemo();
  const QString address = QString::fromStdString(demo->Address());
  struct Kept {
    QString account, password;
  };
  std::map<QString, Kept> kept{{"127.0.0.1", {}}, {"localhost", {}}, {"127.1", {}}};
  enum Event { kSuccess, kRefusal, kNoConnection, kUnticked };
  std::mt19937 random(20261125);
  for (int step = 0; step <= 16; ++step) {
    const auto& [host, before] = *std::next(kept.begin(), random() % 3);
    // The last one is what the restart finds.
    const auto event = step == 16 ? kSuccess : static_cast<Event>(random() % 4);
    SCOPED_TRACE(host.toStdString() + " " + std::to_string(event) + " in step " + std::to_string(step));
    const QString site =
        event == kNoConnection ? u"telnet://%1:1"_qs.arg(host) : QString(address).replace("127.0.0.1", host);
    UseSite(site.toStdString());
    View().AskLogin();
    EXPECT_EQ(Text("account"), before.account);
    EXPECT_EQ(Text("password"), before.password);
    const Kept now = random() % 2 == 0 ? Kept{"alice", "wonder"} : Kept{"keeper", "k-1"};
    if (event == kUnticked) {
      Field<QCheckBox>("rememberAccount").setChecked(false);
      Escape();
      ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
      kept[host] = {};
      continue;
    }
    Field<QLineEdit>("account").setFocus();
    Fill(now.account, event == kRefusal ? "wrong" : now.password);
    Field<QCheckBox>("rememberPassword").setChecked(true);
    Enter();
    if (event == kSuccess) {
      ASSERT_TRUE(Until([&] {
        return doc->GetConnection().IsConnected() && IsIdle() &&
               Seen().loginId == now.account.toStdU16String();
      }));
      kept[host] = now;
      EXPECT_EQ(doc->Account().Account(), now.account.toStdU16String());
    } else {
      ASSERT_TRUE(Until([&] { return !Complaint().isEmpty() && IsBack(); }));
      EXPECT_EQ(Complaint().contains(u"連不上站台"_qs), event == kNoConnection) << Complaint().toStdString();
      EXPECT_EQ(Text("password"), event == kNoConnection ? now.password : QString());
      Escape();
      ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
    }
    if (step < 16) doc->GetConnection().Disconnect();
  }
  const QString last = QString::fromStdU16String(Fields().site);
  Start();
  View().AskLogin();
  EXPECT_EQ(Form()->Address(), last);
  EXPECT_EQ(Text("account"), kept[QUrl(last).host()].account);
  for (const auto& [host, entry] : kept)
    EXPECT_EQ(doc->Account().Password(host.toStdU16String()), entry.password.toStdU16String());
}

TEST_F(LoginTest, OnlyASiteThatWasReachedIsProposedAgainAndOffered) {
  StartDemo();
  const QString reached = QString::fromStdString(demo->Address());
  UseSite("telnet://old.example");
  doc->GetConnection().Open({.address = "telnet://127.0.0.1:1", .name = {}});
  ASSERT_TRUE(Settles());
  EXPECT_EQ(Fields().site, u"telnet://old.example");
  EXPECT_TRUE(doc->GetSettings().RecentSites().empty());
  doc->GetSettings().ChangeMap([](SettingsMap& map) {
    NoteSiteUsed(map, u"telnet://older.example", 1);
    NameSite(map, u"older.example", u"老站");
  });
  doc->Account().Remember(u"older.example", u"keeper", u"k-1");
  doc->GetConnection().Open({.address = reached, .name = {}});
  ASSERT_TRUE(Settles());
  Start();
  View().AskLogin();
  EXPECT_EQ(Form()->Address(), reached);
  EXPECT_FALSE(Field<QCheckBox>("rememberAccount").isChecked());
  auto& offered = Field<QComboBox>("recentSites");
  ASSERT_EQ(offered.count(), 2);
  offered.setCurrentIndex(offered.findText(u"老站"_qs));
  ASSERT_TRUE(Until([&] { return Form()->Address() == "telnet://older.example"; }));
  EXPECT_EQ(Text("account"), "keeper");
  EXPECT_EQ(Text("password"), "k-1");
  EXPECT_TRUE(Field<QCheckBox>("rememberPassword").isChecked());
  EXPECT_EQ(Field<QLabel>("site").text(), u"老站"_qs);
  Field<QPushButton>("removeSite").click();
  ASSERT_TRUE(Until([&] { return Form()->Address() == reached; }));
  EXPECT_EQ(Text("account"), "");
  EXPECT_EQ(doc->GetSettings().RecentSites().size(), 1U);
  EXPECT_EQ(doc->Account().Password(u"older.example"), u"k-1") << "that was not asked for";
}

TEST_F(LoginTest, TypingOrEscTakesOver) {
  LogInByScript();
  EXPECT_TRUE(Until([&] { return View().Badge().IsShown(); }));
  Escape();
  EXPECT_TRUE(IsIdle());
  EXPECT_TRUE(Until([&] { return !View().Badge().IsShown(); }));
  LogInByScript();
  TypeText("x");
  EXPECT_TRUE(IsIdle());
  script->Deliver(kIdPrompt + ToBig5(kIdQuestion));
  ASSERT_TRUE(Shows(u"請輸入代號"_qs));
  TypeText("y");
  ASSERT_TRUE(Until([&] { return script->Written().size() >= 2; }));
  EXPECT_EQ(script->Written(), "xy") << "nobody types but the user, and Esc is not typed";
  EXPECT_EQ(Form(), nullptr);
  EXPECT_TRUE(doc->GetConnection().IsConnected());
}

TEST_F(LoginTest, ASiteThatTakesNothingHoldsUpNeitherTheUserNorTheClosing) {
  LogInByScript();
  script->StallWrites();
  script->Deliver(kIdPrompt + ToBig5(kIdQuestion));
  ASSERT_TRUE(Shows(u"請輸入代號"_qs));
  // The worker waits for its first answer to leave before it gives the second one.
  script->Deliver("\x1b[22;1H" + ToBig5(u"請輸入您的密碼: "));
  ASSERT_TRUE(Shows(u"請輸入您的密碼"_qs));
  QElapsedTimer sinceKey;
  sinceKey.start();
  TypeText("x");
  EXPECT_LT(sinceKey.elapsed(), 2000);
  EXPECT_TRUE(IsIdle());
  frame->close();
  frame.reset();
  doc.reset();
  EXPECT_LT(sinceKey.elapsed(), 2000);
}

TEST_F(LoginTest, AnotherConnectionDuringALoginTakesItsPlace) {
  LogInByScript();
  StartDemo();
  LogIn("alice", "wonder");
  ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
  script = std::make_shared<Script>();
  OpenScript();
  EXPECT_TRUE(doc->GetConnection().IsConnected());
  EXPECT_TRUE(IsIdle());
  script->Deliver(kIdPrompt + ToBig5(kIdQuestion));
  ASSERT_TRUE(Shows(u"請輸入代號"_qs));
  TypeText("z");
  ASSERT_TRUE(Until([&] { return !script->Written().empty(); }));
  EXPECT_EQ(script->Written(), "z");
  LogInByScript();
  script->End(EndReason::kClosedByPeer);
  ASSERT_TRUE(IsBack());
  EXPECT_EQ(Text("password"), "") << "that was for another site";
}

TEST_F(LoginTest, TheFormKeepsTheKeyboardAndEscGivesItBack) {
  Enter();
  ASSERT_NE(Form(), nullptr) << "Enter on the greeting";
  QSet<QWidget*> visited;
  for (int i = 0; i < 20; ++i) {
    Tab();
    ASSERT_TRUE(Form()->isAncestorOf(frame->focusWidget()));
    visited.insert(frame->focusWidget());
  }
  EXPECT_GE(visited.size(), 9);
  View().setFocus();
  EXPECT_TRUE(Form()->isAncestorOf(frame->focusWidget())) << "a click beside the form";
  Escape();
  ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
  EXPECT_EQ(frame->focusWidget(), &View());
  EXPECT_TRUE(PanelSays(u"尚未連線"_qs));
}

TEST_F(LoginTest, OnlyWaysThatTheBuildCanGoAreOffered) {
  endpoints.mainHost = "bbs.example";
  endpoints.webSocketHost = "ws.bbs.example";
  Start();
  View().AskLogin();
  auto& transport = Field<QComboBox>("transport");
  ASSERT_EQ(transport.count(), 3);
  const LoginSites sites = ProposedLogin({}, endpoints);
  const auto* const items = qobject_cast<QStandardItemModel*>(transport.model());
  ASSERT_NE(items, nullptr);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(items->item(i)->isEnabled(), sites.ways[static_cast<std::size_t>(i)].possible) << i;
}

TEST_F(LoginTest, WithoutASiteTheFormPointsToTheAddress) {
  View().AskLogin();
  EXPECT_FALSE(Field<QPushButton>("logIn").isEnabled());
  EXPECT_FALSE(Field<QPushButton>("connectOnly").isEnabled());
  bool asked = false;
  AnswerDialogs(
      [&] {
        Field<QPushButton>("otherAddress").click();
        Until([&] { return asked; });
      },
      {[&](QDialog& dialog) {
        asked = true;
        dialog.reject();
      }});
  EXPECT_NE(Form(), nullptr);
}

TEST_F(LoginTest, InDisguiseTheFormIsWhiteAndSwitchesAtOnce) {
  View().AskLogin();
  for (const bool isWhite : {false, true, false}) {
    doc->GetSettings().Set(&Settings::work, isWhite);
    const QImage picture = Form()->grab().toImage();
    std::vector<QPoint> grounds{QPoint(Form()->width() / 2, 4)};
    for (const char* name :
         {"account", "password", "transport", "rememberPassword", "logIn", "showPassword"}) {
      const QRect place = Field<QWidget>(name).geometry();
      grounds.push_back({place.left() + 4, place.center().y()});
    }
    for (const QPoint& at : grounds) {
      const int lightness = picture.pixelColor(at * picture.devicePixelRatio()).lightness();
      EXPECT_TRUE(isWhite ? lightness > 200 : lightness < 100) << at.x() << ',' << at.y();
    }
    EXPECT_EQ(Field<QLineEdit>("account").palette().color(QPalette::Text).lightness() < 40, isWhite);
  }
}

TEST_F(LoginTest, ANoticeLiesBeforeTheForm) {
  View().AskLogin();
  View().ShowNotice({.title = "news", .lines = {}, .hint = {}, .onEnter = PanelAction::kDismiss});
  EXPECT_FALSE(View().Login().IsShown());
  Enter();
  EXPECT_TRUE(View().Login().IsShown());
  EXPECT_TRUE(Form()->isAncestorOf(frame->focusWidget()));
}

TEST_F(LoginTest, AConnectionThatIsMadeOtherwiseNeedsNoForm) {
  std::vector<LoginOrder> demos;
  QObject::connect(frame.get(), &CMainFrame::DemoRequested, [&](const LoginOrder& login) {
    demos.push_back(login);
    BeginScript();
  });
  const auto goToDemo = [&] {
    const std::size_t before = demos.size();
    View().AskLogin();
    Field<QPushButton>("demo").click();
    return Until([&] { return demos.size() > before; });
  };
  ASSERT_TRUE(goToDemo());
  EXPECT_EQ(demos[0], nullptr);
  EXPECT_EQ(Form(), nullptr);
  EXPECT_EQ(frame->focusWidget(), &View());
  ASSERT_TRUE(Settles());
  TypeText("x");
  EXPECT_TRUE(Until([&] { return script->Written() == "x"; }));
  doc->GetConnection().Disconnect();
  // What stands beside the button is for the demo, but not what is remembered for another site.
  UseSite("telnet://other.example");
  doc->Account().Remember(u"other.example", u"keeper", u"k-1");
  ASSERT_TRUE(goToDemo());
  EXPECT_EQ(demos[1], nullptr);
  Fill("alice", "wonder");
  Field<QCheckBox>("kickOthers").setChecked(true);
  ASSERT_TRUE(goToDemo());
  ASSERT_NE(demos[2], nullptr);
  EXPECT_TRUE(demos[2]->kickOthers && Fields().kickOthers);
  EXPECT_EQ(demos[2]->account, u"alice");
  EXPECT_EQ(demos[2]->password, u"wonder");
}

TEST_F(LoginTest, AFlatButtonThatHasTheKeyboardIsSeenToHaveIt) {
  ASSERT_TRUE(Until([&] { return frame->isActiveWindow(); }));
  View().AskLogin();
  const auto edge = [&](const QWidget& button) {
    return Form()->grab().toImage().pixelColor(button.geometry().left() + button.width() / 2,
                                               button.geometry().top() + 1);
  };
  // Those that lead to a site are out of use without one.
  for (const char* name : {"otherAddress", "demo"}) {
    auto& button = Field<QPushButton>(name);
    Field<QLineEdit>("account").setFocus();
    const QColor without = edge(button);
    button.setFocus(Qt::TabFocusReason);
    EXPECT_GT(edge(button).lightness(), without.lightness() + 60) << name;
  }
}

TEST_F(LoginTest, TheFormLeadsToTheSiteThatIsConnected) {
  StartDemo();
  UseSite("telnet://elsewhere.example");
  doc->GetConnection().Open(
      {.address = QString::fromStdString(demo->Address()), .name = "here", .isBbs = true});
  ASSERT_TRUE(Settles());
  LogIn("alice", "wonder");
  ASSERT_TRUE(IsIn());
  EXPECT_TRUE(doc->GetConnection().Session().isBbsSite)
      << "what is known of the site holds for the login too";
  EXPECT_EQ(Fields().site, u"telnet://elsewhere.example");
}

TEST_F(LoginTest, ConnectingWithoutALoginTypesNothing) {
  StartDemo();
  Fill("alice", "wonder");
  Field<QPushButton>("connectOnly").click();
  ASSERT_TRUE(Shows(u"請輸入代號"_qs));
  EXPECT_EQ(Form(), nullptr);
  EXPECT_FALSE(doc->GetConnection().Session().autoLogin);
  TypeText("alice");
  Enter();
  ASSERT_TRUE(Shows(u"請輸入您的密碼"_qs));
  TypeText("wonder");
  Enter();
  EXPECT_TRUE(Until([&] { return Seen().loginId == u"alice"; })) << "read off the screen";
}

}  // namespace
}  // namespace quillet
