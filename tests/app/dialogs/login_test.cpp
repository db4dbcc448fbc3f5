// Logging in through the form, as a user does with the keyboard, at the demo BBS and at servers that fail.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "demo/demo_server.h"
#include "input/text/screen_text.h"
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
  bool IsFormBack() { return !Complaint().isEmpty() && IsIdle(); }
  bool IsBack() {
    return Until([this] { return IsFormBack(); });
  }
  bool IsLoggedIn() { return !Seen().loginId.empty(); }
  bool IsIn() {
    return Until([this] { return IsLoggedIn(); }) && Shows(u"【主功能表】"_qs);
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

  LogIn("alice", "wonder");
  EXPECT_TRUE(IsIn());
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

TEST_F(LoginTest, OnlyASuccessOrUntickingChangesWhatASiteRemembers) {
  StartDemo();
  const auto tries = [&](const std::string& site, const QString& password) {
    UseSite(site);
    Fill("alice", password);
    Field<QCheckBox>("rememberPassword").setChecked(true);
    Enter();
    EXPECT_TRUE(Until([&] { return IsFormBack() || (IsLoggedIn() && IsIdle()); }));
    return Complaint().isEmpty();
  };
  const auto kept = [&] { return doc->Account().Password(u"127.0.0.1"); };
  EXPECT_FALSE(tries(demo->Address(), "wrong"));
  EXPECT_EQ(doc->Account().Account(), u"");
  registry.problem = FileProblem{FileProblem::Kind::kNotWritten, "registry", {}, 0, {}};
  EXPECT_TRUE(tries(demo->Address(), "wonder"));
  EXPECT_TRUE(PanelLines().contains(u"registry 寫不進去"_qs)) << PanelLines().toStdString();
  registry.problem.reset();
  Enter();
  doc->GetConnection().Disconnect();
  EXPECT_FALSE(tries("telnet://127.0.0.1:1", "other"));
  EXPECT_TRUE(Complaint().contains(u"連不上站台"_qs)) << Complaint().toStdString();
  EXPECT_EQ(kept(), u"wonder");
  UseSite(demo->Address());
  Start();
  View().AskLogin();
  EXPECT_FALSE(Field<QPushButton>("showPassword").isEnabled()) << "who sits here need not be who typed it";
  Enter();
  ASSERT_TRUE(IsIn());
  View().AskLogin();
  EXPECT_EQ(Text("password"), "wonder");
  Field<QLineEdit>("account").setFocus();
  TypeText("x");
  EXPECT_EQ(Text("password"), "") << "it is for its account alone";
  Escape();
  ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
  View().AskLogin();
  Field<QCheckBox>("rememberAccount").setChecked(false);
  Escape();
  ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
  EXPECT_EQ(kept(), u"");
}

TEST_F(LoginTest, AServerThatGoesInMidDialogueBringsTheFormBack) {
  LoopbackServer server([](Socket& client, const StopSignal& stop) {
    SendText(client, kIdPrompt + ToBig5(kIdQuestion), stop);
    std::string typed;
    constexpr std::size_t kOpeningKeys = 40;
    ReceiveText(client, typed, kOpeningKeys + 6, stop);
  });
  UseSite(server.SiteAddress());
  LogIn("alice", "wonder");
  ASSERT_TRUE(IsBack());
  EXPECT_TRUE(Complaint().contains(u"登入還沒完成"_qs)) << Complaint().toStdString();
  EXPECT_EQ(Text("password"), "wonder") << "there was nothing wrong with it";
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
    KeepSite(map, {}, {.address = u"older.example", .account = {}, .name = u"老站"});
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

// Two accounts of one host, each with its own password.
TEST_F(LoginTest, ANamedSiteBringsItsAccountAndRemembersItsPassword) {
  StartDemo();
  const std::u16string address = PlainAddress(QString::fromStdString(demo->Address()).toStdU16String());
  const RecentSite alices{.address = address, .account = u"alice", .name = u"我的站"};
  doc->GetSettings().ChangeMap([&](SettingsMap& map) {
    KeepSite(map, {}, alices);
    KeepSite(map, {}, {.address = address, .account = u"bob", .name = {}});
  });
  doc->Account().Remember(u"127.0.0.1", u"bob", u"builder");
  View().AskLogin();
  auto& offered = Field<QComboBox>("recentSites");
  offered.setCurrentIndex(offered.findText(u"我的站"_qs));
  ASSERT_TRUE(Until([&] { return Text("account") == "alice"; }));
  EXPECT_EQ(Text("password"), "");
  Field<QLineEdit>("password").setFocus();
  TypeText("wonder");
  Field<QCheckBox>("rememberPassword").setChecked(true);
  Enter();
  ASSERT_TRUE(IsIn()) << PanelLines().toStdString();
  ASSERT_TRUE(Until([&] { return doc->Account().Account() == u"alice"; }));
  Start();
  View().AskLogin(alices);
  EXPECT_EQ(Text("password"), "wonder");
  Escape();
  ASSERT_TRUE(Until([&] { return Form() == nullptr; }));
  View().AskLogin({.address = address, .account = u"bob", .name = {}});
  EXPECT_EQ(Text("password"), "builder") << "remembered for the host as a whole";
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

TEST_F(LoginTest, WithoutASiteTheFormPointsToTheAddress) {
  View().AskLogin();
  EXPECT_FALSE(Field<QPushButton>("logIn").isEnabled());
  EXPECT_FALSE(Field<QPushButton>("connectOnly").isEnabled());
  bool asked = false;
  const auto ask = [&] {
    Field<QPushButton>("otherAddress").click();
    Until([&] { return asked; });
  };
  AnswerDialogs(ask, {[&](QDialog& dialog) {
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
    for (const char* name : {"account", "transport", "rememberPassword", "logIn", "showPassword"}) {
      const QRect place = Field<QWidget>(name).geometry();
      const QColor ground = picture.pixelColor(QPoint(place.left() + 4, place.center().y()));
      EXPECT_TRUE(isWhite ? ground.lightness() > 200 : ground.lightness() < 100) << name;
    }
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
  script->Deliver(kIdPrompt + ToBig5(kIdQuestion));
  OpenScript();
  ASSERT_TRUE(Shows(u"請輸入代號"_qs));
  EXPECT_EQ(Seen().loginId, u"") << "that was another connection's";
}

TEST_F(LoginTest, ConnectingWithoutALoginTypesNothing) {
  StartDemo();
  Fill("alice", "wonder");
  Field<QPushButton>("connectOnly").click();
  ASSERT_TRUE(Shows(u"請輸入代號"_qs));
  EXPECT_EQ(Form(), nullptr);
  EXPECT_FALSE(doc->GetConnection().Session().autoLogin);
}

}  // namespace
}  // namespace quillet
