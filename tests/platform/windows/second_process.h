// This test program once more, as another process that runs one of its disabled tests.
#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <windows.h>
// The system's name for another call, which stands in the way of the seam's.
#undef ReplaceFile

namespace quillet {

inline std::wstring ThisProgram() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

class SecondProcess {
 public:
  // `test` as "Suite.DISABLED_Name".
  explicit SecondProcess(const std::wstring& test) {
    std::wstring line =
        L"\"" + ThisProgram() + L"\" --gtest_also_run_disabled_tests --gtest_brief=1 --gtest_filter=" + test;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                               &process_));
  }
  SecondProcess(const SecondProcess&) = delete;
  SecondProcess& operator=(const SecondProcess&) = delete;
  ~SecondProcess() {
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
  }

  // How it ended, once it has.
  std::optional<DWORD> Code() const {
    DWORD code = STILL_ACTIVE;
    if (!GetExitCodeProcess(process_.hProcess, &code) || code == STILL_ACTIVE) return std::nullopt;
    return code;
  }
  void Kill() const {
    TerminateProcess(process_.hProcess, 9);
    WaitForSingleObject(process_.hProcess, INFINITE);
  }

 private:
  PROCESS_INFORMATION process_{};
};

}  // namespace quillet
