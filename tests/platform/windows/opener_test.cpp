#include "platform/opener.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <windows.h>

#include "platform/folders.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

constexpr wchar_t kNotesVariable[] = L"QUILLET_OPENER_TEST";

// On a real system the user's browser would come up, and nothing may take its place.
bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// For as long as this lives, this process believes that web addresses are opened with `command`.
class WebProgram {
 public:
  explicit WebProgram(const std::wstring& command) {
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kClasses, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &classes_, nullptr),
              ERROR_SUCCESS);
    for (const std::wstring scheme : {L"http", L"https"}) {
      const auto size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
      MakeKey(scheme + L"\\shell\\open\\command");
      RegSetKeyValueW(classes_, (scheme + L"\\shell\\open\\command").c_str(), nullptr, REG_SZ,
                      command.c_str(), size);
      RegSetKeyValueW(classes_, scheme.c_str(), L"URL Protocol", REG_SZ, L"", sizeof(wchar_t));
    }
    EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_), ERROR_SUCCESS);
  }
  WebProgram(const WebProgram&) = delete;
  WebProgram& operator=(const WebProgram&) = delete;
  ~WebProgram() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    RegCloseKey(classes_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kClasses);
  }

 private:
  static constexpr const wchar_t* kClasses = L"Software\\QuilletOpenerTest";
  // A key under a volatile one has to be volatile too.
  void MakeKey(const std::wstring& name) const {
    HKEY key = nullptr;
    RegCreateKeyExW(classes_, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE, nullptr, &key,
                    nullptr);
    RegCloseKey(key);
  }

  HKEY classes_ = nullptr;
};

std::wstring ThisProgram() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path;
}

// Not a test: what the opened program does. It notes its command line.
TEST(OpenerProgram, DISABLED_NotesItsCommandLine) {
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
  const ScratchFolder scratch;
  SetEnvironmentVariableW(kNotesVariable, scratch.Path().c_str());
  const WebProgram program(L"\"" + ThisProgram() +
                           L"\" --gtest_also_run_disabled_tests --gtest_filter=OpenerProgram.* \"%1\"");
  SystemOpener opener;
  ASSERT_TRUE(opener.Open(u"HTTPS://a.example/b?q=文 \"&calc.exe #%41"));
  ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(scratch.Path() / "call"); }));
  std::stringstream call;
  call << std::ifstream(scratch.Path() / "call").rdbuf();
  EXPECT_TRUE(call.str().ends_with(" \"https://a.example/b?q=%E6%96%87%20%22&calc.exe%20#%41\""))
      << call.str();
  SetEnvironmentVariableW(kNotesVariable, nullptr);
}

}  // namespace
}  // namespace quillet
