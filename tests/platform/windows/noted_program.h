// This test program as one that the system starts: it notes the command line that it was given. Under Wine
// only, where no user's program is put aside for it: on a real system the user's browser would come up.
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <windows.h>

#include "tests/platform/windows/second_process.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/wait_until.h"
#include "tests/support/wine.h"

namespace quillet {

inline constexpr wchar_t kNotesVariable[] = L"QUILLET_NOTES_OF_TEST";

// For as long as this lives, this process believes that http, https and the class "OtherHTML" are opened with
// this program, which notes what it was given.
class NotedProgram {
 public:
  NotedProgram() {
    SetEnvironmentVariableW(kNotesVariable, notes_.Path().c_str());
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kClasses, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &classes_, nullptr),
              ERROR_SUCCESS);
    const std::wstring command =
        L"\"" + ThisProgram() + L"\" --gtest_also_run_disabled_tests --gtest_filter=NotedProgram.* \"%1\"";
    for (const std::wstring name : {L"http", L"https", L"OtherHTML"}) {
      MakeKey(name + L"\\shell\\open\\command");
      // As some browsers write it.
      SetText(name + L"\\shell\\open\\command", nullptr, name == L"OtherHTML" ? REG_EXPAND_SZ : REG_SZ,
              command);
      SetText(name, L"URL Protocol", REG_SZ, L"");
    }
    EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_), ERROR_SUCCESS);
  }
  NotedProgram(const NotedProgram&) = delete;
  NotedProgram& operator=(const NotedProgram&) = delete;
  ~NotedProgram() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    RegCloseKey(classes_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kClasses);
    SetEnvironmentVariableW(kNotesVariable, nullptr);
  }

  // The command line, once there is one.
  std::string Note() const {
    EXPECT_TRUE(WaitUntil([&] { return std::filesystem::exists(notes_.Path() / "call"); }));
    std::stringstream call;
    call << std::ifstream(notes_.Path() / "call").rdbuf();
    return call.str();
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
  void SetText(const std::wstring& key, const wchar_t* name, DWORD type, const std::wstring& text) const {
    RegSetKeyValueW(classes_, key.c_str(), name, type, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }

  const ScratchFolder notes_;
  HKEY classes_ = nullptr;
};

}  // namespace quillet
