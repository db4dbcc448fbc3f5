// Links as the desktop hands them out: its entries, and who has them.
#include <gtest/gtest.h>

#include "platform/link_handler.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/run_program.h"
#include "platform/opener.h"
#include "tests/platform/linux/scripts_on_path.h"
#include "tests/support/variable.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using Command = std::vector<std::string>;

std::string Entry(const std::string& exec) {
  return "# a comment\n[Desktop Action x]\nExec=wrong %u\n[Desktop Entry]\nExec = " + exec +
         "\r\nExec=late %u\n";
}

TEST(DesktopEntryTest, ACommandIsTakenApartWithoutAShell) {
  const struct {
    const char* exec;
    Command command;
  } cases[] = {
      {"b %u", {"b", "L"}},
      {"/usr/bin/b --new=%U  -- ", {"/usr/bin/b", "--new=L", "--"}},
      {R"("/opt/B r/b" "a\\"b\\$\\\\" "" %u)", {"/opt/B r/b", R"(a"b$\)", "", "L"}},
      {R"(a\sb \tc %u)", {"a", "b", "c", "L"}},
      {"b 100%% %i %c %k %d %u", {"b", "100%", "L"}},
      {"flat run @@u %u @@", {"flat", "run", "@@u", "L", "@@"}},
      {"b ; rm $(x) `y` %u", {"b", ";", "rm", "$(x)", "`y`", "L"}},
      {"b", {}},
      {"b %f", {}},
      {"%u", {"L"}},
      {"", {}},
      {"\"b %u", {}},
      {"\"\" %u", {}},
      {"b %", {}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CommandForLink(Entry(c.exec), "L"), c.command) << c.exec;
  EXPECT_EQ(CommandForLink(Entry("b %u") + "Terminal=true\n", "L"), Command());
  EXPECT_EQ(CommandForLink(Entry("b %u") + "Hidden=true\n", "L"), Command());
  for (const char* nothing : {"", "Exec=b %u", "[Desktop Entry", "[]\nExec=b %u", "\n=\n[\n]"})
    EXPECT_EQ(CommandForLink(nothing, "L"), Command());
}

TEST(DesktopEntryTest, OurOwnEntryNamesTheProgramWhateverItsPath) {
  for (const std::string program : {"/usr/bin/quillet", "/a \"b\" $c `d` %u 100% \\e\\\\/quillet 文"}) {
    const std::string entry = LinkHandlerEntry(program);
    EXPECT_EQ(CommandForLink(entry, "L"), Command({program, "--single-argument", "L"}));
    EXPECT_TRUE(IsLinkHandlerOfOurs(entry));
  }
  EXPECT_FALSE(IsLinkHandlerOfOurs(Entry("b %u")));
}

TEST(DesktopEntryTest, ACacheNamesEntriesInItsOrder) {
  constexpr const char* kCache = "[Other]\na=x;\n[MIME Cache]\na=1.desktop;;2.desktop\nb=\n";
  EXPECT_EQ(EntriesFor("a", kCache), Command({"1.desktop", "2.desktop"}));
  EXPECT_EQ(EntriesFor("b", kCache), Command());
  EXPECT_EQ(EntriesFor("c", kCache), Command());
}

// A desktop of scripts: who has the links stands in the file "default".
class DesktopLinksTest : public ScriptsOnPathTest {
 protected:
  DesktopLinksTest() {
    fs::create_directories(Entries());
    WriteScript("xdg-settings", "[ \"$1\" = get ] && exec /bin/cat \"$notes/default\"\nexit 1\n");
    WriteScript("xdg-mime", "[ \"$1\" = default ] && echo \"$2\" > \"$notes/default\"\nexit 0\n");
  }
  fs::path Entries() const { return scratch_.Path() / "data/applications"; }
  void SetDefault(const std::string& name) const { PutFile(scratch_.Path() / "default", name + "\n"); }
  void AddBrowser(const std::string& name) const {
    WriteScript(name, "cd \"$notes\"\necho \"" + name + " $*\" > part\n/bin/mv part call\n");
    PutFile(Entries() / (name + ".desktop"), "[Desktop Entry]\nExec=" + name + " %u\n");
  }
  std::string CallAfter(const std::function<bool()>& opens) const {
    fs::remove(scratch_.Path() / "call");
    if (!opens()) return "nobody";
    EXPECT_TRUE(WaitUntil([&] { return fs::exists(scratch_.Path() / "call"); }));
    return Note("call");
  }
  std::string OpenWith(const LinkHandlerName& other) const {
    return CallAfter([&] { return OpenInOtherBrowser(u"https://a.example/文", other); });
  }

  const Variable home_{"XDG_DATA_HOME", (scratch_.Path() / "data").c_str()};
  const Variable system_{"XDG_DATA_DIRS", "relative"};
};

TEST_F(DesktopLinksTest, TheProgramHasLinksOnlyAfterItIsChosen) {
  const auto ignore = [](std::string_view) { ADD_FAILURE(); };
  MemoryRegistry registry;
  RefreshLinkHandler(registry, ignore);
  EXPECT_TRUE(fs::is_empty(Entries()));
  EXPECT_EQ(CurrentLinkHandling().owner, LinkOwner::kUnknown);
  SetDefault("first.desktop");
  EXPECT_EQ(CurrentLinkHandling().other, u"first.desktop");
  EXPECT_EQ(ChooseLinkHandler({}), LinkChoice::kMade);
  EXPECT_EQ(CurrentLinkHandling().owner, LinkOwner::kThisProgram);
  const std::string ours = FileAt(Entries() / "quillet-links.desktop");
  PutFile(Entries() / "quillet-links.desktop", "[Desktop Entry]\nExec=/elsewhere/quillet\n");
  RefreshLinkHandler(registry, ignore);
  EXPECT_EQ(FileAt(Entries() / "quillet-links.desktop"), ours);

  SetDefault("first.desktop");
  WriteScript("xdg-mime", "exit 1\n");
  EXPECT_EQ(ChooseLinkHandler({}), LinkChoice::kFailed);
  std::stop_source stop;
  stop.request_stop();
  WriteScript("xdg-settings", "while :; do :; done\n");
  EXPECT_EQ(CurrentLinkHandling(stop.get_token()).owner, LinkOwner::kUnknown);
}

TEST_F(DesktopLinksTest, TheOtherBrowserIsTheUsersElseTheSystemsButNeverThisProgram) {
  constexpr const char* kUrl = " https://a.example/%E6%96%87\n";
  EXPECT_EQ(OpenWith(u"second.desktop"), "nobody");
  AddBrowser("x-www-browser");
  EXPECT_EQ(OpenWith(u""), std::string("x-www-browser") + kUrl);
  AddBrowser("first");
  AddBrowser("second");
  PutFile(Entries() / "ours.desktop", LinkHandlerEntry("/bin/false"));
  PutFile(Entries() / "gone.desktop", "[Desktop Entry]\nExec=gone %u\n");
  PutFile(Entries() / "mimeinfo.cache",
          "[MIME Cache]\nx-scheme-handler/https=ours.desktop;gone.desktop;first.desktop;\n");
  EXPECT_EQ(OpenWith(u"second.desktop"), std::string("second") + kUrl);
  for (const std::u16string_view other :
       {u"", u"ours.desktop", u"gone.desktop", u"../applications/second.desktop"})
    EXPECT_EQ(OpenWith(std::u16string(other)), std::string("first") + kUrl);
  EXPECT_FALSE(OpenInOtherBrowser(u"file:///etc/passwd", u"first.desktop"));
}

TEST_F(DesktopLinksTest, WhatTheDesktopWouldHandBackGoesStraightOn) {
  AddBrowser("first");
  SystemOpener opener([] { return u"first.desktop"; });
  SetDefault("ours.desktop");
  PutFile(Entries() / "ours.desktop", LinkHandlerEntry("/bin/false"));
  EXPECT_EQ(CallAfter([&] { return opener.Open(u"http://a.example"); }), "first http://a.example\n");
}

TEST_F(DesktopLinksTest, AProgramThatIsAskedDoesNotHoldAnybodyUp) {
  WriteScript("asks", "printf '%05000d' 1\nexit 3\n");
  const auto answer = AskProgram({"asks"}, {});
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 3);
  EXPECT_EQ(answer->said.size(), 4096U);
  WriteScript("hangs", "echo half\nexec >&-\nwhile :; do :; done\n");
  EXPECT_FALSE(AskProgram({"hangs"}, {}, std::chrono::milliseconds(50)));
  EXPECT_FALSE(AskProgram({"missing"}, {}));
}

}  // namespace
}  // namespace quillet
