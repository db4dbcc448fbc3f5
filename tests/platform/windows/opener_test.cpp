#include "platform/opener.h"

#include "platform/link_handler.h"
#include "tests/platform/windows/noted_program.h"

namespace quillet {
namespace {

// Not a test: what the opened program does.
TEST(NotedProgram, DISABLED_NotesItsCommandLine) {
  std::wstring notes(MAX_PATH, L'\0');
  notes.resize(GetEnvironmentVariableW(kNotesVariable, notes.data(), MAX_PATH));
  if (notes.empty()) GTEST_SKIP();
  const std::filesystem::path folder(notes);
  const std::wstring line = GetCommandLineW();
  std::ofstream(folder / "part", std::ios::binary) << std::string(line.begin(), line.end());
  std::filesystem::rename(folder / "part", folder / "call");
}

TEST(OpenerTest, WhatIsNoWebAddressStartsNothing) {
  SystemOpener opener;
  for (const std::u16string_view address :
       {u"", u"a.example", u"C:\\Windows\\notepad.exe", u"file:///C:/Windows/notepad.exe",
        u"javascript:alert(1)", u"-http://a.example", u"http://", u"http://a b", u"http://u@a.example",
        u"\\\\server\\share\\a.exe"})
    EXPECT_FALSE(opener.Open(address));
  EXPECT_FALSE(opener.Open(u"http://a.example/" + std::u16string(50000, u'b')));
}

TEST(OpenerTest, TheUsersProgramIsGivenTheEncodedAddress) {
  if (!IsWine()) GTEST_SKIP();
  const NotedProgram program;
  SystemOpener opener;
  ASSERT_TRUE(opener.Open(u"HTTPS://a.example/b?q=文 \"&calc.exe #%41"));
  EXPECT_TRUE(program.Note().ends_with(" \"https://a.example/b?q=%E6%96%87%20%22&calc.exe%20#%41\""))
      << program.Note();
}

TEST(OpenerTest, ALinkThatIsNotOursGoesToTheBrowserBefore) {
  if (!IsWine()) GTEST_SKIP();
  const NotedProgram program;
  EXPECT_FALSE(OpenInOtherBrowser(u"file:///C:/x", u"OtherHTML"));
  EXPECT_FALSE(OpenInOtherBrowser(u"https://a.example/", u"QuilletHTML")) << "which is this program";
  ASSERT_TRUE(OpenInOtherBrowser(u"https://a.example/b?q=文 c", u"OtherHTML"));
  EXPECT_TRUE(program.Note().ends_with(" \"https://a.example/b?q=%E6%96%87%20c\"")) << program.Note();
}

}  // namespace
}  // namespace quillet
