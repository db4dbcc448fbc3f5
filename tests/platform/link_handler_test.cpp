#include "platform/link_handler.h"

#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "platform/browser_command.h"
#include "platform/instance_message.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

// Keeps every call as a line, and refuses some keys.
class NotingRegistry : public MemoryRegistry {
 public:
  bool SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) override {
    lines.insert(Utf8FromUtf16(path) + " | " + Utf8FromUtf16(name) + " | " + Utf8FromUtf16(value));
    return path.find(u"Clients") == path.npos;
  }
  bool MakeKey(std::u16string_view path) override {
    lines.insert(Utf8FromUtf16(path));
    return true;
  }
  std::set<std::string> lines;
};

TEST(LinkHandlerTest, EveryEntryIsWrittenAndWhatIsRefusedIsTold) {
  constexpr const char* kTable = R"(SOFTWARE\Clients\StartMenuInternet\Quillet |  | Quillet
SOFTWARE\Classes\StartMenuInternet\Quillet |  | Quillet
SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities | ApplicationName | Quillet
SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities | ApplicationDescription | A good Qor browser
SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities | ApplicationIcon | C:\q r\Quillet.exe,0
SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities\Startmenu | StartMenuInternet | Quillet
SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities\URLAssociations | http | QuilletHTML
SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities\URLAssociations | https | QuilletHTML
SOFTWARE\RegisteredApplications | Quillet | SOFTWARE\Clients\StartMenuInternet\Quillet\Capabilities
SOFTWARE\Classes\QuilletHTML |  | Quillet HTML Document
SOFTWARE\Classes\QuilletHTML | AppUserModelId | Quillet
SOFTWARE\Classes\QuilletHTML\Application | AppUserModelId | Quillet
SOFTWARE\Classes\QuilletHTML\Application | ApplicationName | Quillet
SOFTWARE\Classes\QuilletHTML\Application | ApplicationDescription | A good Qor browser
SOFTWARE\Classes\QuilletHTML\Application | ApplicationIcon | C:\q r\Quillet.exe,0
SOFTWARE\Classes\QuilletHTML\DefaultIcon |  | C:\q r\Quillet.exe,0
SOFTWARE\Classes\QuilletHTML\shell
SOFTWARE\Classes\QuilletHTML\shell\open
SOFTWARE\Classes\QuilletHTML\shell\open\command |  | "C:\q r\Quillet.exe" --single-argument %1
)";
  NotingRegistry registry;
  std::string told;
  RegisterLinkHandler(registry, u"C:\\q r\\Quillet.exe", [&](std::string_view what) { told += what; });
  std::set<std::string> expected;
  std::istringstream table(kTable);
  for (std::string line; std::getline(table, line);)
    expected.insert(line);
  EXPECT_EQ(registry.lines, expected);
  std::string refused;
  for (int i = 0; i < 7; ++i)
    refused += "Error opening or creating new key\n";
  EXPECT_EQ(told, refused);
}

TEST(LinkHandlerTest, TheOtherBrowserIsKeptUntilThereIsANewerOne) {
  MemoryRegistry registry;
  EXPECT_EQ(OtherBrowser(registry), u"");
  RememberOtherBrowser(registry, u"other.desktop");
  RememberOtherBrowser(registry, u"");
  EXPECT_EQ(OtherBrowser(registry), u"other.desktop");
  EXPECT_EQ(registry.Text(u"SOFTWARE\\Quillet", u"AlternateProgId"), u"other.desktop");
}

TEST(BrowserCommandTest, TheProgramEndsWithItsExtensionAndTheLinkTakesItsPlace) {
  const struct {
    std::u16string_view command, program, arguments;
  } cases[] = {
      {u"\"C:\\B r\\b.exe\" -- \"%1\"", u"C:\\B r\\b.exe", u"-- \"L\""},
      {u"C:\\B r\\B.EXE --single-argument %1 %1", u"C:\\B r\\B.EXE", u"--single-argument L L"},
      {u"\"C:\\my.executables\\b.exe\"", u"C:\\my.executables\\b.exe", u""},
      {u"C:\\b.exe", u"C:\\b.exe", u""},
      {u"  \"b.exe\"\t-new %2%", u"b.exe", u"-new %2%"},
      {u"rundll32 url.dll,Open %1", u"", u""},
      {u"", u"", u""},
      {u".ex", u"", u""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(SplitBrowserCommand(c.command, u"L"),
              (BrowserCommand{std::u16string(c.program), std::u16string(c.arguments)}))
        << Utf8FromUtf16(c.command);
}

TEST(InstanceMessageTest, OnlyATextWithItsZeroIsTaken) {
  const std::u16string text = u"--single-argument https://a.example/文\xD83D\xDE00";
  std::vector<std::byte> message = MessageOf(text);
  EXPECT_EQ(message.size(), 2 * text.size() + 2);
  EXPECT_EQ(TextOfMessage(message), text);
  EXPECT_EQ(TextOfMessage(MessageOf(u"")), u"");
  for (std::size_t cut = 1; cut <= message.size(); ++cut)
    EXPECT_EQ(TextOfMessage(std::span(message).first(message.size() - cut)), std::nullopt) << cut;
  for (const std::u16string& bad : {std::u16string(u"a\0b", 3), std::u16string(u"\xD83D"),
                                    std::u16string(u"\xD83D x"), std::u16string(u"\xDE00")}) {
    EXPECT_TRUE(MessageOf(bad).empty());
    std::vector<std::byte> bytes((bad.size() + 1) * sizeof(char16_t));
    std::memcpy(bytes.data(), bad.data(), bad.size() * sizeof(char16_t));
    EXPECT_EQ(TextOfMessage(bytes), std::nullopt);
  }
  EXPECT_FALSE(MessageOf(std::u16string(kMostMessageUnits - 1, u'x')).empty());
  EXPECT_TRUE(MessageOf(std::u16string(kMostMessageUnits, u'x')).empty());
  EXPECT_EQ(TextOfMessage(std::vector<std::byte>(2 * kMostMessageUnits + 2)), std::nullopt);
}

}  // namespace
}  // namespace quillet
